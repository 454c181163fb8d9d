// File managers of one's own.
#pragma once

#include "TessarinPlatform/detail/LibraryAnchor.h"

#if defined(__OBJC__)

#    import <Foundation/NSFileManager.h>

@interface NSFileManager (TessarinExtensions)

+ (NSFileManager*)tessarin_fileManager;

@end

#else

#    include "TessarinPlatform/NSFileManager.h"

// A new file manager, autoreleased: never the shared default one, and of the class NSFileManager itself also
// when a derived class is asked.
//
//   NSFileManager manager = tessarin_fileManager();
//
// A class that is named is asked, so that a derived one may answer otherwise; a nil class answers nil.
//
//   NSFileManager manager = tessarin_fileManager<SessionFiles>();
TESSARIN_EXPORT tessarin::NSFileManager tessarin_fileManager();
TESSARIN_EXPORT tessarin::NSFileManager tessarin_fileManager(tessarin::Class receiver);
template <tessarin::HandleType Receiver>
tessarin::NSFileManager tessarin_fileManager() {
    return tessarin_fileManager(Receiver::classObject());
}

#endif
