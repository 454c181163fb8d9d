// What keyed archives look like: a property list of four entries.
//
//   $version    100000
//   $archiver   "NSKeyedArchiver"
//   $top        what was encoded outside of all objects: key to value
//   $objects    the objects. A reference to one (a UID) is its index; index 0 holds "$null", for
//               nil
//
// Strings, numbers and data are objects as they are. Every other is a dictionary of what it encoded, with a
// reference to its class under $class: { $classname: its name, $classes: its name and those it is derived
// from }.
#pragma once

#include "TessarinPlatform/NSString.h"
#include "platform/embedded/foundation/StringStorage.h"

namespace tessarin::embedded::keyedArchive {

inline constexpr int version = 100000;

inline NSString archiverName() { return "NSKeyedArchiver"_ns; }
inline NSString archiverKey() { return "$archiver"_ns; }
inline NSString versionKey() { return "$version"_ns; }
inline NSString topKey() { return "$top"_ns; }
inline NSString objectsKey() { return "$objects"_ns; }
inline NSString classKey() { return "$class"_ns; }
inline NSString classNameKey() { return "$classname"_ns; }
inline NSString classesKey() { return "$classes"_ns; }
inline NSString nullText() { return "$null"_ns; }
inline NSString rootKey() { return "root"_ns; }
// In place of a reference, in XML: a dictionary of this key alone.
inline NSString uidKey() { return "CF$UID"_ns; }

// As many objects inside each other as are archived and unarchived. Each takes stack for its own coding, and
// a thread's stack is no larger than the platform makes it.
inline constexpr std::size_t deepest = 256;

// A key of a caller as it stands in the archive, apart from the archive's own keys.
inline NSString escapedKey(NSString key, NSObject coder, SEL selector) {
    if (!key) raiseFrom(NSInvalidArgumentException(), coder, selector, "key cannot be nil");
    const Contents units = contentsOf(key);
    if (units.isEmpty() || units[0] != u'$') return key;
    return "$"_ns.stringByAppendingString(key);
}

} // namespace tessarin::embedded::keyedArchive
