// NSScanner: reads numbers and words off a string, one after the other.
#pragma once

#include "TessarinPlatform/NSCharacterSet.h"

namespace tessarin {

// Each scan skips white space and line breaks first, answers whether it found what it wants, and moves the
// location behind it. One that finds nothing leaves the location and the result as they were; a result that
// is not wanted is given as null, but for scanHexInt's, which GNUstep wants. The string is copied.
class NSScanner : public Handle<NSScanner, "NSScanner", NSObject> {
public:
    using Handle::Handle;

    static NSScanner scannerWithString(NSString string) {
        return send<NSScanner>(classObject(), "scannerWithString:"_sel, string);
    }
    [[nodiscard]] NSScanner initWithString(NSString string) const {
        return send<NSScanner>(*this, "initWithString:"_sel, string);
    }

    NSString string() const { return send<NSString>(*this, "string"_sel); }
    NSUInteger scanLocation() const { return send<NSUInteger>(*this, "scanLocation"_sel); }
    // Raises NSRangeException for a location behind the end.
    void setScanLocation(NSUInteger location) const { send<void>(*this, "setScanLocation:"_sel, location); }
    // What is skipped before each scan, nil for nothing.
    NSCharacterSet charactersToBeSkipped() const {
        return send<NSCharacterSet>(*this, "charactersToBeSkipped"_sel);
    }
    void setCharactersToBeSkipped(NSCharacterSet characters) const {
        send<void>(*this, "setCharactersToBeSkipped:"_sel, characters);
    }
    // Whether letter case counts where strings are scanned, which it does not at first.
    bool caseSensitive() const { return send<BOOL>(*this, "caseSensitive"_sel) != NO; }
    void setCaseSensitive(bool counts) const {
        send<void>(*this, "setCaseSensitive:"_sel, static_cast<BOOL>(counts));
    }
    // Whether nothing but what is skipped is left.
    bool isAtEnd() const { return send<BOOL>(*this, "isAtEnd"_sel) != NO; }

    // Hexadecimal digits, with 0x or 0X before them or without; a number that is too large gives the largest.
    // All digits are scanned, however many there are. 0x without a digit behind it is the number 0.
    bool scanHexInt(unsigned* result) const { return send<BOOL>(*this, "scanHexInt:"_sel, result) != NO; }
    bool scanHexLongLong(unsigned long long* result) const {
        return send<BOOL>(*this, "scanHexLongLong:"_sel, result) != NO;
    }
    // Decimal digits with a sign or without; a number outside the range gives its nearest end.
    bool scanInt(int* result) const { return send<BOOL>(*this, "scanInt:"_sel, result) != NO; }
    bool scanInteger(NSInteger* result) const { return send<BOOL>(*this, "scanInteger:"_sel, result) != NO; }
    bool scanLongLong(long long* result) const {
        return send<BOOL>(*this, "scanLongLong:"_sel, result) != NO;
    }
    // A decimal number with a full stop for its point, whatever the locale. One that is too large is
    // infinite.
    bool scanDouble(double* result) const { return send<BOOL>(*this, "scanDouble:"_sel, result) != NO; }
    // Results are autoreleased and not empty. Up to a string or characters that do not come, everything is
    // scanned.
    bool scanString_intoString(NSString string, NSString* result) const {
        return send<BOOL>(*this, "scanString:intoString:"_sel, string, result) != NO;
    }
    bool scanCharactersFromSet_intoString(NSCharacterSet characters, NSString* result) const {
        return send<BOOL>(*this, "scanCharactersFromSet:intoString:"_sel, characters, result) != NO;
    }
    bool scanUpToString_intoString(NSString string, NSString* result) const {
        return send<BOOL>(*this, "scanUpToString:intoString:"_sel, string, result) != NO;
    }
    bool scanUpToCharactersFromSet_intoString(NSCharacterSet characters, NSString* result) const {
        return send<BOOL>(*this, "scanUpToCharactersFromSet:intoString:"_sel, characters, result) != NO;
    }
};

} // namespace tessarin
