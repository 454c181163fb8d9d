// Strings: the characters of file names, and their percent escapes.
#include "TessarinFoundation/NSString+TessarinExtensions.h"

#include "TessarinPlatform/AutoreleasePool.h"
#include "TessarinPlatform/Definition.h"
#include "TessarinPlatform/PercentEscapes.h"
#include "TessarinPlatform/Retained.h"

using namespace tessarin;

namespace {

// ---- The constants: made once, on first use, and never released

constexpr char illegalCharacters[] = "\"*./:<>?\\|";
constexpr char reservedCharacters[] = " \"#$%&+,/:;<=>?@[\\]^`{|}";
constexpr char escapingCharacter[] = "-";

// The string that the platform has made of a text; should it have made none, a constant one.
template <tessarin::detail::FixedString text>
NSString orLiteral(NSString made) {
    return made ? made : operator""_ns<text>();
}

template <tessarin::detail::FixedString characters>
NSCharacterSet makeSet() {
    const AutoreleasePool pool;
    const NSString string =
        orLiteral<characters>(NSString::stringWithCString_encoding(characters.c_str(), NSUTF8StringEncoding));
    return retain(NSCharacterSet::characterSetWithCharactersInString(string)).leak();
}

NSCharacterSet fileNameIllegalCharacters(Class, SEL) {
    static const NSCharacterSet set = makeSet<illegalCharacters>();
    return set;
}
NSCharacterSet fileNameReservedCharacters(Class, SEL) {
    static const NSCharacterSet set = makeSet<reservedCharacters>();
    return set;
}
NSString escapingFileNameCharacter(Class, SEL) {
    static const NSString character = orLiteral<escapingCharacter>(
        NSString::alloc().initWithCString_encoding(escapingCharacter, NSUTF8StringEncoding));
    return character;
}

// Whatever the receiver's class reserves, these are the characters that are escaped.
NSString escapedCharacters() {
    static const NSString characters =
        CFStringCreateWithCString(kCFAllocatorDefault, reservedCharacters, kCFStringEncodingUTF8);
    return characters;
}

// ---- The operations

bool containsAny(NSString string, NSCharacterSet characters) {
    return string.rangeOfCharacterFromSet(characters).location != static_cast<NSUInteger>(NSNotFound);
}
BOOL containsFileNameIllegalCharacters(NSString self, SEL) {
    return containsAny(self, tessarin_fileNameIllegalCharacters(self.class_()));
}
BOOL containsFileNameReservedCharacters(NSString self, SEL) {
    return containsAny(self, tessarin_fileNameReservedCharacters(self.class_()));
}

NSString fileNameByReplacingIllegalCharacters(NSString self, SEL) {
    if (!tesarin_containsFileNameIllegalCharacters(self)) return self;
    const Class rules = self.class_();
    const NSArray pieces =
        self.componentsSeparatedByCharactersInSet(tessarin_fileNameIllegalCharacters(rules));
    return pieces.componentsJoinedByString(tessarin_escapingFileNameCharacter(rules));
}

NSString fileNameByAddingPercentEscapes(NSString self, SEL, NSStringEncoding encoding) {
    // Without a reserved character nothing is escaped, not even what cannot stand in a URL. This is meant.
    if (!tessarin_containsFileNameReservedCharacters(self)) return self;
    const NSString escaped = escapedCharacters();
    const CFStringEncoding platformEncoding = CFStringConvertNSStringEncodingToEncoding(encoding);
    if (platformEncoding == kCFStringEncodingInvalidId) return nil;
    return adopt(CFURLCreateStringByAddingPercentEscapes(kCFAllocatorDefault, self, nil, escaped,
                                                         platformEncoding))
        .autorelease();
}

NSString fileNameByReplacingPercentEscapes(NSString self, SEL, NSStringEncoding encoding) {
    const CFStringEncoding platformEncoding = CFStringConvertNSStringEncodingToEncoding(encoding);
    if (platformEncoding == kCFStringEncodingInvalidId) return nil;
    return adopt(CFURLCreateStringByReplacingPercentEscapesUsingEncoding(kCFAllocatorDefault, self, ""_ns,
                                                                         platformEncoding))
        .autorelease();
}

const ExtensionGroup group{
    "NSString",
    "TessarinExtensions",
    {
        classMethod("tessarin_fileNameIllegalCharacters", fileNameIllegalCharacters),
        classMethod("tessarin_fileNameReservedCharacters", fileNameReservedCharacters),
        classMethod("tessarin_escapingFileNameCharacter", escapingFileNameCharacter),
        // One letter short, which is meant.
        instanceMethod("tesarin_containsFileNameIllegalCharacters", containsFileNameIllegalCharacters),
        instanceMethod("tessarin_containsFileNameReservedCharacters", containsFileNameReservedCharacters),
        instanceMethod("tessarin_fileNameByReplacingIllegalCharacters", fileNameByReplacingIllegalCharacters),
        instanceMethod("tessarin_fileNameByAddingPercentEscapesUsingEncoding:",
                       fileNameByAddingPercentEscapes),
        instanceMethod("tessarin_fileNameByReplacingPercentEscapesUsingEncoding:",
                       fileNameByReplacingPercentEscapes),
    }};

} // namespace

NSCharacterSet tessarin_fileNameIllegalCharacters() {
    return tessarin_fileNameIllegalCharacters(NSString::classObject());
}
NSCharacterSet tessarin_fileNameIllegalCharacters(Class receiver) {
    return send<NSCharacterSet>(receiver, "tessarin_fileNameIllegalCharacters"_sel);
}
NSCharacterSet tessarin_fileNameReservedCharacters() {
    return tessarin_fileNameReservedCharacters(NSString::classObject());
}
NSCharacterSet tessarin_fileNameReservedCharacters(Class receiver) {
    return send<NSCharacterSet>(receiver, "tessarin_fileNameReservedCharacters"_sel);
}
NSString tessarin_escapingFileNameCharacter() {
    return tessarin_escapingFileNameCharacter(NSString::classObject());
}
NSString tessarin_escapingFileNameCharacter(Class receiver) {
    return send<NSString>(receiver, "tessarin_escapingFileNameCharacter"_sel);
}

bool tesarin_containsFileNameIllegalCharacters(NSString name) {
    return send<BOOL>(name, "tesarin_containsFileNameIllegalCharacters"_sel) != NO;
}
bool tessarin_containsFileNameReservedCharacters(NSString name) {
    return send<BOOL>(name, "tessarin_containsFileNameReservedCharacters"_sel) != NO;
}
NSString tessarin_fileNameByReplacingIllegalCharacters(NSString name) {
    return send<NSString>(name, "tessarin_fileNameByReplacingIllegalCharacters"_sel);
}
NSString tessarin_fileNameByAddingPercentEscapesUsingEncoding(NSString name, NSStringEncoding encoding) {
    return send<NSString>(name, "tessarin_fileNameByAddingPercentEscapesUsingEncoding:"_sel, encoding);
}
NSString tessarin_fileNameByReplacingPercentEscapesUsingEncoding(NSString name, NSStringEncoding encoding) {
    return send<NSString>(name, "tessarin_fileNameByReplacingPercentEscapesUsingEncoding:"_sel, encoding);
}
