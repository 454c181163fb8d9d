// How an XML property list writes integers, reals, dates and data. Each kind has a function that reads it,
// nothing for text that is not of that kind, and one that appends it. None depends on the locale.
#pragma once

#include "TessarinPlatform/Types.h"

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

namespace tessarin::embedded {

// An integer from -2^63 to 2^64 - 1.
struct PropertyListInteger {
    std::uint64_t magnitude;
    bool isNegative;
};

// Decimal, or hexadecimal after 0x; white space may surround it and follow its sign.
std::optional<PropertyListInteger> integerFromText(std::string_view text);

// Decimal, or, case aside, nan, inf and infinity. What is beyond the range of a double is no real.
std::optional<double> realFromText(std::string_view text);
// 17 significant digits, which any double reads back from exactly.
void appendReal(std::string& text, double value);

// Seconds since 2001-01-01 00:00:00 UTC, from a form like 2001-01-01T00:00:00Z in the proleptic Gregorian
// calendar.
std::optional<NSTimeInterval> dateFromText(std::string_view text);
// Rounds down to a second. False, and nothing is appended, for what is no point in time or so far away that a
// double cannot tell its seconds apart.
bool appendDate(std::string& text, NSTimeInterval secondsSinceReferenceDate);

// Base64 with white space anywhere.
std::optional<std::string> dataFromText(std::string_view text);
// Lines of `lineLength` characters, a multiple of four, each after `indentation` and before a line feed.
void appendData(std::string& text, std::string_view bytes, std::string_view indentation,
                std::size_t lineLength);

} // namespace tessarin::embedded
