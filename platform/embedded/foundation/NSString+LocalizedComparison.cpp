// NSString: order as people look things up in lists. The embedded platform has no rules of languages; it
// orders by letters, then by the marks on them, then by case, each from the start of the texts.
#include "platform/embedded/foundation/Ordering.h"
#include "platform/embedded/foundation/StringComparison.h"
#include "platform/embedded/foundation/Unicode.h"

#include <algorithm>

namespace tessarin::embedded {
namespace {

// A letter, or any other character that is no mark, without its case, and what sets it apart from others of
// the same letter.
struct Letter {
    char32_t folded;
    std::vector<char32_t> marks;
    bool isCapital;
};

std::vector<Letter> lettersOf(StringView text) {
    std::vector<Letter> letters;
    letters.reserve(text.length());
    for (const char32_t character : decomposedText(text)) {
        if (unicode::combiningClass(character) != 0 && !letters.empty()) {
            letters.back().marks.push_back(character);
            continue;
        }
        const unicode::Mapping folded = unicode::foldCase(character);
        const bool isCapital = folded.count != 1 || folded.characters[0] != character;
        for (std::size_t each = 0; each < folded.count; ++each)
            letters.push_back({folded.characters[each], {}, isCapital});
    }
    return letters;
}

using Text = std::vector<Letter>;
using Position = Text::const_iterator;

bool isDigit(const Letter& letter) { return letter.folded >= '0' && letter.folded <= '9'; }

// The number at the start of a text, which it is passed over: its digits from the first that is not zero.
struct Digits {
    Position begin;
    Position end;
    std::ptrdiff_t count() const { return end - begin; }
};
Digits takeNumber(Position& position, Position end) {
    const Position afterDigits = std::find_if_not(position, end, isDigit);
    const Position begin =
        std::find_if(position, afterDigits, [](const Letter& letter) { return letter.folded != '0'; });
    position = afterDigits;
    return {begin, afterDigits};
}

NSComparisonResult compareNumbers(const Digits& left, const Digits& right) {
    if (left.count() != right.count()) return ordering(left.count(), right.count());
    const auto [first, second] =
        std::mismatch(left.begin, left.end, right.begin,
                      [](const Letter& one, const Letter& other) { return one.folded == other.folded; });
    return first == left.end ? NSOrderedSame : ordering(first->folded, second->folded);
}

NSComparisonResult compareLetters(const Text& left, const Text& right, bool readsNumbers) {
    Position one = left.begin();
    Position other = right.begin();
    while (one != left.end() && other != right.end()) {
        NSComparisonResult result = NSOrderedSame;
        if (readsNumbers && isDigit(*one) && isDigit(*other)) {
            const Digits number = takeNumber(one, left.end());
            result = compareNumbers(number, takeNumber(other, right.end()));
        } else {
            result = ordering((one++)->folded, (other++)->folded);
        }
        if (result != NSOrderedSame) return result;
    }
    return ordering(one != left.end(), other != right.end());
}

// By what sets letters apart. The first difference decides; then the zeros in front of numbers, which make
// texts of the same letters differ in length.
template <class Difference>
NSComparisonResult compareFurther(const Text& left, const Text& right, Difference difference) {
    const std::size_t common = std::min(left.size(), right.size());
    for (std::size_t index = 0; index < common; ++index)
        if (const auto result = ordering(left[index].*difference, right[index].*difference)) return result;
    return ordering(left.size(), right.size());
}

NSComparisonResult compareTexts(NSString self, NSString other, bool mindsCase, bool readsNumbers) {
    const Text left = lettersOf(contentsOf(self));
    const Text right = lettersOf(contentsOf(other));
    if (const auto result = compareLetters(left, right, readsNumbers)) return result;
    if (const auto result = compareFurther(left, right, &Letter::marks)) return result;
    // A small letter comes before its capital.
    return mindsCase ? compareFurther(left, right, &Letter::isCapital) : NSOrderedSame;
}

NSComparisonResult localizedCompare(NSString self, SEL selector, NSString other) {
    rejectNil(other, self, selector);
    return compareTexts(self, other, true, false);
}
NSComparisonResult localizedCaseInsensitiveCompare(NSString self, SEL selector, NSString other) {
    rejectNil(other, self, selector);
    return compareTexts(self, other, false, false);
}
NSComparisonResult localizedStandardCompare(NSString self, SEL selector, NSString other) {
    rejectNil(other, self, selector);
    return compareTexts(self, other, true, true);
}

} // namespace

std::vector<MethodRow> stringLocalizedComparisonMethods() {
    return {instanceMethod("localizedCompare:", localizedCompare),
            instanceMethod("localizedCaseInsensitiveCompare:", localizedCaseInsensitiveCompare),
            instanceMethod("localizedStandardCompare:", localizedStandardCompare)};
}

} // namespace tessarin::embedded
