// The units of the embedded platform's strings, and what its other classes need of strings:
//
//   Contents text = contentsOf(string);           // units of any NSString, to be read; nil is empty
//   NSString made = makeString(text.sub(2, 5));   // an autoreleased NSString
//   NSString name = makeLatin1("count");          // likewise, from ASCII or Latin-1
//   std::string bytes = utf8Of(string);           // UTF-8, an unpaired surrogate as U+FFFD
//
//   StringStorage built;                          // a string under construction
//   built.append(text);
//   built.append(u';');
//   return makeString(built.view());
//
// A string keeps 8 bits for each unit where all its units are Latin-1's, 16 bits otherwise.
#pragma once

#include "TessarinPlatform/Exceptions.h"
#include "TessarinPlatform/NSMutableString.h"
#include "TessarinPlatform/Retained.h"
#include "platform/embedded/runtime/BuiltInClass.h"

#include <atomic>
#include <cstdint>
#include <memory>
#include <span>
#include <string>
#include <string_view>
#include <vector>

namespace tessarin::embedded {

// Units that belong to someone else. Two words, so that it travels in registers.
class StringView {
public:
    constexpr StringView() = default;
    constexpr StringView(const void* units, std::size_t length, bool isWide)
        : units_(units), lengthAndWidth_(length << 1 | std::size_t{isWide}) {}
    constexpr StringView(std::span<const std::uint8_t> units)
        : StringView(units.data(), units.size(), false) {}
    constexpr StringView(std::span<const char16_t> units) : StringView(units.data(), units.size(), true) {}
    constexpr StringView(std::u16string_view units) : StringView(units.data(), units.size(), true) {}
    constexpr explicit StringView(std::string_view latin1)
        : StringView(latin1.data(), latin1.size(), false) {}

    constexpr std::size_t length() const { return lengthAndWidth_ >> 1; }
    constexpr bool isEmpty() const { return length() == 0; }
    constexpr bool isWide() const { return (lengthAndWidth_ & 1) != 0; }
    // Only one of them is valid, as isWide says.
    const std::uint8_t* narrow() const { return static_cast<const std::uint8_t*>(units_); }
    const char16_t* wide() const { return static_cast<const char16_t*>(units_); }

    char16_t operator[](std::size_t index) const { return isWide() ? wide()[index] : narrow()[index]; }

    // Within bounds.
    StringView sub(std::size_t location, std::size_t length) const {
        return {narrow() + (location << (isWide() ? 1 : 0)), length, isWide()};
    }
    StringView from(std::size_t location) const { return sub(location, length() - location); }

    // Calls a generic function with the units as a span of their own width.
    template <class Function>
    decltype(auto) visit(Function&& function) const {
        return isWide() ? function(std::span(wide(), length())) : function(std::span(narrow(), length()));
    }

    // Copies the units to 16-bit ones.
    void copyTo(char16_t* units) const;

private:
    const void* units_ = nullptr;
    std::size_t lengthAndWidth_ = 0;
};

// Whether all units are Latin-1's.
bool fitsNarrow(std::span<const char16_t> units);

// Whether all units are of ASCII, kept in 8 bits each.
bool isAscii(StringView units);
bool equalUnits(StringView left, StringView right);
// By unit value; the shorter of two that agree comes first.
NSComparisonResult compareUnits(StringView left, StringView right);
inline bool startsWith(StringView text, StringView prefix) {
    return text.length() >= prefix.length() && equalUnits(text.sub(0, prefix.length()), prefix);
}
inline bool endsWith(StringView text, StringView suffix) {
    return text.length() >= suffix.length() && equalUnits(text.from(text.length() - suffix.length()), suffix);
}
// The index of a unit, or of a text that is not empty, at or after a start; NSNotFound when there is none.
// The time is linear.
std::size_t findUnit(StringView text, char16_t unit, std::size_t start = 0);
std::size_t findUnits(StringView text, StringView searched, std::size_t start = 0);
// Every occurrence of a text that is not empty, from the start, without overlap.
std::vector<std::size_t> findAll(StringView text, StringView searched);

// The same for equal units, whatever width they are kept in, and another in each process.
std::size_t hashOf(StringView units);

// What a string object keeps; also a string under construction.
class StringStorage {
public:
    StringStorage() = default;
    StringStorage(const StringStorage&) = delete;
    StringStorage& operator=(const StringStorage&) = delete;
    ~StringStorage() = default;

    std::size_t length() const { return contents_.length(); }
    StringView view() const { return contents_; }
    std::size_t hash() const {
        const std::size_t known = hash_.load(std::memory_order_relaxed);
        return known != 0 ? known : computeHash();
    }

    void assign(StringView contents) { replace({0, length()}, contents); }
    void append(StringView contents);
    void append(char16_t unit);
    void appendCharacter(char32_t character);
    void append(std::string_view latin1) { append(StringView(latin1)); }
    void appendUtf8(std::string_view text); // ill-formed text is taken as Latin-1
    void appendRepeated(char16_t unit, std::size_t count);
    // The range is within bounds. The contents may be units of this very string.
    void replace(NSRange range, StringView contents);
    // A hint.
    void reserve(std::size_t units);

