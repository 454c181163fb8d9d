// Sizes and durations as text. CTest runs the tests with LC_ALL=C, so that the decimal separator is ".".
#include "Environment.h"
#include "StringSubclass.h"

#include "TessarinFoundation/NSString+TessarinExtensions.h"

#include <clocale>
#include <cstdlib>
#include <fstream>
#include <limits>
#include <optional>
#include <sstream>

namespace tessarin::testing {
namespace {

constexpr UInt16 automatic = 65535;

// The size in the short form with a separator, unless it is told otherwise.
struct SizeForm {
    UInt16 unit = automatic;
    NSUInteger precision = 0;
    bool isLong = false;
    bool isSeparate = true;
};

NSString sizeString(Class receiver, NSNumber size, const SizeForm& form) {
    return tessarin_stringWithFileSize_ofUnit_forPrecision_longUnit_separateSuffix(
        receiver, size, form.unit, form.precision, form.isLong, form.isSeparate);
}

std::string sizeText(unsigned long long size, const SizeForm& form) {
    return text(sizeString(NSString::classObject(), NSNumber::numberWithUnsignedLongLong(size), form));
}

// The lines of a table, each split at its tabs; comments are left out.
std::vector<Texts> rowsOf(const std::string& name) {
    std::vector<Texts> rows;
    std::ifstream file(testFile(name));
    for (std::string line; std::getline(file, line);) {
        if (line.empty() || line.front() == '#') continue;
        Texts& row = rows.emplace_back();
        std::istringstream columns(line);
        for (std::string column; std::getline(columns, column, '\t');) row.push_back(column);
    }
    return rows;
}

// Lets the platform's number formatter answer nil while it exists.
class FailingNumberFormatter {
public:
    FailingNumberFormatter() {
        static const ExtensionGroup group{
            "NSNumberFormatter", "TessarinTests", {instanceMethod("stringFromNumber:", stringFromNumber)}};
        isFailing_ = true;
    }
    ~FailingNumberFormatter() { isFailing_ = false; }
    FailingNumberFormatter(const FailingNumberFormatter&) = delete;
    FailingNumberFormatter& operator=(const FailingNumberFormatter&) = delete;

private:
    static NSString stringFromNumber(NSObject self, SEL selector, NSNumber number) {
        return isFailing_ ? NSString() : detail::call<NSString>(original_, self, selector, number);
    }

