// NSURL. A URL keeps the text that it was made from and the URL that this is relative to; its parts are found
// in the text when they are asked for.
#include "TessarinPlatform/NSURL.h"

#include "TessarinPlatform/Exceptions.h"
#include "platform/embedded/foundation/FileSystemPath.h"
#include "platform/embedded/foundation/KeyedCoding.h"
#include "platform/embedded/foundation/URLSyntax.h"
#include "platform/embedded/runtime/BuiltInClass.h"

namespace tessarin::embedded {
namespace {

struct URLStorage {
    Retained<NSString> text;
    Retained<NSURL> base;
};

std::string textOf(NSURL self) { return std::string(self.relativeString()); }
std::string absoluteTextOf(NSURL self) { return std::string(self.absoluteString()); }

bool isDirectory(const std::optional<std::filesystem::path>& path) {
    std::error_code ignored;
    return path && std::filesystem::is_directory(*path, ignored);
}

NSURL currentDirectoryURL() {
    std::error_code problem;
    const NSString path = stringWithPath(std::filesystem::current_path(problem));
    const NSString known = problem || !path ? "/"_ns : path;
    return adopt(NSURL::alloc().initFileURLWithPath_isDirectory(known, true)).autorelease();
}

// --- Making

id initWithString(NSURL self, SEL _cmd, NSString text) {
    Retained<NSURL> url = adopt(self);
    if (!text) raiseFrom(NSInvalidArgumentException(), self, _cmd, "nil string parameter");
    if (!isURLText(std::string(text))) return nil;
    storageOf<URLStorage>(self).text = adopt(as<NSString>(text.copy()));
    return url.leak();
}

id initFileURL(Retained<NSURL> url, NSString path, bool isDirectory) {
    const NSData bytes = path.dataUsingEncoding(NSUTF8StringEncoding);
    std::string file(static_cast<const char*>(bytes.bytes()), bytes.length());
    // An empty path names nothing, and text with an unpaired surrogate has no bytes.
    if (file.empty()) return nil;
    if (isDirectory && !file.ends_with('/')) file += '/';
    if (!isDirectory && file.ends_with('/') && file.size() > 1) file.pop_back();

    URLStorage& storage = storageOf<URLStorage>(url);
    std::string text = escapedPath(file);
    if (text.starts_with('/')) {
        text.insert(0, "file://");
    } else {
        // A colon in the first segment would be taken for the end of a scheme.
        if (text.find(':') < text.find('/')) text.insert(0, "./");
        storage.base = retain(currentDirectoryURL());
    }
    storage.text = retain(NSString(text));
    return url.leak();
}

id initFileURLWithPath(NSURL self, SEL _cmd, NSString path) {
    Retained<NSURL> url = adopt(self);
    if (!path) raiseFrom(NSInvalidArgumentException(), self, _cmd, "nil string parameter");
    const bool hasSlash = path.hasSuffix("/"_ns);
    return initFileURL(std::move(url), path, hasSlash || isDirectory(fileSystemPath(path)));
}

id initFileURLWithPathIsDirectory(NSURL self, SEL _cmd, NSString path, BOOL isDirectory) {
    Retained<NSURL> url = adopt(self);
    if (!path) raiseFrom(NSInvalidArgumentException(), self, _cmd, "nil string parameter");
    return initFileURL(std::move(url), path, isDirectory);
}

id urlWithString(Class self, SEL, NSString text) {
    return adopt(as<NSURL>(self.alloc()).initWithString(text)).autorelease();
}

id fileURLWithPath(Class self, SEL, NSString path) {
    return adopt(as<NSURL>(self.alloc()).initFileURLWithPath(path)).autorelease();
}

id fileURLWithPathIsDirectory(Class self, SEL, NSString path, BOOL isDirectory) {
    return adopt(as<NSURL>(self.alloc()).initFileURLWithPath_isDirectory(path, isDirectory)).autorelease();
}

// --- Archiving

void encodeWithCoder(NSURL self, SEL, NSCoder coder) {
    coder.encodeObject_forKey(self.baseURL(), "NS.base"_ns);
    coder.encodeObject_forKey(self.relativeString(), "NS.relative"_ns);
}

// A URL asks its base, and that its own, for what it is made of; an archive may hold any number of them.
constexpr std::size_t mostArchivedBases = 16;

std::size_t basesOf(NSURL url) {
    std::size_t count = 0;
    for (; url && count < mostArchivedBases; url = url.baseURL()) ++count;
    return count;
}

NSURL initWithCoder(NSURL self, SEL _cmd, NSCoder coder) {
    Retained<NSURL> url = adopt(self);
    const NSObject base = coder.decodeObjectForKey("NS.base"_ns);
    const auto text = kindOf<NSString>(coder.decodeObjectForKey("NS.relative"_ns));
    checkCopyOfDecoded(coder, text.length());
    if ((base && !base.isKindOfClass(NSURL::classObject())) || !text || !isURLText(std::string(text)))
        raiseFrom(NSInvalidUnarchiveOperationException(), self, _cmd, "text that is no URL");
    if (basesOf(NSURL(base)) >= mostArchivedBases)
        raiseFrom(NSInvalidUnarchiveOperationException(), self, _cmd, "too many URLs relative to each other");
    URLStorage& storage = storageOf<URLStorage>(url);
    storage.text = adopt(as<NSString>(text.copy()));
    storage.base = retain(NSURL(base));
    return url.leak();
}

// --- As a whole

NSString relativeString(NSURL self, SEL) { return storageOf<URLStorage>(self).text; }
NSURL baseURL(NSURL self, SEL) { return storageOf<URLStorage>(self).base; }

NSString absoluteString(NSURL self, SEL) {
    const NSURL base = self.baseURL();
    return base ? NSString(resolvedURL(textOf(self), absoluteTextOf(base))) : self.relativeString();
}

NSURL absoluteURL(NSURL self, SEL) {
    return self.baseURL() ? NSURL::URLWithString(self.absoluteString()) : self;
}

BOOL isEqual(NSURL self, SEL, NSObject object) {
    if (self == object) return YES;
    const NSURL other = kindOf<NSURL>(object);
    if (!other || !self.relativeString().isEqualToString(other.relativeString())) return NO;
    const NSURL base = self.baseURL();
    return base ? base.isEqual(other.baseURL()) : !other.baseURL();
}

NSUInteger hash(NSURL self, SEL) { return self.relativeString().hash(); }

NSString description(NSURL self, SEL) {
    const NSURL base = self.baseURL();
    return base ? NSString(textOf(self) + " -- " + std::string(base.description())) : self.relativeString();
}

NSURL copyWithZone(NSURL self, SEL, void*) { return retain(self).leak(); }

// --- Parts

NSString stringOfPart(std::optional<std::string_view> part) { return part ? NSString(*part) : nil; }

NSString scheme(NSURL self, SEL) { return stringOfPart(partsOfURL(absoluteTextOf(self)).scheme); }

BOOL isFileURL(NSURL self, SEL) {
    const NSString scheme = self.scheme();
    return scheme && scheme.caseInsensitiveCompare("file"_ns) == NSOrderedSame;
}

NSString host(NSURL self, SEL) {
    const std::string text = absoluteTextOf(self);
    std::string_view host = partsOfURL(text).authority.value_or("");
    host.remove_prefix(host.find_last_of('@') + 1);
    if (host.starts_with('['))
        host = host.substr(1, host.find(']') - 1);
    else
        host = host.substr(0, host.find(':'));
    return host.empty() ? NSString() : NSString(withoutEscapes(host));
}

// The path of a URL's text as the file system writes it; nil where the URL has none, as in mailto:a, and
// where its escapes are no UTF-8.
NSString filePathOf(std::string_view text) {
    const URLParts parts = partsOfURL(text);
    std::string_view path = parts.path;
    if (parts.scheme && !parts.authority && !path.starts_with('/')) return nil;
    if (path.size() > 1 && path.ends_with('/')) path.remove_suffix(1);
    return NSString(withoutEscapes(path));
}

NSString path(NSURL self, SEL) { return filePathOf(absoluteTextOf(self)); }
NSString relativePath(NSURL self, SEL) { return filePathOf(textOf(self)); }

} // namespace

ClassDescription describeNSURL() {
    return {.name = "NSURL",
            .superclass = "NSObject",
            .protocols = {"NSCoding", "NSCopying"},
            .storage = storageLayout<URLStorage>(),
            .methods = {classMethod("URLWithString:", urlWithString),
                        classMethod("fileURLWithPath:", fileURLWithPath),
                        classMethod("fileURLWithPath:isDirectory:", fileURLWithPathIsDirectory),
                        instanceMethod("initWithString:", initWithString),
                        instanceMethod("initFileURLWithPath:", initFileURLWithPath),
                        instanceMethod("initFileURLWithPath:isDirectory:", initFileURLWithPathIsDirectory),
                        instanceMethod("relativeString", relativeString),
                        instanceMethod("absoluteString", absoluteString),
                        instanceMethod("baseURL", baseURL),
                        instanceMethod("absoluteURL", absoluteURL),
                        instanceMethod("isEqual:", isEqual),
                        instanceMethod("hash", hash),
                        instanceMethod("description", description),
                        instanceMethod("copyWithZone:", copyWithZone),
                        instanceMethod("encodeWithCoder:", encodeWithCoder),
                        instanceMethod("initWithCoder:", initWithCoder),
                        instanceMethod("scheme", scheme),
                        instanceMethod("isFileURL", isFileURL),
                        instanceMethod("host", host),
                        instanceMethod("path", path),
                        instanceMethod("relativePath", relativePath)}};
}

} // namespace tessarin::embedded
