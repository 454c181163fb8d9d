// The layout of objects that are made without looking it up in their classes.
#include "PlatformTest.h"

#include "platform/embedded/appkit/ColorStorage.h"
#include "platform/embedded/foundation/ArrayStorage.h"
#include "platform/embedded/foundation/DataStorage.h"
#include "platform/embedded/foundation/DateStorage.h"
#include "platform/embedded/foundation/DictionaryStorage.h"
#include "platform/embedded/foundation/NumberValue.h"
#include "platform/embedded/foundation/StringStorage.h"
#include "platform/embedded/runtime/Classes.h"

namespace tessarin::testing {
namespace {

class InstancesTest : public PlatformTest {};

// An instance of a class is as large as one that createInstanceWith makes.
template <class Storage>
void expectLayout(Class classObject) {
    const embedded::RuntimeClass* const record = embedded::runtimeClass(classObject.object());
    EXPECT_EQ(record->instanceSize, sizeof(Object) + sizeof(Storage)) << record->name;
    ASSERT_EQ(record->storages.size(), 1u) << record->name;
    EXPECT_EQ(record->storages.front().offset, sizeof(Object)) << record->name;
    EXPECT_FALSE(record->hasInstanceVariables) << record->name;
}

TEST_F(InstancesTest, ObjectsThatAreMadeDirectlyAreThoseOfTheirClasses) {
    expectLayout<embedded::NumberValue>("NSNumber"_class);
    expectLayout<embedded::StringStorage>("NSString"_class);
    expectLayout<embedded::DateStorage>("NSDate"_class);
    expectLayout<embedded::DataStorage>("NSData"_class);
    expectLayout<embedded::ArrayStorage>("NSArray"_class);
    expectLayout<embedded::ArrayStorage>("NSMutableArray"_class);
    expectLayout<embedded::DictionaryStorage>("NSDictionary"_class);
    expectLayout<embedded::DictionaryStorage>("NSMutableDictionary"_class);
    expectLayout<embedded::ColorStorage>("NSColor"_class);
}

} // namespace
} // namespace tessarin::testing