    // Makes units that follow the object its own, to be written by the caller before the object is used. The
    // units are followed by one that is zero.
    void* placeInline(void* space, std::size_t length, bool isWide);
    static std::size_t inlineSize(std::size_t length, bool isWide) {
        return (length + 1) << (isWide ? 1 : 0);
    }

private:
    // Provides a new buffer and answers the old one, which still holds the units.
    std::unique_ptr<std::byte[]> reallocate(std::size_t capacity, bool isWide);
    bool contains(StringView contents) const;
    std::size_t computeHash() const;

    std::unique_ptr<std::byte[]> buffer_; // none while the units stand behind the object
    StringView contents_;
    std::size_t capacity_ = 0;                 // of the buffer, in units
    mutable std::atomic<std::size_t> hash_{0}; // 0 when it is not known
};

// Whether an object, which is not nil, is of exactly the immutable class: no operation is overridden, and its
// units never change.
inline bool isPlainString(NSObject object) { return object.object()->isa == "NSString"_class.object(); }

// NSString's own primitive operations.
NSUInteger lengthOfString(NSString self, SEL);
unichar characterOfStringAtIndex(NSString self, SEL selector, NSUInteger index);

// The storage of a string that no subclass has taken the primitive operations from; null for any other.
inline StringStorage* directStorage(NSString string) {
    const Object* isa = string.object()->isa;
    if (isa == "NSString"_class.object() || isa == "NSMutableString"_class.object()
        || (answersWith(string, "length"_sel, lengthOfString)
            && answersWith(string, "characterAtIndex:"_sel, characterOfStringAtIndex)))
        return &storageOf<StringStorage>(string);
    return nullptr;
}

// The units of any string. Those of a string with storage of its own are looked at where they are, valid
// until it is changed or goes; others are gathered through the string's primitive operations.
class Contents : public StringView {
public:
    explicit Contents(StringView direct) : StringView(direct) {}
    Contents(std::unique_ptr<char16_t[]> gathered, std::size_t length)
        : StringView(std::span<const char16_t>(gathered.get(), length)), gathered_(std::move(gathered)) {}

private:
    std::unique_ptr<char16_t[]> gathered_;
};
Contents gatheredContents(NSString string);
inline Contents contentsOf(NSString string) {
    if (!string) return Contents(StringView());
    if (const StringStorage* storage = directStorage(string)) return Contents(storage->view());
    return gatheredContents(string);
}

// The same where an application's code runs while the units are in use, such as the test of its own character
// set: a copy where that code could edit the string.
Contents steadyContentsOf(NSString string);

// The units of two strings, neither of them nil. Gathering those of one is its class's own code, which may
// edit the other string; that one is looked at afterwards.
struct ContentsOfBoth {
    Contents first;
    Contents second;
};
ContentsOfBoth gatheredContentsOfBoth(NSString first, NSString second);
inline ContentsOfBoth contentsOfBoth(NSString first, NSString second) {
    const StringStorage* const firstStorage = directStorage(first);
    const StringStorage* const secondStorage = directStorage(second);
    if (!firstStorage || !secondStorage) return gatheredContentsOfBoth(first, second);
    return {Contents(firstStorage->view()), Contents(secondStorage->view())};
}

// A new immutable string that the caller owns. Wide units that all fit are kept narrow.
Retained<NSString> newString(StringView contents);
// The same, its units written by the caller: fill(units) gets a place for `length` of them.
template <class Unit, class Fill>
Retained<NSString> newString(std::size_t length, Fill&& fill);
// From text that is known to be ASCII.
Retained<NSString> newAsciiString(std::string_view ascii);
// From UTF-8; nil when it is ill-formed.
Retained<NSString> newStringFromUtf8(std::string_view text);

inline NSString makeString(StringView contents) { return newString(contents).autorelease(); }
inline NSString makeLatin1(std::string_view latin1) { return makeString(StringView(latin1)); }
std::string utf8Of(StringView units);
inline std::string utf8Of(NSString string) { return utf8Of(contentsOf(string)); }

// An array of the parts of a text.
NSArray substrings(StringView text, const std::vector<NSRange>& ranges);

// The wording of a range in an exception: {2, 3}.
std::string describe(NSRange range);
// Raises unless the range is within bounds.
void checkRange(NSRange range, std::size_t length, NSObject self, SEL selector);

// Rows of NSString's table, in the file of each subject.
std::vector<MethodRow> stringComparisonMethods();
std::vector<MethodRow> stringLocalizedComparisonMethods();
std::vector<MethodRow> stringSearchingMethods();
std::vector<MethodRow> stringNumberMethods();
std::vector<MethodRow> stringPathMethods();
std::vector<MethodRow> stringCodingMethods();

template <class Unit, class Fill>
Retained<NSString> newString(std::size_t length, Fill&& fill) {
    constexpr bool isWide = sizeof(Unit) > 1;
    const auto [object, storage, space] =
        createInstanceWith<StringStorage>("NSString"_class, StringStorage::inlineSize(length, isWide));
    Retained<NSString> string = adopt(NSString(object));
    fill(static_cast<Unit*>(storage.placeInline(space, length, isWide)));
    return string;
}

} // namespace tessarin::embedded
