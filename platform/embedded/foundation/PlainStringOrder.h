// The order of strings whose comparison is known, without a message.
#pragma once

#include "platform/embedded/foundation/StringStorage.h"

#include <span>
#include <vector>

namespace tessarin::embedded {

// Numbers in the order of texts of ASCII, as far as eight bytes of each can tell: what a text has in common
// with all others is left out, since names that belong together often begin alike. Equal numbers say nothing.
std::vector<std::uint64_t> ranksOfTexts(std::span<const StringView> texts);

// Strings of ASCII that answer compare: as the platform does. Such text has no equivalent but itself, so that
// its units decide. The strings are neither retained nor changed as long as they are looked at.
class PlainStringOrder {
public:
    // For about as many strings.
    explicit PlainStringOrder(std::size_t count) { texts_.reserve(count); }

    // Whether the object is such a string; otherwise it is not added.
    bool add(NSObject object);
    // The positions of the strings, in the order in which they were added, from the first string to the last;
    // equal ones stay in that order.
    std::vector<std::size_t> ascending() const;

private:
    std::vector<StringView> texts_;
};

} // namespace tessarin::embedded
