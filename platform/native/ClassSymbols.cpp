// The library's classes, for the linker. They are made by the runtime when the library is loaded, yet
// compiled Objective-C that names a class refers to a symbol of it. GCC's runtime asks no more of the symbol
// than that it exists; the class itself is looked up by its name. Elsewhere the headers say that the class is
// defined at run time.
#include "TessarinPlatform/detail/Configuration.h"

#if !defined(__APPLE__)

extern "C" {
TESSARIN_EXPORT extern const char __objc_class_name_TSSRUniqueIndexer;
TESSARIN_EXPORT extern const char __objc_class_name_TSSRTransformedValue;
const char __objc_class_name_TSSRUniqueIndexer = 0;
const char __objc_class_name_TSSRTransformedValue = 0;
}

#endif
