#include "PlatformTest.h"

#include "TessarinFoundation/NSAttributedString+TessarinExtensions.h"

namespace tessarin::testing {
namespace {

class AttributedStringExtensionsTest : public PlatformTest {
protected:
    const NSDictionary bold = NSDictionary::dictionaryWithObject_forKey("bold"_ns, "weight"_ns);

    static bool isMutable(NSAttributedString string) {
        return string.isKindOfClass(NSMutableAttributedString::classObject());
    }
};

TEST_F(AttributedStringExtensionsTest, HasTheStringAndTheAttributes) {
    const NSAttributedString made = tessarin_attributedStringWithString_attributes("Gain"_ns, bold);
    EXPECT_EQ(text(made.string()), "Gain");
    NSRange range{};
    EXPECT_TRUE(made.attributesAtIndex_effectiveRange(2, &range).isEqual(bold));
    EXPECT_EQ(range, (NSRange{0, 4}));
    EXPECT_FALSE(isMutable(made));
}

TEST_F(AttributedStringExtensionsTest, NilAttributesAreNone) {
    const NSAttributedString made = tessarin_attributedStringWithString_attributes("Gain"_ns, nil);
    EXPECT_EQ(text(made.string()), "Gain");
    EXPECT_EQ(made.attributesAtIndex_effectiveRange(0, nullptr).count(), 0u);
}

TEST_F(AttributedStringExtensionsTest, ANilStringIsThePlatformsMatter) {
    EXPECT_THROWS_NAMED(tessarin_attributedStringWithString_attributes(nil, bold),
                        "NSInvalidArgumentException");
}

TEST_F(AttributedStringExtensionsTest, AnEmptyStringIsOneToo) {
    const NSAttributedString made = tessarin_attributedStringWithString_attributes(""_ns, bold);
    EXPECT_TRUE(made);
    EXPECT_EQ(made.length(), 0u);
}

TEST_F(AttributedStringExtensionsTest, TheMutableClassMakesNoMutableOne) {
    const NSAttributedString made =
        tessarin_attributedStringWithString_attributes<NSMutableAttributedString>("Gain"_ns, bold);
    EXPECT_FALSE(isMutable(made));
    EXPECT_FALSE(made.respondsToSelector("setAttributes:range:"));
    EXPECT_TRUE(made.isEqual(tessarin_attributedStringWithString_attributes("Gain"_ns, bold)));
}

TEST_F(AttributedStringExtensionsTest, AnotherSubclassMakesNoneOfItsOwn) {
    static const ClassDefinition definition{
        {.name = "AttributedStringExtensionsTestOwn", .superclass = "NSAttributedString"}};
    const NSAttributedString made =
        tessarin_attributedStringWithString_attributes(definition.classObject(), "Gain"_ns, bold);
    EXPECT_FALSE(made.isKindOfClass(definition.classObject()));
    EXPECT_EQ(text(made.string()), "Gain");
}

TEST_F(AttributedStringExtensionsTest, IsNotOwnedByTheCaller) {
    EXPECT_EQ(
        ownedReferencesOfNew([&] { return tessarin_attributedStringWithString_attributes("Gain"_ns, bold); }),
        0);
}

TEST_F(AttributedStringExtensionsTest, TheStringIsCopied) {
    const NSMutableString string = NSMutableString::stringWithString("Gain"_ns);
    const NSAttributedString made = tessarin_attributedStringWithString_attributes(string, nil);
    string.appendString("s"_ns);
    EXPECT_EQ(text(made.string()), "Gain");
}

} // namespace
} // namespace tessarin::testing
