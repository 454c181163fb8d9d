#include "Colors.h"
#include "KeyedCoding.h"

namespace tessarin::testing {
namespace {

class NSColorTest : public PlatformTest {
protected:
    static NSColor inSpace(NSColorSpace space, const Components& components) {
        return NSColor::colorWithColorSpace_components_count(space, components.data(),
                                                             static_cast<NSInteger>(components.size()));
    }
    static void expectNear(const Components& found, const Components& expected) {
        ASSERT_EQ(found.size(), expected.size());
        for (std::size_t index = 0; index < found.size(); ++index)
            EXPECT_NEAR(found[index], expected[index], 1e-12) << "component " << index;
    }

    const NSColor named_ = NSColor::colorWithCatalogName_colorName("Acme"_ns, "accent"_ns);
    const NSColor pattern_ = patternColor();
    const NSColor gray_ = NSColor::colorWithCalibratedWhite_alpha(0.25, 0.5);
    const NSColor cmyk_ =
        NSColor::colorWithDeviceCyan_magenta_yellow_black_alpha(0.25, 0.5, 0.75, 0.125, 0.5);
};

// ---- Making

TEST_F(NSColorTest, HandsOutTheComponentsThatItWasMadeOf) {
    EXPECT_EQ(rgbOf(calibrated(1, 0.5, 0.25, 0.75)), (Components{1, 0.5, 0.25, 0.75}));
    EXPECT_EQ(rgbOf(NSColor::colorWithDeviceRed_green_blue_alpha(1, 0.5, 0.25, 0.75)),
              (Components{1, 0.5, 0.25, 0.75}));
    EXPECT_EQ(gray_.whiteComponent(), 0.25);
    EXPECT_EQ(gray_.alphaComponent(), 0.5);
    EXPECT_EQ(cmyk_.cyanComponent(), 0.25);
    EXPECT_EQ(cmyk_.magentaComponent(), 0.5);
    EXPECT_EQ(cmyk_.yellowComponent(), 0.75);
    EXPECT_EQ(cmyk_.blackComponent(), 0.125);
    EXPECT_EQ(cmyk_.alphaComponent(), 0.5);
}

TEST_F(NSColorTest, CutsWhatLiesOutside) {
    EXPECT_EQ(rgbOf(calibrated(2, -1, 1.0001, 7)), (Components{1, 0, 1, 1}));
    EXPECT_EQ(rgbOf(NSColor::colorWithDeviceRed_green_blue_alpha(-2, 3, 0.5, -1)),
              (Components{0, 1, 0.5, 0}));
    const NSColor gray = NSColor::colorWithCalibratedWhite_alpha(3, -3);
    EXPECT_EQ(gray.whiteComponent(), 1);
    EXPECT_EQ(gray.alphaComponent(), 0);
    EXPECT_EQ(rgbOf(ofHSB(0.5, 7, 7, 7)), (Components{0, 1, 1, 1}));
    EXPECT_EQ(rgbOf(ofHSB(0.5, -7, 0.5, -7)), (Components{0.5, 0.5, 0.5, 0}));
}

TEST_F(NSColorTest, WhatIsNoNumberIsCutToZero) {
    EXPECT_EQ(rgbOf(calibrated(std::numeric_limits<CGFloat>::quiet_NaN(), 1, 1)), (Components{0, 1, 1, 1}));
}

TEST_F(NSColorTest, ByColourSpaceItTakesThatSpacesComponents) {
    const NSColor rgb = inSpace(NSColorSpace::genericRGBColorSpace(), {0.25, 0.5, 0.75, 0.5});
    EXPECT_EQ(rgbOf(rgb), (Components{0.25, 0.5, 0.75, 0.5}));
    EXPECT_TRUE(rgb.isEqual(calibrated(0.25, 0.5, 0.75, 0.5)));
    const NSColor gray = inSpace(NSColorSpace::genericGrayColorSpace(), {0.25, 0.5});
    EXPECT_TRUE(gray.isEqual(gray_));
    const NSColor cmyk = inSpace(NSColorSpace::deviceCMYKColorSpace(), {0.25, 0.5, 0.75, 0.125, 0.5});
    EXPECT_TRUE(cmyk.isEqual(cmyk_));
}

TEST_F(NSColorTest, ByColourSpaceItKeepsWhatLiesOutside) {
    EXPECT_EQ(rgbOf(inSpace(NSColorSpace::genericRGBColorSpace(), {1.2, -0.1, 0.5, 2})),
              (Components{1.2, -0.1, 0.5, 2}));
}

TEST_F(NSColorTest, ByColourSpaceItNeedsThatSpacesNumberOfComponents) {
    EXPECT_FALSE(inSpace(NSColorSpace::genericRGBColorSpace(), {1, 1, 1}));
    EXPECT_FALSE(inSpace(NSColorSpace::genericRGBColorSpace(), {1, 1, 1, 1, 1}));
    EXPECT_FALSE(inSpace(NSColorSpace::genericGrayColorSpace(), {1}));
    EXPECT_FALSE(inSpace(NSColorSpace::genericCMYKColorSpace(), {1, 1, 1, 1}));
    EXPECT_FALSE(inSpace(nil, {1, 1, 1, 1}));
}

TEST_F(NSColorTest, IsAutoreleased) {
    EXPECT_EQ(ownedReferencesOfNew([] { return calibrated(0.1, 0.2, 0.3); }), 0);
    EXPECT_EQ(ownedReferencesOfNew([] { return ofHSB(0.1, 0.2, 0.3); }), 0);
    EXPECT_EQ(
        ownedReferencesOfNew([&] { return gray_.colorUsingColorSpaceName(NSCalibratedRGBColorSpace()); }), 0);
}

// ---- Spaces

TEST_F(NSColorTest, ACalibratedColourIsInTheGenericSpace) {
    EXPECT_TRUE(calibrated(1, 0, 0).colorSpace().isEqual(NSColorSpace::genericRGBColorSpace()));
    EXPECT_TRUE(ofHSB(0.5, 1, 1).colorSpace().isEqual(NSColorSpace::genericRGBColorSpace()));
    EXPECT_TRUE(gray_.colorSpace().isEqual(NSColorSpace::genericGrayColorSpace()));
}

TEST_F(NSColorTest, ADeviceColourIsInTheDeviceSpace) {
    EXPECT_TRUE(NSColor::colorWithDeviceRed_green_blue_alpha(1, 0, 0, 1)
                    .colorSpace()
                    .isEqual(NSColorSpace::deviceRGBColorSpace()));
    EXPECT_TRUE(NSColor::colorWithDeviceHue_saturation_brightness_alpha(1, 0, 0, 1)
                    .colorSpace()
                    .isEqual(NSColorSpace::deviceRGBColorSpace()));
    EXPECT_TRUE(
        NSColor::colorWithDeviceWhite_alpha(1, 1).colorSpace().isEqual(NSColorSpace::deviceGrayColorSpace()));
    EXPECT_TRUE(cmyk_.colorSpace().isEqual(NSColorSpace::deviceCMYKColorSpace()));
}

TEST_F(NSColorTest, NamesItsSpace) {
    EXPECT_EQ(text(calibrated(1, 0, 0).colorSpaceName()), "NSCalibratedRGBColorSpace");
    EXPECT_EQ(text(NSColor::colorWithDeviceRed_green_blue_alpha(1, 0, 0, 1).colorSpaceName()),
              "NSDeviceRGBColorSpace");
    EXPECT_EQ(text(gray_.colorSpaceName()), "NSCalibratedWhiteColorSpace");
    EXPECT_EQ(text(NSColor::colorWithDeviceWhite_alpha(1, 1).colorSpaceName()), "NSDeviceWhiteColorSpace");
    EXPECT_EQ(text(cmyk_.colorSpaceName()), "NSDeviceCMYKColorSpace");
    EXPECT_EQ(text(named_.colorSpaceName()), "NSNamedColorSpace");
    EXPECT_EQ(text(pattern_.colorSpaceName()), "NSPatternColorSpace");
}

TEST_F(NSColorTest, ANamedOrPatternColourHasNoSpace) {
    EXPECT_THROWS_NAMED(named_.colorSpace(), "NSInvalidArgumentException");
    EXPECT_THROWS_NAMED(pattern_.colorSpace(), "NSInvalidArgumentException");
}

TEST_F(NSColorTest, TheReasonNamesOperationAndColour) {
    std::string reason;
    attempt([&] { static_cast<void>(named_.colorSpace()); },
            [&](NSException exception) { reason = text(exception.reason()); });
    EXPECT_EQ(reason, "*** -colorSpace not valid for the NSColor Catalog color: Acme accent; need to "
                      "first convert colorspace.");
    attempt([&] { static_cast<void>(gray_.redComponent()); },
            [&](NSException exception) { reason = text(exception.reason()); });
    EXPECT_EQ(reason, "*** -getRed:green:blue:alpha: not valid for the NSColor NSCalibratedWhiteColorSpace "
                      "0.25 0.5; need to first convert colorspace.");
    attempt([&] { static_cast<void>(gray_.hueComponent()); },
            [&](NSException exception) { reason = text(exception.reason()); });
    EXPECT_TRUE(reason.starts_with("*** -getHue:saturation:brightness:alpha: not valid")) << reason;
}

TEST_F(NSColorTest, AskingForAComponentOfAnotherSpaceRaises) {
    const NSColor rgb = calibrated(1, 0, 0);
    for (const NSColor color : {gray_, cmyk_}) {
        EXPECT_THROWS_NAMED(color.redComponent(), "NSInvalidArgumentException");
        EXPECT_THROWS_NAMED(color.greenComponent(), "NSInvalidArgumentException");
        EXPECT_THROWS_NAMED(color.blueComponent(), "NSInvalidArgumentException");
        EXPECT_THROWS_NAMED(color.hueComponent(), "NSInvalidArgumentException");
        EXPECT_THROWS_NAMED(color.saturationComponent(), "NSInvalidArgumentException");
        EXPECT_THROWS_NAMED(color.brightnessComponent(), "NSInvalidArgumentException");
    }
    for (const NSColor color : {rgb, cmyk_})
        EXPECT_THROWS_NAMED(color.whiteComponent(), "NSInvalidArgumentException");
    for (const NSColor color : {rgb, gray_}) {
        EXPECT_THROWS_NAMED(color.cyanComponent(), "NSInvalidArgumentException");
        EXPECT_THROWS_NAMED(color.magentaComponent(), "NSInvalidArgumentException");
        EXPECT_THROWS_NAMED(color.yellowComponent(), "NSInvalidArgumentException");
        EXPECT_THROWS_NAMED(color.blackComponent(), "NSInvalidArgumentException");
    }
    EXPECT_THROWS_NAMED(named_.redComponent(), "NSInvalidArgumentException");
    EXPECT_THROWS_NAMED(pattern_.redComponent(), "NSInvalidArgumentException");
}

TEST_F(NSColorTest, EveryColourHasAlpha) {
    EXPECT_EQ(named_.alphaComponent(), 1);
    EXPECT_EQ(pattern_.alphaComponent(), 1);
}

// ---- Conversion

TEST_F(NSColorTest, ConvertedToItsOwnSpaceItIsItself) {
    const NSColor rgb = calibrated(1, 0.5, 0.25);
    EXPECT_EQ(rgb.colorUsingColorSpaceName(NSCalibratedRGBColorSpace()), rgb);
    EXPECT_EQ(gray_.colorUsingColorSpaceName(NSCalibratedWhiteColorSpace()), gray_);
    EXPECT_EQ(cmyk_.colorUsingColorSpaceName(NSString(std::string("NSDeviceCMYKColorSpace"))), cmyk_);
    EXPECT_EQ(named_.colorUsingColorSpaceName(NSNamedColorSpace()), named_);
}

TEST_F(NSColorTest, RGBStaysAsItIs) {
    const NSColor device = NSColor::colorWithDeviceRed_green_blue_alpha(1, 0.5, 0.25, 0.75);
    const NSColor converted = device.colorUsingColorSpaceName(NSCalibratedRGBColorSpace());
    EXPECT_TRUE(converted.isEqual(calibrated(1, 0.5, 0.25, 0.75)));
    EXPECT_TRUE(converted.colorUsingColorSpaceName(NSDeviceRGBColorSpace()).isEqual(device));
}

TEST_F(NSColorTest, AGreyIsTheSameRedGreenAndBlue) {
    for (const CGFloat white : {0.0, 0.1, 0.25, 0.5, 1.0}) {
        for (const NSColor gray : {NSColor::colorWithCalibratedWhite_alpha(white, 0.5),
                                   NSColor::colorWithDeviceWhite_alpha(white, 0.5)}) {
            const NSColor rgb = gray.colorUsingColorSpaceName(NSCalibratedRGBColorSpace());
            EXPECT_EQ(rgbOf(rgb), (Components{white, white, white, 0.5}));
            const NSColor back = rgb.colorUsingColorSpaceName(NSCalibratedWhiteColorSpace());
            EXPECT_NEAR(back.whiteComponent(), white, 1e-15);
            EXPECT_EQ(back.alphaComponent(), 0.5);
        }
    }
}

TEST_F(NSColorTest, InkIsTakenFromWhite) {
    const NSColor rgb = cmyk_.colorUsingColorSpaceName(NSCalibratedRGBColorSpace());
    EXPECT_EQ(rgbOf(rgb), (Components{0.625, 0.375, 0.125, 0.5}));
    const NSColor black = NSColor::colorWithDeviceCyan_magenta_yellow_black_alpha(0.5, 1, 0, 0.75, 1);
    EXPECT_EQ(rgbOf(black.colorUsingColorSpaceName(NSDeviceRGBColorSpace())), (Components{0, 0, 0.25, 1}));
    const NSColor ink = calibrated(1, 0.5, 0.25).colorUsingColorSpaceName(NSDeviceCMYKColorSpace());
    EXPECT_EQ(rgbOf(ink.colorUsingColorSpaceName(NSCalibratedRGBColorSpace())),
              (Components{1, 0.5, 0.25, 1}));
}

TEST_F(NSColorTest, NilWhereItCannotBeConverted) {
    EXPECT_FALSE(named_.colorUsingColorSpaceName(NSCalibratedRGBColorSpace()));
    EXPECT_FALSE(calibrated(1, 0, 0).colorUsingColorSpaceName("NoColorSpace"_ns));
    EXPECT_FALSE(calibrated(1, 0, 0).colorUsingColorSpaceName(NSNamedColorSpace()));
}

TEST_F(NSColorTest, NilForAPatternConverted) {
    EXPECT_FALSE(pattern_.colorUsingColorSpaceName(NSCalibratedRGBColorSpace()));
}

// ---- Hue, saturation, brightness

TEST_F(NSColorTest, HSBOfRGB) {
    struct Row {
        Components rgb, hsb;
    };
    const Row rows[] = {
        {{0, 1, 0}, {1.0 / 3, 1, 1, 1}},
        {{0, 0, 1}, {2.0 / 3, 1, 1, 1}},
        {{1, 1, 0}, {1.0 / 6, 1, 1, 1}},
        {{0, 1, 1}, {1.0 / 2, 1, 1, 1}},
        {{1, 0, 1}, {5.0 / 6, 1, 1, 1}},
        {{1, 0, 0.5}, {11.0 / 12, 1, 1, 1}},
        {{0.5, 0.5, 0.5}, {0, 0, 0.5, 1}},
        {{0, 0, 0}, {0, 0, 0, 1}},
        {{1, 1, 1}, {0, 0, 1, 1}},
        {{0.5, 0.25, 0}, {1.0 / 12, 1, 0.5, 1}},
        {{0.25, 0.5, 0.75}, {7.0 / 12, 2.0 / 3, 0.75, 1}},
    };
    for (const Row& row : rows) expectNear(hsbOf(calibrated(row.rgb[0], row.rgb[1], row.rgb[2])), row.hsb);
}

TEST_F(NSColorTest, PureRedHasTheHueOne) {
    EXPECT_EQ(calibrated(1, 0, 0).hueComponent(), 1);
    EXPECT_EQ(calibrated(0.5, 0.25, 0.25).hueComponent(), 1);
}

TEST_F(NSColorTest, RGBOfHSB) {
    struct Row {
        Components hsb, rgb;
    };
    const Row rows[] = {
        {{0, 1, 1}, {1, 0, 0, 1}},
        {{1.0 / 3, 1, 1}, {0, 1, 0, 1}},
        {{2.0 / 3, 1, 1}, {0, 0, 1, 1}},
        {{1, 1, 1}, {1, 0, 0, 1}},
        {{1.0 / 12, 1, 0.5}, {0.5, 0.25, 0, 1}},
        {{0.25, 0.5, 0.5}, {0.375, 0.5, 0.25, 1}},
        {{11.0 / 12, 1, 1}, {1, 0, 0.5, 1}},
        {{0.75, 0.5, 1}, {0.75, 0.5, 1, 1}},
        {{0.4, 0, 0.5}, {0.5, 0.5, 0.5, 1}},
    };
    for (const Row& row : rows) expectNear(rgbOf(ofHSB(row.hsb[0], row.hsb[1], row.hsb[2])), row.rgb);
}

TEST_F(NSColorTest, KeepsTheHSBThatItWasMadeOf) {
    EXPECT_EQ(hsbOf(ofHSB(0.3, 0, 0.5, 0.25)), (Components{0.3, 0, 0.5, 0.25}));
    EXPECT_EQ(hsbOf(ofHSB(0.3, 0.7, 0)), (Components{0.3, 0.7, 0, 1}));
    EXPECT_EQ(hsbOf(ofHSB(1, 1, 1)), (Components{1, 1, 1, 1}));
    EXPECT_EQ(hsbOf(ofHSB(0, 1, 1)), (Components{0, 1, 1, 1}));
}

// ---- Comparing, copying, archiving

TEST_F(NSColorTest, EqualsAColourOfTheSameComponentsInTheSameSpace) {
    const NSColor color = calibrated(1, 0.5, 0.25, 0.75);
    EXPECT_TRUE(color.isEqual(calibrated(1, 0.5, 0.25, 0.75)));
    EXPECT_EQ(color.hash(), calibrated(1, 0.5, 0.25, 0.75).hash());
    EXPECT_FALSE(color.isEqual(calibrated(1, 0.5, 0.25, 0.5)));
    EXPECT_FALSE(color.isEqual(calibrated(1, 0.5, 0.5, 0.75)));
    EXPECT_FALSE(color.isEqual(NSColor::colorWithDeviceRed_green_blue_alpha(1, 0.5, 0.25, 0.75)));
    EXPECT_FALSE(color.isEqual(nil));
    EXPECT_FALSE(color.isEqual("red"_ns));
    EXPECT_FALSE(color.isEqual(named_));
    EXPECT_FALSE(named_.isEqual(color));
    EXPECT_FALSE(pattern_.isEqual(named_));
    EXPECT_TRUE(ofHSB(1.0 / 3, 1, 1).isEqual(calibrated(0, 1, 0)));
}

TEST_F(NSColorTest, AZeroOfEitherSignIsTheSame) {
    EXPECT_TRUE(calibrated(0, 0, 0).isEqual(calibrated(-0.0, 0, 0)));
    EXPECT_EQ(calibrated(0, 0, 0).hash(), calibrated(-0.0, 0, 0).hash());
}

TEST_F(NSColorTest, EqualNamesAreEqualColours) {
    const NSColor same = NSColor::colorWithCatalogName_colorName("Acme"_ns, "accent"_ns);
    EXPECT_TRUE(named_.isEqual(same));
    EXPECT_EQ(named_.hash(), same.hash());
    EXPECT_FALSE(named_.isEqual(NSColor::colorWithCatalogName_colorName("Acme"_ns, "text"_ns)));
    EXPECT_FALSE(named_.isEqual(NSColor::colorWithCatalogName_colorName("Other"_ns, "accent"_ns)));
}

TEST_F(NSColorTest, ACopyIsTheColourItself) {
    const NSColor color = calibrated(1, 0.5, 0.25);
    EXPECT_TRUE(color.conformsToProtocol("NSCopying"_protocol));
    const Retained<NSColor> copy = adopt(as<NSColor>(color.copy()));
    EXPECT_EQ(copy, color);
}

TEST_F(NSColorTest, ShowsSpaceAndComponents) {
    EXPECT_EQ(text(calibrated(1, 0.5, 0, 0.75).description()), "NSCalibratedRGBColorSpace 1 0.5 0 0.75");
    EXPECT_EQ(text(calibrated(1.0 / 3, 0, 1e-7).description()),
              "NSCalibratedRGBColorSpace 0.333333 0 1e-07 1");
    EXPECT_EQ(text(gray_.description()), "NSCalibratedWhiteColorSpace 0.25 0.5");
    EXPECT_EQ(text(named_.description()), "Catalog color: Acme accent");
    EXPECT_EQ(text(inSpace(NSColorSpace::genericCMYKColorSpace(), {0, 0.5, 1, 0, 1}).description()),
              "Generic CMYK colorspace 0 0.5 1 0 1");
}

TEST_F(NSColorTest, ComesBackFromArchives) {
    for (const NSColor color : {calibrated(1, 0.5, 0.25, 0.75), calibrated(0, 1, 0), gray_,
                                NSColor::colorWithDeviceRed_green_blue_alpha(0.125, 0.5, 0.25, 1),
                                NSColor::colorWithDeviceWhite_alpha(0.75, 1)})
        expectKeyedCoding(color);
}

TEST_F(NSColorTest, InkComesBackFromArchives) { expectKeyedCoding(cmyk_); }

TEST_F(NSColorTest, NamedColoursComeBackFromArchives) { expectKeyedCoding(named_); }

TEST_F(NSColorTest, ComponentsComeBackToTheLastBit) {
    expectKeyedCoding(calibrated(1.0 / 3, 0.1, 2.0 / 7, 1.0 / 255));
    expectKeyedCoding(inSpace(NSColorSpace::deviceRGBColorSpace(), {1.2, -0.1, 1e-300, 3}));
}

TEST_F(NSColorTest, ASpaceWithoutANameComesBackFromArchives) {
    const NSColor color = inSpace(NSColorSpace::genericCMYKColorSpace(), {0.25, 0.5, 0.75, 0.125, 1});
    expectKeyedCoding(color);
    EXPECT_FALSE(color.isEqual(inSpace(NSColorSpace::deviceCMYKColorSpace(), {0.25, 0.5, 0.75, 0.125, 1})));
}

TEST_F(NSColorTest, NilAnswersZeros) {
    const NSColor none;
    EXPECT_EQ(rgbOf(none), (Components{0, 0, 0, 0}));
    EXPECT_EQ(hsbOf(none), (Components{0, 0, 0, 0}));
    EXPECT_FALSE(none.colorSpace());
}

} // namespace
} // namespace tessarin::testing
