// Strings: relations between paths, key paths, trimming, file names, quantities.
//
// None of these operations touches the file system; a path is a plain string with "/" as its separator. They
// keep no state but the constants that the file-name operations make once, and any of them may run on any
// thread at the same time as any other. Results are autoreleased.
//
// A nil receiver, string or class, answers nil, or NO. What a nil argument means is said at each operation.
#pragma once

#include "TessarinPlatform/detail/LibraryAnchor.h"

#if defined(__OBJC__)

#    include "TessarinPlatform/AudioTypes.h" // UInt16

#    import <Foundation/NSArray.h>
#    import <Foundation/NSCharacterSet.h>
#    import <Foundation/NSString.h>
#    import <Foundation/NSValue.h>

@interface NSString (TessarinExtensions)

- (NSString*)tessarin_pathRelativeToDirectory:(NSString*)directory;
+ (NSString*)tessarin_parentDirectoryForPaths:(NSArray*)paths;
+ (NSString*)tessarin_keyPathWithComponents:(NSString*)first, ...;
- (NSString*)tessarin_stringByTrimmingLeadingCharactersInSet:(NSCharacterSet*)set;

+ (NSCharacterSet*)tessarin_fileNameIllegalCharacters;
+ (NSCharacterSet*)tessarin_fileNameReservedCharacters;
+ (NSString*)tessarin_escapingFileNameCharacter;
- (BOOL)tesarin_containsFileNameIllegalCharacters; // one letter short, which is meant
- (BOOL)tessarin_containsFileNameReservedCharacters;
- (NSString*)tessarin_fileNameByReplacingIllegalCharacters;
- (NSString*)tessarin_fileNameByAddingPercentEscapesUsingEncoding:(NSStringEncoding)encoding;
- (NSString*)tessarin_fileNameByReplacingPercentEscapesUsingEncoding:(NSStringEncoding)encoding;

+ (NSString*)tessarin_stringWithFileSize:(NSNumber*)size
                                  ofUnit:(UInt16)unit
                            forPrecision:(NSUInteger)precision
                                longUnit:(BOOL)longUnit
                          separateSuffix:(BOOL)separateSuffix;
+ (NSString*)tessarin_timeStringWithSeconds:(int64_t)seconds;

@end

#else

#    include "TessarinPlatform/AudioTypes.h"
#    include "TessarinPlatform/NSArray.h"
#    include "TessarinPlatform/NSCharacterSet.h"
#    include "TessarinPlatform/NSNumber.h"
#    include "TessarinPlatform/NSString.h"

// The receiver, a path, relative to a directory. The receiver itself comes back when the directory or the
// receiver is not an absolute path; a nil directory is none. An absolute path begins with "/" or "~".
//
// When the receiver begins with the directory, character by character and with regard to case, the result is
// what follows, without its leading slashes: /a/bc/d relative to /a/b gives c/d, which is meant, and a path
// relative to itself gives the empty string. Otherwise both are split at every "/", the leading components
// that are equal without regard to case are left out, and the result has one "../" for every component left
// of the directory, then what is left of the receiver, "/" at its end included; where nothing of either is
// left, as of /A/b relative to /a/b, that is the empty string, and /a relative to /a/b gives ../. A directory
// that ends in "/" counts one level more unless it prefixes the receiver.
//
// Raises NSRangeException when the directory's components run out first, all of them equal to the receiver's
// but for case: /A/b/c relative to /a/b. This is meant. GNUstep folds case one character to one, so that a
// component with ß is not equal to one with ss.
//
//   tessarin_pathRelativeToDirectory("/Users/x/Music/a.wav"_ns, "/Users/x"_ns)   // Music/a.wav
//   tessarin_pathRelativeToDirectory("/x/y"_ns, "/a/b"_ns)                       // ../../x/y
TESSARIN_EXPORT tessarin::NSString tessarin_pathRelativeToDirectory(tessarin::NSString path,
                                                                    tessarin::NSString directory);

