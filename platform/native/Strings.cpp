// Strings made of text, constant strings, and the home directory.
#include "TessarinPlatform/NSString.h"
#include "platform/services/ExactStrings.h"

extern "C" tessarin::Object* NSHomeDirectory();

namespace tessarin {

NSString::NSString(std::string_view utf8) : NSString(exactString(utf8).autorelease()) {}
NSString::NSString(std::u16string_view units) : NSString(exactString(units).autorelease()) {}

// They are never released, since nobody could tell when the last user of a literal is gone.
Object* runtime::makeConstantString(std::string_view utf8) { return exactString(utf8).leak().object(); }
Object* runtime::makeConstantString(std::u16string_view units) { return exactString(units).leak().object(); }
void runtime::discardConstantString(Object* string) { release(string); }

NSString homeDirectory() { return NSString(::NSHomeDirectory()); }

} // namespace tessarin
