// What the embedded platform's index sets answer for objects of other kinds.
#include "PlatformTest.h"

namespace tessarin::testing {
namespace {

class EmbeddedIndexSetTest : public PlatformTest {};

TEST_F(EmbeddedIndexSetTest, HoldsNothingOfAnotherObjectAndDoesNotEqualIt) {
    const NSIndexSet set = NSIndexSet::indexSetWithIndexesInRange({0, 100});
    for (const NSObject other : {NSObject("text"_ns), NSObject(NSNumber::numberWithInt(3)),
                                 NSObject(NSArray::arrayOf("a"_ns)), NSObject(NSIndexSet::classObject())}) {
        EXPECT_FALSE(set.containsIndexes(as<NSIndexSet>(other)));
        EXPECT_FALSE(set.isEqualToIndexSet(as<NSIndexSet>(other)));
    }
    EXPECT_TRUE(set.containsIndexes(NSIndexSet::indexSetWithIndex(99)));
    EXPECT_TRUE(set.containsIndexes(nil));
    EXPECT_FALSE(set.isEqualToIndexSet(nil));
}

} // namespace
} // namespace tessarin::testing
