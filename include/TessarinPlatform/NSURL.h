// NSURL: a uniform resource locator.
#pragma once

#include "TessarinPlatform/NSString.h"

namespace tessarin {

class NSURL : public Handle<NSURL, "NSURL", NSObject> {
public:
    using Handle::Handle;

    // Text that is no URL gives nil.
    static NSURL URLWithString(NSString text) {
        return send<NSURL>(classObject(), "URLWithString:"_sel, text);
    }
    // A relative path is taken against the process's current directory.
    static NSURL fileURLWithPath(NSString path) {
        return send<NSURL>(classObject(), "fileURLWithPath:"_sel, path);
    }
    // Without a look at the file system.
    static NSURL fileURLWithPath_isDirectory(NSString path, bool isDirectory) {
        return send<NSURL>(classObject(), "fileURLWithPath:isDirectory:"_sel, path,
                           static_cast<BOOL>(isDirectory));
    }

    [[nodiscard]] NSURL initWithString(NSString text) const {
        return send<NSURL>(*this, "initWithString:"_sel, text);
    }
    [[nodiscard]] NSURL initFileURLWithPath(NSString path) const {
        return send<NSURL>(*this, "initFileURLWithPath:"_sel, path);
    }
    [[nodiscard]] NSURL initFileURLWithPath_isDirectory(NSString path, bool isDirectory) const {
        return send<NSURL>(*this, "initFileURLWithPath:isDirectory:"_sel, path,
                           static_cast<BOOL>(isDirectory));
    }

    bool isFileURL() const { return send<BOOL>(*this, "isFileURL"_sel) != NO; }
    // Without percent escapes and without a trailing slash.
    NSString path() const { return send<NSString>(*this, "path"_sel); }
    NSString scheme() const { return send<NSString>(*this, "scheme"_sel); }
    NSString host() const { return send<NSString>(*this, "host"_sel); }
    NSString absoluteString() const { return send<NSString>(*this, "absoluteString"_sel); }
    NSURL absoluteURL() const { return send<NSURL>(*this, "absoluteURL"_sel); }
    // What a relative URL is relative to, nil for an absolute one; and the URL without it.
    NSURL baseURL() const { return send<NSURL>(*this, "baseURL"_sel); }
    NSString relativeString() const { return send<NSString>(*this, "relativeString"_sel); }
    NSString relativePath() const { return send<NSString>(*this, "relativePath"_sel); }
};

} // namespace tessarin