    static inline bool isFailing_ = false;
    // Looked up before the group takes its place.
    static inline const Implementation original_ =
        runtime::lookUpInClass("NSNumberFormatter"_class.object(), "stringFromNumber:"_sel);
};

// ---- Sizes

class FileSizeTest : public PlatformTest {};

TEST_F(FileSizeTest, Examples) {
    EXPECT_EQ(sizeText(1536, {.precision = 1}), "1.5 kB");
    EXPECT_EQ(sizeText(1536, {.precision = 1, .isLong = true}), "1.5 kilobyte");
    EXPECT_EQ(sizeText(500, {.precision = 1, .isSeparate = false}), "500B");
    EXPECT_EQ(sizeText(500, {.precision = 1, .isLong = true}), "500 bytes");
    EXPECT_EQ(sizeText(0, {.precision = 1, .isLong = true}), "0 byte");
}

TEST_F(FileSizeTest, ZeroIsInBytes) { EXPECT_EQ(sizeText(0, {.isSeparate = false}), "0B"); }

TEST_F(FileSizeTest, OneWholeUnitIsShownInTheUnitBelow) {
    EXPECT_EQ(sizeText(1024, {}), "1024 B");
    EXPECT_EQ(sizeText(1025, {.precision = 2}), "1 kB");
    EXPECT_EQ(sizeText(1025, {.precision = 10}), "1.0009765625 kB");
    EXPECT_EQ(sizeText(1048576, {}), "1024 kB");
    EXPECT_EQ(sizeText(1048577, {}), "1 MB");
}

TEST_F(FileSizeTest, EveryUnitThatIsChosenByTheSize) {
    EXPECT_EQ(sizeText(3ull << 30, {}), "3 GB");
    EXPECT_EQ(sizeText(3ull << 40, {.isLong = true}), "3 terabytes");
    EXPECT_EQ(sizeText(3ull << 50, {}), "3 PB");
    EXPECT_EQ(sizeText(3ull << 60, {.isLong = true, .isSeparate = false}), "3exabytes");
}

TEST_F(FileSizeTest, TheLargestSizeIsSixteenExabytes) {
    // As a double it is 2 to the power 64.
    constexpr auto largest = std::numeric_limits<unsigned long long>::max();
    EXPECT_EQ(sizeText(largest, {.precision = 20}), "16 EB");
    EXPECT_EQ(sizeText(largest, {.unit = 0}), "18446744073709552000 B");
}

TEST_F(FileSizeTest, AUnitThatIsNamedIsTaken) {
    EXPECT_EQ(sizeText(1048576, {.unit = 2, .precision = 3}), "1 MB");
    EXPECT_EQ(sizeText(1048576, {.unit = 0, .precision = 3}), "1048576 B");
    EXPECT_EQ(sizeText(1536, {.unit = 2, .precision = 6}), "0.001465 MB");
    EXPECT_EQ(sizeText(1024, {.unit = 8, .precision = 24}), "0.000000000000000000000847 YB");
    EXPECT_EQ(sizeText(1, {.unit = 8, .precision = 3, .isLong = true}), "0 yottabyte");
}

TEST_F(FileSizeTest, UnitsBehindTheShortOnesHaveTheLongPrefixes) {
    EXPECT_EQ(sizeText(1, {.unit = 9}), "0 B");
    EXPECT_EQ(sizeText(1, {.unit = 10}), "0 kiloB");
    EXPECT_EQ(sizeText(1, {.unit = 17, .isSeparate = false}), "0yottaB");
}

TEST_F(FileSizeTest, AUnitWithoutPrefixRaisesTheArraysException) {
    for (const UInt16 unit : {UInt16{18}, UInt16{1000}, UInt16{65534}})
        EXPECT_THROWS_NAMED(sizeText(1, {.unit = unit}), "NSRangeException") << unit;
    for (const UInt16 unit : {UInt16{9}, UInt16{17}, UInt16{65534}})
        EXPECT_THROWS_NAMED(sizeText(1, {.unit = unit, .isLong = true}), "NSRangeException") << unit;
}

TEST_F(FileSizeTest, OneByteIsSaidOfWhatIsLessThanTwoBeforeItIsRounded) {
    EXPECT_EQ(sizeText(1536, {.precision = 1, .isLong = true}), "1.5 kilobyte");
    EXPECT_EQ(sizeText(2047, {.precision = 1, .isLong = true}), "2 kilobyte");
    EXPECT_EQ(sizeText(2048, {.precision = 1, .isLong = true}), "2 kilobytes");
    EXPECT_EQ(sizeText(1, {.isLong = true}), "1 byte");
    EXPECT_EQ(sizeText(2, {.isLong = true}), "2 bytes");
}

TEST_F(FileSizeTest, HalvesAreRoundedToEven) {
    EXPECT_EQ(sizeText(2560, {}), "2 kB");
    EXPECT_EQ(sizeText(3584, {}), "4 kB");
    EXPECT_EQ(sizeText(1280, {.precision = 1}), "1.2 kB");
    EXPECT_EQ(sizeText(1792, {.precision = 1}), "1.8 kB");
}

TEST_F(FileSizeTest, HugePrecisionsShowAllDigits) {
    for (const NSUInteger precision : {NSUInteger{10}, NSUInteger{400}, NSUInteger{2147483647}})
        EXPECT_EQ(sizeText(1025, {.precision = precision}), "1.0009765625 kB") << precision;
}

TEST_F(FileSizeTest, TheLargestPrecisionIsSixDigits) {
    EXPECT_EQ(sizeText(1025, {.precision = std::numeric_limits<NSUInteger>::max()}), "1.000977 kB");
}

TEST_F(FileSizeTest, ANilSizeIsZero) {
    EXPECT_EQ(text(sizeString(NSString::classObject(), nil, {.isLong = true})), "0 byte");
}

TEST_F(FileSizeTest, TheSizeIsReadAsUnsignedInteger) {
    const auto sizeOf = [](NSNumber size) {
        return text(sizeString(NSString::classObject(), size, {.precision = 2}));
    };
    EXPECT_EQ(sizeOf(NSNumber::numberWithDouble(1536.9)), "1.5 kB");
    EXPECT_EQ(sizeOf(NSNumber::numberWithInt(-1)), "16 EB");
    EXPECT_EQ(sizeOf(NSNumber::numberWithBool(true)), "1 B");
}

TEST_F(FileSizeTest, NilWhenTheNumberCannotBeFormatted) {
    {
        const FailingNumberFormatter failing;
        EXPECT_EQ(sizeText(1, {}), "(nil)");
        // The prefix comes first.
        EXPECT_THROWS_NAMED(sizeText(1, {.unit = 18}), "NSRangeException");
    }
    EXPECT_EQ(sizeText(1, {}), "1 B");
}

TEST_F(FileSizeTest, IsMadeByTheReceivingClass) {
    const NSNumber size = NSNumber::numberWithInt(1536);
    const NSMutableString editable =
        tessarin_stringWithFileSize_ofUnit_forPrecision_longUnit_separateSuffix<NSMutableString>(
            size, automatic, 1, false, true);
    editable.appendString(" left"_ns);
    EXPECT_EQ(text(editable), "1.5 kB left");

    const NSString own = sizeString(StringSubclass::classObject(), size, {.precision = 1});
    EXPECT_TRUE(own.isMemberOfClass(StringSubclass::classObject()));
    EXPECT_EQ(text(own), "1.5 kB");
}

TEST_F(FileSizeTest, AnswersAnAutoreleasedString) {
    const auto make = [](Class receiver) {
        return ownedReferencesOfNew([&] { return sizeString(receiver, NSNumber::numberWithInt(1), {}); });
    };
    EXPECT_EQ(make(NSMutableString::classObject()), 0);
    EXPECT_EQ(make(StringSubclass::classObject()), 0);
    EXPECT_EQ(StringSubclass::instances, 0);
}

TEST_F(FileSizeTest, ANilClassAnswersNil) { EXPECT_EQ(text(sizeString(nil, nil, {})), "(nil)"); }

TEST_F(FileSizeTest, EveryRowOfTheTable) {
    const std::vector<Texts> rows = rowsOf("data/quantities/sizes.tsv");
    EXPECT_GT(rows.size(), 4000u);
    for (const Texts& row : rows) {
        const AutoreleasePool pool;
        ASSERT_EQ(row.size(), 6u);
        EXPECT_EQ(sizeText(std::stoull(row[0]), {.unit = static_cast<UInt16>(std::stoul(row[1])),
                                                 .precision = std::stoul(row[2]),
                                                 .isLong = row[3] == "1",
                                                 .isSeparate = row[4] == "1"}),
                  row[5])
            << row[0] << " in unit " << row[1] << " with precision " << row[2];
    }
}

// ---- The user's locale

// In a process of its own, since a process keeps the locale that it met first.
class FileSizeLocaleDeathTest : public PlatformTest {
protected:
    FileSizeLocaleDeathTest() { GTEST_FLAG_SET(death_test_style, "threadsafe"); }
    ~FileSizeLocaleDeathTest() override { GTEST_FLAG_SET(death_test_style, "fast"); }

