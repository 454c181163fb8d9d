// The embedded platform's NSScanner. A scan costs what it reads, however long the string is.
#include "TessarinPlatform/NSScanner.h"
#include "TessarinPlatform/ColorReading.h"
#include "platform/embedded/foundation/CharacterSetStorage.h"
#include "platform/embedded/foundation/NumberReading.h"
#include "platform/embedded/foundation/StringComparison.h"
#include "platform/services/HexadecimalDigits.h"
#include "platform/services/Utf8.h"

#include <algorithm>
#include <limits>

namespace tessarin::embedded {
namespace {

struct ScannerStorage {
    Retained<NSString> string; // one that keeps its units itself
    std::size_t location = 0;
    Retained<NSCharacterSet> skipped;
    bool isCaseSensitive = false;

    StringView text() const {
        return string ? embedded::storageOf<StringStorage>(string).view() : StringView();
    }
};

ScannerStorage& storageOf(NSScanner scanner) { return embedded::storageOf<ScannerStorage>(scanner); }

// ---- Making and state

NSScanner initWithString(NSScanner self, SEL selector, NSString string) {
    Retained<NSScanner> scanner = adopt(self);
    rejectNil(string, self, selector);
    ScannerStorage& storage = storageOf(self);
    // A class derived from NSString would be asked for every unit again at each scan.
    const bool keepsUnits = isPlainString(string);
    storage.string = keepsUnits ? retain(string) : newString(contentsOf(string));
    storage.skipped = retain(NSCharacterSet::whitespaceAndNewlineCharacterSet());
    return scanner.leak();
}
NSScanner scannerWithString(Class self, SEL, NSString string) {
    return adopt(as<NSScanner>(self.alloc()).initWithString(string)).autorelease();
}

NSString string(NSScanner self, SEL) { return storageOf(self).string; }

NSUInteger scanLocation(NSScanner self, SEL) { return storageOf(self).location; }
void setScanLocation(NSScanner self, SEL selector, NSUInteger location) {
    if (location > storageOf(self).text().length())
        raiseFrom(NSRangeException(), self, selector, "Range or index out of bounds");
    storageOf(self).location = location;
}

NSCharacterSet charactersToBeSkipped(NSScanner self, SEL) { return storageOf(self).skipped; }
void setCharactersToBeSkipped(NSScanner self, SEL, NSCharacterSet characters) {
    storageOf(self).skipped = adopt(as<NSCharacterSet>(characters.copy()));
}

BOOL caseSensitive(NSScanner self, SEL) { return storageOf(self).isCaseSensitive; }
void setCaseSensitive(NSScanner self, SEL, BOOL counts) { storageOf(self).isCaseSensitive = counts != NO; }

// The end of the characters from a place on that are in the set, or are not.
std::size_t endOfCharacters(StringView text, std::size_t place, NSCharacterSet set, bool areMembers) {
    const Membership isMember(set);
    return text.visit([&](auto units) {
        while (place < units.size()) {
            std::size_t following = place;
            if (isMember(utf8::nextCharacter(units.data(), units.size(), following)) != areMembers) break;
            place = following;
        }
        return place;
    });
}

// Where the next scan looks.
std::size_t startOfScan(const ScannerStorage& scanner) {
    if (!scanner.skipped) return scanner.location;
    return endOfCharacters(scanner.text(), scanner.location, scanner.skipped, true);
}

BOOL isAtEnd(NSScanner self, SEL) {
    const ScannerStorage& scanner = storageOf(self);
    return startOfScan(scanner) == scanner.text().length();
}

// ---- Numbers

// The prefix counts as one only where a digit follows it: 0x alone is the number 0 and then an x.
template <class Integer>
std::optional<Integer> readHexadecimal(StringView text, std::size_t& place) {
    return text.visit([&](auto units) -> std::optional<Integer> {
        const auto digitAt = [&](std::size_t index) {
            return index < units.size() ? hexadecimalValue(units[index]) : -1;
        };
        if (digitAt(place) == 0 && digitAt(place + 2) >= 0 && (units[place + 1] | 0x20) == 'x') place += 2;
        int digit = digitAt(place);
        if (digit < 0) return {};
        using Limits = std::numeric_limits<Integer>;
        Integer value = 0, lost = 0; // what goes out at the top
        for (; digit >= 0; digit = digitAt(++place)) {
            lost |= value >> (Limits::digits - 4);
            value = value << 4 | static_cast<Integer>(digit);
        }
        return lost ? Limits::max() : value;
    });
}

// The number of a text of eight digits, as those of colours are.
std::optional<unsigned> numberOfEightDigits(StringView text) {
    constexpr std::size_t count = 8; // a constant, so that the loop becomes a sequence
    if (text.length() != count || text.isWide()) return {};
    unsigned number = 0;
    int all = 0; // negative as soon as one is no digit
    for (std::size_t index = 0; index < count; ++index) {
        const int digit = hexadecimalValue(text.narrow()[index]);
        all |= digit;
        number = number << 4 | static_cast<unsigned>(digit);
    }
    if (all < 0) return {};
    return number;
}

// Scans what a reader finds at the place.
template <class Number>
BOOL scanNumber(NSScanner self, Number* result,
                std::optional<Number> (*read)(StringView text, std::size_t& place)) {
    ScannerStorage& scanner = storageOf(self);
    std::size_t place = startOfScan(scanner);
    const std::optional<Number> number = read(scanner.text(), place);
    if (!number) return NO;
    scanner.location = place;
    if (result) *result = *number;
    return YES;
}

template <class Integer>
BOOL scanHexadecimal(NSScanner self, SEL, Integer* result) {
    return scanNumber(self, result, readHexadecimal<Integer>);
}
template <class Integer>
BOOL scanDecimal(NSScanner self, SEL, Integer* result) {
    return scanNumber(self, result, readInteger<Integer>);
}
BOOL scanDouble(NSScanner self, SEL, double* result) { return scanNumber(self, result, readReal); }

// ---- Text

// Takes over what lies between two places, unless it is nothing.
BOOL scanRange(ScannerStorage& scanner, std::size_t start, std::size_t end, NSString* result) {
    if (start == end) return NO;
    scanner.location = end;
    if (result) *result = makeString(scanner.text().sub(start, end - start));
    return YES;
}

BOOL scanCharactersFromSet(NSScanner self, SEL selector, NSCharacterSet characters, NSString* result) {
    rejectNil(characters, self, selector);
    ScannerStorage& scanner = storageOf(self);
    const std::size_t start = startOfScan(scanner);
    return scanRange(scanner, start, endOfCharacters(scanner.text(), start, characters, true), result);
}
BOOL scanUpToCharactersFromSet(NSScanner self, SEL selector, NSCharacterSet characters, NSString* result) {
    rejectNil(characters, self, selector);
    ScannerStorage& scanner = storageOf(self);
    const std::size_t start = startOfScan(scanner);
    return scanRange(scanner, start, endOfCharacters(scanner.text(), start, characters, false), result);
}

// How many units at the start of a text are the same as another, which is not empty.
std::size_t lengthOfMatch(StringView text, StringView wanted, bool isCaseSensitive) {
    if (isCaseSensitive) return startsWith(text, wanted) ? wanted.length() : 0;
    // However it is written, it has no more characters than it has when it is folded, of two units at most;
    // and one more tells whether a mark follows.
    const std::size_t most = 2 * foldedText(wanted, false).characters.size() + 2;
    const StringView window = text.sub(0, std::min(most, text.length()));
    return findFolded(window, wanted, NSCaseInsensitiveSearch | NSAnchoredSearch).length;
}

// Where a text stands in another that is not empty, and its end where it does not.
std::size_t startOfMatch(StringView text, StringView wanted, bool isCaseSensitive) {
    constexpr auto notFound = static_cast<std::size_t>(NSNotFound);
    if (isCaseSensitive) return std::min(findUnits(text, wanted), text.length());
    // Looking at ever more of the text, so that what lies far behind the match is never folded.
    for (std::size_t size = 64 + 4 * wanted.length();; size *= 2) {
        const bool isWhole = size >= text.length();
        const StringView window = isWhole ? text : text.sub(0, size);
        const NSRange found = findFolded(window, wanted, NSCaseInsensitiveSearch);
        // What ends where the window does may go on behind it.
        if (found.location != notFound && (isWhole || found.location + found.length < size))
            return found.location;
        if (isWhole) return text.length();
    }
}

BOOL scanString(NSScanner self, SEL selector, NSString wanted, NSString* result) {
    rejectNil(wanted, self, selector);
    ScannerStorage& scanner = storageOf(self);
    const std::size_t start = startOfScan(scanner); // first: an application's set may edit what is wanted
    const Contents units = contentsOf(wanted);
    if (units.isEmpty()) return NO;
    const std::size_t length = lengthOfMatch(scanner.text().from(start), units, scanner.isCaseSensitive);
    return scanRange(scanner, start, start + length, result);
}
BOOL scanUpToString(NSScanner self, SEL selector, NSString wanted, NSString* result) {
    rejectNil(wanted, self, selector);
    ScannerStorage& scanner = storageOf(self);
    const std::size_t start = startOfScan(scanner); // first, as above
    const Contents units = contentsOf(wanted);
    const StringView rest = scanner.text().from(start);
    const std::size_t length =
        units.isEmpty() ? rest.length() : startOfMatch(rest, units, scanner.isCaseSensitive);
    return scanRange(scanner, start, start + length, result);
}

} // namespace

ClassDescription describeNSScanner() {
    return {
        .name = "NSScanner",
        .superclass = "NSObject",
        .storage = storageLayout<ScannerStorage>(),
        .methods = {classMethod("scannerWithString:", scannerWithString),
                    instanceMethod("initWithString:", initWithString),
                    instanceMethod("string", string),
                    instanceMethod("scanLocation", scanLocation),
                    instanceMethod("setScanLocation:", setScanLocation),
                    instanceMethod("charactersToBeSkipped", charactersToBeSkipped),
                    instanceMethod("setCharactersToBeSkipped:", setCharactersToBeSkipped),
                    instanceMethod("caseSensitive", caseSensitive),
                    instanceMethod("setCaseSensitive:", setCaseSensitive),
                    instanceMethod("isAtEnd", isAtEnd),
                    instanceMethod("scanHexInt:", scanHexadecimal<unsigned>),
                    instanceMethod("scanHexLongLong:", scanHexadecimal<unsigned long long>),
                    instanceMethod("scanInt:", scanDecimal<int>),
                    instanceMethod("scanInteger:", scanDecimal<NSInteger>),
                    instanceMethod("scanLongLong:", scanDecimal<long long>),
                    instanceMethod("scanDouble:", scanDouble),
                    instanceMethod("scanString:intoString:", scanString),
                    instanceMethod("scanCharactersFromSet:intoString:", scanCharactersFromSet),
                    instanceMethod("scanUpToString:intoString:", scanUpToString),
                    instanceMethod("scanUpToCharactersFromSet:intoString:", scanUpToCharactersFromSet)},
    };
}

} // namespace tessarin::embedded

namespace tessarin {

unsigned scannedHexInt(NSString string) {
    using namespace embedded;
    const Contents text = contentsOf(string);
    if (const auto number = numberOfEightDigits(text)) return *number;
    std::size_t place = 0;
    // Most begin with a digit, which is no white space.
    if (text.isEmpty() || hexadecimalValue(text[0]) < 0)
        place = endOfCharacters(text, 0, NSCharacterSet::whitespaceAndNewlineCharacterSet(), true);
    return readHexadecimal<unsigned>(text, place).value_or(0);
}

} // namespace tessarin
