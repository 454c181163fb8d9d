// Colours as configurations and as hexadecimal strings, and back.
#include "Colors.h"
#include "OwnColor.h"

#include "../strings/StringSubclass.h"

#include "TessarinFoundation/NSColor+TessarinExtensions.h"

#include <cmath>

namespace tessarin::testing {
namespace {

// ---- The colour that is read

class ColorToReadTest : public PlatformTest {};

TEST_F(ColorToReadTest, IsTheReceiverInTheGenericSpace) {
    const NSColor color = OwnColor::make({.space = NSColorSpace::genericRGBColorSpace(), .green = 1});
    EXPECT_EQ(text(tessarin_hexadecimalRGBStringWithAlpha(color, false)), "00FF00");
    EXPECT_EQ(OwnColor::asked, "colorSpace redComponent greenComponent blueComponent ");
}

TEST_F(ColorToReadTest, IsConvertedToCalibratedRGBFromAnyOtherSpace) {
    const NSColor color = OwnColor::make(
        {.space = NSColorSpace::deviceRGBColorSpace(), .converted = calibrated(0, 0, 1, 0.5), .green = 1});
    EXPECT_EQ(text(tessarin_hexadecimalRGBStringWithAlpha(color, true)), "0000FF7F");
    EXPECT_EQ(OwnColor::asked, "colorSpace colorUsingColorSpaceName: NSCalibratedRGBColorSpace ");
    EXPECT_EQ(NSNumber(tessarin_configuration(color).objectForKey("Alpha"_ns)).floatValue(), 50);
}

// What another colour is converted to; it hands out quarters of its own and notes that it is the one that is
// asked.
template <int quarters>
CGFloat handOutConverted(NSColor, SEL selector) {
    OwnColor::asked.append("converted.").append(runtime::selectorName(selector)).append(" ");
    return CGFloat(quarters) / 4;
}
NSColor convertedColor() {
    static const ClassDefinition definition{
        {.name = "TessarinTestConvertedColor",
         .superclass = "NSColor",
         .methods = {instanceMethod("hueComponent", handOutConverted<1>),
                     instanceMethod("saturationComponent", handOutConverted<2>),
                     instanceMethod("brightnessComponent", handOutConverted<3>),
                     instanceMethod("alphaComponent", handOutConverted<4>)}}};
    return adopt(send<NSColor>(NSObject(definition.classObject().alloc()), "init"_sel)).autorelease();
}

TEST_F(ColorToReadTest, ForAConfigurationIsTheConvertedOneAskedInOrder) {
    const NSColor color = OwnColor::make({.space = NSColorSpace::deviceRGBColorSpace(),
                                          .converted = convertedColor(),
                                          .hue = 0.1,
                                          .saturation = 0.2,
                                          .brightness = 0.3,
                                          .alpha = 0.4});
    const NSDictionary configuration = tessarin_configuration(color);
    EXPECT_EQ(OwnColor::asked, "colorSpace colorUsingColorSpaceName: NSCalibratedRGBColorSpace "
                               "converted.hueComponent converted.saturationComponent "
                               "converted.brightnessComponent converted.alphaComponent ");
    EXPECT_EQ(NSNumber(configuration.objectForKey("Hue"_ns)).floatValue(), 89.75F);
    EXPECT_EQ(NSNumber(configuration.objectForKey("Saturation"_ns)).floatValue(), 50);
    EXPECT_EQ(NSNumber(configuration.objectForKey("Brightness"_ns)).floatValue(), 75);
    EXPECT_EQ(NSNumber(configuration.objectForKey("Alpha"_ns)).floatValue(), 100);
}

TEST_F(ColorToReadTest, OfADeviceColourIsTheSameRGB) {
    const NSColor device = NSColor::colorWithDeviceRed_green_blue_alpha(1, 0.5, 0, 0.5);
    EXPECT_EQ(text(tessarin_hexadecimalRGBStringWithAlpha(device, true)), "FF7F007F");
}

TEST_F(ColorToReadTest, OfAGreyHasItsWhiteThreeTimes) {
    for (const NSColor white :
         {NSColor::colorWithCalibratedWhite_alpha(1, 1), NSColor::colorWithDeviceWhite_alpha(1, 1)})
        EXPECT_EQ(text(tessarin_hexadecimalRGBStringWithAlpha(white, true)), "FFFFFFFF");
    const NSColor gray = NSColor::colorWithCalibratedWhite_alpha(0.5, 1);
    EXPECT_EQ(text(tessarin_hexadecimalRGBStringWithAlpha(gray, false)), "7F7F7F");
    const NSDictionary configuration = tessarin_configuration(gray);
    EXPECT_EQ(NSNumber(configuration.objectForKey("Saturation"_ns)).floatValue(), 0);
    EXPECT_EQ(NSNumber(configuration.objectForKey("Brightness"_ns)).floatValue(), 50);
}

TEST_F(ColorToReadTest, IsAllZerosWhereItCannotBeConverted) {
    const NSColor color = OwnColor::make(
        {.space = NSColorSpace::deviceCMYKColorSpace(), .red = 1, .hue = 1, .brightness = 1, .alpha = 1});
    EXPECT_EQ(text(tessarin_hexadecimalRGBStringWithAlpha(color, true)), "00000000");
    EXPECT_EQ(text(tessarin_hexadecimalRGBStringWithAlpha(color, false)), "000000");
    const NSDictionary configuration = tessarin_configuration(color);
    EXPECT_EQ(configuration.count(), 4u);
    for (const NSString key : {"Hue"_ns, "Saturation"_ns, "Brightness"_ns, "Alpha"_ns})
        EXPECT_EQ(NSNumber(configuration.objectForKey(key)).floatValue(), 0) << text(key);
}

TEST_F(ColorToReadTest, IsAllZerosWhereAColourHasNoSpaceAndDoesNotRaise) {
    const NSColor color = OwnColor::make({.red = 1, .alpha = 1});
    EXPECT_EQ(text(tessarin_hexadecimalRGBStringWithAlpha(color, true)), "00000000");
}

TEST_F(ColorToReadTest, WhatTheColourRaisesPassesThrough) {
    const NSColor color = OwnColor::make({.raises = true});
    EXPECT_THROWS_NAMED(tessarin_hexadecimalRGBStringWithAlpha(color, true), "TessarinTestException");
    EXPECT_THROWS_NAMED(tessarin_configuration(color), "TessarinTestException");
}

TEST_F(ColorToReadTest, WhatANamedColourRaisesPassesThrough) {
    const NSColor named = NSColor::colorWithCatalogName_colorName("TessarinTests"_ns, "unknown"_ns);
    EXPECT_THROWS_NAMED(tessarin_hexadecimalRGBStringWithAlpha(named, true), "NSInvalidArgumentException");
    EXPECT_THROWS_NAMED(tessarin_configuration(named), "NSInvalidArgumentException");
}

TEST_F(ColorToReadTest, WhatAPatternRaisesPassesThrough) {
    const NSColor pattern = patternColor();
    EXPECT_THROWS_NAMED(tessarin_hexadecimalRGBStringWithAlpha(pattern, true), "NSInvalidArgumentException");
    EXPECT_THROWS_NAMED(tessarin_configuration(pattern), "NSInvalidArgumentException");
}

TEST_F(ColorToReadTest, ANilColourAnswersNil) {
    EXPECT_FALSE(tessarin_configuration(NSColor()));
    EXPECT_FALSE(tessarin_hexadecimalRGBStringWithAlpha(NSColor(), true));
}

// ---- Configurations

class ColorConfigurationTest : public PlatformTest {
protected:
    // The four values; a configuration that holds anything else fails.
    static std::vector<float> valuesOf(NSDictionary configuration) {
        EXPECT_EQ(configuration.count(), 4u);
        std::vector<float> values;
        for (const NSString key : {"Hue"_ns, "Saturation"_ns, "Brightness"_ns, "Alpha"_ns}) {
            const NSNumber number = kindOf<NSNumber>(configuration.objectForKey(key));
            EXPECT_TRUE(number) << text(key);
            EXPECT_STREQ(number.objCType(), "f") << text(key);
            values.push_back(number.floatValue());
        }
        return values;
    }
    static std::vector<float> valuesOf(NSColor color) { return valuesOf(tessarin_configuration(color)); }
    static NSDictionary configuration(NSObject hue, NSObject saturation, NSObject brightness,
                                      NSObject alpha) {
        const NSObject values[] = {hue, saturation, brightness, alpha};
        const NSObject keys[] = {"Hue"_ns, "Saturation"_ns, "Brightness"_ns, "Alpha"_ns};
        return NSDictionary::dictionaryWithObjects_forKeys_count(values, keys, 4);
    }
    static NSDictionary configuration(double hue, double saturation, double brightness, double alpha) {
        return configuration(NSNumber::numberWithDouble(hue), NSNumber::numberWithDouble(saturation),
                             NSNumber::numberWithDouble(brightness), NSNumber::numberWithDouble(alpha));
    }
    static NSColor read(NSDictionary configuration) { return tessarin_colorWithConfiguration(configuration); }
};

TEST_F(ColorConfigurationTest, HoldsFourNumbersOnTheirScales) {
    using Values = std::vector<float>;
    EXPECT_EQ(valuesOf(calibrated(0, 1, 0)), (Values{119.666664F, 100, 100, 100}));
    EXPECT_EQ(valuesOf(calibrated(0, 0, 1)), (Values{239.33333F, 100, 100, 100}));
    EXPECT_EQ(valuesOf(calibrated(1, 1, 0)), (Values{59.833332F, 100, 100, 100}));
    EXPECT_EQ(valuesOf(calibrated(1, 0, 0.5)), (Values{329.08334F, 100, 100, 100}));
    EXPECT_EQ(valuesOf(calibrated(0.5, 0.5, 0.5, 0.25)), (Values{0, 0, 50, 25}));
    EXPECT_EQ(valuesOf(calibrated(0, 0, 0, 0)), (Values{0, 0, 0, 0}));
}

TEST_F(ColorConfigurationTest, OfRedHasTheHueThatThePlatformHandsOut) {
    const NSColor red = calibrated(1, 0, 0);
    EXPECT_EQ(valuesOf(red),
              (std::vector<float>{static_cast<float>(red.hueComponent() * 359), 100, 100, 100}));
}

TEST_F(ColorConfigurationTest, IsCutToSinglePrecisionAfterMultiplying) {
    const NSColor color = OwnColor::make({.space = NSColorSpace::genericRGBColorSpace(),
                                          .hue = 0.1,
                                          .saturation = 1.0 / 3,
                                          .brightness = 1e300,
                                          .alpha = -0.7});
    EXPECT_EQ(valuesOf(color), (std::vector<float>{static_cast<float>(CGFloat(0.1) * 359),
                                                   static_cast<float>(CGFloat(1.0 / 3) * 100),
                                                   std::numeric_limits<float>::infinity(), -70}));
    EXPECT_EQ(OwnColor::asked,
              "colorSpace hueComponent saturationComponent brightnessComponent alphaComponent ");
}

TEST_F(ColorConfigurationTest, IsImmutable) {
    const NSDictionary configuration = tessarin_configuration(calibrated(0, 1, 0));
    const Retained<NSDictionary> copy = adopt(as<NSDictionary>(configuration.copy()));
    EXPECT_EQ(copy, configuration);
}

TEST_F(ColorConfigurationTest, IsAPropertyList) {
    const NSDictionary configuration = tessarin_configuration(ofHSB(0.25, 0.5, 0.75, 0.125));
    for (const NSPropertyListFormat format :
         {NSPropertyListXMLFormat_v1_0, NSPropertyListBinaryFormat_v1_0}) {
        const NSData data = NSPropertyListSerialization::dataWithPropertyList_format_options_error(
            configuration, format, 0, nullptr);
        const NSDictionary back = NSPropertyListSerialization::propertyListWithData_options_format_error(
            data, NSPropertyListImmutable, nullptr, nullptr);
        EXPECT_TRUE(back.isEqual(configuration)) << text(back.description());
    }
}

TEST_F(ColorConfigurationTest, ThatIsStoredIsRead) {
    const NSData data = NSData::dataWithContentsOfFile(NSString(testFile("data/colors/configuration.plist")));
    const NSDictionary stored = NSPropertyListSerialization::propertyListWithData_options_format_error(
        data, NSPropertyListImmutable, nullptr, nullptr);
    const Components found = hsbOf(read(stored));
    EXPECT_EQ(found[0], static_cast<CGFloat>(119.666664F) / 359);
    EXPECT_EQ((Components{found.begin() + 1, found.end()}), (Components{0.5, 0.8, 0.75}));
}

TEST_F(ColorConfigurationTest, OfFullValuesIsRed) {
    const NSColor color = read(configuration(359, 100, 100, 100));
    EXPECT_EQ(hsbOf(color), (Components{1, 1, 1, 1}));
    EXPECT_EQ(rgbOf(color), (Components{1, 0, 0, 1}));
    EXPECT_TRUE(color.colorSpace().isEqual(NSColorSpace::genericRGBColorSpace()));
}

TEST_F(ColorConfigurationTest, OfTheTextOfAHueAloneHasThatHue) {
    const NSColor color = read(NSDictionary::dictionaryWithObject_forKey("180"_ns, "Hue"_ns));
    EXPECT_EQ(hsbOf(color), (Components{CGFloat(180) / 359, 0, 0, 0}));
}

TEST_F(ColorConfigurationTest, ReadsNumbersAndTextAlike) {
    const NSColor fromNumbers = read(configuration(89.75, 50, 25, 75));
    const NSColor fromTexts = read(configuration("89.75"_ns, " 50"_ns, "25 percent"_ns, "7.5e1"_ns));
    EXPECT_EQ(hsbOf(fromNumbers), (Components{0.25, 0.5, 0.25, 0.75}));
    EXPECT_TRUE(fromTexts.isEqual(fromNumbers));
    const NSColor odd = read(configuration("x"_ns, ""_ns, NSNumber::numberWithBool(true), "-"_ns));
    EXPECT_EQ(hsbOf(odd), (Components{0, 0, 0.01, 0}));
}

TEST_F(ColorConfigurationTest, AnIncompleteOneGivesZerosForWhatIsMissing) {
    const NSColor color =
        read(NSDictionary::dictionaryWithObject_forKey(NSNumber::numberWithInt(50), "Brightness"_ns));
    EXPECT_EQ(hsbOf(color), (Components{0, 0, 0.5, 0}));
}

TEST_F(ColorConfigurationTest, NilOrEmptyGivesTransparentBlack) {
    for (const NSDictionary configuration : {NSDictionary(), NSDictionary::dictionary()}) {
        const NSColor color = read(configuration);
        ASSERT_TRUE(color);
        EXPECT_EQ(rgbOf(color), (Components{0, 0, 0, 0}));
    }
}

// A dictionary of an application's own class that notes what is looked up, and knows every key.
Texts lookedUp;

TEST_F(ColorConfigurationTest, IsReadInTheOrderOfItsKeys) {
    static const ClassDefinition definition{
        {.name = "TessarinTestNotingConfiguration",
         .superclass = "NSDictionary",
         .methods = {instanceMethod(
                         "init", +[](NSDictionary self, SEL) { return self; }),
                     instanceMethod(
                         "count", +[](NSDictionary, SEL) -> NSUInteger { return 4; }),
                     instanceMethod(
                         "objectForKey:", +[](NSDictionary, SEL, NSObject key) {
                             lookedUp.push_back(text(key.description()));
                             return id(NSNumber::numberWithInt(static_cast<int>(lookedUp.size())));
                         })}}};
    const Retained<NSDictionary> noting =
        adopt(as<NSDictionary>(static_cast<NSObject>(definition.classObject().alloc())).init());
    lookedUp.clear();
    tessarin_colorWithConfiguration(OwnColor::definedClass(), noting);
    EXPECT_EQ(lookedUp, (Texts{"Hue", "Saturation", "Brightness", "Alpha"}));
    EXPECT_EQ(OwnColor::madeOf,
              (Components{CGFloat(1) / 359, CGFloat(2) / 100, CGFloat(3) / 100, CGFloat(4) / 100}));
}

TEST_F(ColorConfigurationTest, WhatAValueThatIsNoNumberRaisesPassesThrough) {
    for (const NSString key : {"Hue"_ns, "Saturation"_ns, "Brightness"_ns, "Alpha"_ns})
        EXPECT_THROWS_NAMED(read(NSDictionary::dictionaryWithObject_forKey(NSNull::null(), key)),
                            "NSInvalidArgumentException");
}

TEST_F(ColorConfigurationTest, IsReadInSinglePrecisionAndDividedInThePlatforms) {
    tessarin_colorWithConfiguration(OwnColor::definedClass(), configuration(0.1, 1.0 / 3, 99.9, 1e-3));
    EXPECT_EQ(OwnColor::madeOf,
              (Components{static_cast<CGFloat>(0.1F) / 359, static_cast<CGFloat>(1.0F / 3) / 100,
                          static_cast<CGFloat>(99.9F) / 100, static_cast<CGFloat>(1e-3F) / 100}));
}

TEST_F(ColorConfigurationTest, WhatLiesOutsideIsHandedOn) {
    tessarin_colorWithConfiguration(OwnColor::definedClass(), configuration(718, -100, 1000, 150));
    EXPECT_EQ(OwnColor::madeOf, (Components{2, -1, 10, 1.5}));
}

TEST_F(ColorConfigurationTest, IsReadByTheReceivingClass) {
    const NSDictionary full = configuration(359, 100, 100, 100);
    const Class own = OwnColor::definedClass();
    EXPECT_TRUE(tessarin_colorWithConfiguration(own, full).isMemberOfClass(own));
    EXPECT_TRUE(tessarin_colorWithConfiguration<OwnColor>(full).isMemberOfClass(own));
    EXPECT_FALSE(tessarin_colorWithConfiguration(full).isKindOfClass(own));
}

TEST_F(ColorConfigurationTest, WrittenAndReadGivesTheSameColour) {
    for (int step = 0; step <= 1000; ++step) {
        const CGFloat part = CGFloat(step) / 1000;
        const NSColor color = ofHSB(part, 1 - part / 2, 0.25 + part / 2, part);
        const NSColor back = read(tessarin_configuration(color));
        const Components expected = hsbOf(color), found = hsbOf(back);
        for (std::size_t index = 0; index < 4; ++index)
            EXPECT_NEAR(found[index], expected[index], 1e-7) << "step " << step << ", component " << index;
    }
}

TEST_F(ColorConfigurationTest, OfAGreyKeepsTheHueThatItWasMadeOf) {
    const Components expected{0.25, 0, 0.5, 1};
    EXPECT_EQ(hsbOf(read(tessarin_configuration(ofHSB(0.25, 0, 0.5)))), expected);
}

TEST_F(ColorConfigurationTest, ResultsAreAutoreleased) {
    const NSColor color = calibrated(0.1, 0.2, 0.3);
    EXPECT_EQ(ownedReferencesOfNew([&] { return tessarin_configuration(color); }), 0);
    const NSDictionary written = tessarin_configuration(color);
    EXPECT_EQ(ownedReferencesOfNew([&] { return read(written); }), 0);
}

// ---- Hexadecimal strings, written

class HexadecimalStringTest : public PlatformTest {
protected:
    static std::string written(NSColor color, bool alpha = false) {
        return text(tessarin_hexadecimalRGBStringWithAlpha(color, alpha));
    }
    // The digits of one component.
    static std::string digits(CGFloat component) {
        const std::string all =
            written(OwnColor::make({.space = NSColorSpace::genericRGBColorSpace(), .blue = component}));
        EXPECT_TRUE(all.starts_with("0000")) << all;
        return all.substr(std::min<std::size_t>(4, all.size()));
    }
};

TEST_F(HexadecimalStringTest, OfOpaqueRed) {
    const CGFloat components[] = {1, 0, 0, 1};
    for (const NSColor red :
         {calibrated(1, 0, 0), NSColor::colorWithColorSpace_components_count(
                                   NSColorSpace::genericRGBColorSpace(), components, 4)}) {
        EXPECT_EQ(written(red, false), "FF0000");
        EXPECT_EQ(written(red, true), "FF0000FF");
    }
}

TEST_F(HexadecimalStringTest, HasTwoUpperCaseDigitsForEachByte) {
    EXPECT_EQ(written(calibrated(10.5 / 255, 171.5 / 255, 0, 205.5 / 255), true), "0AAB00CD");
    EXPECT_EQ(written(calibrated(0, 0, 0, 0), true), "00000000");
}

TEST_F(HexadecimalStringTest, ComponentsAreCutAndNotRounded) {
    EXPECT_EQ(written(calibrated(0.999, 1, 0.5), false), "FEFF7F");
    EXPECT_EQ(digits(254.999999 / 255), "FE");
    EXPECT_EQ(digits(0.999999 / 255), "00");
    EXPECT_EQ(digits(-0.999999 / 255), "00");
}

TEST_F(HexadecimalStringTest, GrowsWithWhatLiesOutside) {
    const NSColor color = OwnColor::make(
        {.space = NSColorSpace::genericRGBColorSpace(), .red = 1.2, .green = -0.1, .blue = 1, .alpha = 1.2});
    EXPECT_EQ(written(color, false), "132FFFFFFE7FF");
    EXPECT_EQ(written(color, true), "132FFFFFFE7FF132");
    EXPECT_EQ(digits(CGFloat(256) / 255), "100");
    EXPECT_EQ(digits(65536.5 / 255), "10000");
    EXPECT_EQ(digits(-1.5 / 255), "FFFFFFFF");
}

TEST_F(HexadecimalStringTest, GrowsWithAlphaOnlyWhereItIsWanted) {
    // The platform's own colours of a colour space keep what lies outside.
    const CGFloat components[] = {1, 0.5, 0, 2};
    const NSColor color =
        NSColor::colorWithColorSpace_components_count(NSColorSpace::genericRGBColorSpace(), components, 4);
    EXPECT_EQ(written(color, false), "FF7F00");
    EXPECT_EQ(written(color, true), color.alphaComponent() > 1 ? "FF7F001FE" : "FF7F00FF");
}

TEST_F(HexadecimalStringTest, WhatNoIntegerHoldsBecomesTheNearest) {
    using Limits = std::numeric_limits<CGFloat>;
    EXPECT_EQ(digits(2147483646.5 / 255), "7FFFFFFE");
    EXPECT_EQ(digits(2147483648.0 / 255), "7FFFFFFF");
    EXPECT_EQ(digits(1e300), "7FFFFFFF");
    EXPECT_EQ(digits(Limits::infinity()), "7FFFFFFF");
    EXPECT_EQ(digits(-2147483647.5 / 255), "80000001");
    EXPECT_EQ(digits(-1e300), "80000000");
    EXPECT_EQ(digits(-Limits::infinity()), "80000000");
    EXPECT_EQ(digits(Limits::quiet_NaN()), "00");
}

TEST_F(HexadecimalStringTest, IsWhatTheFormatWrites) {
    std::uint32_t random = 1;
    for (int round = 0; round < 2000; ++round) {
        random = random * 1664525 + 1013904223;
        const int byte = static_cast<std::int32_t>(random) >> (random % 31);
        const CGFloat component = (byte + (byte < 0 ? -0.5 : 0.5)) / 255;
        EXPECT_EQ(digits(component), text(NSString::stringWithFormat("%02X"_ns, byte)));
    }
}

TEST_F(HexadecimalStringTest, AsksForAlphaOnlyWhereItIsWanted) {
    const NSColor color = OwnColor::make({.space = NSColorSpace::genericRGBColorSpace()});
    EXPECT_EQ(written(color, false), "000000");
    EXPECT_EQ(OwnColor::asked.find("alphaComponent"), std::string::npos);
    EXPECT_EQ(written(color, true), "00000000");
    EXPECT_TRUE(OwnColor::asked.ends_with("redComponent greenComponent blueComponent alphaComponent "));
}

TEST_F(HexadecimalStringTest, IsAutoreleased) {
    const NSColor color = calibrated(0.1, 0.2, 0.3);
    EXPECT_EQ(ownedReferencesOfNew([&] { return tessarin_hexadecimalRGBStringWithAlpha(color, true); }), 0);
}

// ---- Hexadecimal strings, read

class HexadecimalColorTest : public HexadecimalStringTest {
protected:
    static NSColor read(std::string_view string) {
        return tessarin_colorWithHexadecimalRGBAString(NSString(string));
    }
    static CGFloat component(int byte) { return static_cast<CGFloat>(static_cast<float>(byte) / 255.0F); }
};

TEST_F(HexadecimalColorTest, OfEightDigits) {
    EXPECT_EQ(rgbOf(read("FF0000FF")), (Components{1, 0, 0, 1}));
    EXPECT_EQ(rgbOf(read("0a7fB0cD")),
              (Components{component(0x0A), component(0x7F), component(0xB0), component(0xCD)}));
    EXPECT_TRUE(read("FF0000FF").colorSpace().isEqual(NSColorSpace::genericRGBColorSpace()));
}

TEST_F(HexadecimalColorTest, OfSixDigitsIsTakenForTheLastSix) {
    EXPECT_EQ(rgbOf(read("FF0000")), (Components{0, 1, 0, 0}));
}

TEST_F(HexadecimalColorTest, MayHaveAPrefix) {
    EXPECT_EQ(rgbOf(read("0xFF0000FF")), (Components{1, 0, 0, 1}));
    EXPECT_EQ(rgbOf(read("0XFF0000FF")), (Components{1, 0, 0, 1}));
}

TEST_F(HexadecimalColorTest, MayHaveWhiteSpaceBeforeAndAnythingBehind) {
    EXPECT_EQ(rgbOf(read(" \n\tFF0000FF")), (Components{1, 0, 0, 1}));
    EXPECT_EQ(rgbOf(read("FF0000FF ;")), (Components{1, 0, 0, 1}));
    EXPECT_EQ(rgbOf(read("FF 0000FF")), (Components{0, 0, 0, 1}));
}

TEST_F(HexadecimalColorTest, OfWhatIsNoNumberIsTransparentBlack) {
    for (const char* const string : {"", " ", "#FF0000FF", "-1", "+FF0000FF", "red", "0x", "xFF0000FF"})
        EXPECT_EQ(rgbOf(read(string)), (Components{0, 0, 0, 0})) << string;
}

TEST_F(HexadecimalColorTest, OfTooManyDigitsIsOpaqueWhite) {
    for (const char* const string : {"1FF0000FF", "FF0000FF0", "0x100000000"})
        EXPECT_EQ(rgbOf(read(string)), (Components{1, 1, 1, 1})) << string;
    EXPECT_EQ(rgbOf(read("000000FF0000FF")), (Components{1, 0, 0, 1}));
}

TEST_F(HexadecimalColorTest, OfAnyNumberOfDigits) {
    std::uint32_t number = 0;
    std::string string;
    for (const char digit : {'9', 'a', 'F', '0', 'B', '5', 'c', 'E'}) {
        string += digit;
        number = number << 4 | static_cast<std::uint32_t>(std::stoi(std::string(1, digit), nullptr, 16));
        const Components expected{
            component(static_cast<int>(number >> 24)), component(static_cast<int>(number >> 16 & 0xFF)),
            component(static_cast<int>(number >> 8 & 0xFF)), component(static_cast<int>(number & 0xFF))};
        EXPECT_EQ(rgbOf(read(string)), expected) << string;
        EXPECT_EQ(rgbOf(read("0" + string)), expected) << string;
        EXPECT_EQ(rgbOf(read(string + "g")), expected) << string;
        // A character beyond ASCII or Latin-1 ends the number as any other does.
        EXPECT_EQ(rgbOf(read(string + "\u00E9")), expected) << string;
        EXPECT_EQ(rgbOf(read(string + "\uFF11")), expected) << string;
    }
}

TEST_F(HexadecimalColorTest, EndsBeforeTheFirstCharacterThatIsNoDigit) {
    for (const char other : {'/', ':', '@', 'G', '`', 'g', 'x', '.'}) {
        EXPECT_EQ(rgbOf(read(std::string("FF") + other + "0000F")), (Components{0, 0, 0, 1})) << other;
        EXPECT_EQ(rgbOf(read(other + std::string("FF0000F"))), (Components{0, 0, 0, 0})) << other;
    }
}

TEST_F(HexadecimalColorTest, OfNilIsNil) {
    EXPECT_FALSE(tessarin_colorWithHexadecimalRGBAString(NSString()));
    EXPECT_FALSE(tessarin_colorWithHexadecimalRGBAString(OwnColor::definedClass(), NSString()));
}

TEST_F(HexadecimalColorTest, OfAStringOfAnyClass) {
    const NSString own = StringSubclass::make(StringSubclass::classObject(), "FF0000FF"_ns);
    EXPECT_EQ(rgbOf(tessarin_colorWithHexadecimalRGBAString(own)), (Components{1, 0, 0, 1}));
    const Retained<NSMutableString> changing = adopt(NSMutableString::alloc().initWithString("00FF00FF"_ns));
    EXPECT_EQ(rgbOf(tessarin_colorWithHexadecimalRGBAString(changing)), (Components{0, 1, 0, 1}));
    EXPECT_EQ(rgbOf(tessarin_colorWithHexadecimalRGBAString(u"0000FFFF\u2026"_ns)), (Components{0, 0, 1, 1}));
}

TEST_F(HexadecimalColorTest, IsMadeByTheReceivingClass) {
    const Class own = OwnColor::definedClass();
    EXPECT_TRUE(tessarin_colorWithHexadecimalRGBAString(own, "01020304"_ns).isMemberOfClass(own));
    EXPECT_EQ(OwnColor::madeOf, (Components{component(1), component(2), component(3), component(4)}));
    EXPECT_TRUE(tessarin_colorWithHexadecimalRGBAString<OwnColor>("FF"_ns).isMemberOfClass(own));
    EXPECT_EQ(OwnColor::madeOf, (Components{0, 0, 0, 1}));
}

TEST_F(HexadecimalColorTest, EveryByteIsReadAsItWasWritten) {
    for (int byte = 0; byte < 256; ++byte) {
        const CGFloat each = component(byte);
        const NSColor back = tessarin_colorWithHexadecimalRGBAString(tessarin_hexadecimalRGBStringWithAlpha(
            calibrated(each, component(255 - byte), each, each), true));
        EXPECT_EQ(rgbOf(back), (Components{each, component(255 - byte), each, each}));
    }
}

// A sample; all of them are read and written by the long tests.
TEST_F(HexadecimalColorTest, TriplesAreWrittenAsTheyWereRead) {
    for (std::uint32_t triple = 0; triple < 1u << 24; triple += 4099) {
        const AutoreleasePool pool;
        const std::string string = text(NSString::stringWithFormat("%08X"_ns, triple << 8 | 0xFF));
        EXPECT_EQ(written(read(string), true), string);
    }
}

TEST_F(HexadecimalColorTest, IsAutoreleased) {
    EXPECT_EQ(ownedReferencesOfNew([] { return tessarin_colorWithHexadecimalRGBAString("FF"_ns); }), 0);
}

} // namespace
} // namespace tessarin::testing
