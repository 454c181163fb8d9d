// Constant strings: made once, kept for the life of the process.
#include "platform/embedded/foundation/StringStorage.h"

namespace tessarin::runtime {
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

} // namespace tessarin::runtime
