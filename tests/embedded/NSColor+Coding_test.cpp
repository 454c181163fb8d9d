// What colours are in keyed archives that others have written, and what is refused.
#include "Colors.h"
#include "HandMadeArchives.h"

namespace tessarin::testing {
namespace {

class NSColorCodingTest : public PlatformTest {
protected:
    static NSData bytes(std::string_view text) {
        return NSData::dataWithBytes_length(text.data(), text.size());
    }
    // An archive of a colour with those entries; object 4 is a colour space of that number.
    template <class... Entries>
    static NSData archive(int spaceNumber, const Entries&... entries) {
        return dataOf(archiveOf(NSArray::arrayOf(
            dictionaryOf("$class"_ns, reference(2), entries...), classNamed("NSColor"_ns), "Acme"_ns,
            dictionaryOf("$class"_ns, reference(5), "NSID"_ns, number(spaceNumber)),
            classNamed("NSColorSpace"_ns))));
    }
    static NSData rgbArchive(std::string_view components) {
        return archive(1, "NSColorSpace"_ns, number(1), "NSRGB"_ns, bytes(components));
    }
    static NSColor read(NSData archive) { return NSKeyedUnarchiver::unarchiveObjectWithData(archive); }
    static void expectRefused(NSData archive) {
        EXPECT_TRUE(raisedBy(archive).starts_with("NSInvalidUnarchiveOperationException: "))
            << raisedBy(archive);
    }
};

TEST_F(NSColorCodingTest, ReadsTheTextOfNumbersAsItComes) {
    using namespace std::string_view_literals;
    for (const std::string_view components :
         {"1 0.5 0.25"sv, "1 0.5 0.25\0"sv, " 1  0.5 0.25 1 \0junk"sv, "1.0000 5e-1 0.2500000000 1"sv})
        EXPECT_EQ(rgbOf(read(rgbArchive(components))), (Components{1, 0.5, 0.25, 1})) << components;
}

TEST_F(NSColorCodingTest, KeepsWhatLiesOutside) {
    EXPECT_EQ(rgbOf(read(rgbArchive("1.2 -0.1 0 2"))), (Components{1.2, -0.1, 0, 2}));
}

TEST_F(NSColorCodingTest, ReadsGNUstepsSpellingOfInk) {
    const NSColor color = read(archive(1, "NSColorSpace"_ns, number(5), "NSCYMK"_ns, bytes("0.5 0 1 0.25")));
    EXPECT_EQ(text(color.description()), "NSDeviceCMYKColorSpace 0.5 0 1 0.25 1");
}

TEST_F(NSColorCodingTest, ASpaceOfItsOwnComesWithAllComponents) {
    const NSColor color =
        read(archive(4, "NSColorSpace"_ns, number(1), "NSRGB"_ns, bytes("0 0 0"), "NSCustomColorSpace"_ns,
                     reference(4), "NSComponents"_ns, bytes("1 0.5 0.25 1")));
    EXPECT_EQ(text(color.description()), "NSDeviceRGBColorSpace 1 0.5 0.25 1");
}

TEST_F(NSColorCodingTest, WhatIsMeantForThoseWhoDoNotKnowTheSpaceIsRead) {
    for (const int unknownSpace : {7, 0, -1, 2'000'000'000}) {
        const NSColor color =
            read(archive(unknownSpace, "NSColorSpace"_ns, number(1), "NSRGB"_ns, bytes("1 0.5 0.25"),
                         "NSCustomColorSpace"_ns, reference(4), "NSComponents"_ns, bytes("0.9 0.4 0.2 1")));
        EXPECT_EQ(text(color.description()), "NSCalibratedRGBColorSpace 1 0.5 0.25 1");
    }
}

TEST_F(NSColorCodingTest, WhatIsNoColourIsRefused) {
    for (const char* const components :
         {"", " ", "1", "1 0.5", "a b c", "1 0.5 x", "1 0.5 0.25 1 1", "1,0,0"})
        expectRefused(rgbArchive(components));
    expectRefused(archive(1, "NSColorSpace"_ns, number(1)));
    expectRefused(archive(1, "NSColorSpace"_ns, number(3), "NSRGB"_ns, bytes("1 0 0")));
    for (const int kind : {0, 7, 10, -1})
        expectRefused(archive(1, "NSColorSpace"_ns, number(kind), "NSRGB"_ns, bytes("1 0 0")));
    expectRefused(archive(3, "NSColorSpace"_ns, number(1), "NSCustomColorSpace"_ns, reference(4),
                          "NSComponents"_ns, bytes("1 0 0")));
    expectRefused(archive(1, "NSColorSpace"_ns, number(6), "NSColorName"_ns, reference(3)));
    expectRefused(archive(1, "NSColorSpace"_ns, number(6), "NSColorName"_ns, reference(4), "NSCatalogName"_ns,
                          reference(3)));
}

TEST_F(NSColorCodingTest, ReadsNamedColours) {
    const NSColor color = read(archive(1, "NSColorSpace"_ns, number(6), "NSColorName"_ns, reference(3),
                                       "NSCatalogName"_ns, reference(3)));
    EXPECT_EQ(text(color.description()), "Catalog color: Acme Acme");
}

TEST_F(NSColorCodingTest, APictureCannotBeArchived) {
    EXPECT_THROWS_NAMED(NSKeyedArchiver::archivedDataWithRootObject(patternColor()),
                        "NSInvalidArchiveOperationException");
}

TEST_F(NSColorCodingTest, NeedsKeys) {
    const Retained<NSCoder> coder = adopt(NSCoder(send<NSObject>(NSCoder::alloc(), "init"_sel)));
    EXPECT_THROWS_NAMED((send<void>(calibrated(1, 0, 0), "encodeWithCoder:"_sel, coder), 0),
                        "NSInvalidArgumentException");
    EXPECT_THROWS_NAMED(send<id>(NSColor::alloc(), "initWithCoder:"_sel, coder),
                        "NSInvalidArgumentException");
}

} // namespace
} // namespace tessarin::testing
