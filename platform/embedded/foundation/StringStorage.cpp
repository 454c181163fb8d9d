#include "platform/embedded/foundation/StringStorage.h"

#include "TessarinPlatform/NSArray.h"
#include "platform/embedded/foundation/ArrayStorage.h"
#include "platform/embedded/foundation/RangeCheck.h"
#include "platform/services/Utf8.h"

#include <algorithm>
#include <cstring>

namespace tessarin::embedded {
namespace {

// Room made ahead on the word of a caller.
constexpr std::size_t largestReservation = std::size_t{1} << 20;

bool needsWide(StringView contents) {
    return contents.isWide() && !fitsNarrow({contents.wide(), contents.length()});
}

// Writes units at an index of a buffer of either width; wide ones to a narrow buffer when they are known to
// fit.
void copyUnits(StringView contents, void* units, bool isWide, std::size_t index) {
    if (contents.isEmpty()) return;
    if (contents.isWide() == isWide) {
        const int shift = isWide ? 1 : 0;
        std::memcpy(static_cast<std::byte*>(units) + (index << shift), contents.narrow(),
                    contents.length() << shift);
        return;
    }
    contents.visit([&](auto source) {
        if (isWide)
            std::copy(source.begin(), source.end(), static_cast<char16_t*>(units) + index);
        else
            std::transform(source.begin(), source.end(), static_cast<std::uint8_t*>(units) + index,
                           [](char16_t unit) { return static_cast<std::uint8_t>(unit); });
    });
}

} // namespace

bool fitsNarrow(std::span<const char16_t> units) {
    std::size_t index = 0;
    for (; index + 32 <= units.size(); index += 32) {
        unsigned all = 0;
        for (std::size_t offset = 0; offset < 32; ++offset) all |= units[index + offset];
        if (all > 0xFF) return false;
    }
    unsigned all = 0;
    for (; index < units.size(); ++index) all |= units[index];
    return all <= 0xFF;
}
void StringView::copyTo(char16_t* units) const { copyUnits(*this, units, true, 0); }

bool isAscii(StringView units) {
    return !units.isWide() && utf8::isAscii({reinterpret_cast<const char*>(units.narrow()), units.length()});
}

bool equalUnits(StringView left, StringView right) {
    if (left.length() != right.length()) return false;
    if (left.isEmpty()) return true;
    if (left.isWide() == right.isWide())
        return std::memcmp(left.narrow(), right.narrow(), left.length() << (left.isWide() ? 1 : 0)) == 0;
    return left.visit([&](auto leftUnits) {
        return right.visit([&](auto rightUnits) {
            return std::equal(leftUnits.begin(), leftUnits.end(), rightUnits.begin());
        });
    });
}

NSComparisonResult compareUnits(StringView left, StringView right) {
    const std::size_t common = std::min(left.length(), right.length());
    int order = 0;
    if (!left.isWide() && !right.isWide()) {
        if (common > 0) order = std::memcmp(left.narrow(), right.narrow(), common);
    } else {
        left.visit([&](auto leftUnits) {
            right.visit([&](auto rightUnits) {
                const auto differing =
                    std::mismatch(leftUnits.begin(), leftUnits.begin() + static_cast<std::ptrdiff_t>(common),
                                  rightUnits.begin());
                if (differing.first != leftUnits.begin() + static_cast<std::ptrdiff_t>(common))
                    order = *differing.first < *differing.second ? -1 : 1;
            });
        });
    }
    if (order == 0 && left.length() != right.length()) order = left.length() < right.length() ? -1 : 1;
    return order < 0 ? NSOrderedAscending : order > 0 ? NSOrderedDescending : NSOrderedSame;
}

std::size_t StringStorage::computeHash() const {
    const std::size_t hash = hashOf(view());
    hash_.store(hash, std::memory_order_relaxed);
    return hash;
}

void StringStorage::append(StringView contents) {
    const std::size_t length = contents_.length();
    const bool isWide = contents_.isWide();
    if (contents.isWide() == isWide && length + contents.length() <= capacity_) [[likely]] {
        const int shift = isWide ? 1 : 0;
        if (!contents.isEmpty())
            std::memcpy(buffer_.get() + (length << shift), contents.narrow(), contents.length() << shift);
        contents_ = {buffer_.get(), length + contents.length(), isWide};
        hash_.store(0, std::memory_order_relaxed);
        return;
    }
    replace({length, 0}, contents);
}

void StringStorage::append(char16_t unit) {
    if (unit <= 0xFF && !contents_.isWide()) {
        const auto narrow = static_cast<std::uint8_t>(unit);
        append(StringView(std::span(&narrow, 1)));
    } else {
        append(StringView(std::span<const char16_t>(&unit, 1)));
    }
}

void StringStorage::appendCharacter(char32_t character) {
    if (character <= 0xFFFF) {
        append(static_cast<char16_t>(character));
    } else {
        append(static_cast<char16_t>(0xD7C0 + (character >> 10)));
        append(static_cast<char16_t>(0xDC00 + (character & 0x3FF)));
    }
}

void StringStorage::appendUtf8(std::string_view text) {
    const utf8::Measure measure = utf8::measure(text);
    if (!measure.wellFormed || measure.highest <= 0x7F) return append(text);
    std::u16string units(measure.units, u'\0');
    utf8::decode(text, units.data());
    append(StringView(std::u16string_view(units)));
}

void StringStorage::appendRepeated(char16_t unit, std::size_t count) {
    const std::u16string units(count, unit);
    append(StringView(std::u16string_view(units)));
}

void StringStorage::replace(NSRange range, StringView contents) {
    if (contains(contents)) {
        StringStorage copied;
        copied.append(contents);
        return replace(range, copied.view());
    }
    StringView old = contents_;
    const std::size_t kept = old.length() - range.length;
    const std::size_t length = kept + contents.length();
    const bool isWide = (old.isWide() && kept > 0) || needsWide(contents);
    std::size_t capacity = capacity_; // of this buffer in units of the new width
    if (kept == 0 && isWide != old.isWide()) {
        // Nothing remains, so the buffer can change its width where it stands.
        capacity = isWide ? capacity / 2 : capacity * 2;
        old = {buffer_.get(), 0, isWide};
        range = {0, 0};
    }
    const std::size_t oldEnd = range.location + range.length;
    const std::size_t newEnd = range.location + contents.length();
    if (isWide != old.isWide() || length > capacity) {
        const auto oldBuffer =
            reallocate(std::max(length, length > old.length() ? old.length() * 2 : 0), isWide);
        copyUnits(old.sub(0, range.location), buffer_.get(), isWide, 0);
        copyUnits(old.from(oldEnd), buffer_.get(), isWide, newEnd);
    } else {
        capacity_ = capacity;
        const int shift = isWide ? 1 : 0;
        if (oldEnd < old.length())
            std::memmove(buffer_.get() + (newEnd << shift), buffer_.get() + (oldEnd << shift),
                         (old.length() - oldEnd) << shift);
    }
    copyUnits(contents, buffer_.get(), isWide, range.location);
    contents_ = {buffer_.get(), length, isWide};
    hash_.store(0, std::memory_order_relaxed);
}

void StringStorage::reserve(std::size_t units) {
    units = std::min(units, largestReservation);
    if (units <= capacity_) return;
    const StringView old = contents_;
    const auto oldBuffer = reallocate(units, old.isWide());
    copyUnits(old, buffer_.get(), old.isWide(), 0);
    contents_ = {buffer_.get(), old.length(), old.isWide()};
}

void* StringStorage::placeInline(void* space, std::size_t length, bool isWide) {
    if (isWide)
        static_cast<char16_t*>(space)[length] = 0;
    else
        static_cast<std::uint8_t*>(space)[length] = 0;
    contents_ = {space, length, isWide};
    return space;
}

std::unique_ptr<std::byte[]> StringStorage::reallocate(std::size_t capacity, bool isWide) {
    constexpr std::size_t smallest = 16;
    capacity = std::max(capacity, smallest);
    // No object takes half of all addresses.
    if (capacity >= (SIZE_MAX / 2) >> (isWide ? 1 : 0)) throw std::bad_alloc();
    std::unique_ptr<std::byte[]> buffer(new std::byte[capacity << (isWide ? 1 : 0)]);
    capacity_ = capacity;
    buffer.swap(buffer_);
    return buffer;
}

// Whether units belong to the buffer that a change would move.
bool StringStorage::contains(StringView contents) const {
    if (contents.isEmpty() || !buffer_) return false;
    const auto begin = reinterpret_cast<std::uintptr_t>(buffer_.get());
    const auto place = reinterpret_cast<std::uintptr_t>(contents.narrow());
    return place >= begin && place < begin + (capacity_ << (contents_.isWide() ? 1 : 0));
}

Contents gatheredContents(NSString string) {
    const NSUInteger length = string.length();
    // Not make_unique: the units need no zeros first.
    std::unique_ptr<char16_t[]> units(new char16_t[length]);
    if (length > 0) string.getCharacters_range(units.get(), {0, length});
    return Contents(std::move(units), length);
}

Contents steadyContentsOf(NSString string) {
    const StringStorage* const storage = string ? directStorage(string) : nullptr;
    if (!storage || string.object()->isa == "NSString"_class.object()) return contentsOf(string);
    std::unique_ptr<char16_t[]> units(new char16_t[storage->length()]);
    storage->view().copyTo(units.get());
    return Contents(std::move(units), storage->length());
}

ContentsOfBoth gatheredContentsOfBoth(NSString first, NSString second) {
    if (directStorage(second)) return {gatheredContents(first), contentsOf(second)}; // in this order
    Contents gathered = gatheredContents(second);
    return {contentsOf(first), std::move(gathered)};
}

Retained<NSString> newString(StringView contents) {
    if (contents.isEmpty()) return retain(""_ns);
    if (needsWide(contents))
        return newString<char16_t>(contents.length(),
                                   [&](char16_t* units) { copyUnits(contents, units, true, 0); });
    return newString<std::uint8_t>(contents.length(),
                                   [&](std::uint8_t* units) { copyUnits(contents, units, false, 0); });
}

Retained<NSString> newAsciiString(std::string_view ascii) {
    if (ascii.empty()) return retain(""_ns);
    return newString<std::uint8_t>(
        ascii.size(), [&](std::uint8_t* units) { std::memcpy(units, ascii.data(), ascii.size()); });
}

Retained<NSString> newStringFromUtf8(std::string_view text) {
    if (utf8::isAscii(text)) return newAsciiString(text);
    const utf8::Measure measure = utf8::measure(text);
    if (!measure.wellFormed) return nil;
    if (measure.highest > 0xFF)
        return newString<char16_t>(measure.units, [&](char16_t* units) { utf8::decode(text, units); });
    return newString<std::uint8_t>(measure.units, [&](std::uint8_t* units) { utf8::decode(text, units); });
}

std::string utf8Of(StringView units) {
    return units.visit([](auto span) {
        std::string text(utf8::encodedLength(span.data(), span.size()), '\0');
        utf8::encode(span.data(), span.size(), text.data());
        return text;
    });
}

NSArray substrings(StringView text, const std::vector<NSRange>& ranges) {
    const auto newPart = [&](NSUInteger index) {
        return newString(text.sub(ranges[index].location, ranges[index].length));
    };
    return newArrayOfNew(ranges.size(), newPart).autorelease();
}

std::string describe(NSRange range) {
    return "{" + std::to_string(range.location) + ", " + std::to_string(range.length) + "}";
}

void checkRange(NSRange range, std::size_t length, NSObject self, SEL selector) {
    if (!isWithin(range, length)) [[unlikely]]
        raiseFrom(NSRangeException(), self, selector,
                  "Range " + describe(range) + " out of bounds; string length " + std::to_string(length));
}

} // namespace tessarin::embedded
