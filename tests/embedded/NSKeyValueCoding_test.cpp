// What key-value coding costs the embedded platform.
#include "PlatformTest.h"

#include "platform/embedded/runtime/Selectors.h"

namespace tessarin::testing {
namespace {

class EmbeddedKeyValueCodingTest : public PlatformTest {
protected:
    const NSObject object = adopt(send<NSObject>(NSObject::classObject().alloc(), "init"_sel)).autorelease();
};

TEST_F(EmbeddedKeyValueCodingTest, AKeyThatIsNotKnownLeavesNoSelectorBehind) {
    EXPECT_THROWS_NAMED(object.valueForKey("unheardOf"_ns), "NSUnknownKeyException");
    EXPECT_THROWS_NAMED(object.setValue_forKey(object, "unheardOf"_ns), "NSUnknownKeyException");
    for (const char* name : {"unheardOf", "getUnheardOf", "isUnheardOf", "setUnheardOf:"})
        EXPECT_EQ(embedded::findSelector(name), nullptr) << name;
    EXPECT_EQ(embedded::findSelector("valueForKey:"), "valueForKey:"_sel);
}

TEST_F(EmbeddedKeyValueCodingTest, APathMayBeOfAnyLength) {
    std::string path = "self";
    for (int step = 0; step < 200'000; ++step) path += ".self";
    EXPECT_EQ(object.valueForKeyPath(NSString(path)), object);
    EXPECT_EQ(as<NSNumber>(object.valueForKeyPath(NSString(path + ".hash"))).unsignedIntegerValue(),
              object.hash());
    EXPECT_THROWS_NAMED(object.valueForKey(NSString(path)), "NSUnknownKeyException");
}

} // namespace
} // namespace tessarin::testing
