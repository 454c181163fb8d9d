// From the platform's strings to those of the standard library, by messages that every platform's NSString
// answers.
#include "TessarinPlatform/NSString.h"
#include "platform/services/Utf8.h"

namespace tessarin {
namespace {

// Short strings, which most are, need no buffer beside the result.
constexpr NSUInteger shortLength = 512;

std::string encoded(const unichar* units, NSUInteger length) {
    std::string text(utf8::encodedLength(units, length), '\0');
    utf8::encode(units, length, text.data());
    return text;
}

} // namespace

NSString::operator std::string() const {
    const NSUInteger length = this->length();
    if (length <= shortLength) {
        unichar units[shortLength];
        if (length > 0) getCharacters_range(units, {0, length});
        return encoded(units, length);
    }
    const std::u16string units(*this);
    return encoded(units.data(), units.size());
}

NSString::operator std::u16string() const {
    std::u16string units(length(), u'\0');
    if (!units.empty()) getCharacters_range(units.data(), {0, units.size()});
    return units;
}

} // namespace tessarin
