// NSNumberFormatter: numbers as text for the user.
#pragma once

#include "TessarinPlatform/NSNumber.h"

namespace tessarin {

using NSNumberFormatterBehavior = NSUInteger;
inline constexpr NSNumberFormatterBehavior NSNumberFormatterBehaviorDefault = 0;
inline constexpr NSNumberFormatterBehavior NSNumberFormatterBehavior10_4 = 1040;

// A new formatter has no style: at least one integer digit and no fraction digits, no grouping, and the
// decimal separator of the user's locale. It rounds half to even, and what it rounds is the shortest decimal
// number that reads back as the same double. Of the integer digits it shows the last 42. The embedded
// platform writes the digits 0 to 9 in every locale and asks for the user's separator once in a process.
//
// A formatter may be used by one thread at a time.
class NSNumberFormatter : public Handle<NSNumberFormatter, "NSNumberFormatter", NSObject> {
public:
    using Handle::Handle;

    [[nodiscard]] NSNumberFormatter init() const { return send<NSNumberFormatter>(*this, "init"_sel); }

    NSNumberFormatterBehavior formatterBehavior() const {
        return send<NSNumberFormatterBehavior>(*this, "formatterBehavior"_sel);
    }
    // The embedded platform knows the behaviour of 10.4 alone and formats by it, whatever is set.
    void setFormatterBehavior(NSNumberFormatterBehavior behavior) const {
        send<void>(*this, "setFormatterBehavior:"_sel, behavior);
    }

    NSUInteger minimumFractionDigits() const { return send<NSUInteger>(*this, "minimumFractionDigits"_sel); }
    // 0 in a new formatter. The embedded platform takes more than 340 for 340.
    void setMinimumFractionDigits(NSUInteger digits) const {
        send<void>(*this, "setMinimumFractionDigits:"_sel, digits);
    }
    NSUInteger maximumFractionDigits() const { return send<NSUInteger>(*this, "maximumFractionDigits"_sel); }
    // Read as an int: the largest, 2147483647, gives all digits that there are. Where it is negative, as that
    // of the largest NSUInteger is, there are at most six. Only the embedded platform promises that for
    // -2147483648, with which others may never return.
    void setMaximumFractionDigits(NSUInteger digits) const {
        send<void>(*this, "setMaximumFractionDigits:"_sel, digits);
    }
    NSString decimalSeparator() const { return send<NSString>(*this, "decimalSeparator"_sel); }
    // nil stands for the separator of the user's locale.
    void setDecimalSeparator(NSString separator) const {
        send<void>(*this, "setDecimalSeparator:"_sel, separator);
    }

    // nil for nil.
    NSString stringFromNumber(NSNumber number) const {
        return send<NSString>(*this, "stringFromNumber:"_sel, number);
    }
};

} // namespace tessarin
