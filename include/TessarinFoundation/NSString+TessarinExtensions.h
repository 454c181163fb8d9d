// Strings: relations between paths, key paths, trimming.
//
// None of these operations touches the file system; a path is a plain string with "/" as its separator. They
// keep no state, and any of them may run on any thread at the same time as any other. Results are
// autoreleased.
#pragma once

#include "TessarinPlatform/detail/LibraryAnchor.h"

#if defined(__OBJC__)

#    import <Foundation/NSArray.h>
#    import <Foundation/NSCharacterSet.h>
#    import <Foundation/NSString.h>

@interface NSString (TessarinExtensions)

- (NSString*)tessarin_pathRelativeToDirectory:(NSString*)directory;
+ (NSString*)tessarin_parentDirectoryForPaths:(NSArray*)paths;
+ (NSString*)tessarin_keyPathWithComponents:(NSString*)first, ...;
- (NSString*)tessarin_stringByTrimmingLeadingCharactersInSet:(NSCharacterSet*)set;

@end

#else

#    include "TessarinPlatform/NSArray.h"
#    include "TessarinPlatform/NSCharacterSet.h"
#    include "TessarinPlatform/NSString.h"

// The receiver, a path, relative to a directory. The receiver itself comes back when the directory or the
// receiver is not an absolute path; a nil directory is none. An absolute path begins with "/" or "~".
//
// When the receiver begins with the directory, character by character and with regard to case, the result is
// what follows, without its leading slashes: /a/bc/d relative to /a/b gives c/d, which is meant, and a path
// relative to itself gives the empty string. Otherwise both are split at every "/", the leading components
// that are equal without regard to case are left out, and the result has one "../" for every component left
// of the directory, then what is left of the receiver. It ends with "/" when the receiver does, or when
// nothing of the receiver is left: /a relative to /a/b gives ../. A directory that ends in "/" counts one
// level more unless it prefixes the receiver.
//
// Raises NSRangeException when the directory's components run out first, all of them equal to the receiver's
// but for case: /A/b/c relative to /a/b. This is meant.
//
//   tessarin_pathRelativeToDirectory("/Users/x/Music/a.wav"_ns, "/Users/x"_ns)   // Music/a.wav
//   tessarin_pathRelativeToDirectory("/x/y"_ns, "/a/b"_ns)                       // ../../x/y
TESSARIN_EXPORT tessarin::NSString tessarin_pathRelativeToDirectory(tessarin::NSString path,
                                                                    tessarin::NSString directory);

// The deepest directory that all paths lie in, as a new string of the receiving class (NSString, unless
// another is named). Tildes are expanded; components are compared with regard to case. The empty string when
// the paths share no leading component, and when any path up to the first such is empty. nil for an empty or
// nil list, and when the shortest path has a single component, such as a or /.
//
// An exception of the platform, raised for instance by an element that is no string, is caught: one line is
// written to the platform's log in the format "Exception: %@, reason: %@", and nil is the result. All
// temporary objects are released before the operation returns.
//
//   tessarin_parentDirectoryForPaths(NSArray::arrayOf("/a/b/x"_ns, "/a/c/y"_ns))    // /a
//   tessarin_parentDirectoryForPaths<NSMutableString>(paths)
TESSARIN_EXPORT tessarin::NSString tessarin_parentDirectoryForPaths(tessarin::NSArray paths);
TESSARIN_EXPORT tessarin::NSString tessarin_parentDirectoryForPaths(tessarin::Class receiver,
                                                                    tessarin::NSArray paths);
template <tessarin::HandleType Receiver>
Receiver tessarin_parentDirectoryForPaths(tessarin::NSArray paths) {
    return Receiver(
        static_cast<tessarin::NSObject>(tessarin_parentDirectoryForPaths(Receiver::classObject(), paths)));
}

// The components joined with ".", as an immutable string whatever class is asked; nil when the first is nil.
// The list ends at its first nil. Empty components are kept: a, (empty), b gives a..b.
//
// In Objective-C the list must end with nil.
//
//   tessarin_keyPathWithComponents("track"_ns, "effect"_ns, "gain"_ns)   // track.effect.gain
template <std::derived_from<tessarin::NSString>... Components>
tessarin::NSString tessarin_keyPathWithComponents(tessarin::Class receiver, tessarin::NSString first,
                                                  const Components&... further) {
    using namespace tessarin;
    return sendVariadic<NSString>(receiver, "tessarin_keyPathWithComponents:"_sel, first,
                                  NSString(further.object())..., NSString());
}
template <std::derived_from<tessarin::NSString>... Components>
tessarin::NSString tessarin_keyPathWithComponents(tessarin::NSString first, const Components&... further) {
    return tessarin_keyPathWithComponents(tessarin::NSString::classObject(), first, further...);
}

// The receiver without the leading 16-bit units that are in the set. A character outside the basic plane is
// tested as its two surrogate units. The empty string when all are; a nil set holds none.
//
//   tessarin_stringByTrimmingLeadingCharactersInSet("///a/b"_ns, slashes)   // a/b
TESSARIN_EXPORT tessarin::NSString
tessarin_stringByTrimmingLeadingCharactersInSet(tessarin::NSString string, tessarin::NSCharacterSet set);

#endif
