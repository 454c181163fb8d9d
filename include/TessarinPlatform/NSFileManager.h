// NSFileManager: the file system by paths.
#pragma once

#include "TessarinPlatform/NSData.h"
#include "TessarinPlatform/NSError.h"

namespace tessarin {

class NSFileManager : public Handle<NSFileManager, "NSFileManager", NSObject> {
public:
    using Handle::Handle;

    static NSFileManager defaultManager() { return send<NSFileManager>(classObject(), "defaultManager"_sel); }
    [[nodiscard]] NSFileManager init() const { return send<NSFileManager>(*this, "init"_sel); }

    bool fileExistsAtPath(NSString path) const {
        return send<BOOL>(*this, "fileExistsAtPath:"_sel, path) != NO;
    }
    // Stores YES through isDirectory, which may be null, when there is a directory.
    bool fileExistsAtPath_isDirectory(NSString path, BOOL* isDirectory) const {
        return send<BOOL>(*this, "fileExistsAtPath:isDirectory:"_sel, path, isDirectory) != NO;
    }
    // Whether this process may read a file, or write to it; of a directory, whether it may make files there.
    bool isReadableFileAtPath(NSString path) const {
        return send<BOOL>(*this, "isReadableFileAtPath:"_sel, path) != NO;
    }
    bool isWritableFileAtPath(NSString path) const {
        return send<BOOL>(*this, "isWritableFileAtPath:"_sel, path) != NO;
    }
    // The names in a directory, in no particular order; nil and an error when it cannot be read.
    NSArray contentsOfDirectoryAtPath_error(NSString path, NSError* error) const {
        return send<NSArray>(*this, "contentsOfDirectoryAtPath:error:"_sel, path, error);
    }
    NSData contentsAtPath(NSString path) const { return send<NSData>(*this, "contentsAtPath:"_sel, path); }
    // A directory goes with all that is in it.
    bool removeItemAtPath_error(NSString path, NSError* error) const {
        return send<BOOL>(*this, "removeItemAtPath:error:"_sel, path, error) != NO;
    }
    // Replaces a file that is there. Of the attributes, which may be nil, NSFilePosixPermissions is honoured.
    bool createFileAtPath_contents_attributes(NSString path, NSData contents, NSDictionary attributes) const {
        return send<BOOL>(*this, "createFileAtPath:contents:attributes:"_sel, path, contents, attributes)
               != NO;
    }
    // With intermediate directories a directory that is there is no error.
    bool createDirectoryAtPath_withIntermediateDirectories_attributes_error(NSString path, bool intermediate,
                                                                            NSDictionary attributes,
                                                                            NSError* error) const {
        return send<BOOL>(*this, "createDirectoryAtPath:withIntermediateDirectories:attributes:error:"_sel,
                          path, static_cast<BOOL>(intermediate), attributes, error)
               != NO;
    }
    // Fails where there is something at the new path.
    bool moveItemAtPath_toPath_error(NSString path, NSString newPath, NSError* error) const {
        return send<BOOL>(*this, "moveItemAtPath:toPath:error:"_sel, path, newPath, error) != NO;
    }
    NSString currentDirectoryPath() const { return send<NSString>(*this, "currentDirectoryPath"_sel); }
    // Of the whole process.
    bool changeCurrentDirectoryPath(NSString path) const {
        return send<BOOL>(*this, "changeCurrentDirectoryPath:"_sel, path) != NO;
    }
};

} // namespace tessarin
