// NSString: paths. A path is text here; nothing asks the file system, and dots stay as they are.
#include "TessarinPlatform/NSArray.h"
#include "platform/embedded/foundation/FileSystemPath.h"
#include "platform/embedded/foundation/StringStorage.h"

#include <cerrno>
#include <cstdlib>

#if !defined(_WIN32)
#    include <pwd.h>
#    include <unistd.h>
#endif

namespace tessarin::embedded {
namespace {

constexpr auto notFound = static_cast<std::size_t>(NSNotFound);

// ---- Home directories

#if defined(_WIN32)
constexpr const char* homeVariable = "USERPROFILE";

std::string accountHome(const char*) { return {}; }
// From C:\Users\name to /C:/Users/name.
NSString homePath(const char* value) { return stringWithPath(std::filesystem::path(value)); }
#else
constexpr const char* homeVariable = "HOME";

NSString homePath(const char* value) { return NSString(value); }

// The home directory of an account, of the current user where the name is null; empty when there is none.
std::string accountHome(const char* name) {
    constexpr std::size_t largest = std::size_t{1} << 20;
    std::vector<char> buffer(1024);
    for (;;) {
        passwd account;
        passwd* found = nullptr;
        const int error = name ? getpwnam_r(name, &account, buffer.data(), buffer.size(), &found)
                               : getpwuid_r(getuid(), &account, buffer.data(), buffer.size(), &found);
        if (error == ERANGE && buffer.size() < largest) {
            buffer.resize(buffer.size() * 2);
            continue;
        }
        return found && found->pw_dir ? found->pw_dir : "";
    }
}
#endif

// nil where there is no such account.
NSString homeOfAccount(StringView name) {
    if (name.isEmpty()) return homeDirectory();
    const std::string account = utf8Of(name);
    if (account.find('\0') != std::string::npos) return nil;
    const std::string home = accountHome(account.c_str());
    return home.empty() ? NSString() : NSString(home);
}

// ---- Slashes

bool isSlash(char16_t unit) { return unit == '/'; }

// Appends a path to one that has its slashes in order, each run of them as one.
void appendCollapsed(StringStorage& path, StringView added) {
    for (std::size_t start = 0; start < added.length();) {
        std::size_t end = findUnit(added, '/', start);
        end = end == notFound ? added.length() : end + 1;
        const bool isAnotherSlash = end - start == 1 && isSlash(added[start]) && path.length() > 0
                                    && isSlash(path.view()[path.length() - 1]);
        if (!isAnotherSlash) path.append(added.sub(start, end - start));
        start = end;
    }
}
// The path with its runs of slashes collapsed and none at its end, the root apart.
NSString standardized(StringStorage& path) {
    const std::size_t length = path.length();
    const bool endsInSlash = length > 1 && isSlash(path.view()[length - 1]);
    return makeString(path.view().sub(0, endsInSlash ? length - 1 : length));
}
NSString standardized(StringView path) {
    StringStorage collapsed;
    appendCollapsed(collapsed, path);
    return standardized(collapsed);
}

// Where the last component of a standardized path begins; the root is its own component.
std::size_t startOfLastComponent(StringView path) {
    std::size_t start = path.length();
    if (start == 1) return 0;
    while (start > 0 && !isSlash(path[start - 1])) --start;
    return start;
}
// Where the last dot of the last component stands, when a name comes before it; the component .. has none.
std::size_t dotOfExtension(StringView path) {
    const std::size_t start = startOfLastComponent(path);
    const StringView component = path.from(start);
    if (equalUnits(component, StringView(std::string_view("..")))) return notFound;
    for (std::size_t index = path.length(); index-- > start + 1;)
        if (path[index] == '.') return index;
    return notFound;
}

// ---- Components

// A tilde counts as absolute although nothing is expanded here.
BOOL isAbsolutePath(NSString self, SEL) {
    const Contents path = contentsOf(self);
    return !path.isEmpty() && (isSlash(path[0]) || path[0] == '~');
}

// A slash at the start is a component, and so is one at the end of a longer path.
NSArray pathComponents(NSString self, SEL) {
    const Contents path = contentsOf(self);
    const std::size_t length = path.length();
    std::vector<NSRange> components;
    if (length > 0 && isSlash(path[0])) components.push_back({0, 1});
    for (std::size_t start = 0; start < length;) {
        std::size_t end = findUnit(path, '/', start);
        if (end == notFound) end = length;
        if (end > start) components.push_back({start, end - start});
        start = end + 1;
    }
    if (length > 1 && isSlash(path[length - 1])) components.push_back({length - 1, 1});
    return substrings(path, components);
}

NSString pathWithComponents(Class self, SEL selector, NSArray components) {
    rejectNil(components, self, selector);
    StringStorage path;
    for (NSString component : components) {
        const Contents contents = contentsOf(component);
        if (contents.isEmpty()) continue;
        if (path.length() > 0) appendCollapsed(path, StringView(std::string_view("/")));
        appendCollapsed(path, contents);
    }
    const NSString joined = standardized(path);
    return self == "NSString"_class ? joined : send<NSString>(self, "stringWithString:"_sel, joined);
}

NSString lastPathComponent(NSString self, SEL) {
    const NSString path = standardized(contentsOf(self));
    return path.substringFromIndex(startOfLastComponent(contentsOf(path)));
}
NSString stringByDeletingLastPathComponent(NSString self, SEL) {
    const NSString path = standardized(contentsOf(self));
    const Contents contents = contentsOf(path);
    if (contents.length() == 1 && isSlash(contents[0])) return path;
    const std::size_t start = startOfLastComponent(contents);
    return path.substringToIndex(start > 1 ? start - 1 : start);
}
NSString stringByAppendingPathComponent(NSString self, SEL selector, NSString component) {
    rejectNil(component, self, selector);
    StringStorage path;
    appendCollapsed(path, contentsOf(self));
    if (path.length() > 0) appendCollapsed(path, StringView(std::string_view("/")));
    appendCollapsed(path, contentsOf(component));
    return standardized(path);
}

NSString pathExtension(NSString self, SEL) {
    const NSString path = standardized(contentsOf(self));
    const std::size_t dot = dotOfExtension(contentsOf(path));
    return dot == notFound ? ""_ns : path.substringFromIndex(dot + 1);
}
NSString stringByDeletingPathExtension(NSString self, SEL) {
    const NSString path = standardized(contentsOf(self));
    const std::size_t dot = dotOfExtension(contentsOf(path));
    return dot == notFound ? path : path.substringToIndex(dot);
}

NSString stringByExpandingTildeInPath(NSString self, SEL) {
    const Contents path = contentsOf(self);
    if (path.isEmpty() || path[0] != '~') return adopt<NSString>(self.copy()).autorelease();
    std::size_t endOfName = findUnit(path, '/', 1);
    if (endOfName == notFound) endOfName = path.length();
    const NSString home = homeOfAccount(path.sub(1, endOfName - 1));
    StringView rest = path.from(endOfName);
    // One slash at the end goes, whether there is such an account or not.
    if (!rest.isEmpty() && isSlash(rest[rest.length() - 1])) rest = rest.sub(0, rest.length() - 1);
    if (!home) return makeString(path.sub(0, endOfName + rest.length()));
    StringStorage expanded;
    expanded.append(contentsOf(home));
    const std::size_t length = expanded.length();
    if (!rest.isEmpty() && length > 0 && isSlash(expanded.view()[length - 1]))
        expanded.replace({length - 1, 1}, StringView());
    expanded.append(rest);
    return makeString(expanded.view());
}

} // namespace

std::vector<MethodRow> stringPathMethods() {
    return {
        classMethod("pathWithComponents:", pathWithComponents),
        instanceMethod("isAbsolutePath", isAbsolutePath),
        instanceMethod("pathComponents", pathComponents),
        instanceMethod("lastPathComponent", lastPathComponent),
        instanceMethod("pathExtension", pathExtension),
        instanceMethod("stringByAppendingPathComponent:", stringByAppendingPathComponent),
        instanceMethod("stringByDeletingLastPathComponent", stringByDeletingLastPathComponent),
        instanceMethod("stringByDeletingPathExtension", stringByDeletingPathExtension),
        instanceMethod("stringByExpandingTildeInPath", stringByExpandingTildeInPath),
    };
}

} // namespace tessarin::embedded

namespace tessarin {

NSString homeDirectory() {
    const char* value = std::getenv(embedded::homeVariable);
    if (value && *value) {
        if (const NSString home = embedded::homePath(value)) return home;
    }
    const std::string account = embedded::accountHome(nullptr);
    if (!account.empty()) {
        if (const NSString home{account}) return home;
    }
    return "/"_ns;
}

} // namespace tessarin
