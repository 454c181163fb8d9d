// The encodings of Japanese text: Shift JIS, EUC-JP and ISO-2022-JP, which arrange the same characters in
// different ways.
#pragma once

#include "TessarinPlatform/Types.h"

#include <cstddef>
#include <cstdint>
#include <optional>
#include <span>
#include <string>
#include <string_view>

namespace tessarin::encodings {

// A set of characters in rows of 94 cells. A position counts the cells of all rows from 0 on.
class CharacterGrid {
public:
    static constexpr std::size_t cellsOfRow = 94;

    // `rows` has for each row the number of its units, counted from 1, or 0 for an empty row. `positions` has
    // the positions in the order of their units, and `pages` where those of each 256 units begin.
    constexpr CharacterGrid(std::span<const std::uint8_t> rows, const unichar (*units)[cellsOfRow],
                            const std::uint16_t* positions, std::span<const std::uint16_t, 257> pages)
        : rows_(rows), units_(units), positions_(positions), pages_(pages) {}

    bool hasRowOf(std::size_t position) const {
        const std::size_t row = position / cellsOfRow;
        return row < rows_.size() && rows_[row] != 0;
    }
    // 0 where there is none.
    unichar unitAt(std::size_t position) const {
        return hasRowOf(position) ? units_[rows_[position / cellsOfRow] - 1][position % cellsOfRow]
                                  : unichar{0};
    }
    std::optional<std::size_t> positionOf(unichar unit) const;

private:
    std::span<const std::uint8_t> rows_;
    const unichar (*units_)[cellsOfRow];
    const std::uint16_t* positions_;
    std::span<const std::uint16_t, 257> pages_;
};

extern const CharacterGrid jisX0208, jisX0212;
// The rows of JIS X 0208 that Microsoft changed, and those that it added.
extern const CharacterGrid microsoftChanges;

// Shift JIS as the standard has it, or Microsoft's, with its changes and a place for users' own characters.
enum class ShiftJIS { standard, microsoft };
bool decodeShiftJIS(ShiftJIS kind, std::string_view bytes, std::u16string& units);
bool encodeShiftJIS(ShiftJIS kind, std::u16string_view units, std::string& bytes);

bool decodeEUCJP(std::string_view bytes, std::u16string& units);
bool encodeEUCJP(std::u16string_view units, std::string& bytes);

// Begins and ends in ASCII; text that ends in another character set is read too.
bool decodeISO2022JP(std::string_view bytes, std::u16string& units);
bool encodeISO2022JP(std::u16string_view units, std::string& bytes);

} // namespace tessarin::encodings
