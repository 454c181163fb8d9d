// NSKeyedArchiver: objects to a keyed archive, which NSKeyedUnarchiver reads.
//
//   NSData archive = NSKeyedArchiver::archivedDataWithRootObject(presets);
//   NSObject same = NSKeyedUnarchiver::unarchiveObjectWithData(archive);
//
// An archive is a property list. An object that is met several times is written once, told by identity. Every
// object must answer encodeWithCoder:; one that does not raises the unrecognised-selector exception.
#pragma once

#include "TessarinPlatform/NSCoder.h"
#include "TessarinPlatform/NSMutableData.h"
#include "TessarinPlatform/NSPropertyListSerialization.h"

namespace tessarin {

class NSKeyedArchiver : public Handle<NSKeyedArchiver, "NSKeyedArchiver", NSCoder> {
public:
    using Handle::Handle;

    // A binary archive of an object under the key "root". A nil object is archived too.
    static NSData archivedDataWithRootObject(NSObject root) {
        return send<NSData>(classObject(), "archivedDataWithRootObject:"_sel, root);
    }
    // The same to a file, atomically; false when it cannot be written.
    static bool archiveRootObject_toFile(NSObject root, NSString path) {
        return send<BOOL>(classObject(), "archiveRootObject:toFile:"_sel, root, path) != NO;
    }

    // An archiver that puts its archive into `data`, which it retains, when it is finished.
    [[nodiscard]] NSKeyedArchiver initForWritingWithMutableData(NSMutableData data) const {
        return send<NSKeyedArchiver>(*this, "initForWritingWithMutableData:"_sel, data);
    }

    // Binary unless another format is set; XML is the only other.
    NSPropertyListFormat outputFormat() const {
        return send<NSPropertyListFormat>(*this, "outputFormat"_sel);
    }
    void setOutputFormat(NSPropertyListFormat format) const {
        send<void>(*this, "setOutputFormat:"_sel, format);
    }

    // Writes the archive. Encoding after it raises NSInvalidArchiveOperationException; finishing again does
    // nothing.
    void finishEncoding() const { send<void>(*this, "finishEncoding"_sel); }
};

// Raised for what cannot be archived: a value after the end, and, on the embedded platform, objects inside
// each other more than 256 deep.
inline NSString NSInvalidArchiveOperationException() { return "NSInvalidArchiveOperationException"_ns; }

} // namespace tessarin
