// Sorting, and finding extremes, by a comparison of the objects' own.
#include "PlatformTest.h"

namespace tessarin::testing {
namespace {

int kindQuestions = 0;

NSInteger& numberOf(NSObject self) { return instanceVariableOf<NSInteger>(self, "number"); }
NSComparisonResult difference(NSObject self, SEL, NSObject other) {
    return static_cast<NSComparisonResult>(numberOf(self) - numberOf(other));
}
NSObject itself(NSObject self, SEL) { return self; }
BOOL countKindQuestion(NSObject, SEL, Class) {
    ++kindQuestions;
    return NO;
}

// Numbers that compare by their difference.
class ItemSortingTest : public PlatformTest {
protected:
    static NSArray numbers(std::initializer_list<NSInteger> values) {
        static const ClassDefinition definition{
            {.name = "ItemSortingTestNumber",
             .instanceVariables = {instanceVariable<NSInteger>("number")},
             .methods = {instanceMethod("compare:", difference), instanceMethod("itself", itself),
                         instanceMethod("isKindOfClass:", countKindQuestion)}}};
        const NSMutableArray array = NSMutableArray::array();
        for (const NSInteger value : values) {
            array.addObject(adopt(send<NSObject>(definition.classObject().alloc(), "init"_sel)));
            numberOf(array.lastObject()) = value;
        }
        return array;
    }
    static std::vector<NSInteger> valuesOf(NSArray array) {
        std::vector<NSInteger> values;
        for (const NSObject number : array) values.push_back(numberOf(number));
        return values;
    }
};

TEST_F(ItemSortingTest, GoesByTheSignOfAResult) {
    EXPECT_EQ(valuesOf(numbers({5, 1, 9, 3}).sortedArrayUsingSelector("compare:"_sel)),
              (std::vector<NSInteger>{1, 3, 5, 9}));
}

TEST_F(ItemSortingTest, ExtremesGoByTheSignOfAResult) {
    const NSArray array = numbers({5, 1, 9, 3});
    EXPECT_EQ(numberOf(array.valueForKeyPath("@min.itself"_ns)), 1);
    EXPECT_EQ(numberOf(array.valueForKeyPath("@max.itself"_ns)), 9);
}

TEST_F(ItemSortingTest, AsksNoObjectWhatItIs) {
    const NSArray array = numbers({5, 1, 9, 3});
    kindQuestions = 0;
    static_cast<void>(array.sortedArrayUsingSelector("compare:"_sel));
    EXPECT_EQ(kindQuestions, 0);
}

} // namespace
} // namespace tessarin::testing
