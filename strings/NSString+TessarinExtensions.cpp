// Strings: relations between paths, key paths, trimming.
#include "TessarinFoundation/NSString+TessarinExtensions.h"

#include "TessarinPlatform/AutoreleasePool.h"
#include "TessarinPlatform/Definition.h"
#include "TessarinPlatform/Exceptions.h"
#include "TessarinPlatform/NSLog.h"
#include "TessarinPlatform/NSMutableString.h"
#include "TessarinPlatform/Retained.h"

#include <algorithm>
#include <cstdarg>
#include <string>
#include <string_view>
#include <vector>

using namespace tessarin;

namespace {

// ---- The path relative to a directory

// What is left of a path that is split at every "/", of which the empty path is one component and not none.
class RemainingComponents {
public:
    explicit RemainingComponents(std::u16string_view path) : path_(path) {}

    bool isEmpty() const { return isEmpty_; }
    std::size_t count() const {
        return isEmpty_ ? 0 : 1 + static_cast<std::size_t>(std::ranges::count(path_, u'/'));
    }
    std::u16string_view first() const { return path_.substr(0, path_.find(u'/')); }
    void removeFirst() {
        const std::size_t slash = path_.find(u'/');
        isEmpty_ = slash == std::u16string_view::npos;
        path_.remove_prefix(isEmpty_ ? path_.size() : slash + 1);
    }
    // All of them, joined with "/".
    std::u16string_view path() const { return path_; }

private:
    std::u16string_view path_;
    bool isEmpty_ = false;
};

bool isAscii(char16_t unit) { return unit < 0x80; }
char16_t lowerAscii(char16_t unit) {
    return unit >= u'A' && unit <= u'Z' ? static_cast<char16_t>(unit + ('a' - 'A')) : unit;
}

// Whether two components are equal without regard to case. Where they are equal but for the case of ASCII
// letters, or ASCII sets them apart, every platform agrees; the rest is the platform's to say.
bool areEqualWithoutCase(std::u16string_view left, std::u16string_view right) {
    const auto [inLeft, inRight] = std::ranges::mismatch(left, right, {}, lowerAscii, lowerAscii);
    const bool leftEnds = inLeft == left.end(), rightEnds = inRight == right.end();
    if (leftEnds && rightEnds) return true;
    if ((leftEnds || isAscii(*inLeft)) && (rightEnds || isAscii(*inRight))) return false;
    return NSString(left).compare_options(NSString(right), NSCaseInsensitiveSearch) == NSOrderedSame;
}

NSString pathRelativeToDirectory(NSString self, SEL, NSString directory) {
    if (!directory.isAbsolutePath()) return self;
    if (!self.isAbsolutePath()) return self;
    // A prefix of characters, not of components, and with regard to case, unlike what follows; both are
    // meant.
    if (self.hasPrefix(directory))
        return tessarin_stringByTrimmingLeadingCharactersInSet(
            self.substringFromIndex(directory.length()),
            NSCharacterSet::characterSetWithCharactersInString("/"_ns));

    // Paths are walked where they stand, since an object for each component would take most of the time.
    const std::u16string path(self), directoryPath(directory);
    RemainingComponents components(path), directoryComponents(directoryPath);
    for (NSUInteger index = 0; !components.isEmpty(); ++index) {
        // The directory's list is read without regard to its length, which is meant: where it ends first, all
        // of it equal, the platform's range exception reaches the caller.
        if (directoryComponents.isEmpty())
            return directory.componentsSeparatedByString("/"_ns).objectAtIndex(index);
        if (!areEqualWithoutCase(components.first(), directoryComponents.first())) break;
        components.removeFirst();
        directoryComponents.removeFirst();
    }

    std::u16string relative;
    const std::size_t levels = directoryComponents.count();
    relative.reserve(3 * levels + components.path().size());
    for (std::size_t level = 0; level < levels; ++level) relative += u"../";
    relative += components.path();
    return NSString(relative);
}

// ---- The parent directory of paths

// How many leading components two paths share, at most `limit`; the last of the second does not count.
NSUInteger countOfCommonComponents(NSArray first, NSArray second, NSUInteger limit) {
    limit = std::min(limit, second.count() - 1);
    NSUInteger count = 0;
    while (count < limit
           && as<NSString>(first.objectAtIndex(count)).isEqualToString(second.objectAtIndex(count)))
        ++count;
    return count;
}

// What a path makes on the way is released at once, so that many paths take no more memory than a few.
Retained<NSArray> expandedComponents(NSString path) {
    const AutoreleasePool pool;
    return retain(path.stringByExpandingTildeInPath().pathComponents());
}

// Without the release scope and the catching. The result is autoreleased.
NSString commonParentDirectory(Class self, NSArray paths) {
    Retained<NSArray> shortest;
    NSUInteger common = 0;
    for (NSString path : paths) {
        const Retained<NSArray> components = expandedComponents(path);
        // One empty path decides, whatever the others are.
        if (components.count() == 0) return send<NSString>(self, "string"_sel);
        common = shortest ? countOfCommonComponents(shortest, components, common) : components.count() - 1;
        if (!shortest || components.count() < shortest.count()) shortest = components;
    }
    if (shortest.count() < 2) return nil; // there is none, or it lies nowhere
    if (common == 0) return send<NSString>(self, "string"_sel);
    return send<NSString>(self, "stringWithString:"_sel,
                          NSString::pathWithComponents(shortest.subarrayWithRange({0, common})));
}

NSString parentDirectoryForPaths(Class self, SEL, NSArray paths) {
    Retained<NSString> result;
    {
        const AutoreleasePool pool;
        attempt([&] { result = retain(commonParentDirectory(self, paths)); },
                [&](NSException exception) {
                    NSLog("Exception: %@, reason: %@"_ns, exception.name(), exception.reason());
                });
    }
    return result.autorelease();
}

// ---- Key paths and trimming

NSString keyPathWithComponents(Class, SEL, NSString first, ...) {
    if (!first) return nil;
    std::vector<NSString> further;
    std::va_list list;
    va_start(list, first);
    while (Object* component = va_arg(list, Object*)) further.emplace_back(component);
    va_end(list);

    const Retained<NSMutableString> keyPath = adopt(NSMutableString::alloc().initWithString(first));
    for (const NSString component : further) {
        keyPath.appendString("."_ns);
        keyPath.appendString(component);
    }
    // A plain NSString, whichever class is asked.
    return NSString::stringWithString(keyPath);
}

NSString stringByTrimmingLeadingCharactersInSet(NSString self, SEL, NSCharacterSet set) {
    const NSUInteger length = self.length();
    NSUInteger index = 0;
    while (index < length && set.characterIsMember(self.characterAtIndex(index))) ++index;
    return self.substringFromIndex(index);
}

const ExtensionGroup group{"NSString",
                           "TessarinExtensions",
                           {
                               instanceMethod("tessarin_pathRelativeToDirectory:", pathRelativeToDirectory),
                               classMethod("tessarin_parentDirectoryForPaths:", parentDirectoryForPaths),
                               classMethod("tessarin_keyPathWithComponents:", keyPathWithComponents),
                               instanceMethod("tessarin_stringByTrimmingLeadingCharactersInSet:",
                                              stringByTrimmingLeadingCharactersInSet),
                           }};

} // namespace

NSString tessarin_pathRelativeToDirectory(NSString path, NSString directory) {
    return send<NSString>(path, "tessarin_pathRelativeToDirectory:"_sel, directory);
}

NSString tessarin_parentDirectoryForPaths(NSArray paths) {
    return tessarin_parentDirectoryForPaths(NSString::classObject(), paths);
}

NSString tessarin_parentDirectoryForPaths(Class receiver, NSArray paths) {
    return send<NSString>(receiver, "tessarin_parentDirectoryForPaths:"_sel, paths);
}

NSString tessarin_stringByTrimmingLeadingCharactersInSet(NSString string, NSCharacterSet set) {
    return send<NSString>(string, "tessarin_stringByTrimmingLeadingCharactersInSet:"_sel, set);
}
