// Strings: data sizes and durations as text.
#include "TessarinFoundation/NSString+TessarinExtensions.h"

#include "TessarinPlatform/Definition.h"
#include "TessarinPlatform/NSNumberFormatter.h"
#include "TessarinPlatform/NumberFormatting.h"
#include "TessarinPlatform/Retained.h"

#include <algorithm>
#include <array>
#include <charconv>
#include <limits>
#include <string>
#include <string_view>
#include <vector>

using namespace tessarin;

namespace {

// ---- Sizes

constexpr UInt16 automaticUnit = 65535;

// The long prefixes follow the short ones, so that the short form goes on into them.
constexpr std::array<std::string_view, 18> prefixes = {"",     "k",    "M",    "G",   "T",     "P",
                                                       "E",    "Z",    "Y",    "",    "kilo",  "mega",
                                                       "giga", "tera", "peta", "exa", "zetta", "yotta"};
constexpr NSUInteger firstLongPrefix = 9;

std::string_view prefixAt(NSUInteger position) {
    if (position < prefixes.size()) return prefixes[position];
    // What lies beyond the table is refused by the platform's array, with an exception of its own.
    const std::vector<NSObject> table(prefixes.size(), ""_ns);
    NSArray::arrayWithObjects_count(table.data(), table.size()).objectAtIndex(position);
    return {};
}

// A number of bytes in units of 1024 to the power `unit`.
struct ScaledSize {
    double value;
    NSUInteger unit;
};

constexpr double scalingStep = 0.0009765625; // 1 / 1024

// In the largest unit in which the size is more than 1, or in bytes.
ScaledSize inAutomaticUnit(double bytes) {
    ScaledSize size{bytes, 0};
    while (size.value * scalingStep > 1.0) size = {size.value * scalingStep, size.unit + 1};
    return size;
}

ScaledSize inUnit(double bytes, UInt16 unit) {
    ScaledSize size{bytes, unit};
    for (UInt16 step = 0; step < unit; ++step) size.value *= scalingStep;
    return size;
}

// Of short texts without a string object for each part.
NSString appended(NSString number, std::string_view suffix) {
    unichar text[64];
    const NSUInteger length = number.length();
    if (length > std::size(text) - suffix.size()) return number.stringByAppendingString(NSString(suffix));
    number.getCharacters_range(text, {0, length});
    unichar* const end = std::copy(suffix.begin(), suffix.end(), text + length);
    return NSString(std::u16string_view(text, end));
}

NSString askFormatter(double number, NSUInteger maximumFractionDigits) {
    const Retained<NSNumberFormatter> formatter = adopt(NSNumberFormatter::alloc().init());
    formatter.setFormatterBehavior(NSNumberFormatterBehavior10_4);
    formatter.setMaximumFractionDigits(maximumFractionDigits);
    return formatter.stringFromNumber(NSNumber::numberWithDouble(number));
}

NSString stringWithFileSize(Class self, SEL, NSNumber size, UInt16 unit, NSUInteger precision, BOOL longUnit,
                            BOOL separateSuffix) {
    const auto bytes = static_cast<double>(size.unsignedLongLongValue());
    const ScaledSize scaled = unit == automaticUnit ? inAutomaticUnit(bytes) : inUnit(bytes, unit);
    const bool isLong = longUnit != NO;
    const std::string_view prefix = prefixAt((isLong ? firstLongPrefix : 0) + scaled.unit);

    // The number as it is before it is rounded: 1.999 is shown as "2 byte", which is meant.
    const std::string_view unitWord = !isLong ? "B" : scaled.value < 2.0 ? "byte" : "bytes";
    std::string suffix(separateSuffix != NO ? " " : "");
    suffix.append(prefix).append(unitWord);
    NSString text = formattedNumber(scaled.value, precision, suffix);
    if (!text) {
        const NSString number = askFormatter(scaled.value, precision);
        if (!number) return nil;
        text = appended(number, suffix);
    }
    // NSString itself would answer an equal string again.
    return self == NSString::classObject() ? text : send<NSString>(self, "stringWithString:"_sel, text);
}

// ---- Durations

constexpr std::int64_t secondsPerMinute = 60;
constexpr std::int64_t minutesPerHour = 60;
constexpr std::int64_t secondsPerHour = 3600;
constexpr std::int64_t firstWithHours = 3660; // an hour is shown as 60 : 00, which is meant
constexpr std::int64_t firstTooLong = 1000 * secondsPerHour;

// What the format "%lld" writes, or "%02lld" for a field of two digits.
char* writeNumber(char* place, long long number) {
    return std::to_chars(place, place + std::numeric_limits<long long>::digits10 + 2, number).ptr;
}
char* writeField(char* place, long long number) {
    if (number >= 0 && number < 10) *place++ = '0';
    return writeNumber(place, number);
}
char* writeSeparator(char* place) { return std::ranges::copy(std::string_view(" : "), place).out; }

// A string class of one's own is asked for the format. Of NSString it is known what it answers, so that the
// same is written several times as fast.
NSString minutesAndSeconds(Class self, long long minutes, long long seconds) {
    if (self != NSString::classObject())
        return sendVariadic<NSString>(self, "stringWithFormat:"_sel, "%01lld : %02lld"_ns, minutes, seconds);
    char text[64];
    const char* end = writeField(writeSeparator(writeNumber(text, minutes)), seconds);
    return NSString(std::string_view(text, end));
}

NSString hoursMinutesAndSeconds(Class self, long long hours, long long minutes, long long seconds) {
    if (self != NSString::classObject())
        return sendVariadic<NSString>(self, "stringWithFormat:"_sel, "%lld : %02lld : %02lld"_ns, hours,
                                      minutes, seconds);
    char text[64];
    const char* end =
        writeField(writeSeparator(writeField(writeSeparator(writeNumber(text, hours)), minutes)), seconds);
    return NSString(std::string_view(text, end));
}

NSString timeStringWithSeconds(Class self, SEL, std::int64_t seconds) {
    const std::int64_t minutes = seconds / secondsPerMinute;
    const std::int64_t remainingSeconds = seconds % secondsPerMinute; // has the sign of the duration
    if (seconds < firstWithHours) return minutesAndSeconds(self, minutes, remainingSeconds);
    if (seconds >= firstTooLong) return "999:59:59"_ns;
    return hoursMinutesAndSeconds(self, seconds / secondsPerHour, minutes % minutesPerHour, remainingSeconds);
}

const ExtensionGroup group{
    "NSString",
    "TessarinExtensions",
    {classMethod("tessarin_stringWithFileSize:ofUnit:forPrecision:longUnit:separateSuffix:",
                 stringWithFileSize),
     classMethod("tessarin_timeStringWithSeconds:", timeStringWithSeconds)}};

} // namespace

