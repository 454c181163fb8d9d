#include "TessarinPlatform/NSNumberFormatter.h"

#include "platform/embedded/foundation/DecimalText.h"
#include "platform/embedded/foundation/StringStorage.h"
#include "platform/embedded/foundation/UserLocale.h"

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

template <class Unit>
NSString assembled(const DecimalText& text, StringView separator) {
    const std::size_t sign = text.isNegative() ? 1 : 0;
    const std::size_t length = sign + text.integer().size() + separator.length() + text.fraction().size();
    return newString<Unit>(length,
                           [&](Unit* units) {
                               const auto put = [&](std::string_view digits) {
                                   units = std::copy(digits.begin(), digits.end(), units);
                               };
                               if (text.isNegative()) *units++ = '-';
                               put(text.integer());
                               for (std::size_t index = 0; index < separator.length(); ++index)
                                   *units++ = static_cast<Unit>(separator[index]);
                               put(text.fraction());
                           })
        .autorelease();
}

NSString stringFromNumber(NSNumberFormatter self, SEL, NSNumber number) {
    if (!number) return nil;
    const NumberValue value = valueOf(number);
    if (value.isReal()) {
        if (std::isnan(value.real)) return "NaN"_ns;
        if (std::isinf(value.real)) return value.real < 0 ? u"-\u221E"_ns : u"+\u221E"_ns;
    }
    const NumberFormatterStorage& storage = storageOf(self);
    const DecimalText text(value, {.minimum = digitCount(storage.minimumFractionDigits, 0),
                                   .maximum = digitCount(storage.maximumFractionDigits, 6)});
    if (text.fraction().empty()) return assembled<std::uint8_t>(text, StringView());
    const Contents separator = contentsOf(self.decimalSeparator());
    return separator.isWide() ? assembled<char16_t>(text, separator)
                              : assembled<std::uint8_t>(text, separator);
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
