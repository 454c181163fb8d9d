// Character sets of a derived class that has a test for characters alone, where units are not asked for.
#include "PlatformTest.h"

namespace tessarin::testing {
namespace {

class EmbeddedCharacterSetTest : public PlatformTest {
protected:
    // Of "a" and of one character beyond the units.
    static BOOL isMember(NSCharacterSet, SEL, std::uint32_t character) {
        return character == 'a' || character == 0x1F600;
    }
    static Retained<NSCharacterSet> newSet() {
        static const ClassDefinition definition{
            {.name = "EmbeddedCharacterSetTestSet",
             .superclass = "NSCharacterSet",
             .methods = {instanceMethod("longCharacterIsMember:", isMember)}}};
        return adopt(send<NSCharacterSet>(definition.classObject().alloc(), "init"_sel));
    }
    const Retained<NSCharacterSet> set_ = newSet();
};

TEST_F(EmbeddedCharacterSetTest, TheInverseHoldsWhatTheTestDoesNot) {
    const NSCharacterSet inverse = set_.invertedSet();
    EXPECT_FALSE(inverse.longCharacterIsMember('a'));
    EXPECT_FALSE(inverse.longCharacterIsMember(0x1F600));
    EXPECT_TRUE(inverse.longCharacterIsMember('b'));
    EXPECT_TRUE(inverse.longCharacterIsMember(0x1F601));
}

TEST_F(EmbeddedCharacterSetTest, EqualsASetOfWhatPassesTheTest) {
    const NSCharacterSet same = NSCharacterSet::characterSetWithCharactersInString(u"a\U0001F600"_ns);
    EXPECT_TRUE(set_.isEqual(same));
    EXPECT_TRUE(same.isEqual(set_));
    EXPECT_EQ(set_.hash(), same.hash());
}

} // namespace
} // namespace tessarin::testing
