// NSKeyedUnarchiver: objects from a keyed archive, binary or XML.
//
// An object comes back once, however often it is referred to. An object is allocated, then sent
// initWithCoder:; what it refers to that refers back to it gets the allocated object.
//
// An archive may come from anywhere. On the embedded platform damaged ones raise exceptions, take memory in
// proportion to their size, and are refused beyond 256 objects inside each other.
#pragma once

#include "TessarinPlatform/NSCoder.h"

namespace tessarin {

class NSKeyedUnarchiver : public Handle<NSKeyedUnarchiver, "NSKeyedUnarchiver", NSCoder> {
public:
    using Handle::Handle;

    // The object under the key "root", which may be nil; nil for no data. Data that is no archive raises
    // NSInvalidArgumentException, where GNUstep answers nil; an archive whose objects do not hold what they
    // should, or are of a class that is not there, NSInvalidUnarchiveOperationException.
    static id unarchiveObjectWithData(NSData archive) {
        return send<id>(classObject(), "unarchiveObjectWithData:"_sel, archive);
    }
    // The same from a file; nil when it cannot be read.
    static id unarchiveObjectWithFile(NSString path) {
        return send<id>(classObject(), "unarchiveObjectWithFile:"_sel, path);
    }

    // Data that is no archive raises NSInvalidArgumentException, as nil does.
    [[nodiscard]] NSKeyedUnarchiver initForReadingWithData(NSData archive) const {
        return send<NSKeyedUnarchiver>(*this, "initForReadingWithData:"_sel, archive);
    }

    // Decoding after it raises NSInvalidUnarchiveOperationException.
    void finishDecoding() const { send<void>(*this, "finishDecoding"_sel); }
};

// Raised for values that are not what they should be, for classes that are not there, and for any value after
// the end.
inline NSString NSInvalidUnarchiveOperationException() { return "NSInvalidUnarchiveOperationException"_ns; }

} // namespace tessarin
