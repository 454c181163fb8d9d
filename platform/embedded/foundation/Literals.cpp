// Strings made of text: the handle's own constructors, and constant strings, which are made once and kept for
// the life of the process.
#include "platform/embedded/foundation/StringStorage.h"

namespace tessarin {

NSString::NSString(std::string_view utf8) : NSString(embedded::newStringFromUtf8(utf8).autorelease()) {}

NSString::NSString(std::u16string_view units)
    : NSString(embedded::newString(embedded::StringView(units)).autorelease()) {}

namespace runtime {
namespace {

Object* kept(Retained<NSString> string) {
    if (string) embedded::makeImmortal(string);
    return string.leak().object();
}
// Every other empty string is this one.
Object* makeEmpty() {
    return kept(embedded::newString<std::uint8_t>(0, [](std::uint8_t*) {}));
}

} // namespace

Object* makeConstantString(std::string_view utf8) {
    return utf8.empty() ? makeEmpty() : kept(embedded::newStringFromUtf8(utf8));
}

Object* makeConstantString(std::u16string_view units) {
    return units.empty() ? makeEmpty() : kept(embedded::newString(units));
}

void discardConstantString(Object* string) {
    if (!string) return;
    string->references.store(1, std::memory_order_relaxed);
    release(string);
}

} // namespace runtime
} // namespace tessarin
