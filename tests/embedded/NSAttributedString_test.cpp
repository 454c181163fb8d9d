// What the embedded platform promises of attributed strings beyond the platform's own contract.
#include "PlatformTest.h"

namespace tessarin::testing {
namespace {

NSMutableAttributedString editable(NSString string) {
    return adopt(NSMutableAttributedString::alloc().initWithString(string)).autorelease();
}

class EmbeddedAttributedStringTest : public PlatformTest {};

TEST_F(EmbeddedAttributedStringTest, TheExceptionForANilStringIsWordedAsThePlatformWordsIt) {
    const auto reasonOf = [](auto&& body) {
        std::string reason;
        attempt([&] { static_cast<void>(body()); },
                [&](NSException exception) { reason = text(exception.reason()); });
        return reason;
    };
    EXPECT_EQ(reasonOf([] { return adopt(NSAttributedString::alloc().initWithString(nil)); }),
              "NSConcreteAttributedString initWithString:: nil value");
    EXPECT_EQ(reasonOf([] { return adopt(NSMutableAttributedString::alloc().initWithString(nil)); }),
              "NSConcreteMutableAttributedString initWithString:: nil value");
}

TEST_F(EmbeddedAttributedStringTest, TheTextFollowsTheEditsAndCannotBeEditedItself) {
    const NSMutableAttributedString string = editable("ab"_ns);
    const NSString characters = string.string();
    EXPECT_FALSE(characters.isKindOfClass(NSMutableString::classObject()));
    string.replaceCharactersInRange_withString({2, 0}, "\u20AC"_ns);
    EXPECT_EQ(text(characters), "ab\u20AC");
    EXPECT_EQ(characters.hash(), "ab\u20AC"_ns.hash());
    string.replaceCharactersInRange_withString({0, 1}, characters);
    EXPECT_EQ(text(string.string()), "ab\u20ACb\u20AC");
}

TEST_F(EmbeddedAttributedStringTest, AnUninitialisedOneIsEmpty) {
    const Retained<NSMutableAttributedString> string = adopt(NSMutableAttributedString::alloc());
    EXPECT_EQ(string.length(), 0u);
    EXPECT_EQ(text(string.description()), "");
    string.replaceCharactersInRange_withString({0, 0}, "a"_ns);
    EXPECT_EQ(text(string.string()), "a");
}

TEST_F(EmbeddedAttributedStringTest, NeighboursThatBecomeEqualAreOneRun) {
    const NSMutableAttributedString string = editable("abcd"_ns);
    const auto runAt = [&](NSUInteger index) {
        NSRange range{};
        string.attributesAtIndex_effectiveRange(index, &range);
        return range;
    };
    const auto weight = [] {
        const NSString bold = NSMutableString::stringWithString("bold"_ns);
        return NSDictionary::dictionaryWithObject_forKey(bold, "weight"_ns);
    };
    for (const NSUInteger index : {0u, 2u, 1u}) string.setAttributes_range(weight(), {index, 1});
    EXPECT_EQ(runAt(1), (NSRange{0, 3}));
    EXPECT_EQ(runAt(3), (NSRange{3, 1}));
    string.setAttributes_range(weight(), {4, 0}); // of no characters: nothing
    EXPECT_EQ(runAt(3), (NSRange{3, 1}));
    string.addAttribute_value_range("weight"_ns, "bold"_ns, {3, 1});
    EXPECT_EQ(runAt(3), (NSRange{0, 4}));
    string.setAttributes_range(nil, {1, 2});
    EXPECT_EQ(runAt(2), (NSRange{1, 2}));
    string.deleteCharactersInRange({1, 2});
    EXPECT_EQ(runAt(0), (NSRange{0, 2}));
}

// A value that edits the string when it is compared.
NSMutableAttributedString edited;

BOOL editAndCompare(NSObject, SEL, NSObject) {
    if (edited) edited.deleteCharactersInRange({0, 1});
    return NO;
}

TEST_F(EmbeddedAttributedStringTest, AnEditWithinAnEditIsRefused) {
    static const ClassDefinition definition{{.name = "EmbeddedAttributedStringTestMeddler",
                                             .methods = {instanceMethod("isEqual:", editAndCompare)}}};
    const auto meddler = [] {
        return adopt(send<NSObject>(NSObject(definition.classObject().alloc()), "init"_sel)).autorelease();
    };
    const NSMutableAttributedString string = editable("abcdef"_ns);
    string.addAttribute_value_range("value"_ns, meddler(), {0, 3});
    edited = string;
    EXPECT_THROWS_NAMED(string.addAttribute_value_range("value"_ns, meddler(), {3, 3}), "NSGenericException");
    edited = nil;
    // The edit within has taken place, the one around it has not.
    EXPECT_LT(string.length(), 6u);
    EXPECT_FALSE(string.attribute_atIndex_effectiveRange("value"_ns, string.length() - 1, nullptr));
}

// A subclass that keeps its text and attributes in its own way.
NSString ownString(NSAttributedString, SEL) { return "abcd"_ns; }
NSDictionary ownAttributes(NSAttributedString, SEL, NSUInteger index, NSRange* range) {
    // Ranges as wrong as can be.
    if (range) *range = index == 2 ? NSRange{7, 1000} : NSRange{0, 0};
    return index == 1 ? NSDictionary::dictionaryWithObject_forKey("bold"_ns, "weight"_ns) : NSDictionary();
}

TEST_F(EmbeddedAttributedStringTest, ASubclassIsReadThroughItsPrimitiveOperations) {
    static const ClassDefinition definition{
        {.name = "EmbeddedAttributedStringTestOwn",
         .superclass = "NSAttributedString",
         .methods = {instanceMethod("string", ownString),
                     instanceMethod("attributesAtIndex:effectiveRange:", ownAttributes)}}};
    const NSAttributedString own =
        adopt(send<NSAttributedString>(NSObject(definition.classObject().alloc()), "init"_sel)).autorelease();
    EXPECT_EQ(own.length(), 4u);
    EXPECT_EQ(text(own.description()), "a{\n}b{\n    weight = bold;\n}cd{\n}");
    const NSMutableAttributedString copy = adopt(NSMutableAttributedString(own.mutableCopy())).autorelease();
    EXPECT_TRUE(copy.isEqual(own));
    EXPECT_TRUE(own.isEqual(copy));
    EXPECT_EQ(text(own.attributedSubstringFromRange({1, 2}).description()), "b{\n    weight = bold;\n}c{\n}");
}

// A subclass that edits another string when it is asked for its text.
NSString editAndAnswer(NSAttributedString, SEL) {
    if (edited) edited.deleteCharactersInRange({1, 3});
    edited = nil;
    return "abcd"_ns;
}

TEST_F(EmbeddedAttributedStringTest, AComparisonThatShortensOneOfBothComparesWhatWasThere) {
    static const ClassDefinition definition{
        {.name = "EmbeddedAttributedStringTestShortener",
         .superclass = "NSAttributedString",
         .methods = {instanceMethod("string", editAndAnswer),
                     instanceMethod("attributesAtIndex:effectiveRange:", ownAttributes)}}};
    const NSAttributedString own =
        adopt(send<NSAttributedString>(NSObject(definition.classObject().alloc()), "init"_sel)).autorelease();
    const NSMutableAttributedString string = editable("abcd"_ns);
    string.addAttribute_value_range("weight"_ns, "bold"_ns, {1, 1});
    edited = string;
    EXPECT_TRUE(string.isEqualToAttributedString(own));
    EXPECT_EQ(text(string.string()), "a");
    edited = string;
    string.replaceCharactersInRange_withString({0, 1}, "abcd"_ns);
    EXPECT_FALSE(own.isEqualToAttributedString(string));
    EXPECT_EQ(text(string.string()), "a");
}

// An attributed string in the attributes of another, and so on.
Retained<NSObject> chainOf(std::size_t levels, NSString innermost) {
    Retained<NSObject> chain = retain<NSObject>(innermost);
    for (std::size_t level = 0; level < levels; ++level) {
        const AutoreleasePool pool;
        const NSDictionary attributes = NSDictionary::dictionaryWithObjects_forKeys(
            NSArray::arrayOf(NSObject(chain), NSObject(chain)), NSArray::arrayOf("one"_ns, "two"_ns));
        chain = adopt(NSObject(NSAttributedString::alloc().initWithString_attributes("a"_ns, attributes)));
    }
    return chain;
}

TEST_F(EmbeddedAttributedStringTest, ChainsOfAnyLengthAreCompared) {
    const Retained<NSObject> chain = chainOf(50'000, "end"_ns);
    EXPECT_TRUE(chain.isEqual(chainOf(50'000, NSMutableString::stringWithString("end"_ns))));
    EXPECT_FALSE(chain.isEqual(chainOf(50'000, "another end"_ns)));
}

TEST_F(EmbeddedAttributedStringTest, AttributedStringsInAttributesAreDescribedByTheirText) {
    EXPECT_EQ(text(chainOf(1000, "end"_ns).description()), "a{\n    one = a;\n    two = a;\n}");
    const NSArray others = NSArray::arrayOf(NSObject(chainOf(1, "end"_ns)));
    EXPECT_EQ(text(others.description()), "(\n    \"a{\\n    one = end;\\n    two = end;\\n}\"\n)");
}

TEST_F(EmbeddedAttributedStringTest, ManyRunsAreReleasedAndEdited) {
    const Retained<NSMutableAttributedString> string =
        adopt(NSMutableAttributedString::alloc().initWithString(""_ns));
    const NSDictionary bold = NSDictionary::dictionaryWithObject_forKey("bold"_ns, "weight"_ns);
    constexpr NSUInteger pairs = 100'000;
    for (NSUInteger pair = 0; pair < pairs; ++pair) {
        const AutoreleasePool pool;
        string.appendAttributedString(
            adopt(NSAttributedString::alloc().initWithString_attributes("a"_ns, bold)).autorelease());
        string.appendAttributedString(
            adopt(NSAttributedString::alloc().initWithString("b"_ns)).autorelease());
    }
    NSRange range{};
    EXPECT_TRUE(string.attributesAtIndex_effectiveRange(pairs, &range).isEqual(bold));
    EXPECT_EQ(range, (NSRange{pairs, 1}));
    string.setAttributes_range(bold, {0, 2 * pairs});
    string.attributesAtIndex_effectiveRange(0, &range);
    EXPECT_EQ(range, (NSRange{0, 2 * pairs}));
}

} // namespace
} // namespace tessarin::testing
