// Strings: data sizes and durations as text.
#include "TessarinFoundation/NSString+TessarinExtensions.h"

#include "TessarinPlatform/Definition.h"
#include "TessarinPlatform/NSNumberFormatter.h"
#include "TessarinPlatform/Retained.h"

using namespace tessarin;

namespace {

// ---- Sizes ----

constexpr UInt16 automaticUnit = 65535;
constexpr NSUInteger firstLongPrefix = 9;

// The long prefixes follow the short ones, so that the short form goes on into them.
NSArray unitPrefixes() {
    return NSArray::arrayOf(""_ns, "k"_ns, "M"_ns, "G"_ns, "T"_ns, "P"_ns, "E"_ns, "Z"_ns, "Y"_ns, ""_ns,
                            "kilo"_ns, "mega"_ns, "giga"_ns, "tera"_ns, "peta"_ns, "exa"_ns, "zetta"_ns,
                            "yotta"_ns);
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

NSString stringWithFileSize(Class self, SEL, NSNumber size, UInt16 unit, NSUInteger precision, BOOL longUnit,
                            BOOL separateSuffix) {
    const auto bytes = static_cast<double>(size.unsignedLongLongValue());
    const ScaledSize scaled = unit == automaticUnit ? inAutomaticUnit(bytes) : inUnit(bytes, unit);
    const bool isLong = longUnit != NO;
    // Raises for a unit that has no prefix.
    const NSString prefix = unitPrefixes().objectAtIndex((isLong ? firstLongPrefix : 0) + scaled.unit);

    const Retained<NSNumberFormatter> formatter = adopt(NSNumberFormatter::alloc().init());
    formatter.setFormatterBehavior(NSNumberFormatterBehavior10_4);
    formatter.setMaximumFractionDigits(precision);
    const NSString number = formatter.stringFromNumber(NSNumber::numberWithDouble(scaled.value));
    if (!number) return nil;

    // The number as it is before it is rounded: 1.999 is shown as 2 and is one byte, which is meant.
    const NSString word = !isLong ? "B"_ns : scaled.value < 2.0 ? "byte"_ns : "bytes"_ns;
    const NSString separator = separateSuffix != NO ? " "_ns : ""_ns;
    const NSString suffix = NSString::stringWithFormat("%@%@%@"_ns, separator, prefix, word);
    return send<NSString>(self, "stringWithString:"_sel, number.stringByAppendingString(suffix));
}

// ---- Durations ----

constexpr std::int64_t secondsPerMinute = 60;
constexpr std::int64_t secondsPerHour = 3600;
constexpr std::int64_t firstWithHours = 3660; // an hour is shown as 60 : 00, which is meant
constexpr std::int64_t firstTooLong = 1000 * secondsPerHour;

NSString timeStringWithSeconds(Class self, SEL, std::int64_t seconds) {
    const SEL make = "stringWithFormat:"_sel;
    const long long minutes = seconds / secondsPerMinute;
    const long long remainingSeconds = seconds % secondsPerMinute; // has the sign of the duration
    if (seconds < firstWithHours)
        return sendVariadic<NSString>(self, make, "%01lld : %02lld"_ns, minutes, remainingSeconds);
    if (seconds >= firstTooLong) return "999:59:59"_ns;
    const long long hours = seconds / secondsPerHour;
    return sendVariadic<NSString>(self, make, "%lld : %02lld : %02lld"_ns, hours, minutes % 60,
                                  remainingSeconds);
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
