// NSString: prefixes, searching, splitting and trimming. Searching without options is literal, unit by unit.
#include "TessarinPlatform/NSArray.h"
#include "TessarinPlatform/NSCharacterSet.h"
#include "platform/embedded/foundation/CharacterSetStorage.h"
#include "platform/embedded/foundation/StringComparison.h"
#include "platform/embedded/foundation/StringStorage.h"
#include "platform/services/Utf8.h"

#include <algorithm>
#include <cstring>
#include <type_traits>

namespace tessarin::embedded {
namespace {

constexpr auto notFound = static_cast<std::size_t>(NSNotFound);
constexpr NSRange noRange = {notFound, 0};

template <class Unit>
const Unit* findUnitIn(const Unit* begin, const Unit* end, Unit unit) {
    if constexpr (sizeof(Unit) == 1) {
        const void* found =
            begin == end ? nullptr : std::memchr(begin, unit, static_cast<std::size_t>(end - begin));
        return found ? static_cast<const Unit*>(found) : end;
    } else {
        return std::find(begin, end, unit);
    }
}

// Accepts every match.
constexpr auto everywhere = [](std::size_t) { return true; };

// Looks for one text in others of the same width, in linear time: by comparing at each place where its first
// unit stands when it is short, by Knuth, Morris and Pratt's way when it is so long that this could take too
// much.
template <class Unit>
class Finder {
public:
    explicit Finder(std::span<const Unit> searched) : searched_(searched) {
        if (searched.size() <= longestCompared) return;
        borders_.resize(searched.size());
        for (std::size_t index = 1, border = 0; index < searched.size(); ++index) {
            while (border > 0 && searched[index] != searched[border]) border = borders_[border - 1];
            if (searched[index] == searched[border]) ++border;
            borders_[index] = border;
        }
    }

    // The first match at or after a start that is accepted.
    template <class Accept>
    std::size_t find(std::span<const Unit> text, std::size_t start, Accept&& accept) const {
        if (start > text.size() || searched_.size() > text.size() - start) return notFound;
        if (!borders_.empty()) return findByBorders(text, start, accept);
        const Unit* const begin = text.data();
        const Unit* const end = begin + text.size() - searched_.size() + 1;
        for (const Unit* place = begin + start;; ++place) {
            place = findUnitIn(place, end, searched_[0]);
            if (place == end) return notFound;
            const auto index = static_cast<std::size_t>(place - begin);
            if (isAt(text, index) && accept(index)) return index;
        }
    }
    // The last match that is accepted.
    template <class Accept>
    std::size_t findLast(std::span<const Unit> text, Accept&& accept) const {
        if (searched_.size() > text.size()) return notFound;
        if (!borders_.empty()) {
            std::size_t last = notFound;
            findByBorders(text, 0, [&](std::size_t index) {
                if (accept(index)) last = index;
                return false;
            });
            return last;
        }
        for (std::size_t index = text.size() - searched_.size() + 1; index-- > 0;)
            if (isAt(text, index) && accept(index)) return index;
        return notFound;
    }
    bool isAt(std::span<const Unit> text, std::size_t index) const {
        // Unit by unit, since most are short and the first that differs comes early.
        for (std::size_t offset = 0; offset < searched_.size(); ++offset)
            if (text[index + offset] != searched_[offset]) return false;
        return true;
    }

private:
    static constexpr std::size_t longestCompared = 64;

    template <class Accept>
    std::size_t findByBorders(std::span<const Unit> text, std::size_t start, Accept&& accept) const {
        std::size_t matched = 0;
        for (std::size_t index = start; index < text.size(); ++index) {
            while (matched > 0 && text[index] != searched_[matched]) matched = borders_[matched - 1];
            if (text[index] == searched_[matched]) ++matched;
            if (matched < searched_.size()) continue;
            if (accept(index + 1 - matched)) return index + 1 - matched;
            matched = borders_[matched - 1];
        }
        return notFound;
    }

