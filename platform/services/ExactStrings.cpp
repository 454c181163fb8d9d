#include "platform/services/ExactStrings.h"

#include "TessarinPlatform/AutoreleasePool.h"
#include "TessarinPlatform/NSMutableString.h"
#include "platform/services/Utf8.h"

namespace tessarin {
namespace {

// One unit at a time through a format, which is the one way that GNUstep does not examine.
Retained<NSString> composed(std::u16string_view units) {
    const Retained<NSMutableString> string = adopt(NSMutableString::alloc().initWithCapacity(units.size()));
    const AutoreleasePool pool;
    for (const unichar unit : units) string.appendFormat("%C"_ns, unit);
    const NSString copy = string.copy();
    return adopt(copy);
}

} // namespace

Retained<NSString> exactString(std::string_view text) {
    // GNUstep reads over a byte-order mark at the beginning.
    if (text.starts_with("\xEF\xBB\xBF")) {
        const utf8::Measure measure = utf8::measure(text);
        if (!measure.wellFormed) return nil;
        std::u16string units(measure.units, u'\0');
        utf8::decode(text, units.data());
        return exactString(units);
    }
    return adopt(
        NSString::alloc().initWithBytes_length_encoding(text.data(), text.size(), NSUTF8StringEncoding));
}

Retained<NSString> exactString(std::u16string_view units) {
    Retained<NSString> string =
        adopt(NSString::alloc().initWithCharacters_length(units.data(), units.size()));
    // GNUstep answers nil for an unpaired surrogate, and reads over a byte-order mark at the beginning.
    if (string.length() != units.size()) string = composed(units);
    return string;
}

} // namespace tessarin
