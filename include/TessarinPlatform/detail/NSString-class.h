// The handle class of NSString. Its messages name arrays and character sets, whose headers need this class
// first.
#pragma once

#include "TessarinPlatform/NSObject.h"

#include <string>
#include <string_view>

namespace tessarin {

class NSArray;
class NSCharacterSet;
class NSData;

using NSStringCompareOptions = NSUInteger;
inline constexpr NSStringCompareOptions NSCaseInsensitiveSearch = 1;
inline constexpr NSStringCompareOptions NSLiteralSearch = 2;
inline constexpr NSStringCompareOptions NSBackwardsSearch = 4;
inline constexpr NSStringCompareOptions NSAnchoredSearch = 8;

// As wide as the platform's compiled code expects it.
#if TESSARIN_PLATFORM_EMBEDDED || defined(__APPLE__)
using NSStringEncoding = NSUInteger;
#else
using NSStringEncoding = std::uint32_t;
#endif
inline constexpr NSStringEncoding NSASCIIStringEncoding = 1;
inline constexpr NSStringEncoding NSNEXTSTEPStringEncoding = 2;
inline constexpr NSStringEncoding NSJapaneseEUCStringEncoding = 3;
inline constexpr NSStringEncoding NSUTF8StringEncoding = 4;
inline constexpr NSStringEncoding NSISOLatin1StringEncoding = 5;
inline constexpr NSStringEncoding NSSymbolStringEncoding = 6;
inline constexpr NSStringEncoding NSNonLossyASCIIStringEncoding = 7;
inline constexpr NSStringEncoding NSShiftJISStringEncoding = 8;
inline constexpr NSStringEncoding NSISOLatin2StringEncoding = 9;
inline constexpr NSStringEncoding NSUnicodeStringEncoding = 10;
inline constexpr NSStringEncoding NSWindowsCP1251StringEncoding = 11;
inline constexpr NSStringEncoding NSWindowsCP1252StringEncoding = 12;
inline constexpr NSStringEncoding NSWindowsCP1253StringEncoding = 13;
inline constexpr NSStringEncoding NSWindowsCP1254StringEncoding = 14;
inline constexpr NSStringEncoding NSWindowsCP1250StringEncoding = 15;
inline constexpr NSStringEncoding NSISO2022JPStringEncoding = 21;
inline constexpr NSStringEncoding NSMacOSRomanStringEncoding = 30;

// An index or a range beyond the end raises NSRangeException. A nil string to be compared with, searched for
// or appended raises NSInvalidArgumentException (GNUstep appends nothing); isEqualToString answers false for
// it. Searches answer the location NSNotFound for what is not there. Lengths and indexes count 16-bit units.
// Results are autoreleased; what alloc and init give is the caller's. An immutable string may be read on any
// number of threads at once.
class NSString : public Handle<NSString, "NSString", NSObject> {
public:
    using Handle::Handle;

    // An autoreleased string with that text. Text that is not well-formed UTF-8 gives nil; any sequence of
    // 16-bit units is accepted.
    TESSARIN_EXPORT explicit NSString(std::string_view utf8);
    TESSARIN_EXPORT explicit NSString(std::u16string_view units);
    explicit NSString(const char* utf8) : NSString(std::string_view(utf8)) {}
    explicit NSString(const std::string& utf8) : NSString(std::string_view(utf8)) {}

    // The text, empty for nil. In UTF-8 an unpaired surrogate, which has no encoding, stands as U+FFFD.
    TESSARIN_EXPORT explicit operator std::string() const;
    TESSARIN_EXPORT explicit operator std::u16string() const;

    static NSString string();
    static NSString stringWithString(NSString other);
    template <class... Arguments>
    static NSString stringWithFormat(NSString format, const Arguments&... arguments);
    static NSString stringWithCharacters_length(const unichar* characters, NSUInteger length);
    static NSString stringWithUTF8String(const char* text);
    static NSString stringWithCString_encoding(const char* text, NSStringEncoding encoding);
    static NSString pathWithComponents(NSArray components);

    [[nodiscard]] NSString init() const;
    [[nodiscard]] NSString initWithString(NSString other) const;
    [[nodiscard]] NSString initWithCharacters_length(const unichar* characters, NSUInteger length) const;
    [[nodiscard]] NSString initWithBytes_length_encoding(const void* bytes, NSUInteger length,
                                                         NSStringEncoding encoding) const;
    [[nodiscard]] NSString initWithCString_encoding(const char* text, NSStringEncoding encoding) const;
    [[nodiscard]] NSString initWithData_encoding(NSData data, NSStringEncoding encoding) const;

    NSUInteger length() const;
    unichar characterAtIndex(NSUInteger index) const;
    void getCharacters_range(unichar* buffer, NSRange range) const;
    const char* UTF8String() const;
    NSData dataUsingEncoding(NSStringEncoding encoding) const;

    bool isEqualToString(NSString other) const;
    NSComparisonResult compare(NSString other) const;
    NSComparisonResult compare_options(NSString other, NSStringCompareOptions options) const;
    NSComparisonResult caseInsensitiveCompare(NSString other) const;
    bool hasPrefix(NSString prefix) const;
    bool hasSuffix(NSString suffix) const;
    NSRange rangeOfString(NSString searched) const;
    NSRange rangeOfString_options(NSString searched, NSStringCompareOptions options) const;
    NSRange rangeOfCharacterFromSet(NSCharacterSet set) const;

    NSString substringFromIndex(NSUInteger index) const;
    NSString substringToIndex(NSUInteger index) const;
    NSString substringWithRange(NSRange range) const;
    NSArray componentsSeparatedByString(NSString separator) const;
    NSArray componentsSeparatedByCharactersInSet(NSCharacterSet separators) const;
    NSString stringByTrimmingCharactersInSet(NSCharacterSet set) const;
    NSString stringByAppendingString(NSString other) const;
    NSString lowercaseString() const;
    NSString uppercaseString() const;

    int intValue() const;
    NSInteger integerValue() const;
    long long longLongValue() const;
    float floatValue() const;
    double doubleValue() const;
    bool boolValue() const;

    bool isAbsolutePath() const;
    NSArray pathComponents() const;
    NSString lastPathComponent() const;
    NSString pathExtension() const;
    NSString stringByAppendingPathComponent(NSString component) const;
    NSString stringByDeletingLastPathComponent() const;
    NSString stringByDeletingPathExtension() const;
    NSString stringByExpandingTildeInPath() const;
};

} // namespace tessarin
