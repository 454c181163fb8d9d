// Files of localised texts: any bytes give texts or nothing, and what was read is written as such a file and
// read back as it was.
#include "PropertyListFuzzing.h"

#include "platform/embedded/foundation/StringsFile.h"

#include <string>
#include <string_view>

using namespace tessarin;

namespace {

std::string quoted(NSString text) {
    std::string result = "\"";
    for (const unichar unit : static_cast<std::u16string>(text)) {
        if (unit >= ' ' && unit < 0x7F && unit != '"' && unit != '\\') {
            result += static_cast<char>(unit);
            continue;
        }
        result += "\\U";
        for (int shift = 12; shift >= 0; shift -= 4) result += "0123456789abcdef"[unit >> shift & 0xF];
    }
    return result + '"';
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    const AutoreleasePool pool;
    const NSDictionary texts = embedded::textsOfStringsFile({reinterpret_cast<const char*>(data), size});
    if (!texts) return 0;
    std::string written;
    for (const NSObject key : texts) {
        const NSString text = kindOf<NSString>(texts.objectForKey(key));
        fuzzing::require(bool(kindOf<NSString>(key)), "a key is a string");
        if (!text) return 0; // a property list may hold something else
        written += quoted(as<NSString>(key)) + " = " + quoted(text) + ";\n";
    }
    const NSDictionary again = embedded::textsOfStringsFile(written);
    fuzzing::require(bool(again), "what was written can be read");
    fuzzing::require(again.isEqual(texts), "what was written reads back as it was");
    return 0;
}
