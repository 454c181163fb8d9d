#include "platform/services/JapaneseEncodings.h"

#include <algorithm>
#include <initializer_list>

namespace tessarin::encodings {
namespace {

constexpr std::size_t cellsOfRow = CharacterGrid::cellsOfRow;

// Half-width Katakana stand in one row in Unicode and in the single bytes from A1 on.
constexpr unichar firstHalfWidth = 0xFF61, lastHalfWidth = 0xFF9F;
constexpr std::uint8_t firstHalfWidthByte = 0xA1, lastHalfWidthByte = 0xDF;
constexpr bool isHalfWidth(unichar unit) { return unit >= firstHalfWidth && unit <= lastHalfWidth; }
constexpr bool isHalfWidthByte(std::uint8_t byte) {
    return byte >= firstHalfWidthByte && byte <= lastHalfWidthByte;
}
constexpr std::uint8_t halfWidthByte(unichar unit) {
    return static_cast<std::uint8_t>(unit - firstHalfWidth + firstHalfWidthByte);
}
constexpr unichar halfWidthUnit(std::uint8_t byte) {
    return static_cast<unichar>(byte - firstHalfWidthByte + firstHalfWidth);
}

void append(std::string& bytes, std::initializer_list<std::size_t> values) {
    for (const std::size_t value : values) bytes += static_cast<char>(static_cast<std::uint8_t>(value));
}

// Bytes one after the other; behind the last come zeros, which end no character.
class Reader {
public:
    explicit Reader(std::string_view bytes) : bytes_(bytes) {}
    bool isAtEnd() const { return index_ >= bytes_.size(); }
    std::uint8_t next() {
        const std::size_t index = index_++;
        return index < bytes_.size() ? static_cast<std::uint8_t>(bytes_[index]) : std::uint8_t{0};
    }
    bool skip(std::string_view expected) {
        if (!bytes_.substr(index_).starts_with(expected)) return false;
        index_ += expected.size();
        return true;
    }

private:
    std::string_view bytes_;
    std::size_t index_ = 0;
};

// Appends a unit that a table has; 0 is none.
bool appendFound(std::u16string& units, unichar unit) {
    units += unit;
    return unit != 0;
}

// The position that two bytes name which count rows and cells from a first byte on.
std::optional<std::size_t> positionOfBytes(std::uint8_t row, std::uint8_t cell, std::uint8_t first) {
    if (row < first || row >= first + cellsOfRow || cell < first || cell >= first + cellsOfRow)
        return std::nullopt;
    return (row - first) * cellsOfRow + (cell - first);
}

} // namespace

std::optional<std::size_t> CharacterGrid::positionOf(unichar unit) const {
    const std::span page(positions_ + pages_[unit >> 8], positions_ + pages_[(unit >> 8) + 1]);
    const auto found = std::ranges::lower_bound(page, unit, {}, [this](auto each) { return unitAt(each); });
    if (found == page.end() || unitAt(*found) != unit) return std::nullopt;
    return *found;
}

// ---- Shift JIS: two rows share a first byte, which leaves the single bytes of half-width Katakana free

namespace {

constexpr std::size_t cellsOfLead = 2 * cellsOfRow;
constexpr std::size_t leadsBelowHalfWidth = 0x1F;

// Where Microsoft has users' own characters: U+E000 and those that follow.
constexpr std::size_t usersPosition = 94 * cellsOfRow, usersCount = 20 * cellsOfRow;
constexpr unichar firstUsersUnit = 0xE000;
// Bytes that Microsoft has no characters for stand for these.
struct UnitAndByte {
    unichar unit;
    std::uint8_t byte;
};
constexpr UnitAndByte microsoftSingles[] = {
    {0x0080, 0x80}, {0xF8F0, 0xA0}, {0xF8F1, 0xFD}, {0xF8F2, 0xFE}, {0xF8F3, 0xFF}};

std::optional<std::size_t> shiftJISPosition(std::uint8_t lead, std::uint8_t trail) {
    const bool isLead = (lead >= 0x81 && lead <= 0x9F) || (lead >= 0xE0 && lead <= 0xFC);
    if (!isLead || trail < 0x40 || trail == 0x7F || trail > 0xFC) return std::nullopt;
    const std::size_t leadIndex = lead < 0xA0 ? lead - 0x81u : lead - 0xE0u + leadsBelowHalfWidth;
    return leadIndex * cellsOfLead + (trail < 0x7F ? trail - 0x40u : trail - 0x41u);
}

void appendShiftJIS(std::string& bytes, std::size_t position) {
    const std::size_t leadIndex = position / cellsOfLead, trailIndex = position % cellsOfLead;
    append(bytes,
           {leadIndex < leadsBelowHalfWidth ? 0x81 + leadIndex : 0xE0 + leadIndex - leadsBelowHalfWidth,
            trailIndex < 0x3F ? 0x40 + trailIndex : 0x41 + trailIndex});
}

unichar microsoftUnitAt(std::size_t position) {
    if (microsoftChanges.hasRowOf(position)) return microsoftChanges.unitAt(position);
    if (position >= usersPosition && position < usersPosition + usersCount)
        return static_cast<unichar>(firstUsersUnit + (position - usersPosition));
    return jisX0208.unitAt(position);
}

std::optional<std::size_t> microsoftPositionOf(unichar unit) {
    if (unit >= firstUsersUnit && unit < firstUsersUnit + usersCount)
        return usersPosition + (unit - firstUsersUnit);
    if (const auto position = microsoftChanges.positionOf(unit)) return position;
    const auto position = jisX0208.positionOf(unit);
    return position && !microsoftChanges.hasRowOf(*position) ? position : std::nullopt;
}

} // namespace

bool decodeShiftJIS(ShiftJIS kind, std::string_view bytes, std::u16string& units) {
    const bool isMicrosoft = kind == ShiftJIS::microsoft;
    for (Reader reader(bytes); !reader.isAtEnd();) {
        const std::uint8_t byte = reader.next();
        if (byte < 0x80) {
            units += unichar{byte};
        } else if (isHalfWidthByte(byte)) {
            units += halfWidthUnit(byte);
        } else if (const auto* single = std::ranges::find(microsoftSingles, byte, &UnitAndByte::byte);
                   single != std::end(microsoftSingles)) {
            if (!isMicrosoft) return false;
            units += single->unit;
        } else {
            const std::optional<std::size_t> position = shiftJISPosition(byte, reader.next());
            if (!position) return false;
            if (!appendFound(units, isMicrosoft ? microsoftUnitAt(*position) : jisX0208.unitAt(*position)))
                return false;
        }
    }
    return true;
}

bool encodeShiftJIS(ShiftJIS kind, std::u16string_view units, std::string& bytes) {
    const bool isMicrosoft = kind == ShiftJIS::microsoft;
    for (const unichar unit : units) {
        if (unit < 0x80) {
            append(bytes, {unit});
        } else if (isHalfWidth(unit)) {
            append(bytes, {halfWidthByte(unit)});
        } else if (const auto position =
                       isMicrosoft ? microsoftPositionOf(unit) : jisX0208.positionOf(unit)) {
            appendShiftJIS(bytes, *position);
        } else {
            const auto* single = std::ranges::find(microsoftSingles, unit, &UnitAndByte::unit);
            if (!isMicrosoft || single == std::end(microsoftSingles)) return false;
            append(bytes, {single->byte});
        }
    }
    return true;
}

// ---- EUC-JP: both bytes in the upper half; half-width Katakana and JIS X 0212 behind bytes that lead there

namespace {

constexpr std::uint8_t halfWidthLead = 0x8E, jisX0212Lead = 0x8F, firstOfUpperHalf = 0xA1;

bool decodeUpperHalf(const CharacterGrid& grid, std::uint8_t row, std::uint8_t cell, std::u16string& units) {
    const std::optional<std::size_t> position = positionOfBytes(row, cell, firstOfUpperHalf);
    return position && appendFound(units, grid.unitAt(*position));
}
void appendUpperHalf(std::string& bytes, std::size_t position) {
    append(bytes, {firstOfUpperHalf + position / cellsOfRow, firstOfUpperHalf + position % cellsOfRow});
}

} // namespace

bool decodeEUCJP(std::string_view bytes, std::u16string& units) {
    for (Reader reader(bytes); !reader.isAtEnd();) {
        const std::uint8_t first = reader.next();
        if (first < 0x80) {
            units += unichar{first};
            continue;
        }
        const std::uint8_t second = reader.next();
        if (first == halfWidthLead) {
            if (!isHalfWidthByte(second)) return false;
            units += halfWidthUnit(second);
        } else if (first == jisX0212Lead) {
            if (!decodeUpperHalf(jisX0212, second, reader.next(), units)) return false;
        } else if (!decodeUpperHalf(jisX0208, first, second, units)) {
            return false;
        }
    }
    return true;
}

bool encodeEUCJP(std::u16string_view units, std::string& bytes) {
    for (const unichar unit : units) {
        if (unit < 0x80) {
            append(bytes, {unit});
        } else if (isHalfWidth(unit)) {
            append(bytes, {halfWidthLead, halfWidthByte(unit)});
        } else if (const auto position = jisX0208.positionOf(unit)) {
            appendUpperHalf(bytes, *position);
        } else if (const auto further = jisX0212.positionOf(unit)) {
            append(bytes, {jisX0212Lead});
            appendUpperHalf(bytes, *further);
        } else {
            return false;
        }
    }
    return true;
}

// ---- ISO-2022-JP: seven bits, with sequences that lead from one character set to another

namespace {

enum class Set { ascii, roman, jisX0208 };
struct Sequence {
    std::string_view bytes;
    Set set;
};
// The first of a set is the one that is written.
constexpr Sequence sequences[] = {
    {"\x1B(B", Set::ascii}, {"\x1B(J", Set::roman}, {"\x1B$B", Set::jisX0208}, {"\x1B$@", Set::jisX0208}};

constexpr char escape = 0x1B;
constexpr std::uint8_t firstGraphic = 0x21, lastGraphic = 0x7E;

// JIS X 0201's Latin letters, which are ASCII but for two.
constexpr UnitAndByte romanChanges[] = {{0x00A5, 0x5C}, {0x203E, 0x7E}};

unichar romanUnit(std::uint8_t byte) {
    const auto* changed = std::ranges::find(romanChanges, byte, &UnitAndByte::byte);
    return changed != std::end(romanChanges) ? changed->unit : unichar{byte};
}

} // namespace

bool decodeISO2022JP(std::string_view bytes, std::u16string& units) {
    Set set = Set::ascii;
    for (Reader reader(bytes); !reader.isAtEnd();) {
        const auto* sequence =
            std::ranges::find_if(sequences, [&](const Sequence& each) { return reader.skip(each.bytes); });
        if (sequence != std::end(sequences)) {
            set = sequence->set;
            continue;
        }
        const std::uint8_t byte = reader.next();
        if (byte >= 0x80 || byte == escape) return false;
        if (byte < firstGraphic || byte > lastGraphic || set == Set::ascii) {
            units += unichar{byte};
        } else if (set == Set::roman) {
            units += romanUnit(byte);
        } else {
            const std::optional<std::size_t> position = positionOfBytes(byte, reader.next(), firstGraphic);
            if (!position || !appendFound(units, jisX0208.unitAt(*position))) return false;
        }
    }
    return true;
}

bool encodeISO2022JP(std::u16string_view units, std::string& bytes) {
    Set set = Set::ascii;
    const auto change = [&](Set wanted) {
        if (set == wanted) return;
        bytes += std::ranges::find(sequences, wanted, &Sequence::set)->bytes;
        set = wanted;
    };
    for (const unichar unit : units) {
        if (unit < 0x80) {
            if (unit == escape) return false;
            change(Set::ascii);
            append(bytes, {unit});
        } else if (const auto* changed = std::ranges::find(romanChanges, unit, &UnitAndByte::unit);
                   changed != std::end(romanChanges)) {
            change(Set::roman);
            append(bytes, {changed->byte});
        } else if (const auto position = jisX0208.positionOf(unit)) {
            change(Set::jisX0208);
            append(bytes, {firstGraphic + *position / cellsOfRow, firstGraphic + *position % cellsOfRow});
        } else {
            return false;
        }
    }
    change(Set::ascii);
    return true;
}

} // namespace tessarin::encodings
