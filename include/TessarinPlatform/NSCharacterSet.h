// NSCharacterSet: a set of Unicode characters.
#pragma once

#include "TessarinPlatform/detail/NSString-class.h"

namespace tessarin {

class NSCharacterSet : public Handle<NSCharacterSet, "NSCharacterSet", NSObject> {
public:
    using Handle::Handle;

    static NSCharacterSet characterSetWithCharactersInString(NSString characters) {
        return send<NSCharacterSet>(classObject(), "characterSetWithCharactersInString:"_sel, characters);
    }
    static NSCharacterSet characterSetWithRange(NSRange range) {
        return send<NSCharacterSet>(classObject(), "characterSetWithRange:"_sel, range);
    }
    // Spaces and tabs; no line breaks.
    static NSCharacterSet whitespaceCharacterSet() {
        return send<NSCharacterSet>(classObject(), "whitespaceCharacterSet"_sel);
    }
    static NSCharacterSet whitespaceAndNewlineCharacterSet() {
        return send<NSCharacterSet>(classObject(), "whitespaceAndNewlineCharacterSet"_sel);
    }
    static NSCharacterSet alphanumericCharacterSet() {
        return send<NSCharacterSet>(classObject(), "alphanumericCharacterSet"_sel);
    }

    // Tests one 16-bit unit: each half of a surrogate pair by itself.
    bool characterIsMember(unichar unit) const {
        return send<BOOL>(*this, "characterIsMember:"_sel, unit) != NO;
    }
    bool longCharacterIsMember(std::uint32_t character) const {
        return send<BOOL>(*this, "longCharacterIsMember:"_sel, character) != NO;
    }
    NSCharacterSet invertedSet() const { return send<NSCharacterSet>(*this, "invertedSet"_sel); }
};

} // namespace tessarin

#include "TessarinPlatform/NSString.h"
