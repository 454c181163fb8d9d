// NSString: numbers read from text. White space is skipped, reading ends at the first character that is of no
// use, and no locale has a say.
#include "TessarinPlatform/NSCharacterSet.h"
#include "platform/embedded/foundation/CharacterSetStorage.h"
#include "platform/embedded/foundation/NumberReading.h"

namespace tessarin::embedded {
namespace {

// The place of the first character that is not white space.
std::size_t startOf(StringView text) {
    const Membership isSpace(NSCharacterSet::whitespaceAndNewlineCharacterSet());
    std::size_t place = 0;
    while (place < text.length() && isSpace.unit(text[place])) ++place;
    return place;
}

// Text that begins with no number is 0.
template <class Integer>
Integer integerOf(StringView text) {
    std::size_t place = startOf(text);
    return readInteger<Integer>(text, place).value_or(0);
}
double doubleOf(StringView text) {
    std::size_t place = startOf(text);
    return readReal(text, place).value_or(0);
}

int intValue(NSString self, SEL) { return integerOf<int>(contentsOf(self)); }
NSInteger integerValue(NSString self, SEL) { return integerOf<NSInteger>(contentsOf(self)); }
long long longLongValue(NSString self, SEL) { return integerOf<long long>(contentsOf(self)); }
float floatValue(NSString self, SEL) { return static_cast<float>(doubleOf(contentsOf(self))); }
double doubleValue(NSString self, SEL) { return doubleOf(contentsOf(self)); }

BOOL boolValue(NSString self, SEL) {
    const Contents text = contentsOf(self);
    TextReader reader(text, startOf(text));
    switch (reader.unit()) {
    case 'T':
    case 't':
    case 'Y':
    case 'y':
        return YES;
    default:
        break;
    }
    reader.skipSign();
    while (reader.skip('0')) {
    }
    return isDecimalDigit(reader.unit());
}

} // namespace

std::vector<MethodRow> stringNumberMethods() {
    return {
        instanceMethod("intValue", intValue),           instanceMethod("integerValue", integerValue),
        instanceMethod("longLongValue", longLongValue), instanceMethod("floatValue", floatValue),
        instanceMethod("doubleValue", doubleValue),     instanceMethod("boolValue", boolValue),
    };
}

} // namespace tessarin::embedded
