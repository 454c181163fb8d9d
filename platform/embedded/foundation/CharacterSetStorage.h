// Membership in character sets, for the string operations that test many characters.
#pragma once

#include "TessarinPlatform/NSCharacterSet.h"
#include "TessarinPlatform/Retained.h"
#include "platform/embedded/foundation/Unicode.h"
#include "platform/embedded/runtime/BuiltInClass.h"

#include <array>
#include <cstdint>
#include <span>
#include <vector>

namespace tessarin::embedded {

// A sorted list of ranges. The first 256 characters, which most texts are made of, have a bit each; ranges of
// them in the list do not count, and a set of those alone needs no list.
struct CharacterSetStorage {
    std::array<std::uint64_t, 4> latin1 = {};
    std::span<const unicode::Range> ranges; // read from U+0100 on
    std::vector<unicode::Range> ownRanges;  // where the list is not constant
    bool isInverted = false;

    bool contains(char32_t character) const {
        const bool isListed = character < 0x100 ? (latin1[character >> 6] >> (character & 63) & 1) != 0
                                                : !ranges.empty() && unicode::isInRanges(ranges, character);
        return isListed != isInverted;
    }
};

// Asks a set; one whose class has a membership test of its own, by message.
class Membership {
public:
    explicit Membership(NSCharacterSet set);

    // Whether a test is a message, that is, an application's own code.
    bool asksTheSet() const { return !storage_; }
    bool operator()(char32_t character) const {
        return storage_ ? storage_->contains(character) : set_.longCharacterIsMember(character);
    }
    // One unit by itself, half of a surrogate pair or not.
    bool unit(char16_t unit) const {
        return storage_ ? storage_->contains(unit) : set_.characterIsMember(unit);
    }

private:
    Retained<NSCharacterSet> set_; // where it is asked, which may make its owner let go of it
    const CharacterSetStorage* storage_;
};

} // namespace tessarin::embedded
