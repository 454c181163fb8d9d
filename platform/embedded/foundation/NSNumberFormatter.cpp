#include "TessarinPlatform/NSNumberFormatter.h"
#include "TessarinPlatform/NumberFormatting.h"

#include "platform/embedded/foundation/DecimalText.h"
#include "platform/embedded/foundation/StringStorage.h"
#include "platform/embedded/foundation/UserLocale.h"

#include <algorithm>
#include <cmath>

namespace tessarin::embedded {
namespace {

struct NumberFormatterStorage {
    NSNumberFormatterBehavior behavior = NSNumberFormatterBehaviorDefault;
    NSUInteger minimumFractionDigits = 0;
    NSUInteger maximumFractionDigits = 0;
    Retained<NSString> decimalSeparator; // nil: the user's
};

NumberFormatterStorage& storageOf(NSNumberFormatter formatter) {
    return embedded::storageOf<NumberFormatterStorage>(formatter);
}

NSNumberFormatterBehavior formatterBehavior(NSNumberFormatter self, SEL) { return storageOf(self).behavior; }
void setFormatterBehavior(NSNumberFormatter self, SEL, NSNumberFormatterBehavior behavior) {
    storageOf(self).behavior = behavior;
}

NSUInteger minimumFractionDigits(NSNumberFormatter self, SEL) {
    return storageOf(self).minimumFractionDigits;
}
void setMinimumFractionDigits(NSNumberFormatter self, SEL, NSUInteger digits) {
    storageOf(self).minimumFractionDigits = digits;
}

NSUInteger maximumFractionDigits(NSNumberFormatter self, SEL) {
    return storageOf(self).maximumFractionDigits;
}
void setMaximumFractionDigits(NSNumberFormatter self, SEL, NSUInteger digits) {
    storageOf(self).maximumFractionDigits = digits;
}

NSString decimalSeparator(NSNumberFormatter self, SEL) {
    const NSString separator = storageOf(self).decimalSeparator;
    return separator ? separator : userDecimalSeparator();
}
void setDecimalSeparator(NSNumberFormatter self, SEL, NSString separator) {
    storageOf(self).decimalSeparator = adopt(as<NSString>(separator.copy()));
}

// As the platform reads a number of digits: its low 32 bits, a negative number standing for the default.
int digitCount(NSUInteger digits, int byDefault) {
    const auto count = static_cast<std::int32_t>(static_cast<std::uint32_t>(digits));
    return count < 0 ? byDefault : count;
}

// What is shown of a number, and what goes around its digits.
struct NumberText {
    const DecimalText& digits;
    StringView separator;
    std::string_view suffix;

    std::size_t length() const {
        return (digits.isNegative() ? 1 : 0) + digits.integer().size() + separator.length()
               + digits.fraction().size() + suffix.size();
    }
    template <class Unit>
    void write(Unit* units) const {
        const auto put = [&](std::string_view text) { units = std::copy(text.begin(), text.end(), units); };
        if (digits.isNegative()) put("-");
        put(digits.integer());
        for (std::size_t index = 0; index < separator.length(); ++index)
            *units++ = static_cast<Unit>(separator[index]);
        put(digits.fraction());
        put(suffix);
    }
    template <class Unit>
    NSString string() const {
        return newString<Unit>(length(), [&](Unit* units) { write(units); }).autorelease();
    }
};

// A finite number; the separator is asked for where there are digits behind it.
template <class Separator>
NSString numberText(const NumberValue& value, FractionDigits limits, std::string_view suffix,
                    Separator&& separator) {
    const DecimalText digits(value, limits);
    if (digits.fraction().empty()) return NumberText{digits, StringView(), suffix}.string<std::uint8_t>();
    const Contents units = contentsOf(separator());
    const NumberText text{digits, units, suffix};
    return units.isWide() ? text.string<char16_t>() : text.string<std::uint8_t>();
}

NSString stringFromNumber(NSNumberFormatter self, SEL, NSNumber number) {
    if (!number) return nil;
    const NumberValue value = valueOf(number);
    if (value.isReal()) {
        if (std::isnan(value.real)) return "NaN"_ns;
        if (std::isinf(value.real)) return value.real < 0 ? u"-\u221E"_ns : u"+\u221E"_ns;
    }
    const NumberFormatterStorage& storage = storageOf(self);
    const FractionDigits limits{.minimum = digitCount(storage.minimumFractionDigits, 0),
                                .maximum = digitCount(storage.maximumFractionDigits, 6)};
    return numberText(value, limits, {}, [&] { return self.decimalSeparator(); });
}

// Whether what a new formatter writes is what this file says.
bool formattersAreAsMade() {
    const auto isAsMade = [](SEL selector, auto* method) {
        return runtime::lookUpInClass("NSNumberFormatter"_class.object(), selector)
               == reinterpret_cast<Implementation>(method);
    };
    return isAsMade("setFormatterBehavior:"_sel, setFormatterBehavior)
           && isAsMade("setMaximumFractionDigits:"_sel, setMaximumFractionDigits)
           && isAsMade("stringFromNumber:"_sel, stringFromNumber)
           && isAsMade("decimalSeparator"_sel, decimalSeparator);
}

} // namespace

ClassDescription describeNSNumberFormatter() {
    return {
        .name = "NSNumberFormatter",
        .superclass = "NSObject",
        .storage = storageLayout<NumberFormatterStorage>(),
        .methods = {instanceMethod("formatterBehavior", formatterBehavior),
                    instanceMethod("setFormatterBehavior:", setFormatterBehavior),
                    instanceMethod("minimumFractionDigits", minimumFractionDigits),
                    instanceMethod("setMinimumFractionDigits:", setMinimumFractionDigits),
                    instanceMethod("maximumFractionDigits", maximumFractionDigits),
                    instanceMethod("setMaximumFractionDigits:", setMaximumFractionDigits),
                    instanceMethod("decimalSeparator", decimalSeparator),
                    instanceMethod("setDecimalSeparator:", setDecimalSeparator),
                    instanceMethod("stringFromNumber:", stringFromNumber)},
    };
}

} // namespace tessarin::embedded

namespace tessarin {

using namespace embedded;

NSString formattedNumber(double number, NSUInteger maximumFractionDigits, std::string_view suffix) {
    if (!std::isfinite(number) || !formattersAreAsMade()) return nil;
    const FractionDigits limits{.maximum = digitCount(maximumFractionDigits, 6)};
    return numberText(NumberValue::ofDouble(number), limits, suffix, userDecimalSeparator);
}

} // namespace tessarin
