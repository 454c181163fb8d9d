// What a number is worth: conversion, exact comparison, hash and text, apart from the class that carries it.
#pragma once

#include "TessarinPlatform/NSNumber.h"
#include "TessarinPlatform/Retained.h"

#include <cstdint>
#include <string>
#include <type_traits>

namespace tessarin::embedded {

enum class NumberKind : unsigned char { boolean, int32, int64, uint64, float32, float64 };

// uint64 is the kind of values above the largest int64 only: unsignedness is not kept for values that both
// can hold.
struct NumberValue {
    NumberKind kind = NumberKind::int32;
    union {
        std::int64_t integer = 0; // the bits of the value for uint64
        double real;              // for both floating-point kinds; every float is exact in a double
    };

    static NumberValue ofBoolean(bool value) { return ofInteger(NumberKind::boolean, value ? 1 : 0); }
    static NumberValue ofInt32(std::int32_t value) { return ofInteger(NumberKind::int32, value); }
    static NumberValue ofInt64(std::int64_t value) { return ofInteger(NumberKind::int64, value); }
    static NumberValue ofUnsigned(std::uint64_t value) {
        const auto bits = static_cast<std::int64_t>(value);
        return ofInteger(bits < 0 ? NumberKind::uint64 : NumberKind::int64, bits);
    }
    static NumberValue ofFloat(float value) {
        return ofReal(NumberKind::float32, static_cast<double>(value));
    }
    static NumberValue ofDouble(double value) { return ofReal(NumberKind::float64, value); }

    bool isReal() const { return kind == NumberKind::float32 || kind == NumberKind::float64; }

    // The value cut to an integer. What no int64 can hold gives the bit pattern 0x8000000000000000, as the
    // processors of the x86 family do; larger unsigned integers give their bits.
    std::int64_t toInt64() const { return isReal() ? cutToInt64() : integer; }
    double toDouble() const {
        if (isReal()) return real;
        if (kind == NumberKind::uint64) return static_cast<double>(static_cast<std::uint64_t>(integer));
        return static_cast<double>(integer);
    }
    float toFloat() const; // the nearest

    // The platform's type encoding of the kind.
    const char* encoding() const;
    // Decimal digits, or what printf writes for %0.16g (a float: %0.7g) in the C locale.
    std::string text() const;
    // The same for all numbers that compare as the same, whatever their kinds.
    NSUInteger hash() const;

private:
    std::int64_t cutToInt64() const;

    static NumberValue ofInteger(NumberKind kind, std::int64_t value) {
        NumberValue result;
        result.kind = kind;
        result.integer = value;
        return result;
    }
    static NumberValue ofReal(NumberKind kind, double value) {
        NumberValue result;
        result.kind = kind;
        result.real = value;
        return result;
    }
};

// The value that a C++ number has as an object. Short kinds are kept as int, whose encoding cannot be taken
// for that of a boolean.
template <class T>
NumberValue numberValue(T value) {
    if constexpr (std::is_same_v<T, bool>)
        return NumberValue::ofBoolean(value);
    else if constexpr (std::is_same_v<T, float>)
        return NumberValue::ofFloat(value);
    else if constexpr (std::is_same_v<T, double>)
        return NumberValue::ofDouble(value);
    else if constexpr (sizeof(T) < sizeof(int) || std::is_same_v<T, int>)
        return NumberValue::ofInt32(value);
    else if constexpr (std::is_signed_v<T> || sizeof(T) < sizeof(std::uint64_t))
        return NumberValue::ofInt64(value);
    else
        return NumberValue::ofUnsigned(value);
}

// A total order by mathematical value, without rounding between the kinds. NaN is the same as itself and
// stands between the negative numbers and zero.
NSComparisonResult compareNumbers(const NumberValue& left, const NumberValue& right);

// A number of that value.
Retained<NSNumber> newNumber(const NumberValue& value);

// The value of any number, asked for by message where a subclass keeps its own. An object that is no number
// raises the unrecognised-selector exception.
NumberValue valueOf(NSNumber number);

// What a property list keeps of a number. That of a subclass whose type says that it is a boolean is one,
// whatever number it is.
NumberValue valueInPropertyList(NSNumber number);

} // namespace tessarin::embedded
