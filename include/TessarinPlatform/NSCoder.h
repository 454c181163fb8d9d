// NSCoder: what an object writes itself to and reads itself from. An object that can conforms to NSCoding and
// answers encodeWithCoder: and initWithCoder:.
#pragma once

#include "TessarinPlatform/NSData.h"

namespace tessarin {

// NSCoder itself is abstract: but for allowsKeyedCoding, which answers NO, its operations raise
// NSInvalidArgumentException.
class NSCoder : public Handle<NSCoder, "NSCoder", NSObject> {
public:
    using Handle::Handle;

    bool allowsKeyedCoding() const { return send<BOOL>(*this, "allowsKeyedCoding"_sel) != NO; }

    // A nil object is written too: it is contained, and read back as nil.
    void encodeObject_forKey(NSObject object, NSString key) const {
        send<void>(*this, "encodeObject:forKey:"_sel, object, key);
    }
    // Written only if it is encoded elsewhere without condition, otherwise as nil.
    void encodeConditionalObject_forKey(NSObject object, NSString key) const {
        send<void>(*this, "encodeConditionalObject:forKey:"_sel, object, key);
    }
    void encodeBool_forKey(bool value, NSString key) const {
        send<void>(*this, "encodeBool:forKey:"_sel, static_cast<BOOL>(value), key);
    }
    void encodeInt_forKey(int value, NSString key) const {
        send<void>(*this, "encodeInt:forKey:"_sel, value, key);
    }
    void encodeInt32_forKey(std::int32_t value, NSString key) const {
        send<void>(*this, "encodeInt32:forKey:"_sel, value, key);
    }
    void encodeInteger_forKey(NSInteger value, NSString key) const {
        send<void>(*this, "encodeInteger:forKey:"_sel, value, key);
    }
    void encodeInt64_forKey(std::int64_t value, NSString key) const {
        send<void>(*this, "encodeInt64:forKey:"_sel, value, key);
    }
    void encodeFloat_forKey(float value, NSString key) const {
        send<void>(*this, "encodeFloat:forKey:"_sel, value, key);
    }
    void encodeDouble_forKey(double value, NSString key) const {
        send<void>(*this, "encodeDouble:forKey:"_sel, value, key);
    }
    void encodeBytes_length_forKey(const std::uint8_t* bytes, NSUInteger length, NSString key) const {
        send<void>(*this, "encodeBytes:length:forKey:"_sel, bytes, length, key);
    }

    bool containsValueForKey(NSString key) const {
        return send<BOOL>(*this, "containsValueForKey:"_sel, key) != NO;
    }
    // nil, NO or zero for a key that was not written. A value of another kind raises, as does an integer that
    // the type cannot hold (NSRangeException).
    id decodeObjectForKey(NSString key) const { return send<id>(*this, "decodeObjectForKey:"_sel, key); }
    bool decodeBoolForKey(NSString key) const {
        return send<BOOL>(*this, "decodeBoolForKey:"_sel, key) != NO;
    }
    int decodeIntForKey(NSString key) const { return send<int>(*this, "decodeIntForKey:"_sel, key); }
    std::int32_t decodeInt32ForKey(NSString key) const {
        return send<std::int32_t>(*this, "decodeInt32ForKey:"_sel, key);
    }
    NSInteger decodeIntegerForKey(NSString key) const {
        return send<NSInteger>(*this, "decodeIntegerForKey:"_sel, key);
    }
    std::int64_t decodeInt64ForKey(NSString key) const {
        return send<std::int64_t>(*this, "decodeInt64ForKey:"_sel, key);
    }
    float decodeFloatForKey(NSString key) const { return send<float>(*this, "decodeFloatForKey:"_sel, key); }
    double decodeDoubleForKey(NSString key) const {
        return send<double>(*this, "decodeDoubleForKey:"_sel, key);
    }
    // The coder's own bytes, valid as long as it is.
    const std::uint8_t* decodeBytesForKey_returnedLength(NSString key, NSUInteger* length) const {
        return send<const std::uint8_t*>(*this, "decodeBytesForKey:returnedLength:"_sel, key, length);
    }
};

} // namespace tessarin
