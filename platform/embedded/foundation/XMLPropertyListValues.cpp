#include "platform/embedded/foundation/XMLPropertyListValues.h"

#include "platform/embedded/foundation/XMLWhiteSpace.h"

#include <algorithm>
#include <array>
#include <charconv>
#include <cmath>
#include <cstdio>

namespace tessarin::embedded {
namespace {

std::string_view trimmed(std::string_view text) {
    while (!text.empty() && isXMLWhiteSpace(text.front())) text.remove_prefix(1);
    while (!text.empty() && isXMLWhiteSpace(text.back())) text.remove_suffix(1);
    return text;
}

// A number that takes up a whole text; nothing for anything else and for one out of range.
template <class Number, class Form>
std::optional<Number> numberFromText(std::string_view text, Form form) {
    Number number{};
    const char* const end = text.data() + text.size();
    const auto [stop, problem] = std::from_chars(text.data(), end, number, form);
    if (problem != std::errc() || stop != end) return {};
    return number;
}

constexpr std::int64_t secondsPerDay = 86400;
constexpr std::int64_t daysPerEra = 146097;   // 400 years, after which the calendar repeats
constexpr std::int64_t referenceDay = 730791; // 2001-01-01, in days since 0000-03-01

// The calendar is counted from March, so that the leap day is a year's last.
struct CivilDate {
    std::int64_t year;
    int month;
    int day;
};

std::int64_t floorDivided(std::int64_t dividend, std::int64_t divisor) {
    return dividend / divisor - (dividend % divisor < 0 ? 1 : 0);
}

std::int64_t daysSinceReferenceDate(CivilDate date) {
    const std::int64_t year = date.month <= 2 ? date.year - 1 : date.year;
    const std::int64_t era = floorDivided(year, 400);
    const std::int64_t yearOfEra = year - era * 400;
    const std::int64_t dayOfYear = (153 * ((date.month + 9) % 12) + 2) / 5 + date.day - 1;
    return era * daysPerEra + yearOfEra * 365 + yearOfEra / 4 - yearOfEra / 100 + dayOfYear - referenceDay;
}

CivilDate dateOfDaysSinceReferenceDate(std::int64_t days) {
    days += referenceDay;
    const std::int64_t era = floorDivided(days, daysPerEra);
    const std::int64_t dayOfEra = days - era * daysPerEra;
    const std::int64_t yearOfEra =
        (dayOfEra - dayOfEra / 1460 + dayOfEra / 36524 - dayOfEra / (daysPerEra - 1)) / 365;
    const std::int64_t dayOfYear = dayOfEra - (365 * yearOfEra + yearOfEra / 4 - yearOfEra / 100);
    const std::int64_t monthFromMarch = (5 * dayOfYear + 2) / 153;
    const int day = static_cast<int>(dayOfYear - (153 * monthFromMarch + 2) / 5 + 1);
    const int month = static_cast<int>(monthFromMarch < 10 ? monthFromMarch + 3 : monthFromMarch - 9);
    return {era * 400 + yearOfEra + (month <= 2 ? 1 : 0), month, day};
}

int daysOfMonth(std::int64_t year, int month) {
    if (month == 2) return year % 4 == 0 && (year % 100 != 0 || year % 400 == 0) ? 29 : 28;
    return month == 4 || month == 6 || month == 9 || month == 11 ? 30 : 31;
}

// Beyond it the doubles lie more than a second apart.
constexpr double farthestInstant = 0x1p53;

constexpr std::string_view base64Digits = "ABCDEFGHIJKLMNOPQRSTUVWXYZabcdefghijklmnopqrstuvwxyz0123456789+/";
constexpr std::uint8_t notADigit = 64;
constexpr auto base64Values = [] {
    std::array<std::uint8_t, 256> values{};
    values.fill(notADigit);
    for (std::size_t value = 0; value < base64Digits.size(); ++value)
        values[static_cast<unsigned char>(base64Digits[value])] = static_cast<std::uint8_t>(value);
    return values;
}();

} // namespace

std::optional<PropertyListInteger> integerFromText(std::string_view text) {
    text = trimmed(text);
    const bool isNegative = text.starts_with('-');
    if (isNegative || text.starts_with('+')) text = trimmed(text.substr(1));
    const bool isHexadecimal = text.starts_with("0x") || text.starts_with("0X");
    if (isHexadecimal) text.remove_prefix(2);
    const auto magnitude = numberFromText<std::uint64_t>(text, isHexadecimal ? 16 : 10);
    if (!magnitude || (isNegative && *magnitude > std::uint64_t{1} << 63)) return {};
    return PropertyListInteger{*magnitude, isNegative};
}

std::optional<double> realFromText(std::string_view text) {
    text = trimmed(text);
    if (text.starts_with('+')) {
        text.remove_prefix(1);
        if (text.starts_with('-')) return {};
    }
    if (text.find('(') != std::string_view::npos) return {}; // the payload of a NaN is C's notation only
    return numberFromText<double>(text, std::chars_format::general);
}

void appendReal(std::string& text, double value) {
    if (std::isnan(value)) {
        text += "nan";
    } else if (std::isinf(value)) {
        text += value < 0 ? "-infinity" : "+infinity";
    } else if (value == 0) {
        text += "0.0"; // of a negative zero too, as the platform does
    } else {
        char digits[32];
        const auto [end, problem] =
            std::to_chars(digits, digits + sizeof digits, value, std::chars_format::general, 17);
        text.append(digits, end);
    }
}

std::optional<NSTimeInterval> dateFromText(std::string_view text) {
    text = trimmed(text);
    const bool isBeforeYearZero = text.starts_with('-');
    if (isBeforeYearZero) text.remove_prefix(1);
    // The year takes as many digits as it needs, everything after it has its place.
    constexpr std::string_view form = "-00-00T00:00:00Z";
    if (text.size() <= form.size()) return {};
    const std::string_view yearDigits = text.substr(0, text.size() - form.size());
    const auto magnitude = numberFromText<std::uint32_t>(yearDigits, 10);
    if (!magnitude) return {};
    const std::int64_t year = isBeforeYearZero ? -std::int64_t{*magnitude} : std::int64_t{*magnitude};

    text.remove_prefix(yearDigits.size());
    int fields[5] = {}; // month, day, hour, minute, second
    for (std::size_t index = 0; index < form.size(); ++index) {
        if (form[index] != '0') {
            if (text[index] != form[index]) return {};
            continue;
        }
        if (text[index] < '0' || text[index] > '9') return {};
        int& field = fields[index / 3];
        field = field * 10 + (text[index] - '0');
    }
    const auto [month, day, hour, minute, second] = fields;
    // Second 60 is a leap second.
    if (month < 1 || month > 12 || day < 1 || day > daysOfMonth(year, month) || hour > 23 || minute > 59
        || second > 60)
        return {};
    const std::int64_t seconds =
        daysSinceReferenceDate({year, month, day}) * secondsPerDay + (hour * 60 + minute) * 60 + second;
    const auto instant = static_cast<double>(seconds);
    if (std::abs(instant) > farthestInstant) return {};
    return instant;
}

bool appendDate(std::string& text, NSTimeInterval secondsSinceReferenceDate) {
    if (!(std::abs(secondsSinceReferenceDate) <= farthestInstant)) return false; // NaN included
    const auto seconds = static_cast<std::int64_t>(std::floor(secondsSinceReferenceDate));
    const std::int64_t days = floorDivided(seconds, secondsPerDay);
    const CivilDate date = dateOfDaysSinceReferenceDate(days);
    const int second = static_cast<int>(seconds - days * secondsPerDay);
    char form[48];
    std::snprintf(form, sizeof form, "%04lld-%02d-%02dT%02d:%02d:%02dZ", static_cast<long long>(date.year),
                  date.month, date.day, second / 3600, second / 60 % 60, second % 60);
    text += form;
    return true;
}

std::optional<std::string> dataFromText(std::string_view text) {
    std::string bytes;
    bytes.reserve(text.size() / 4 * 3);
    std::uint32_t group = 0;
    int digits = 0;
    int padding = 0;
    const auto appendByte = [&](int shift) {
        bytes += static_cast<char>(static_cast<unsigned char>(group >> shift));
    };
    for (const char character : text) {
        if (isXMLWhiteSpace(character)) continue;
        if (character == '=') {
            ++padding;
            continue;
        }
        const std::uint8_t value = base64Values[static_cast<unsigned char>(character)];
        if (value == notADigit || padding > 0) return {};
        group = group << 6 | value;
        if (++digits < 4) continue;
        for (const int shift : {16, 8, 0}) appendByte(shift);
        group = 0;
        digits = 0;
    }
    // One digit alone holds no byte; two and three are filled up to four.
    if (digits == 1 || (digits == 0 ? padding != 0 : digits + padding != 4)) return {};
    if (digits == 2) appendByte(4);
    if (digits == 3) {
        appendByte(10);
        appendByte(2);
    }
    return bytes;
}

void appendData(std::string& text, std::string_view bytes, std::string_view indentation,
                std::size_t lineLength) {
    const std::size_t bytesPerLine = lineLength / 4 * 3;
    const auto byteAt = [&](std::size_t position) -> std::uint32_t {
        return position < bytes.size() ? static_cast<unsigned char>(bytes[position]) : 0;
    };
    for (std::size_t line = 0; line < bytes.size(); line += bytesPerLine) {
        text += indentation;
        const std::size_t lineEnd = std::min(line + bytesPerLine, bytes.size());
        for (std::size_t position = line; position < lineEnd; position += 3) {
            const std::uint32_t group =
                byteAt(position) << 16 | byteAt(position + 1) << 8 | byteAt(position + 2);
            text += base64Digits[group >> 18];
            text += base64Digits[group >> 12 & 63];
            text += position + 1 < lineEnd ? base64Digits[group >> 6 & 63] : '=';
            text += position + 2 < lineEnd ? base64Digits[group & 63] : '=';
        }
        text += '\n';
    }
}

} // namespace tessarin::embedded