// The deepest directory that all paths lie in, as a new string of the receiving class (NSString, unless
// another is named). Tildes are expanded; components are compared with regard to case. The empty string when
// the paths share no leading component, and for an empty path that comes before anything raises, whatever the
// others are. nil for an empty or
// nil list, and when the shortest path has a single component, such as a or /.
//
// An exception of the platform, raised for instance by an element that is no string, is caught: one line is
// written to the platform's log in the format "Exception: %@, reason: %@", and nil is the result. All
// temporary objects are released before the operation returns. GNUstep takes canonically equal components for
// equal, and //host/share/ for one.
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
// The list ends at its first nil, NSString() in C++, which does not take the word nil here. Empty components
// are kept: a, (empty), b gives a..b.
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
// tested as its two surrogate units. The empty string when all are, an equal string, perhaps the receiver,
// when none is; a nil set holds none.
//
//   tessarin_stringByTrimmingLeadingCharactersInSet("///a/b"_ns, slashes)   // a/b
TESSARIN_EXPORT tessarin::NSString
tessarin_stringByTrimmingLeadingCharactersInSet(tessarin::NSString string, tessarin::NSCharacterSet set);

// ---- Characters of file names
//
// The three rules are class operations. The operations on a string ask the receiver's class for them, so that
// a class derived from NSString may have rules of its own. NSString's are made once and kept. A nil name
// holds nothing and answers nil.
//
//   tessarin_fileNameIllegalCharacters().characterIsMember('/')   // true
//   tessarin_escapingFileNameCharacter<SessionName>()             // by a class of the application's own

// " * . / : < > ? \ |: the full stop is one of them, which is meant.
TESSARIN_EXPORT tessarin::NSCharacterSet tessarin_fileNameIllegalCharacters();
TESSARIN_EXPORT tessarin::NSCharacterSet tessarin_fileNameIllegalCharacters(tessarin::Class receiver);
template <tessarin::HandleType Receiver>
tessarin::NSCharacterSet tessarin_fileNameIllegalCharacters() {
    return tessarin_fileNameIllegalCharacters(Receiver::classObject());
}

// The space and " # $ % & + , / : ; < = > ? @ [ \ ] ^ ` { | }
TESSARIN_EXPORT tessarin::NSCharacterSet tessarin_fileNameReservedCharacters();
TESSARIN_EXPORT tessarin::NSCharacterSet tessarin_fileNameReservedCharacters(tessarin::Class receiver);
template <tessarin::HandleType Receiver>
tessarin::NSCharacterSet tessarin_fileNameReservedCharacters() {
    return tessarin_fileNameReservedCharacters(Receiver::classObject());
}

// What stands for an illegal character: "-".
TESSARIN_EXPORT tessarin::NSString tessarin_escapingFileNameCharacter();
TESSARIN_EXPORT tessarin::NSString tessarin_escapingFileNameCharacter(tessarin::Class receiver);
template <tessarin::HandleType Receiver>
tessarin::NSString tessarin_escapingFileNameCharacter() {
    return tessarin_escapingFileNameCharacter(Receiver::classObject());
}

// Whether any character of the receiver is illegal. The name is one letter short, which is meant.
TESSARIN_EXPORT bool tesarin_containsFileNameIllegalCharacters(tessarin::NSString name);
// Whether any character of the receiver is reserved.
TESSARIN_EXPORT bool tessarin_containsFileNameReservedCharacters(tessarin::NSString name);

// The receiver with every illegal character replaced, one for one. The receiver itself when it has none.
//
//   tessarin_fileNameByReplacingIllegalCharacters("a/b:c.wav"_ns)   // a-b-c-wav
TESSARIN_EXPORT tessarin::NSString tessarin_fileNameByReplacingIllegalCharacters(tessarin::NSString name);

// The receiver with percent escapes, in upper-case digits, for each byte that the encoding has for a
// character: for the 24 reserved characters of NSString, whatever the receiver's class reserves, and for
// every character that cannot stand in a URL, above all those outside ASCII. The percent sign itself becomes
// %25.
//
// The receiver itself when none of its characters is reserved, also when others cannot stand in a URL and
// whatever the encoding; this is meant. nil for an encoding that the platform does not have and for a
// character to be escaped that the encoding cannot represent. TessarinPlatform/StringEncodings.h lists the
// encodings, TessarinPlatform/PercentEscapes.h says what comes of surrogate pairs and byte-order marks.
//
//   tessarin_fileNameByAddingPercentEscapesUsingEncoding("a b"_ns, NSUTF8StringEncoding)   // a%20b
TESSARIN_EXPORT tessarin::NSString
tessarin_fileNameByAddingPercentEscapesUsingEncoding(tessarin::NSString name,
                                                     tessarin::NSStringEncoding encoding);

