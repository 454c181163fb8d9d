// The embedded platform's NSCharacterSet.
#include "TessarinPlatform/NSCharacterSet.h"
#include "platform/embedded/foundation/CharacterSetStorage.h"
#include "platform/embedded/foundation/StringStorage.h"
#include "platform/services/Utf8.h"

#include <algorithm>

namespace tessarin::embedded {
namespace {

using unicode::Range;

constexpr char32_t lastLatin1 = 0xFF;
constexpr char32_t firstListed = 0x100;
constexpr char32_t lastCharacter = 0x10FFFF;

// The zero-width space is a member and the line and paragraph separators are not, which is the platform's
// definition.
constexpr Range whitespaceRanges[] = {{0x09, 0x09},     {0x20, 0x20},     {0xA0, 0xA0},     {0x1680, 0x1680},
                                      {0x2000, 0x200B}, {0x202F, 0x202F}, {0x205F, 0x205F}, {0x3000, 0x3000}};
constexpr Range whitespaceAndNewlineRanges[] = {
    {0x09, 0x0D},     {0x20, 0x20},     {0x85, 0x85},     {0xA0, 0xA0},     {0x1680, 0x1680},
    {0x2000, 0x200B}, {0x2028, 0x2029}, {0x202F, 0x202F}, {0x205F, 0x205F}, {0x3000, 0x3000}};

CharacterSetStorage& storageOfSet(NSCharacterSet set) { return storageOf<CharacterSetStorage>(set); }

void addLatin1(CharacterSetStorage& storage, Range range) {
    for (char32_t character = range.first; character <= std::min(range.last, lastLatin1); ++character)
        storage.latin1[character >> 6] |= std::uint64_t{1} << (character & 63);
}

Retained<NSCharacterSet> newSet(Class self) { return adopt(send<NSCharacterSet>(self.alloc(), "init"_sel)); }

// ---- Sets known beforehand

// Made once, of ranges that are constant, and kept.
NSCharacterSet makeKept(std::span<const Range> ranges) {
    Retained<NSCharacterSet> set = newSet("NSCharacterSet"_class);
    CharacterSetStorage& storage = storageOfSet(set);
    for (const Range range : ranges) addLatin1(storage, range);
    storage.ranges = ranges;
    makeImmortal(set);
    return set.leak();
}

NSCharacterSet whitespaceCharacterSet(Class, SEL) {
    static const NSCharacterSet set = makeKept(whitespaceRanges);
    return set;
}
NSCharacterSet whitespaceAndNewlineCharacterSet(Class, SEL) {
    static const NSCharacterSet set = makeKept(whitespaceAndNewlineRanges);
    return set;
}
NSCharacterSet alphanumericCharacterSet(Class, SEL) {
    static const NSCharacterSet set = makeKept(unicode::alphanumericRanges);
    return set;
}
NSCharacterSet letterCharacterSet(Class, SEL) {
    static const NSCharacterSet set = makeKept(unicode::letterOrMarkRanges);
    return set;
}
NSCharacterSet decimalDigitCharacterSet(Class, SEL) {
    static const NSCharacterSet set = makeKept(unicode::decimalDigitRanges);
    return set;
}

// ---- Sets of a caller's choice

NSCharacterSet characterSetWithCharactersInString(Class self, SEL selector, NSString characters) {
    rejectNil(characters, self, selector);
    Retained<NSCharacterSet> set = newSet(self);
    CharacterSetStorage& storage = storageOfSet(set);
    std::vector<char32_t> beyondLatin1;
    contentsOf(characters).visit([&](auto units) {
        for (std::size_t index = 0; index < units.size();) {
            const char32_t character = utf8::nextCharacter(units.data(), units.size(), index);
            if (character <= lastLatin1)
                addLatin1(storage, {character, character});
            else
                beyondLatin1.push_back(character);
        }
    });
    std::sort(beyondLatin1.begin(), beyondLatin1.end());
    for (const char32_t character : beyondLatin1) {
        if (!storage.ownRanges.empty() && character <= storage.ownRanges.back().last + 1)
            storage.ownRanges.back().last = character;
        else
            storage.ownRanges.push_back({character, character});
    }
    storage.ranges = storage.ownRanges;
    return set.autorelease();
}

NSCharacterSet characterSetWithRange(Class self, SEL selector, NSRange range) {
    if (range.location > lastCharacter + 1 || range.length > lastCharacter + 1 - range.location)
        raiseFrom(NSInvalidArgumentException(), self, selector,
                  "Range " + describe(range) + " extends beyond the last character, 0x10FFFF");
    Retained<NSCharacterSet> set = newSet(self);
    if (range.length == 0) return set.autorelease();
    const Range added{static_cast<char32_t>(range.location),
                      static_cast<char32_t>(range.location + range.length - 1)};
    CharacterSetStorage& storage = storageOfSet(set);
    addLatin1(storage, added);
    if (added.last > lastLatin1)
        storage.ownRanges.push_back({std::max(added.first, firstListed), added.last});
    storage.ranges = storage.ownRanges;
    return set.autorelease();
}

// ---- Membership

BOOL characterIsMember(NSCharacterSet self, SEL, unichar unit) { return storageOfSet(self).contains(unit); }

bool hasOwnTest(NSCharacterSet set) { return !answersWith(set, "characterIsMember:"_sel, characterIsMember); }

BOOL longCharacterIsMember(NSCharacterSet self, SEL, std::uint32_t character) {
    if (!hasOwnTest(self)) return character <= lastCharacter && storageOfSet(self).contains(character);
    return character <= 0xFFFF && self.characterIsMember(static_cast<unichar>(character));
}

// Whether the storage tells the members: no derived class has a test of its own, for units or for characters.
bool keepsMembers(NSCharacterSet set) {
    return !hasOwnTest(set) && answersWith(set, "longCharacterIsMember:"_sel, longCharacterIsMember);
}

// ---- Comparing and deriving

// The members as ranges, sorted, none touching the next. A derived class's own are asked for one by one.
std::vector<Range> membersOf(NSCharacterSet set) {
    std::vector<Range> members;
    const Membership isMember(set);
    const auto add = [&](Range range) {
        if (!members.empty() && members.back().last + 1 == range.first)
            members.back().last = range.last;
        else
            members.push_back(range);
    };
    if (!keepsMembers(set)) {
        for (char32_t character = 0; character <= lastCharacter; ++character)
            if (isMember(character)) add({character, character});
        return members;
    }
    const CharacterSetStorage& storage = storageOfSet(set);
    for (char32_t character = 0; character <= lastLatin1; ++character)
        if (storage.contains(character)) add({character, character});
    char32_t next = firstListed;
    for (const Range range : storage.ranges) {
        if (range.last <= lastLatin1) continue;
        const char32_t first = std::max(range.first, firstListed);
        if (!storage.isInverted)
            add({first, range.last});
        else if (next < first)
            add({next, first - 1});
        next = range.last + 1;
    }
    if (storage.isInverted && next <= lastCharacter) add({next, lastCharacter});
    return members;
}

NSCharacterSet invertedSet(NSCharacterSet self, SEL) {
    Retained<NSCharacterSet> set = newSet("NSCharacterSet"_class);
    CharacterSetStorage& inverted = storageOfSet(set);
    inverted.isInverted = true;
    if (!keepsMembers(self)) {
        inverted.ownRanges = membersOf(self);
        for (const Range range : inverted.ownRanges) addLatin1(inverted, range);
        inverted.ranges = inverted.ownRanges;
    } else {
        const CharacterSetStorage& storage = storageOfSet(self);
        inverted.latin1 = storage.latin1;
        inverted.ownRanges = storage.ownRanges;
        inverted.ranges =
            inverted.ownRanges.empty() ? storage.ranges : std::span<const Range>(inverted.ownRanges);
        inverted.isInverted = !storage.isInverted;
    }
    return set.autorelease();
}

BOOL isEqual(NSCharacterSet self, SEL, NSObject other) {
    if (self == other) return YES;
    const auto set = kindOf<NSCharacterSet>(other);
    if (!set) return NO;
    const std::vector<Range> members = membersOf(self);
    const std::vector<Range> otherMembers = membersOf(set);
    return std::equal(
        members.begin(), members.end(), otherMembers.begin(), otherMembers.end(),
        [](Range left, Range right) { return left.first == right.first && left.last == right.last; });
}
// Of the first 256 characters only, which is enough to tell most sets apart.
NSUInteger hash(NSCharacterSet self, SEL) {
    const Membership isMember(self);
    NSUInteger result = 0;
    for (char32_t character = 0; character <= lastLatin1; ++character)
        result = result * 31 + (isMember(character) ? character + 1 : 0);
    return result;
}

id copyWithZone(NSCharacterSet self, SEL, void*) { return retain(self).leak(); }

} // namespace

Membership::Membership(NSCharacterSet set) : storage_(keepsMembers(set) ? &storageOfSet(set) : nullptr) {
    if (!storage_) set_ = retain(set);
}

ClassDescription describeNSCharacterSet() {
    return {.name = "NSCharacterSet",
            .superclass = "NSObject",
            .protocols = {"NSCopying"},
            .storage = storageLayout<CharacterSetStorage>(),
            .methods = {
                classMethod("whitespaceCharacterSet", whitespaceCharacterSet),
                classMethod("whitespaceAndNewlineCharacterSet", whitespaceAndNewlineCharacterSet),
                classMethod("alphanumericCharacterSet", alphanumericCharacterSet),
                classMethod("letterCharacterSet", letterCharacterSet),
                classMethod("decimalDigitCharacterSet", decimalDigitCharacterSet),
                classMethod("characterSetWithCharactersInString:", characterSetWithCharactersInString),
                classMethod("characterSetWithRange:", characterSetWithRange),
                instanceMethod("characterIsMember:", characterIsMember),
                instanceMethod("longCharacterIsMember:", longCharacterIsMember),
                instanceMethod("invertedSet", invertedSet),
                instanceMethod("isEqual:", isEqual),
                instanceMethod("hash", hash),
                instanceMethod("copyWithZone:", copyWithZone),
            }};
}

} // namespace tessarin::embedded
