#include "platform/embedded/foundation/KeyedCoding.h"
#include "platform/embedded/foundation/NumberValue.h"
#include "platform/services/BooleanNumbers.h"

#include <array>

namespace tessarin::embedded {
namespace {

// Whether an object is of exactly this class, so that no operation is overridden.
bool isPlain(NSObject object) { return object.object()->isa == NSNumber::classObject().object(); }

// ---- Making

Object* makeNumber(const NumberValue& value) {
    const auto [number, storage, _] = createInstanceWith<NumberValue>("NSNumber"_class);
    storage = value;
    return number;
}

// Numbers that are met again and again are made once: both booleans, which others tell from 0 and 1 by
// identity, and the small integers, once for each kind since a number tells its kind.
class CommonNumbers {
public:
    static const CommonNumbers& shared() {
        static const CommonNumbers numbers;
        return numbers;
    }

    // Nil when the value is not a common one.
    NSNumber find(const NumberValue& value) const {
        switch (value.kind) {
        case NumberKind::boolean:
            return value.integer != 0 ? yes_ : no_;
        case NumberKind::int32:
            return findIn(int32s_, value.integer);
        case NumberKind::int64:
            return findIn(int64s_, value.integer);
        case NumberKind::uint64:
        case NumberKind::float32:
        case NumberKind::float64:
            break;
        }
        return nil;
    }

private:
    static constexpr std::int64_t first = -1;
    static constexpr std::size_t size = 257;
    using Table = std::array<NSNumber, size>;

    // Once for the process, so not within every operation that looks here.
    [[gnu::noinline]] CommonNumbers()
        : yes_(makeImmortalNumber(NumberValue::ofBoolean(true))),
          no_(makeImmortalNumber(NumberValue::ofBoolean(false))) {
        for (std::size_t index = 0; index < size; ++index) {
            const std::int64_t value = first + static_cast<std::int64_t>(index);
            int32s_[index] = makeImmortalNumber(NumberValue::ofInt32(static_cast<std::int32_t>(value)));
            int64s_[index] = makeImmortalNumber(NumberValue::ofInt64(value));
        }
    }
    static NSNumber makeImmortalNumber(const NumberValue& value) {
        const NSNumber number(makeNumber(value));
        makeImmortal(number);
        return number;
    }
    static NSNumber findIn(const Table& table, std::int64_t value) {
        // One comparison for both bounds: what lies below wraps around.
        const auto index = static_cast<std::uint64_t>(value) - static_cast<std::uint64_t>(first);
        return index < size ? table[index] : NSNumber();
    }