// The receiver with every percent escape replaced by what its bytes say in the encoding; adjacent escapes are
// read together. All other characters stay as they are; without escapes an equal string, perhaps the
// receiver, is the result. nil for a number that stands for no encoding; where
// there are escapes, for an encoding that the platform does not have, for a percent sign without two
// hexadecimal digits, and for bytes that are no text in the encoding.
//
//   tessarin_fileNameByReplacingPercentEscapesUsingEncoding("a%20b"_ns, NSUTF8StringEncoding)   // a b
TESSARIN_EXPORT tessarin::NSString
tessarin_fileNameByReplacingPercentEscapesUsingEncoding(tessarin::NSString name,
                                                        tessarin::NSStringEncoding encoding);

// ---- Quantities

// A size in bytes, in units of 1024 to the power `unit`, with at most `precision` fraction digits, as a new
// string of the receiving class. The size is read as an unsigned 64-bit integer: 1536.9 as 1536, -1 as
// 2^64 - 1, nil as 0. The precision is handed to setMaximumFractionDigits:, where NSNumberFormatter.h says
// what becomes of one above 2147483647.
//
// The unit 65535 stands for the largest in which the size is more than 1, or bytes: 1024 bytes stay bytes,
// 1025 are 1.0009765625 kB. The number is written by the platform's number formatter: rounded half to even,
// no trailing zeros, no grouping, the decimal separator of the user's locale. nil when it cannot be.
//
// The suffix is the separator (a space if `separateSuffix`, nothing otherwise), the prefix (none, k, M, G, T,
// P, E, Z, Y, or with `longUnit` none, kilo, mega, ... yotta) and the unit: "B", or with `longUnit` "byte"
// for a number that is less than 2 before it is rounded and "bytes" otherwise. In the short form the units 9
// to 17 give the prefixes of the long form, which is meant. A unit above 17, or above 8 with `longUnit`,
// raises NSRangeException; the unit that is chosen by the size never does.
//
//   tessarin_stringWithFileSize_ofUnit_forPrecision_longUnit_separateSuffix(
//       NSNumber::numberWithInt(1536), 65535, 1, false, true)   // 1.5 kB
TESSARIN_EXPORT tessarin::NSString tessarin_stringWithFileSize_ofUnit_forPrecision_longUnit_separateSuffix(
    tessarin::NSNumber size, tessarin::UInt16 unit, tessarin::NSUInteger precision, bool longUnit,
    bool separateSuffix);
TESSARIN_EXPORT tessarin::NSString tessarin_stringWithFileSize_ofUnit_forPrecision_longUnit_separateSuffix(
    tessarin::Class receiver, tessarin::NSNumber size, tessarin::UInt16 unit, tessarin::NSUInteger precision,
    bool longUnit, bool separateSuffix);
template <tessarin::HandleType Receiver>
Receiver tessarin_stringWithFileSize_ofUnit_forPrecision_longUnit_separateSuffix(
    tessarin::NSNumber size, tessarin::UInt16 unit, tessarin::NSUInteger precision, bool longUnit,
    bool separateSuffix) {
    return Receiver(static_cast<tessarin::NSObject>(
        tessarin_stringWithFileSize_ofUnit_forPrecision_longUnit_separateSuffix(
            Receiver::classObject(), size, unit, precision, longUnit, separateSuffix)));
}

// A duration as minutes and seconds, or from 3660 seconds on as hours, minutes and seconds, as a new string
// of the receiving class. An hour is shown as 60 : 00, up to 60 : 59, which is meant. From 3,600,000 seconds,
// 1000 hours, on it is the constant string "999:59:59", which is immutable whatever class is asked. Each
// negative field has a minus sign of its own.
//
//   tessarin_timeStringWithSeconds(61)      // 1 : 01
//   tessarin_timeStringWithSeconds(3660)    // 1 : 01 : 00
//   tessarin_timeStringWithSeconds(-65)     // -1 : -5
TESSARIN_EXPORT tessarin::NSString tessarin_timeStringWithSeconds(std::int64_t seconds);
TESSARIN_EXPORT tessarin::NSString tessarin_timeStringWithSeconds(tessarin::Class receiver,
                                                                  std::int64_t seconds);
template <tessarin::HandleType Receiver>
Receiver tessarin_timeStringWithSeconds(std::int64_t seconds) {
    return Receiver(
        static_cast<tessarin::NSObject>(tessarin_timeStringWithSeconds(Receiver::classObject(), seconds)));
}

#endif