NSString tessarin_stringWithFileSize_ofUnit_forPrecision_longUnit_separateSuffix(NSNumber size, UInt16 unit,
                                                                                 NSUInteger precision,
                                                                                 bool longUnit,
                                                                                 bool separateSuffix) {
    return tessarin_stringWithFileSize_ofUnit_forPrecision_longUnit_separateSuffix(
        NSString::classObject(), size, unit, precision, longUnit, separateSuffix);
}

NSString tessarin_stringWithFileSize_ofUnit_forPrecision_longUnit_separateSuffix(
    Class receiver, NSNumber size, UInt16 unit, NSUInteger precision, bool longUnit, bool separateSuffix) {
    return send<NSString>(
        receiver, "tessarin_stringWithFileSize:ofUnit:forPrecision:longUnit:separateSuffix:"_sel, size, unit,
        precision, static_cast<BOOL>(longUnit), static_cast<BOOL>(separateSuffix));
}

NSString tessarin_timeStringWithSeconds(std::int64_t seconds) {
    return tessarin_timeStringWithSeconds(NSString::classObject(), seconds);
}

NSString tessarin_timeStringWithSeconds(Class receiver, std::int64_t seconds) {
    return send<NSString>(receiver, "tessarin_timeStringWithSeconds:"_sel, seconds);
}