    NSNumber yes_;
    NSNumber no_;
    Table int32s_;
    Table int64s_;
};

// Gives a new number its value. Where that may be any number at all, a common one takes its place.
NSNumber initialize(NSNumber self, const NumberValue& value) {
    if (isPlain(self)) {
        if (const NSNumber common = CommonNumbers::shared().find(value)) {
            runtime::release(self.object());
            return common;
        }
    }
    storageOf<NumberValue>(self) = value;
    return self;
}

template <class T>
NSNumber initWith(NSNumber self, SEL, T value) {
    return initialize(self, numberValue(value));
}

// Apart from numberWith, which for a common number needs next to nothing.
[[gnu::noinline]] id makeUncommonNumber(NumberValue value) {
    return id(runtime::autorelease(makeNumber(value)));
}
// A subclass may have its own way of taking the value, so it is asked.
template <class T, detail::FixedString Initializer>
[[gnu::noinline]] id makeNumberOfSubclass(Class self, T number) {
    return adopt(send<id>(self.alloc(), operator""_sel<Initializer>(), number)).autorelease();
}

template <class T, detail::FixedString Initializer>
id numberWith(Class self, SEL, T number) {
    if (self != NSNumber::classObject()) [[unlikely]]
        return makeNumberOfSubclass<T, Initializer>(self, number);
    const NumberValue value = numberValue(number);
    const NSNumber common = CommonNumbers::shared().find(value);
    return common ? id(common) : makeUncommonNumber(value);
}

// ---- Archiving. A keyed archiver takes a number as it is; these are for the others. NSCoder has no
// operation for integers from 2^63 on: one of them goes as its bits, and a second value says so.

void encodeWithCoder(NSNumber self, SEL, NSCoder coder) {
    const NumberValue value = embedded::valueOf(self);
    if (value.kind == NumberKind::boolean)
        coder.encodeBool_forKey(value.integer != 0, "NS.boolval"_ns);
    else if (value.isReal())
        coder.encodeDouble_forKey(value.real, "NS.dblval"_ns);
    else
        coder.encodeInt64_forKey(value.integer, "NS.intval"_ns);
    if (value.kind == NumberKind::uint64) coder.encodeBool_forKey(true, "NS.isunsigned"_ns);
}

NSNumber initWithCoder(NSNumber self, SEL, NSCoder coder) {
    Retained<NSNumber> owned = adopt(self);
    NumberValue value = NumberValue::ofInt64(0);
    if (coder.containsValueForKey("NS.boolval"_ns))
        value = NumberValue::ofBoolean(coder.decodeBoolForKey("NS.boolval"_ns));
    else if (coder.containsValueForKey("NS.dblval"_ns))
        value = NumberValue::ofDouble(coder.decodeDoubleForKey("NS.dblval"_ns));
    else if (coder.containsValueForKey("NS.isunsigned"_ns) && coder.decodeBoolForKey("NS.isunsigned"_ns))
        value = NumberValue::ofUnsigned(static_cast<std::uint64_t>(coder.decodeInt64ForKey("NS.intval"_ns)));
    else
        value = NumberValue::ofInt64(coder.decodeInt64ForKey("NS.intval"_ns));
    return initialize(owned.leak(), value);
}

// ---- Reading

const char* objCType(NSNumber self, SEL) { return storageOf<NumberValue>(self).encoding(); }

template <class T>
T readInteger(NSNumber self, SEL) {
    return static_cast<T>(storageOf<NumberValue>(self).toInt64());
}
// One half is NO, as on the platform: the value is cut to an integer first.
BOOL boolValue(NSNumber self, SEL) { return storageOf<NumberValue>(self).toInt64() != 0 ? YES : NO; }
float floatValue(NSNumber self, SEL) { return storageOf<NumberValue>(self).toFloat(); }
double doubleValue(NSNumber self, SEL) { return storageOf<NumberValue>(self).toDouble(); }

NSString stringValue(NSNumber self, SEL) { return NSString(valueOf(self).text()); }
NSString description(NSNumber self, SEL) { return self.stringValue(); }

// ---- Comparing

NSUInteger hash(NSNumber self, SEL) { return valueOf(self).hash(); }

BOOL isEqualToNumber(NSNumber self, SEL, NSNumber other) {
    if (self == other) return YES;
    return other && compareNumbers(valueOf(self), valueOf(other)) == NSOrderedSame ? YES : NO;
}

BOOL isEqual(NSNumber self, SEL selector, NSObject other) {
    const bool isNumber = other && (isPlain(other) || other.isKindOfClass(NSNumber::classObject()));
    return isNumber ? isEqualToNumber(self, selector, as<NSNumber>(other)) : NO;
}

NSComparisonResult compare(NSNumber self, SEL selector, NSNumber other) {
    rejectNil(other, self, selector);
    return compareNumbers(valueOf(self), valueOf(other));
}

NSNumber copyWithZone(NSNumber self, SEL, void*) { return retain(self).leak(); }

} // namespace

Retained<NSNumber> newNumber(const NumberValue& value) {
    if (const NSNumber common = CommonNumbers::shared().find(value)) return retain(common);
    return adopt(NSNumber(makeNumber(value)));
}

NumberValue valueOf(NSNumber number) {
    if (isPlain(number) || answersWith(number, "objCType"_sel, objCType))
        return storageOf<NumberValue>(number);
    switch (number.objCType()[0]) {
    case 'f':
        return NumberValue::ofFloat(number.floatValue());
    case 'd':
        return NumberValue::ofDouble(number.doubleValue());
    case 'C':
    case 'S':
    case 'I':
    case 'L':
    case 'Q':
        return NumberValue::ofUnsigned(number.unsignedLongLongValue());
    default:
        return NumberValue::ofInt64(number.longLongValue());
    }
}

NumberValue valueInPropertyList(NSNumber number) {
    if (isPlain(number) || !isBoolean(number)) return valueOf(number);
    return NumberValue::ofBoolean(number.boolValue());
}

ClassDescription describeNSNumber() {
    return {
        .name = "NSNumber",
        .superclass = "NSObject",
        .protocols = {"NSCoding", "NSCopying"},
        .storage = storageLayout<NumberValue>(),
        .methods =
            {classMethod("numberWithBool:", numberWith<BOOL, "initWithBool:">),
             classMethod("numberWithChar:", numberWith<signed char, "initWithChar:">),
             classMethod("numberWithUnsignedChar:", numberWith<unsigned char, "initWithUnsignedChar:">),
             classMethod("numberWithShort:", numberWith<short, "initWithShort:">),
             classMethod("numberWithUnsignedShort:", numberWith<unsigned short, "initWithUnsignedShort:">),
             classMethod("numberWithInt:", numberWith<int, "initWithInt:">),
             classMethod("numberWithUnsignedInt:", numberWith<unsigned, "initWithUnsignedInt:">),
             classMethod("numberWithLong:", numberWith<long, "initWithLong:">),
             classMethod("numberWithUnsignedLong:", numberWith<unsigned long, "initWithUnsignedLong:">),
             classMethod("numberWithLongLong:", numberWith<long long, "initWithLongLong:">),
             classMethod("numberWithUnsignedLongLong:",
                         numberWith<unsigned long long, "initWithUnsignedLongLong:">),
             classMethod("numberWithInteger:", numberWith<NSInteger, "initWithInteger:">),
             classMethod("numberWithUnsignedInteger:", numberWith<NSUInteger, "initWithUnsignedInteger:">),
             classMethod("numberWithFloat:", numberWith<float, "initWithFloat:">),
             classMethod("numberWithDouble:", numberWith<double, "initWithDouble:">),
             instanceMethod("initWithBool:", initWith<BOOL>),
             instanceMethod("initWithChar:", initWith<signed char>),
             instanceMethod("initWithUnsignedChar:", initWith<unsigned char>),
             instanceMethod("initWithShort:", initWith<short>),
             instanceMethod("initWithUnsignedShort:", initWith<unsigned short>),
             instanceMethod("initWithInt:", initWith<int>),
             instanceMethod("initWithUnsignedInt:", initWith<unsigned>),
             instanceMethod("initWithLong:", initWith<long>),
             instanceMethod("initWithUnsignedLong:", initWith<unsigned long>),
             instanceMethod("initWithLongLong:", initWith<long long>),
             instanceMethod("initWithUnsignedLongLong:", initWith<unsigned long long>),
             instanceMethod("initWithInteger:", initWith<NSInteger>),
             instanceMethod("initWithUnsignedInteger:", initWith<NSUInteger>),
             instanceMethod("initWithFloat:", initWith<float>),
             instanceMethod("initWithDouble:", initWith<double>),
             instanceMethod("classForCoder", classForCoderOf<NSNumber>),
             instanceMethod("encodeWithCoder:", encodeWithCoder),
             instanceMethod("initWithCoder:", initWithCoder),
             instanceMethod("objCType", objCType),
             instanceMethod("boolValue", boolValue),
             instanceMethod("charValue", readInteger<signed char>),
             instanceMethod("unsignedCharValue", readInteger<unsigned char>),
             instanceMethod("shortValue", readInteger<short>),
             instanceMethod("unsignedShortValue", readInteger<unsigned short>),
             instanceMethod("intValue", readInteger<int>),
             instanceMethod("unsignedIntValue", readInteger<unsigned>),
             instanceMethod("longValue", readInteger<long>),
             instanceMethod("unsignedLongValue", readInteger<unsigned long>),
             instanceMethod("longLongValue", readInteger<long long>),
             instanceMethod("unsignedLongLongValue", readInteger<unsigned long long>),
             instanceMethod("integerValue", readInteger<NSInteger>),
             instanceMethod("unsignedIntegerValue", readInteger<NSUInteger>),
             instanceMethod("floatValue", floatValue),
             instanceMethod("doubleValue", doubleValue),
             instanceMethod("stringValue", stringValue),
             instanceMethod("description", description),
             instanceMethod("hash", hash),
             instanceMethod("isEqual:", isEqual),
             instanceMethod("isEqualToNumber:", isEqualToNumber),
             instanceMethod("compare:", compare),
             instanceMethod("copyWithZone:", copyWithZone)},
    };
}

} // namespace tessarin::embedded