    std::span<const Unit> searched_;
    std::vector<std::size_t> borders_; // for each prefix, the length of the longest that also ends it
};

// Calls a function with the text and a finder of its width; answers false where the searched text holds units
// that the text cannot.
template <class Function>
bool withFinder(StringView text, StringView searched, Function&& function) {
    return text.visit([&](auto units) {
        using Unit = std::remove_const_t<typename decltype(units)::element_type>;
        if ((sizeof(Unit) > 1) == searched.isWide()) {
            if constexpr (sizeof(Unit) > 1)
                function(units, Finder<Unit>(std::span(searched.wide(), searched.length())));
            else
                function(units, Finder<Unit>(std::span(searched.narrow(), searched.length())));
            return true;
        }
        std::vector<Unit> converted(searched.length());
        for (std::size_t index = 0; index < searched.length(); ++index) {
            converted[index] = static_cast<Unit>(searched[index]);
            if (converted[index] != searched[index]) return false;
        }
        function(units, Finder<Unit>(converted));
        return true;
    });
}

std::size_t findLast(StringView text, StringView searched) {
    std::size_t place = notFound;
    withFinder(text, searched,
               [&](auto units, const auto& finder) { place = finder.findLast(units, everywhere); });
    return place;
}

// ---- Prefixes and searching

// An empty prefix or suffix answers NO, which is meant: the platform looks for it and finds nothing.
BOOL hasPrefix(NSString self, SEL selector, NSString prefix) {
    rejectNil(prefix, self, selector);
    const ContentsOfBoth contents = contentsOfBoth(self, prefix);
    return !contents.second.isEmpty() && startsWith(contents.first, contents.second);
}
BOOL hasSuffix(NSString self, SEL selector, NSString suffix) {
    rejectNil(suffix, self, selector);
    const ContentsOfBoth contents = contentsOfBoth(self, suffix);
    return !contents.second.isEmpty() && endsWith(contents.first, contents.second);
}

NSRange rangeOfStringWithOptions(NSString self, SEL selector, NSString searched,
                                 NSStringCompareOptions options) {
    rejectNil(searched, self, selector);
    const ContentsOfBoth contents = contentsOfBoth(self, searched);
    const StringView text = contents.first;
    const StringView wanted = contents.second;
    if (wanted.isEmpty()) return noRange;
    if (options & NSCaseInsensitiveSearch) return findFolded(text, wanted, options);
    const bool backwards = (options & NSBackwardsSearch) != 0;
    std::size_t place = notFound;
    if (options & NSAnchoredSearch) {
        if (backwards ? endsWith(text, wanted) : startsWith(text, wanted))
            place = backwards ? text.length() - wanted.length() : 0;
    } else {
        place = backwards ? findLast(text, wanted) : findUnits(text, wanted);
    }
    return place == notFound ? noRange : NSRange{place, wanted.length()};
}
NSRange rangeOfString(NSString self, SEL selector, NSString searched) {
    return rangeOfStringWithOptions(self, selector, searched, 0);
}

// The units of a string for a set to be asked about.
Contents contentsFor(const Membership& isMember, NSString string) {
    return isMember.asksTheSet() ? steadyContentsOf(string) : contentsOf(string);
}

// Unlike trimming it takes a surrogate pair for one character.
NSRange rangeOfCharacterFromSet(NSString self, SEL selector, NSCharacterSet set) {
    rejectNil(set, self, selector);
    const Membership isMember(set);
    return contentsFor(isMember, self).visit([&](auto units) {
        for (std::size_t index = 0; index < units.size();) {
            const std::size_t start = index;
            if (isMember(utf8::nextCharacter(units.data(), units.size(), index)))
                return NSRange{start, index - start};
        }
        return noRange;
    });
}

// ---- Splitting and trimming

// What stands between the separators, empty parts included; the whole string when there are none.
NSArray partsBetween(NSString self, StringView text, const std::vector<NSRange>& separators) {
    if (separators.empty()) {
        const Retained<NSString> whole = adopt<NSString>(self.copy());
        return NSArray::arrayWithObject(whole);
    }
    std::vector<NSRange> parts;
    parts.reserve(separators.size() + 1);
    std::size_t start = 0;
    for (const NSRange separator : separators) {
        parts.push_back({start, separator.location - start});
        start = separator.location + separator.length;
    }
    parts.push_back({start, text.length() - start});
    return substrings(text, parts);
}

NSArray componentsSeparatedByString(NSString self, SEL selector, NSString separator) {
    rejectNil(separator, self, selector);
    const ContentsOfBoth contents = contentsOfBoth(self, separator);
    const StringView text = contents.first;
    const StringView between = contents.second;
    std::vector<NSRange> separators;
    if (!between.isEmpty())
        for (const std::size_t place : findAll(text, between))
            separators.push_back({place, between.length()});
    return partsBetween(self, text, separators);
}

// Like a search it takes a surrogate pair for one character.
NSArray componentsSeparatedByCharactersInSet(NSString self, SEL selector, NSCharacterSet set) {
    rejectNil(set, self, selector);
    const Membership isMember(set);
    const Contents text = contentsFor(isMember, self);
    std::vector<NSRange> separators;
    text.visit([&](auto units) {
        for (std::size_t index = 0; index < units.size();) {
            const std::size_t start = index;
            if (isMember(utf8::nextCharacter(units.data(), units.size(), index)))
                separators.push_back({start, index - start});
        }
    });
    return partsBetween(self, text, separators);
}

NSString stringByTrimmingCharactersInSet(NSString self, SEL selector, NSCharacterSet set) {
    rejectNil(set, self, selector);
    const Membership isMember(set);
    const Contents contents = contentsFor(isMember, self);
    const NSRange kept = contents.visit([&](auto units) {
        std::size_t begin = 0, end = units.size();
        while (begin < end && isMember.unit(units[begin])) ++begin;
        while (end > begin && isMember.unit(units[end - 1])) --end;
        return NSRange{begin, end - begin};
    });
    // The set's own test may have edited the string.
    return isMember.asksTheSet() ? makeString(contents.sub(kept.location, kept.length))
                                 : self.substringWithRange(kept);
}

} // namespace

NSRange findFolded(StringView text, StringView searched, NSStringCompareOptions options) {
    const bool isLiteral = (options & NSLiteralSearch) != 0;
    const bool isBackwards = (options & NSBackwardsSearch) != 0;
    const FoldedText folded = foldedText(text, isLiteral);
    const std::vector<char32_t> wanted = foldedText(searched, isLiteral).characters;
    const std::span<const char32_t> characters = folded.characters;
    if (wanted.size() > characters.size()) return noRange;
    const auto isWhole = [&](std::size_t index) {
        return folded.isBoundary(index) && folded.isBoundary(index + wanted.size());
    };
    const Finder<char32_t> finder(wanted);
    std::size_t place = notFound;
    if (options & NSAnchoredSearch) {
        const std::size_t anchor = isBackwards ? characters.size() - wanted.size() : 0;
        if (finder.isAt(characters, anchor) && isWhole(anchor)) place = anchor;
    } else {
        place = isBackwards ? finder.findLast(characters, isWhole) : finder.find(characters, 0, isWhole);
    }
    if (place == notFound) return noRange;
    const std::size_t start = folded.origins[place];
    return {start, folded.origins[place + wanted.size()] - start};
}

std::size_t findUnit(StringView text, char16_t unit, std::size_t start) {
    return text.visit([&](auto units) -> std::size_t {
        using Unit = std::remove_const_t<typename decltype(units)::element_type>;
        const auto wanted = static_cast<Unit>(unit);
        if (wanted != unit || start > units.size()) return notFound;
        const Unit* const end = units.data() + units.size();
        const Unit* const found = findUnitIn(units.data() + start, end, wanted);
        return found == end ? notFound : static_cast<std::size_t>(found - units.data());
    });
}

std::size_t findUnits(StringView text, StringView searched, std::size_t start) {
    std::size_t place = notFound;
    withFinder(text, searched,
               [&](auto units, const auto& finder) { place = finder.find(units, start, everywhere); });
    return place;
}

std::vector<std::size_t> findAll(StringView text, StringView searched) {
    std::vector<std::size_t> places;
    withFinder(text, searched, [&](auto units, const auto& finder) {
        for (std::size_t place = finder.find(units, 0, everywhere); place != notFound;
             place = finder.find(units, place + searched.length(), everywhere))
            places.push_back(place);
    });
    return places;
}

std::vector<MethodRow> stringSearchingMethods() {
    return {
        instanceMethod("hasPrefix:", hasPrefix),
        instanceMethod("hasSuffix:", hasSuffix),
        instanceMethod("rangeOfString:", rangeOfString),
        instanceMethod("rangeOfString:options:", rangeOfStringWithOptions),
        instanceMethod("rangeOfCharacterFromSet:", rangeOfCharacterFromSet),
        instanceMethod("componentsSeparatedByString:", componentsSeparatedByString),
        instanceMethod("componentsSeparatedByCharactersInSet:", componentsSeparatedByCharactersInSet),
        instanceMethod("stringByTrimmingCharactersInSet:", stringByTrimmingCharactersInSet),
    };
}

} // namespace tessarin::embedded
