// The order in which people look things up.
#include "PlatformTest.h"

namespace tessarin::testing {
namespace {

class LocalizedComparisonTest : public PlatformTest {
protected:
    static Texts sorted(const Texts& words, SEL comparison) {
        const NSMutableArray array = NSMutableArray::array();
        for (const std::string& word : words) array.addObject(NSString(word));
        return texts(array.sortedArrayUsingSelector(comparison));
    }
    static NSComparisonResult compare(NSString left, SEL comparison, NSString right) {
        return send<NSComparisonResult>(left, comparison, right);
    }
};

TEST_F(LocalizedComparisonTest, LettersCountMoreThanCase) {
    EXPECT_EQ(sorted({"b", "A", "C", "a", "B"}, "localizedCompare:"_sel), (Texts{"a", "A", "b", "B", "C"}));
}

TEST_F(LocalizedComparisonTest, LettersCountMoreThanAccents) {
    EXPECT_EQ(sorted({"côte", "coté", "cote", "cotf"}, "localizedCompare:"_sel),
              (Texts{"cote", "coté", "côte", "cotf"}));
}

TEST_F(LocalizedComparisonTest, EqualTextsAreTheSame) {
    for (const SEL comparison : {"localizedCompare:"_sel, "localizedCaseInsensitiveCompare:"_sel}) {
        EXPECT_EQ(compare("Straße 10"_ns, comparison, "Straße 10"_ns), NSOrderedSame);
        EXPECT_EQ(compare(""_ns, comparison, ""_ns), NSOrderedSame);
        EXPECT_EQ(compare(""_ns, comparison, "a"_ns), NSOrderedAscending);
        EXPECT_EQ(compare("ab"_ns, comparison, "a"_ns), NSOrderedDescending);
    }
}

TEST_F(LocalizedComparisonTest, CanonicallyEqualTextsAreTheSame) {
    EXPECT_EQ(compare("caf\u00E9"_ns, "localizedCompare:"_sel, "cafe\u0301"_ns), NSOrderedSame);
}

TEST_F(LocalizedComparisonTest, CaseIsIgnoredOnDemand) {
    const SEL comparison = "localizedCaseInsensitiveCompare:"_sel;
    EXPECT_EQ(compare("Gain"_ns, comparison, "gAIN"_ns), NSOrderedSame);
    EXPECT_EQ(compare("É"_ns, comparison, "é"_ns), NSOrderedSame);
    EXPECT_EQ(compare("e"_ns, comparison, "É"_ns), NSOrderedAscending);
    EXPECT_EQ(sorted({"b", "A", "a", "B"}, comparison), (Texts{"A", "a", "b", "B"}));
}

TEST_F(LocalizedComparisonTest, OneOrderIsThatOfLists) {
    const SEL comparison = "localizedStandardCompare:"_sel;
    ASSERT_TRUE(""_ns.respondsToSelector(comparison));
    EXPECT_EQ(compare("Straße 10"_ns, comparison, "Straße 10"_ns), NSOrderedSame);
    EXPECT_EQ(sorted({"b", "A", "a", "B"}, comparison), (Texts{"a", "A", "b", "B"}));
}

TEST_F(LocalizedComparisonTest, NumbersInNamesSortByTheirValues) {
    ASSERT_TRUE(""_ns.respondsToSelector("localizedStandardCompare:"));
    EXPECT_EQ(sorted({"track 10", "Track 9", "track 9b", "track 1"}, "localizedStandardCompare:"_sel),
              (Texts{"track 1", "Track 9", "track 9b", "track 10"}));
    EXPECT_EQ(
        compare("99999999999999999999998"_ns, "localizedStandardCompare:"_sel, "99999999999999999999999"_ns),
        NSOrderedAscending);
}

TEST_F(LocalizedComparisonTest, ZerosBeforeANumberDoNotChangeItsValue) {
    ASSERT_TRUE(""_ns.respondsToSelector("localizedStandardCompare:"));
    EXPECT_EQ(sorted({"track 010", "track 9", "track 0011"}, "localizedStandardCompare:"_sel),
              (Texts{"track 9", "track 010", "track 0011"}));
}

} // namespace
} // namespace tessarin::testing
