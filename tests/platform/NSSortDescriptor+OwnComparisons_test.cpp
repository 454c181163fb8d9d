// Sort descriptors with comparisons of an application's own, and descriptors of its own.
#include "PlatformTest.h"

#include <algorithm>
#include <numeric>
#include <tuple>

namespace tessarin::testing {
namespace {

NSSortDescriptor by(NSString key, bool ascending = true, SEL selector = "compare:"_sel) {
    return NSSortDescriptor::sortDescriptorWithKey_ascending_selector(key, ascending, selector);
}

NSInteger weightOf(NSObject object) { return instanceVariableOf<NSInteger>(object, "weight"); }
NSComparisonResult compareWeights(NSObject self, SEL, NSObject other) {
    return weightOf(self) < weightOf(other)   ? NSOrderedAscending
           : weightOf(self) > weightOf(other) ? NSOrderedDescending
                                              : NSOrderedSame;
}
NSComparisonResult refuseToCompare(NSObject, SEL, NSObject) {
    raise(NSGenericException(), "no comparison"_ns);
}
NSComparisonResult alwaysDescending(NSObject, SEL, NSObject) { return NSOrderedDescending; }

Class weightClass() {
    static const ClassDefinition definition{{.name = "NSSortDescriptorTestWeight",
                                             .instanceVariables = {instanceVariable<NSInteger>("weight")},
                                             .methods = {instanceMethod("compareWeights:", compareWeights),
                                                         instanceMethod("refuse:", refuseToCompare),
                                                         instanceMethod("descending:", alwaysDescending)}}};
    return definition.classObject();
}
NSObject weight(NSInteger value) {
    const NSObject made = adopt(send<NSObject>(NSObject(weightClass().alloc()), "init"_sel)).autorelease();
    instanceVariableOf<NSInteger>(made, "weight") = value;
    return made;
}

class OwnComparisonTest : public PlatformTest {};

TEST_F(OwnComparisonTest, UsesAnApplicationsComparison) {
    const NSArray weights = NSArray::arrayOf(weight(3), weight(1), weight(2));
    const NSArray sorted =
        weights.sortedArrayUsingDescriptors(NSArray::arrayOf(by("self"_ns, false, "compareWeights:"_sel)));
    for (NSUInteger index = 0; index < 3; ++index)
        EXPECT_EQ(weightOf(sorted.objectAtIndex(index)), 3 - static_cast<NSInteger>(index));
}

TEST_F(OwnComparisonTest, AsksAnApplicationsComparisonAboutWhatIsTheSame) {
    const NSMutableArray items = NSMutableArray::array();
    for (NSInteger value = 0; value < 20; ++value) {
        const NSMutableDictionary item = NSMutableDictionary::dictionary();
        item.setObject_forKey(NSNumber::numberWithInteger(value % 3), "group"_ns);
        item.setObject_forKey(weight(value % 7), "weight"_ns);
        item.setObject_forKey(NSNumber::numberWithInteger(value), "place"_ns);
        items.addObject(item);
    }
    const NSArray sorted = items.sortedArrayUsingDescriptors(NSArray::arrayOf(
        by("group"_ns), by("weight"_ns, false, "compareWeights:"_sel), by("place"_ns, false)));
    const auto keyOf = [](NSInteger place) { return std::tuple(place % 3, -(place % 7), -place); };
    std::vector<NSInteger> expected(20);
    std::iota(expected.begin(), expected.end(), 0);
    std::ranges::sort(expected, {}, keyOf);
    std::vector<NSInteger> places;
    for (const NSObject item : sorted)
        places.push_back(as<NSNumber>(item.valueForKey("place"_ns)).integerValue());
    EXPECT_EQ(places, expected);
}

TEST_F(OwnComparisonTest, AnExceptionLosesNothing) {
    const NSMutableArray weights = NSMutableArray::array();
    for (NSInteger value = 0; value < 50; ++value) weights.addObject(weight(value));
    EXPECT_THROWS_NAMED(weights.sortUsingDescriptors(NSArray::arrayOf(by("self"_ns, true, "refuse:"_sel))),
                        "NSGenericException");
    EXPECT_EQ(weights.count(), 50u);
    weights.sortUsingDescriptors(NSArray::arrayOf(by("self"_ns, true, "compareWeights:"_sel)));
    for (NSUInteger index = 0; index < 50; ++index)
        EXPECT_EQ(weightOf(weights.objectAtIndex(index)), static_cast<NSInteger>(index));
}

TEST_F(OwnComparisonTest, BearsAComparisonThatContradictsItself) {
    const NSMutableArray weights = NSMutableArray::array();
    for (NSInteger value = 0; value < 100; ++value) weights.addObject(weight(value));
    weights.sortUsingDescriptors(NSArray::arrayOf(by("self"_ns, true, "descending:"_sel)));
    NSInteger sum = 0;
    for (const NSObject item : weights) sum += weightOf(item);
    EXPECT_EQ(sum, 4950);
}

// Compares by length, whatever its key.
NSObject byLength() {
    static const ClassDefinition definition{
        {.name = "NSSortDescriptorTestByLength",
         .superclass = "NSSortDescriptor",
         .methods = {instanceMethod(
             "compareObject:toObject:", +[](NSSortDescriptor, SEL, NSString left, NSString right) {
                 return left.length() < right.length()   ? NSOrderedAscending
                        : left.length() > right.length() ? NSOrderedDescending
                                                         : NSOrderedSame;
             })}}};
    return send<NSObject>(definition.classObject(), "sortDescriptorWithKey:ascending:"_sel, "nothing"_ns,
                          static_cast<BOOL>(YES));
}

TEST_F(OwnComparisonTest, AsksADescriptorThatComparesInItsOwnWay) {
    const NSArray words = NSArray::arrayOf("ccc"_ns, "b"_ns, "aa"_ns, "a"_ns);
    EXPECT_EQ(texts(words.sortedArrayUsingDescriptors(NSArray::arrayOf(byLength()))),
              (Texts{"b", "a", "aa", "ccc"}));
    EXPECT_EQ(texts(words.sortedArrayUsingDescriptors(NSArray::arrayOf(byLength(), by("self"_ns)))),
              (Texts{"a", "b", "aa", "ccc"}));
}

TEST_F(OwnComparisonTest, ADescriptorOfAnotherClassIsNotEqual) {
    const NSSortDescriptor plain = by("nothing"_ns);
    EXPECT_TRUE(byLength().isEqual(byLength()));
    EXPECT_FALSE(byLength().isEqual(plain));
    EXPECT_FALSE(plain.isEqual(byLength()));
}

} // namespace
} // namespace tessarin::testing
