// The form of the generated Unicode tables. Sorted by character throughout.
#pragma once

#include "platform/embedded/foundation/Unicode.h"

namespace tessarin::unicode {

// Characters `step` apart, each mapped to the one at a distance.
struct CaseRun {
    char32_t first;
    char32_t last;
    std::uint8_t step;
    std::int32_t distance;
};
// A character mapped to more than one.
struct CaseExpansion {
    char32_t character;
    char32_t mapped[3];
    std::uint8_t count;
};
struct CaseTable {
    std::span<const CaseRun> runs;
    std::span<const CaseExpansion> expansions;
};
extern const CaseTable lowercaseTable;
extern const CaseTable uppercaseTable;
extern const CaseTable foldingTable;

struct Decomposition {
    char32_t character;
    std::uint16_t offset; // in decompositionCharacters
    std::uint8_t count;
};
extern const std::span<const char32_t> decompositionCharacters;
extern const std::span<const Decomposition> decompositionTable;

struct CombiningClassRun {
    char32_t first;
    char32_t last;
    std::uint8_t combiningClass;
};
extern const std::span<const CombiningClassRun> combiningClassRuns;

} // namespace tessarin::unicode
