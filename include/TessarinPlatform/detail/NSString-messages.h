// The messages of NSString's member functions, apart from the class so that this reads as a list.
#pragma once

#include "TessarinPlatform/NSArray.h"
#include "TessarinPlatform/NSCharacterSet.h"
#include "TessarinPlatform/NSData.h"

namespace tessarin {

inline NSString NSString::string() { return send<NSString>(classObject(), "string"_sel); }
inline NSString NSString::stringWithString(NSString other) {
    return send<NSString>(classObject(), "stringWithString:"_sel, other);
}
inline NSString NSString::stringWithCharacters_length(const unichar* characters, NSUInteger length) {
    return send<NSString>(classObject(), "stringWithCharacters:length:"_sel, characters, length);
}
inline NSString NSString::stringWithUTF8String(const char* text) {
    return send<NSString>(classObject(), "stringWithUTF8String:"_sel, text);
}
inline NSString NSString::stringWithCString_encoding(const char* text, NSStringEncoding encoding) {
    return send<NSString>(classObject(), "stringWithCString:encoding:"_sel, text, encoding);
}
inline NSString NSString::pathWithComponents(NSArray components) {
    return send<NSString>(classObject(), "pathWithComponents:"_sel, components);
}

inline NSString NSString::init() const { return send<NSString>(*this, "init"_sel); }
inline NSString NSString::initWithString(NSString other) const {
    return send<NSString>(*this, "initWithString:"_sel, other);
}
inline NSString NSString::initWithCharacters_length(const unichar* characters, NSUInteger length) const {
    return send<NSString>(*this, "initWithCharacters:length:"_sel, characters, length);
}
inline NSString NSString::initWithBytes_length_encoding(const void* bytes, NSUInteger length,
                                                        NSStringEncoding encoding) const {
    return send<NSString>(*this, "initWithBytes:length:encoding:"_sel, bytes, length, encoding);
}
inline NSString NSString::initWithCString_encoding(const char* text, NSStringEncoding encoding) const {
    return send<NSString>(*this, "initWithCString:encoding:"_sel, text, encoding);
}
inline NSString NSString::initWithData_encoding(NSData data, NSStringEncoding encoding) const {
    return send<NSString>(*this, "initWithData:encoding:"_sel, data, encoding);
}

inline NSUInteger NSString::length() const { return send<NSUInteger>(*this, "length"_sel); }
inline unichar NSString::characterAtIndex(NSUInteger index) const {
    return send<unichar>(*this, "characterAtIndex:"_sel, index);
}
inline void NSString::getCharacters_range(unichar* buffer, NSRange range) const {
    send<void>(*this, "getCharacters:range:"_sel, buffer, range);
}
inline const char* NSString::UTF8String() const { return send<const char*>(*this, "UTF8String"_sel); }
inline NSData NSString::dataUsingEncoding(NSStringEncoding encoding) const {
    return send<NSData>(*this, "dataUsingEncoding:"_sel, encoding);
}

inline bool NSString::isEqualToString(NSString other) const {
    return send<BOOL>(*this, "isEqualToString:"_sel, other) != NO;
}
inline NSComparisonResult NSString::compare(NSString other) const {
    return send<NSComparisonResult>(*this, "compare:"_sel, other);
}
inline NSComparisonResult NSString::compare_options(NSString other, NSStringCompareOptions options) const {
    return send<NSComparisonResult>(*this, "compare:options:"_sel, other, options);
}
inline NSComparisonResult NSString::caseInsensitiveCompare(NSString other) const {
    return send<NSComparisonResult>(*this, "caseInsensitiveCompare:"_sel, other);
}
inline bool NSString::hasPrefix(NSString prefix) const {
    return send<BOOL>(*this, "hasPrefix:"_sel, prefix) != NO;
}
inline bool NSString::hasSuffix(NSString suffix) const {
    return send<BOOL>(*this, "hasSuffix:"_sel, suffix) != NO;
}
inline NSRange NSString::rangeOfString(NSString searched) const {
    return send<NSRange>(*this, "rangeOfString:"_sel, searched);
}
inline NSRange NSString::rangeOfString_options(NSString searched, NSStringCompareOptions options) const {
    return send<NSRange>(*this, "rangeOfString:options:"_sel, searched, options);
}
inline NSRange NSString::rangeOfCharacterFromSet(NSCharacterSet set) const {
    return send<NSRange>(*this, "rangeOfCharacterFromSet:"_sel, set);
}

inline NSString NSString::substringFromIndex(NSUInteger index) const {
    return send<NSString>(*this, "substringFromIndex:"_sel, index);
}
inline NSString NSString::substringToIndex(NSUInteger index) const {
    return send<NSString>(*this, "substringToIndex:"_sel, index);
}
inline NSString NSString::substringWithRange(NSRange range) const {
    return send<NSString>(*this, "substringWithRange:"_sel, range);
}
inline NSArray NSString::componentsSeparatedByString(NSString separator) const {
    return send<NSArray>(*this, "componentsSeparatedByString:"_sel, separator);
}
inline NSArray NSString::componentsSeparatedByCharactersInSet(NSCharacterSet separators) const {
    return send<NSArray>(*this, "componentsSeparatedByCharactersInSet:"_sel, separators);
}
inline NSString NSString::stringByTrimmingCharactersInSet(NSCharacterSet set) const {
    return send<NSString>(*this, "stringByTrimmingCharactersInSet:"_sel, set);
}
inline NSString NSString::stringByAppendingString(NSString other) const {
    return send<NSString>(*this, "stringByAppendingString:"_sel, other);
}
inline NSString NSString::lowercaseString() const { return send<NSString>(*this, "lowercaseString"_sel); }
inline NSString NSString::uppercaseString() const { return send<NSString>(*this, "uppercaseString"_sel); }

inline int NSString::intValue() const { return send<int>(*this, "intValue"_sel); }
inline NSInteger NSString::integerValue() const { return send<NSInteger>(*this, "integerValue"_sel); }
inline long long NSString::longLongValue() const { return send<long long>(*this, "longLongValue"_sel); }
inline float NSString::floatValue() const { return send<float>(*this, "floatValue"_sel); }
inline double NSString::doubleValue() const { return send<double>(*this, "doubleValue"_sel); }
inline bool NSString::boolValue() const { return send<BOOL>(*this, "boolValue"_sel) != NO; }

inline bool NSString::isAbsolutePath() const { return send<BOOL>(*this, "isAbsolutePath"_sel) != NO; }
inline NSArray NSString::pathComponents() const { return send<NSArray>(*this, "pathComponents"_sel); }
inline NSString NSString::lastPathComponent() const { return send<NSString>(*this, "lastPathComponent"_sel); }
inline NSString NSString::pathExtension() const { return send<NSString>(*this, "pathExtension"_sel); }
inline NSString NSString::stringByAppendingPathComponent(NSString component) const {
    return send<NSString>(*this, "stringByAppendingPathComponent:"_sel, component);
}
inline NSString NSString::stringByDeletingLastPathComponent() const {
    return send<NSString>(*this, "stringByDeletingLastPathComponent"_sel);
}
inline NSString NSString::stringByDeletingPathExtension() const {
    return send<NSString>(*this, "stringByDeletingPathExtension"_sel);
}
inline NSString NSString::stringByExpandingTildeInPath() const {
    return send<NSString>(*this, "stringByExpandingTildeInPath"_sel);
}

} // namespace tessarin