    [[noreturn]] static void printSize() {
        std::cerr << sizeText(1536, {.precision = 1}) << ", " << std::localeconv()->decimal_point
                  << std::endl;
        std::_Exit(0);
    }
};

TEST_F(FileSizeLocaleDeathTest, WritesTheSeparatorOfTheUsersLocaleAndLeavesTheProcessesAlone) {
    const bool isKnown = std::setlocale(LC_NUMERIC, "de_DE.UTF-8") != nullptr;
    std::setlocale(LC_NUMERIC, "C");
    if (!isKnown) GTEST_SKIP() << "the system lacks the locale";
    const EnvironmentVariable locale("LC_ALL", "de_DE.UTF-8");
    EXPECT_EXIT(printSize(), ::testing::ExitedWithCode(0), "1,5 kB, \\.");
}

TEST_F(FileSizeLocaleDeathTest, AMissingLocaleHasTheFullStop) {
    const EnvironmentVariable locale("LC_ALL", "xx_XX.nowhere");
    EXPECT_EXIT(printSize(), ::testing::ExitedWithCode(0), "1\\.5 kB, \\.");
}

// ---- Durations

class TimeStringTest : public PlatformTest {};

TEST_F(TimeStringTest, MinutesAndSeconds) {
    EXPECT_EQ(text(tessarin_timeStringWithSeconds(0)), "0 : 00");
    EXPECT_EQ(text(tessarin_timeStringWithSeconds(59)), "0 : 59");
    EXPECT_EQ(text(tessarin_timeStringWithSeconds(61)), "1 : 01");
    EXPECT_EQ(text(tessarin_timeStringWithSeconds(3599)), "59 : 59");
}

TEST_F(TimeStringTest, AnHourIsShownInMinutes) {
    EXPECT_EQ(text(tessarin_timeStringWithSeconds(3600)), "60 : 00");
    EXPECT_EQ(text(tessarin_timeStringWithSeconds(3659)), "60 : 59");
}

TEST_F(TimeStringTest, HoursMinutesAndSeconds) {
    EXPECT_EQ(text(tessarin_timeStringWithSeconds(3660)), "1 : 01 : 00");
    EXPECT_EQ(text(tessarin_timeStringWithSeconds(86399)), "23 : 59 : 59");
    EXPECT_EQ(text(tessarin_timeStringWithSeconds(3599999)), "999 : 59 : 59");
}

TEST_F(TimeStringTest, AThousandHoursAreShownAsTheMost) {
    EXPECT_EQ(text(tessarin_timeStringWithSeconds(3600000)), "999:59:59");
    EXPECT_EQ(text(tessarin_timeStringWithSeconds(std::numeric_limits<std::int64_t>::max())), "999:59:59");
}

TEST_F(TimeStringTest, EachNegativeFieldHasItsSign) {
    EXPECT_EQ(text(tessarin_timeStringWithSeconds(-5)), "0 : -5");
    EXPECT_EQ(text(tessarin_timeStringWithSeconds(-65)), "-1 : -5");
    EXPECT_EQ(text(tessarin_timeStringWithSeconds(-60)), "-1 : 00");
    EXPECT_EQ(text(tessarin_timeStringWithSeconds(-3661)), "-61 : -1");
    EXPECT_EQ(text(tessarin_timeStringWithSeconds(std::numeric_limits<std::int64_t>::min())),
              "-153722867280912930 : -8");
}

TEST_F(TimeStringTest, IsMadeByTheReceivingClass) {
    for (const std::int64_t seconds : {61, 3661}) {
        const NSMutableString editable = tessarin_timeStringWithSeconds<NSMutableString>(seconds);
        editable.appendString("!"_ns);
        EXPECT_EQ(text(editable), seconds == 61 ? "1 : 01!" : "1 : 01 : 01!");
    }
}

TEST_F(TimeStringTest, TheMostIsTheSameStringWhateverClassIsAsked) {
    const NSString most = tessarin_timeStringWithSeconds(StringSubclass::classObject(), 3600000);
    EXPECT_EQ(most, tessarin_timeStringWithSeconds(3600000));
    EXPECT_FALSE(most.isKindOfClass(NSMutableString::classObject()));
    EXPECT_EQ(StringSubclass::instances, 0);
}

NSString shouted(Class, SEL, NSString format, ...) { return format.stringByAppendingString("!"_ns); }

TEST_F(TimeStringTest, ASubclassIsAskedForTheFormat) {
    static const ClassDefinition definition{{.name = "TessarinShoutingString",
                                             .superclass = "NSMutableString",
                                             .methods = {classMethod("stringWithFormat:", shouted)}}};
    EXPECT_EQ(text(tessarin_timeStringWithSeconds(definition.classObject(), 61)), "%01lld : %02lld!");
    EXPECT_EQ(text(tessarin_timeStringWithSeconds(definition.classObject(), 3660)),
              "%lld : %02lld : %02lld!");
    EXPECT_EQ(text(tessarin_timeStringWithSeconds(definition.classObject(), 3600000)), "999:59:59");
}

TEST_F(TimeStringTest, AnswersAnAutoreleasedString) {
    for (const std::int64_t seconds : {61, 3661})
        EXPECT_EQ(
            ownedReferencesOfNew([&] { return tessarin_timeStringWithSeconds<NSMutableString>(seconds); }),
            0);
}

TEST_F(TimeStringTest, ANilClassAnswersNil) {
    EXPECT_EQ(text(tessarin_timeStringWithSeconds(Class(), 61)), "(nil)");
}

TEST_F(TimeStringTest, EveryRowOfTheTable) {
    const std::vector<Texts> rows = rowsOf("data/quantities/durations.tsv");
    EXPECT_GT(rows.size(), 1000u);
    for (const Texts& row : rows) {
        const AutoreleasePool pool;
        ASSERT_EQ(row.size(), 2u);
        const std::int64_t seconds = std::stoll(row[0]);
        EXPECT_EQ(text(tessarin_timeStringWithSeconds(seconds)), row[1]) << row[0];
        EXPECT_EQ(text(tessarin_timeStringWithSeconds<NSMutableString>(seconds)), row[1]) << row[0];
    }
}

} // namespace
} // namespace tessarin::testing
