// Properties and mappings of Unicode characters. The data stand in UnicodeTables.generated.cpp.
#pragma once

#include <cstddef>
#include <cstdint>
#include <span>

namespace tessarin::unicode {

struct Range {
    char32_t first;
    char32_t last;
};
// Sorted, apart from each other.
extern const std::span<const Range> letterOrMarkRanges; // general categories L and M
extern const std::span<const Range> alphanumericRanges; // L, M and N
extern const std::span<const Range> decimalDigitRanges; // Nd

bool isInRanges(std::span<const Range> ranges, char32_t character);
inline bool isLetterOrMark(char32_t character) { return isInRanges(letterOrMarkRanges, character); }

// What one character becomes.
struct Mapping {
    char32_t characters[4];
    std::size_t count;
};

// Lower and upper case as Unicode's full mappings have it, apart from rules for languages and contexts.
Mapping lowercase(char32_t character);
Mapping uppercase(char32_t character);
// Full case folding (statuses C and F) in the basic plane. Characters outside stay as they are, which is
// meant: the platform's comparisons do not fold them.
Mapping foldCase(char32_t character);

// The full canonical decomposition.
Mapping decompose(char32_t character);
// The canonical combining class; 0 for a starter.
std::uint8_t combiningClass(char32_t character);
// Below it every character is a starter and none begins with anything else when decomposed.
inline constexpr char32_t firstCombining = 0x300;

} // namespace tessarin::unicode
