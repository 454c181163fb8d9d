// Strings in archives.
#include "platform/embedded/foundation/KeyedCoding.h"
#include "platform/embedded/foundation/StringStorage.h"

namespace tessarin::embedded {
namespace {

Class classForCoder(NSString self, SEL) {
    const Class mutableClass = NSMutableString::classObject();
    return self.isKindOfClass(mutableClass) ? mutableClass : NSString::classObject();
}

void encodeWithCoder(NSString self, SEL, NSCoder coder) { encodeText(coder, self); }

NSString initWithCoder(NSString self, SEL, NSCoder coder) {
    Retained<NSString> owned = adopt(self);
    const NSString text = decodeText(coder);
    checkCopyOfDecoded(coder, text.length());
    return owned.leak().initWithString(text);
}

} // namespace

std::vector<MethodRow> stringCodingMethods() {
    return {instanceMethod("classForCoder", classForCoder),
            instanceMethod("encodeWithCoder:", encodeWithCoder),
            instanceMethod("initWithCoder:", initWithCoder)};
}

} // namespace tessarin::embedded
