// A property list's way through the bytes, as it is taken on platforms that refuse what is none.
#include "platform/native/PropertyLists.h"

#include "PlatformTest.h"

namespace tessarin::testing {
namespace {

class WrittenAndReadTest : public PlatformTest {};

TEST_F(WrittenAndReadTest, ContainersAreMutableAndLeavesAreNot) {
    const NSArray original = NSArray::arrayOf(
        NSDictionary::dictionaryWithObject_forKey(NSMutableString::stringWithString("value"_ns), "key"_ns));
    NSError error;
    const NSArray read = writtenAndRead(original, &error);
    EXPECT_FALSE(bool(error));
    ASSERT_TRUE(read.isEqual(original));
    EXPECT_TRUE(read.isKindOfClass(NSMutableArray::classObject()));
    const NSDictionary inner = read.firstObject();
    EXPECT_TRUE(inner.isKindOfClass(NSMutableDictionary::classObject()));
    EXPECT_FALSE(as<NSObject>(inner.objectForKey("key"_ns)).isKindOfClass(NSMutableString::classObject()));
}

TEST_F(WrittenAndReadTest, ItIsWhatACopyIs) {
    const NSArray original = NSArray::arrayOf(
        "text"_ns, NSNumber::numberWithDouble(0.1), NSNumber::numberWithBool(true),
        NSData::dataWithBytes_length("abc", 3), NSArray::arrayOf(NSDictionary::dictionary()));
    EXPECT_TRUE(as<NSObject>(writtenAndRead(original, nullptr))
                    .isEqual(propertyListWithMutableContainers(original, nullptr)));
}

} // namespace
} // namespace tessarin::testing
