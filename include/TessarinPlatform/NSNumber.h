// NSNumber: an immutable number or boolean.
#pragma once

#include "TessarinPlatform/NSString.h"

namespace tessarin {

class NSNumber : public Handle<NSNumber, "NSNumber", NSObject> {
public:
    using Handle::Handle;

    static NSNumber numberWithBool(bool value) {
        return send<NSNumber>(classObject(), "numberWithBool:"_sel, static_cast<BOOL>(value));
    }
    static NSNumber numberWithInt(int value) {
        return send<NSNumber>(classObject(), "numberWithInt:"_sel, value);
    }
    static NSNumber numberWithUnsignedInt(unsigned value) {
        return send<NSNumber>(classObject(), "numberWithUnsignedInt:"_sel, value);
    }
    static NSNumber numberWithLong(long value) {
        return send<NSNumber>(classObject(), "numberWithLong:"_sel, value);
    }
    static NSNumber numberWithUnsignedLong(unsigned long value) {
        return send<NSNumber>(classObject(), "numberWithUnsignedLong:"_sel, value);
    }
    static NSNumber numberWithLongLong(long long value) {
        return send<NSNumber>(classObject(), "numberWithLongLong:"_sel, value);
    }
    static NSNumber numberWithUnsignedLongLong(unsigned long long value) {
        return send<NSNumber>(classObject(), "numberWithUnsignedLongLong:"_sel, value);
    }
    static NSNumber numberWithInteger(NSInteger value) {
        return send<NSNumber>(classObject(), "numberWithInteger:"_sel, value);
    }
    static NSNumber numberWithUnsignedInteger(NSUInteger value) {
        return send<NSNumber>(classObject(), "numberWithUnsignedInteger:"_sel, value);
    }
    static NSNumber numberWithFloat(float value) {
        return send<NSNumber>(classObject(), "numberWithFloat:"_sel, value);
    }
    static NSNumber numberWithDouble(double value) {
        return send<NSNumber>(classObject(), "numberWithDouble:"_sel, value);
    }

    bool boolValue() const { return send<BOOL>(*this, "boolValue"_sel) != NO; }
    int intValue() const { return send<int>(*this, "intValue"_sel); }
    unsigned unsignedIntValue() const { return send<unsigned>(*this, "unsignedIntValue"_sel); }
    long longValue() const { return send<long>(*this, "longValue"_sel); }
    unsigned long unsignedLongValue() const { return send<unsigned long>(*this, "unsignedLongValue"_sel); }
    long long longLongValue() const { return send<long long>(*this, "longLongValue"_sel); }
    unsigned long long unsignedLongLongValue() const {
        return send<unsigned long long>(*this, "unsignedLongLongValue"_sel);
    }
    NSInteger integerValue() const { return send<NSInteger>(*this, "integerValue"_sel); }
    NSUInteger unsignedIntegerValue() const { return send<NSUInteger>(*this, "unsignedIntegerValue"_sel); }
    float floatValue() const { return send<float>(*this, "floatValue"_sel); }
    double doubleValue() const { return send<double>(*this, "doubleValue"_sel); }

    bool isEqualToNumber(NSNumber other) const {
        return send<BOOL>(*this, "isEqualToNumber:"_sel, other) != NO;
    }
    NSComparisonResult compare(NSNumber other) const {
        return send<NSComparisonResult>(*this, "compare:"_sel, other);
    }
    NSString stringValue() const { return send<NSString>(*this, "stringValue"_sel); }
    // The kind of number held, as a type encoding: "c" (or "C", "B") boolean, "i", "q", "Q", "f", "d".
    const char* objCType() const { return send<const char*>(*this, "objCType"_sel); }
};

} // namespace tessarin
