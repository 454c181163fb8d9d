#include "platform/embedded/foundation/Unicode.h"

#include "platform/embedded/foundation/UnicodeTables.h"

#include <algorithm>

namespace tessarin::unicode {
namespace {

// The row of a sorted table that may hold a character, by the last character of each row; null when there is
// none.
template <class Row, class Last>
const Row* findRow(std::span<const Row> rows, char32_t character, Last last) {
    const auto found = std::lower_bound(rows.begin(), rows.end(), character,
                                        [&](const Row& row, char32_t wanted) { return row.*last < wanted; });
    return found == rows.end() ? nullptr : &*found;
}

Mapping single(char32_t character) { return {{character}, 1}; }

Mapping mapped(const CaseTable& table, char32_t character) {
    const CaseRun* run = findRow(table.runs, character, &CaseRun::last);
    if (run && character >= run->first && (character - run->first) % run->step == 0)
        return single(static_cast<char32_t>(static_cast<std::int32_t>(character) + run->distance));
    const CaseExpansion* expansion = findRow(table.expansions, character, &CaseExpansion::character);
    if (!expansion || expansion->character != character) return single(character);
    return {{expansion->mapped[0], expansion->mapped[1], expansion->mapped[2]}, expansion->count};
}

// The syllables of Hangul are decomposed by arithmetic.
constexpr char32_t firstSyllable = 0xAC00, firstLead = 0x1100, firstVowel = 0x1161, firstTrail = 0x11A7;
constexpr char32_t vowels = 21, trails = 28, syllables = 19 * vowels * trails;

Mapping decomposedSyllable(char32_t index) {
    const char32_t lead = firstLead + index / (vowels * trails);
    const char32_t vowel = firstVowel + index / trails % vowels;
    const char32_t trail = firstTrail + index % trails;
    return {{lead, vowel, trail}, trail == firstTrail ? std::size_t{2} : std::size_t{3}};
}

} // namespace

bool isInRanges(std::span<const Range> ranges, char32_t character) {
    const Range* range = findRow(ranges, character, &Range::last);
    return range && range->first <= character;
}

Mapping lowercase(char32_t character) {
    if (character < 0x80) return single(character >= 'A' && character <= 'Z' ? character + 0x20 : character);
    return mapped(lowercaseTable, character);
}
Mapping uppercase(char32_t character) {
    if (character < 0x80) return single(character >= 'a' && character <= 'z' ? character - 0x20 : character);
    return mapped(uppercaseTable, character);
}
Mapping foldCase(char32_t character) {
    if (character < 0x80) return single(character >= 'A' && character <= 'Z' ? character + 0x20 : character);
    return mapped(foldingTable, character);
}

Mapping decompose(char32_t character) {
    if (character < 0xC0) return single(character);
    if (character >= firstSyllable && character - firstSyllable < syllables)
        return decomposedSyllable(character - firstSyllable);
    const Decomposition* entry = findRow(decompositionTable, character, &Decomposition::character);
    if (!entry || entry->character != character) return single(character);
    Mapping mapping{{}, entry->count};
    std::copy_n(decompositionCharacters.begin() + entry->offset, entry->count, mapping.characters);
    return mapping;
}

std::uint8_t combiningClass(char32_t character) {
    if (character < firstCombining) return 0;
    const CombiningClassRun* run = findRow(combiningClassRuns, character, &CombiningClassRun::last);
    return run && run->first <= character ? run->combiningClass : std::uint8_t{0};
}

} // namespace tessarin::unicode
