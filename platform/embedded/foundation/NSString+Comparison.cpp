// NSString: order. Without NSLiteralSearch, canonically equivalent strings are the same.
#include "platform/embedded/foundation/Ordering.h"
#include "platform/embedded/foundation/StringComparison.h"
#include "platform/embedded/foundation/Unicode.h"
#include "platform/services/Utf8.h"

#include <algorithm>
#include <cstring>

namespace tessarin::embedded {
namespace {

template <class Unit>
using Units = std::span<const Unit>;

char32_t lowerAscii(char32_t character) {
    return character >= 'A' && character <= 'Z' ? character + 0x20 : character;
}

// Whether a unit surely begins a segment, a base with the marks that follow it. The ideographs and the
// syllables of Hangul are named because texts of theirs would otherwise be read from their start again.
bool beginsSegment(char32_t unit) {
    return unit < unicode::firstCombining || (unit >= 0x3400 && unit <= 0x9FFF)
           || (unit >= 0xAC00 && unit <= 0xD7A3);
}

// Gives the characters of a text one by one: decomposed, marks in canonical order, folded on demand.
template <class Unit>
class CanonicalReader {
public:
    CanonicalReader(Units<Unit> units, std::size_t start, bool foldsCase)
        : units_(units), index_(start), foldsCase_(foldsCase) {}

    bool next(char32_t& character) {
        if (place_ == segment_.size()) {
            if (index_ == units_.size()) return false;
            readSegment();
        }
        character = segment_[place_++];
        return true;
    }
    // The first unit of the segment that the last character belongs to.
    std::size_t segmentStart() const { return segmentStart_; }

private:
    struct Part {
        char32_t character;
        std::uint8_t combiningClass;
    };

    void readSegment() {
        segmentStart_ = index_;
        segment_.clear();
        place_ = 0;
        parts_.clear();
        add(unicode::decompose(utf8::nextCharacter(units_.data(), units_.size(), index_)));
        while (index_ < units_.size() && !beginsSegment(units_[index_])) {
            std::size_t following = index_;
            const unicode::Mapping decomposed =
                unicode::decompose(utf8::nextCharacter(units_.data(), units_.size(), following));
            if (unicode::combiningClass(decomposed.characters[0]) == 0) break;
            add(decomposed);
            index_ = following;
        }
        orderMarks();
        for (const Part part : parts_) {
            const unicode::Mapping folded =
                foldsCase_ ? unicode::foldCase(part.character) : unicode::Mapping{{part.character}, 1};
            segment_.insert(segment_.end(), folded.characters, folded.characters + folded.count);
        }
    }
    void add(const unicode::Mapping& decomposed) {
        for (std::size_t each = 0; each < decomposed.count; ++each)
            parts_.push_back(
                {decomposed.characters[each], unicode::combiningClass(decomposed.characters[each])});
    }
    // Starters stay where they are; the marks between them are put in order of their classes.
    void orderMarks() {
        const auto isStarter = [](Part part) { return part.combiningClass == 0; };
        for (auto begin = parts_.begin(); begin != parts_.end();) {
            const auto end = std::find_if(begin, parts_.end(), isStarter);
            if (end - begin > 1)
                std::stable_sort(begin, end, [](Part left, Part right) {
                    return left.combiningClass < right.combiningClass;
                });
            begin = std::find_if_not(end, parts_.end(), isStarter);
        }
    }

