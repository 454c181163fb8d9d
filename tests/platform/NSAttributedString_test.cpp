// Attributed strings, immutable and mutable ones.
#include "PlatformTest.h"

#include <random>

namespace tessarin::testing {
namespace {

NSDictionary weight(NSString value) { return NSDictionary::dictionaryWithObject_forKey(value, "weight"_ns); }
NSAttributedString attributed(NSString string, NSDictionary attributes = nil) {
    return adopt(NSAttributedString::alloc().initWithString_attributes(string, attributes)).autorelease();
}
NSMutableAttributedString editable(NSString string, NSDictionary attributes = nil) {
    return adopt(NSMutableAttributedString::alloc().initWithString_attributes(string, attributes))
        .autorelease();
}

// The characters with the weight that they have: "ab:bold|c:". An effective range need not be as long as it
// could be.
std::string runs(NSAttributedString string) {
    std::string result, previous = "none yet";
    const NSUInteger length = string.length();
    for (NSUInteger index = 0; index < length;) {
        NSRange range{};
        const NSString found =
            string.attributesAtIndex_effectiveRange(index, &range).objectForKey("weight"_ns);
        EXPECT_EQ(range.location, index);
        const std::string weight = found ? text(found) : "";
        if (weight == previous)
            result.resize(result.rfind(':'));
        else if (index > 0)
            result += '|';
        result += text(string.string().substringWithRange(range)) + ":" + weight;
        previous = weight;
        index = range.location + range.length;
    }
    return result;
}

class NSAttributedStringTest : public PlatformTest {};
class NSMutableAttributedStringTest : public PlatformTest {};

TEST_F(NSAttributedStringTest, HasOneRunOfAttributes) {
    const NSAttributedString string = attributed("Gain"_ns, weight("bold"_ns));
    EXPECT_EQ(text(string.string()), "Gain");
    EXPECT_EQ(string.length(), 4u);
    EXPECT_EQ(runs(string), "Gain:bold");
    NSRange range{};
    EXPECT_EQ(text(string.attribute_atIndex_effectiveRange("weight"_ns, 3, &range)), "bold");
    EXPECT_EQ(range, (NSRange{0, 4}));
    EXPECT_FALSE(string.attribute_atIndex_effectiveRange("colour"_ns, 3, nullptr));
}

TEST_F(NSAttributedStringTest, WithoutAttributesHasAnEmptyDictionaryEverywhere) {
    for (const NSAttributedString string :
         {attributed("Gain"_ns), attributed("Gain"_ns, NSDictionary::dictionary()),
          adopt(NSAttributedString::alloc().initWithString("Gain"_ns)).autorelease()}) {
        const NSDictionary attributes = string.attributesAtIndex_effectiveRange(0, nullptr);
        EXPECT_TRUE(attributes);
        EXPECT_EQ(attributes.count(), 0u);
    }
}

TEST_F(NSAttributedStringTest, CopiesStringAndAttributes) {
    const NSMutableString string = NSMutableString::stringWithString("Gain"_ns);
    const NSMutableDictionary attributes = NSMutableDictionary::dictionary();
    attributes.setObject_forKey("bold"_ns, "weight"_ns);
    const NSAttributedString made = attributed(string, attributes);
    string.setString("x"_ns);
    attributes.removeAllObjects();
    EXPECT_EQ(runs(made), "Gain:bold");
}

TEST_F(NSAttributedStringTest, ANilStringRaises) {
    EXPECT_THROWS_NAMED(adopt(NSAttributedString::alloc().initWithString(nil)), "NSInvalidArgumentException");
    EXPECT_THROWS_NAMED(attributed(nil, weight("bold"_ns)), "NSInvalidArgumentException");
    EXPECT_THROWS_NAMED(editable(nil), "NSInvalidArgumentException");
}

TEST_F(NSAttributedStringTest, PartsBehindTheEndRaise) {
    const NSAttributedString string = attributed("Gain"_ns);
    EXPECT_THROWS_NAMED(string.attributedSubstringFromRange({3, 2}), "NSRangeException");
    EXPECT_THROWS_NAMED(string.attributedSubstringFromRange({5, 0}), "NSRangeException");
    EXPECT_THROWS_NAMED(string.attributesAtIndex_effectiveRange(5, nullptr), "NSRangeException");
}

TEST_F(NSAttributedStringTest, TheIndexOfTheEndHasNoAttributes) {
    const NSAttributedString string = attributed("Gain"_ns);
    EXPECT_THROWS_NAMED(string.attributesAtIndex_effectiveRange(4, nullptr), "NSRangeException");
    EXPECT_THROWS_NAMED(attributed(""_ns).attributesAtIndex_effectiveRange(0, nullptr), "NSRangeException");
}

TEST_F(NSAttributedStringTest, EqualsWhatHasTheSameTextAndAttributes) {
    const NSAttributedString string = attributed("Gain"_ns, weight("bold"_ns));
    EXPECT_TRUE(string.isEqual(attributed("Gain"_ns, weight("bold"_ns))));
    EXPECT_TRUE(string.isEqual(editable("Gain"_ns, weight("bold"_ns))));
    EXPECT_TRUE(string.isEqualToAttributedString(string));
    EXPECT_FALSE(string.isEqual(attributed("Gain"_ns, weight("light"_ns))));
    EXPECT_FALSE(string.isEqual(attributed("Gain"_ns)));
    EXPECT_FALSE(string.isEqual(attributed("Main"_ns, weight("bold"_ns))));
    EXPECT_FALSE(string.isEqual("Gain"_ns));
    EXPECT_FALSE(string.isEqual(nil));
    EXPECT_TRUE(attributed(""_ns).isEqual(attributed(""_ns, weight("bold"_ns))));
}

TEST_F(NSAttributedStringTest, EqualOnesHaveTheSameHash) {
    const NSAttributedString string = attributed("Gain"_ns, weight("bold"_ns));
    EXPECT_EQ(string.hash(), attributed("Gain"_ns, weight("bold"_ns)).hash());
    EXPECT_EQ(string.hash(), editable("Gain"_ns, weight("bold"_ns)).hash());
}

TEST_F(NSAttributedStringTest, CopiesAreEqual) {
    const NSAttributedString string = attributed("Gain"_ns, weight("bold"_ns));
    EXPECT_TRUE(adopt(NSAttributedString(string.copy())).isEqual(string));
    const Retained<NSMutableAttributedString> copy = adopt(NSMutableAttributedString(string.mutableCopy()));
    EXPECT_TRUE(copy.isEqual(string));
    copy.deleteCharactersInRange({0, 1});
    EXPECT_EQ(runs(copy), "ain:bold");
    EXPECT_EQ(runs(string), "Gain:bold");
}

TEST_F(NSAttributedStringTest, IsMadeOfAnotherOne) {
    const NSMutableAttributedString other = editable("ab"_ns);
    other.setAttributes_range(weight("bold"_ns), {1, 1});
    const Retained<NSAttributedString> made =
        adopt(NSAttributedString::alloc().initWithAttributedString(other));
    other.deleteCharactersInRange({0, 2});
    EXPECT_EQ(runs(made), "a:|b:bold");
}

TEST_F(NSAttributedStringTest, PartsKeepTheirAttributes) {
    const NSMutableAttributedString string = editable("abcdef"_ns);
    string.setAttributes_range(weight("bold"_ns), {2, 2});
    EXPECT_EQ(runs(string.attributedSubstringFromRange({1, 2})), "b:|c:bold");
    EXPECT_EQ(runs(string.attributedSubstringFromRange({2, 2})), "cd:bold");
    EXPECT_EQ(string.attributedSubstringFromRange({6, 0}).length(), 0u);
    EXPECT_FALSE(
        string.attributedSubstringFromRange({0, 6}).isKindOfClass(NSMutableAttributedString::classObject()));
}

TEST_F(NSAttributedStringTest, ShowsTextAndAttributesRunByRun) {
    const NSMutableAttributedString string = editable("ab"_ns);
    string.setAttributes_range(weight("bold"_ns), {1, 1});
    const std::string expected =
        "a" + text(NSDictionary::dictionary().description()) + "b" + text(weight("bold"_ns).description());
    EXPECT_EQ(text(string.description()), expected);
    EXPECT_EQ(text(attributed("a"_ns).description()), "a" + text(NSDictionary::dictionary().description()));
}

// ---- Edits

TEST_F(NSMutableAttributedStringTest, NewCharactersHaveTheAttributesOfTheFirstThatTheyReplace) {
    const NSMutableAttributedString string = editable("abc"_ns);
    string.setAttributes_range(weight("bold"_ns), {1, 2});
    string.replaceCharactersInRange_withString({0, 2}, "xyz"_ns);
    EXPECT_EQ(runs(string), "xyz:|c:bold");
    string.replaceCharactersInRange_withString({3, 1}, "CC"_ns);
    EXPECT_EQ(runs(string), "xyz:|CC:bold");
}

TEST_F(NSMutableAttributedStringTest, NewCharactersThatReplaceNoneHaveThoseOfTheOneBefore) {
    const NSMutableAttributedString string = editable("ab"_ns);
    string.setAttributes_range(weight("bold"_ns), {0, 1});
    string.replaceCharactersInRange_withString({1, 0}, "x"_ns);
    EXPECT_EQ(runs(string), "ax:bold|b:");
    string.replaceCharactersInRange_withString({0, 0}, "y"_ns);
    EXPECT_EQ(runs(string), "yax:bold|b:");
    string.replaceCharactersInRange_withString({4, 0}, "z"_ns);
    EXPECT_EQ(runs(string), "yax:bold|bz:");
}

TEST_F(NSMutableAttributedStringTest, DeletesCharacters) {
    const NSMutableAttributedString string = editable("abcd"_ns);
    string.setAttributes_range(weight("bold"_ns), {1, 2});
    string.deleteCharactersInRange({0, 2});
    EXPECT_EQ(runs(string), "c:bold|d:");
    string.deleteCharactersInRange({0, 2});
    EXPECT_EQ(string.length(), 0u);
    string.replaceCharactersInRange_withString({0, 0}, "new"_ns);
    EXPECT_EQ(text(string.string()), "new");
}

TEST_F(NSMutableAttributedStringTest, SetsAttributes) {
    const NSMutableAttributedString string = editable("abcd"_ns, weight("bold"_ns));
    string.setAttributes_range(weight("light"_ns), {1, 2});
    EXPECT_EQ(runs(string), "a:bold|bc:light|d:bold");
    string.setAttributes_range(nil, {0, 2});
    EXPECT_EQ(runs(string), "ab:|c:light|d:bold");
}

TEST_F(NSMutableAttributedStringTest, AddsAndRemovesSingleAttributes) {
    const NSMutableAttributedString string = editable("abcd"_ns);
    string.addAttribute_value_range("colour"_ns, "red"_ns, {0, 3});
    string.addAttribute_value_range("weight"_ns, "bold"_ns, {1, 3});
    EXPECT_EQ(text(string.attribute_atIndex_effectiveRange("colour"_ns, 2, nullptr)), "red");
    EXPECT_EQ(text(string.attribute_atIndex_effectiveRange("weight"_ns, 2, nullptr)), "bold");
    EXPECT_EQ(runs(string), "a:|bcd:bold");
    string.removeAttribute_range("colour"_ns, {0, 4});
    EXPECT_EQ(runs(string), "a:|bcd:bold");
    string.removeAttribute_range("weight"_ns, {0, 4});
    EXPECT_EQ(runs(string), "abcd:");
}

TEST_F(NSMutableAttributedStringTest, AppendsAttributedStrings) {
    const NSMutableAttributedString string = editable(""_ns);
    string.appendAttributedString(attributed("a"_ns, weight("bold"_ns)));
    string.appendAttributedString(attributed("b"_ns, weight("bold"_ns)));
    string.appendAttributedString(attributed(""_ns));
    string.appendAttributedString(attributed("c"_ns));
    EXPECT_EQ(runs(string), "ab:bold|c:");
}

TEST_F(NSMutableAttributedStringTest, AppendsItself) {
    const NSMutableAttributedString string = editable("abc"_ns);
    string.setAttributes_range(weight("bold"_ns), {0, 2});
    string.appendAttributedString(string);
    EXPECT_EQ(runs(string), "ab:bold|c:|ab:bold|c:");
}

TEST_F(NSMutableAttributedStringTest, RangesBehindTheEndRaise) {
    const NSMutableAttributedString string = editable("ab"_ns);
    for (const NSRange range :
         {NSRange{1, 2}, NSRange{3, 1}, NSRange{1, std::numeric_limits<NSUInteger>::max()}}) {
        EXPECT_THROWS_NAMED(string.deleteCharactersInRange(range), "NSRangeException");
        EXPECT_THROWS_NAMED(string.replaceCharactersInRange_withString(range, "x"_ns), "NSRangeException");
        EXPECT_THROWS_NAMED(string.setAttributes_range(nil, range), "NSRangeException");
        EXPECT_THROWS_NAMED(string.addAttribute_value_range("a"_ns, "b"_ns, range), "NSRangeException");
        EXPECT_THROWS_NAMED(string.removeAttribute_range("a"_ns, range), "NSRangeException");
    }
    EXPECT_EQ(runs(string), "ab:");
}

TEST_F(NSMutableAttributedStringTest, NilValuesRaise) {
    const NSMutableAttributedString string = editable("ab"_ns);
    EXPECT_THROWS_NAMED(string.addAttribute_value_range("a"_ns, nil, {0, 1}), "NSInvalidArgumentException");
    EXPECT_THROWS_NAMED(string.addAttribute_value_range(nil, "b"_ns, {0, 1}), "NSInvalidArgumentException");
    EXPECT_EQ(runs(string), "ab:");
}

TEST_F(NSMutableAttributedStringTest, AnImmutableCopyStaysAsItIs) {
    const NSMutableAttributedString string = editable("ab"_ns, weight("bold"_ns));
    const Retained<NSAttributedString> copy = adopt(NSAttributedString(string.copy()));
    const Retained<NSString> characters = adopt(NSString(string.string().copy()));
    string.deleteCharactersInRange({0, 1});
    EXPECT_EQ(runs(copy), "ab:bold");
    EXPECT_EQ(text(characters), "ab");
    EXPECT_FALSE(copy.isKindOfClass(NSMutableAttributedString::classObject()));
}

TEST_F(NSMutableAttributedStringTest, ReleasesTheAttributesThatItReplaces) {
    const Retained<NSMutableString> value = adopt(NSMutableString::alloc().init());
    {
        const AutoreleasePool pool;
        const NSMutableAttributedString string = editable("abc"_ns);
        string.addAttribute_value_range("value"_ns, value, {0, 3});
        EXPECT_GT(value.retainCount(), 1u);
        string.setAttributes_range(nil, {0, 3});
    }
    EXPECT_EQ(value.retainCount(), 1u);
}

// A thousand random edits of a text and of the weights of its characters, side by side.
TEST_F(NSMutableAttributedStringTest, KeepsTextAndAttributesTogether) {
    std::mt19937 random(3);
    const auto below = [&](std::size_t limit) { return static_cast<NSUInteger>(random() % limit); };
    const NSMutableAttributedString string = editable(""_ns);
    std::string characters, weights; // a space is no weight
    for (int round = 0; round < 1000; ++round) {
        const NSUInteger start = below(characters.size() + 1);
        const NSUInteger length = below(std::min<std::size_t>(characters.size() - start, 6) + 1);
        const char weightLetter = "abc "[below(4)];
        const NSDictionary attributes =
            weightLetter == ' ' ? NSDictionary() : weight(NSString(std::string(1, weightLetter)));
        if (length > 0 && random() % 2 == 0) {
            string.setAttributes_range(attributes, {start, length});
            weights.replace(start, length, length, weightLetter);
        } else {
            const std::string added(below(5), static_cast<char>('k' + below(10)));
            const Retained<NSMutableAttributedString> part = adopt(
                NSMutableAttributedString::alloc().initWithString_attributes(NSString(added), attributes));
            send<void>(string, "replaceCharactersInRange:withAttributedString:"_sel, NSRange{start, length},
                       part);
            characters.replace(start, length, added);
            weights.replace(start, length, added.size(), weightLetter);
        }
        if (characters.size() > 60) {
            string.deleteCharactersInRange({0, 30});
            characters.erase(0, 30);
            weights.erase(0, 30);
        }
        std::string expected;
        for (std::size_t index = 0; index < characters.size();) {
            const std::size_t end =
                std::min(weights.find_first_not_of(weights[index], index), weights.size());
            expected += (index > 0 ? "|" : "") + characters.substr(index, end - index) + ":";
            if (weights[index] != ' ') expected += weights[index];
            index = end;
        }
        ASSERT_EQ(runs(string), expected) << round;
    }
}

} // namespace
} // namespace tessarin::testing