    Units<Unit> units_;
    std::size_t index_;
    bool foldsCase_;
    std::size_t segmentStart_ = 0;
    std::vector<Part> parts_;
    std::vector<char32_t> segment_;
    std::size_t place_ = 0; // in segment_
};

template <class Left, class Right>
NSComparisonResult compareFrom(Units<Left> left, Units<Right> right, std::size_t start, bool foldsCase) {
    CanonicalReader<Left> leftReader(left, start, foldsCase);
    CanonicalReader<Right> rightReader(right, start, foldsCase);
    for (;;) {
        char32_t leftCharacter = 0, rightCharacter = 0;
        const bool leftGoesOn = leftReader.next(leftCharacter);
        const bool rightGoesOn = rightReader.next(rightCharacter);
        if (!leftGoesOn || !rightGoesOn) return ordering(leftGoesOn, rightGoesOn);
        if (leftCharacter != rightCharacter) return ordering(leftCharacter, rightCharacter);
    }
}

// The first index at or after another where two texts differ in their units, or where the shorter one ends.
template <class Left, class Right>
std::size_t differenceFrom(Units<Left> left, Units<Right> right, std::size_t index) {
    const std::size_t common = std::min(left.size(), right.size());
    if constexpr (sizeof(Left) == sizeof(Right)) {
        constexpr std::size_t block = sizeof(std::uint64_t) / sizeof(Left);
        for (; index + block <= common; index += block)
            if (std::memcmp(left.data() + index, right.data() + index, sizeof(std::uint64_t)) != 0) break;
    }
    while (index < common && left[index] == right[index]) ++index;
    return index;
}

template <class Left, class Right>
NSComparisonResult compareUnitsCanonically(Units<Left> left, Units<Right> right, bool foldsCase) {
    // What is equal as it stands, or but for the case of ASCII letters, is the same.
    const std::size_t common = std::min(left.size(), right.size());
    std::size_t index = differenceFrom(left, right, 0);
    if (foldsCase) {
        while (index < common && (char32_t{left[index]} | char32_t{right[index]}) < 0x80
               && lowerAscii(left[index]) == lowerAscii(right[index]))
            index = differenceFrom(left, right, index + 1);
    }
    if (index == left.size() && index == right.size()) return NSOrderedSame;
    if (index < common && (char32_t{left[index]} | char32_t{right[index]}) < 0x80) {
        return foldsCase ? ordering(lowerAscii(left[index]), lowerAscii(right[index]))
                         : ordering(char32_t{left[index]}, char32_t{right[index]});
    }
    // Otherwise the difference may lie in a mark whose base is equal, and whose order depends on its
    // neighbours.
    const auto bothBegin = [&](std::size_t place) {
        return (place == left.size() || beginsSegment(left[place]))
               && (place == right.size() || beginsSegment(right[place]));
    };
    if (index == common && bothBegin(index)) return ordering(left.size(), right.size());
    while (index > 0 && !bothBegin(index)) --index;
    return compareFrom(left, right, index, foldsCase);
}

NSComparisonResult compareWithOptions(NSString self, SEL selector, NSString other,
                                      NSStringCompareOptions options) {
    rejectNil(other, self, selector);
    if (self == other) return NSOrderedSame;
    const ContentsOfBoth contents = contentsOfBoth(self, other);
    const StringView left = contents.first;
    const StringView right = contents.second;
    const bool foldsCase = (options & NSCaseInsensitiveSearch) != 0;
    if ((options & NSLiteralSearch) == 0) return compareCanonically(left, right, foldsCase);
    if (!foldsCase) return compareUnits(left, right);
    const auto leftFolded = foldedText(left, true).characters;
    const auto rightFolded = foldedText(right, true).characters;
    return leftFolded < rightFolded   ? NSOrderedAscending
           : rightFolded < leftFolded ? NSOrderedDescending
                                      : NSOrderedSame;
}
NSComparisonResult compare(NSString self, SEL selector, NSString other) {
    return compareWithOptions(self, selector, other, 0);
}
NSComparisonResult caseInsensitiveCompare(NSString self, SEL selector, NSString other) {
    return compareWithOptions(self, selector, other, NSCaseInsensitiveSearch);
}

} // namespace

bool comparesCanonically(NSString string) { return answersWith(string, "compare:"_sel, compare); }

NSComparisonResult compareCanonically(StringView left, StringView right, bool foldsCase) {
    return left.visit([&](auto leftUnits) {
        return right.visit(
            [&](auto rightUnits) { return compareUnitsCanonically(leftUnits, rightUnits, foldsCase); });
    });
}

FoldedText foldedText(StringView text, bool isLiteral) {
    FoldedText folded;
    folded.characters.reserve(text.length());
    folded.origins.reserve(text.length() + 1);
    text.visit([&](auto units) {
        if (!isLiteral) {
            CanonicalReader reader(units, 0, true);
            for (char32_t character; reader.next(character);) {
                folded.characters.push_back(character);
                folded.origins.push_back(reader.segmentStart());
            }
            return;
        }
        for (std::size_t index = 0; index < units.size();) {
            const std::size_t start = index;
            const unicode::Mapping mapping =
                unicode::foldCase(utf8::nextCharacter(units.data(), units.size(), index));
            folded.characters.insert(folded.characters.end(), mapping.characters,
                                     mapping.characters + mapping.count);
            folded.origins.insert(folded.origins.end(), mapping.count, start);
        }
    });
    folded.origins.push_back(text.length());
    return folded;
}

std::vector<char32_t> decomposedText(StringView text) {
    std::vector<char32_t> characters;
    characters.reserve(text.length());
    text.visit([&](auto units) {
        CanonicalReader reader(units, 0, false);
        for (char32_t character; reader.next(character);) characters.push_back(character);
    });
    return characters;
}

std::vector<MethodRow> stringComparisonMethods() {
    return {
        instanceMethod("compare:", compare),
        instanceMethod("compare:options:", compareWithOptions),
        instanceMethod("caseInsensitiveCompare:", caseInsensitiveCompare),
    };
}

} // namespace tessarin::embedded
