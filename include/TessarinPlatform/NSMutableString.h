// NSMutableString: a string that can be edited.
#pragma once

#include "TessarinPlatform/NSString.h"

namespace tessarin {

// A range or an index beyond the end raises NSRangeException, a nil string to be put in
// NSInvalidArgumentException, but GNUstep's appendString: and setString: take it for an empty one. For one
// thread at a time.
class NSMutableString : public Handle<NSMutableString, "NSMutableString", NSString> {
public:
    using Handle::Handle;

    static NSMutableString string() { return send<NSMutableString>(classObject(), "string"_sel); }
    static NSMutableString stringWithString(NSString other) {
        return send<NSMutableString>(classObject(), "stringWithString:"_sel, other);
    }

    [[nodiscard]] NSMutableString init() const { return send<NSMutableString>(*this, "init"_sel); }
    [[nodiscard]] NSMutableString initWithCapacity(NSUInteger capacity) const {
        return send<NSMutableString>(*this, "initWithCapacity:"_sel, capacity);
    }
    [[nodiscard]] NSMutableString initWithString(NSString other) const {
        return send<NSMutableString>(*this, "initWithString:"_sel, other);
    }

    void appendString(NSString other) const { send<void>(*this, "appendString:"_sel, other); }
    // The platform's format: %@ for a handle, C's conversions for numbers.
    template <class... Arguments>
    void appendFormat(NSString format, const Arguments&... arguments) const {
        sendVariadic<void>(*this, "appendFormat:"_sel, format, arguments...);
    }
    void setString(NSString other) const { send<void>(*this, "setString:"_sel, other); }
    void insertString_atIndex(NSString other, NSUInteger index) const {
        send<void>(*this, "insertString:atIndex:"_sel, other, index);
    }
    void deleteCharactersInRange(NSRange range) const {
        send<void>(*this, "deleteCharactersInRange:"_sel, range);
    }
    void replaceCharactersInRange_withString(NSRange range, NSString replacement) const {
        send<void>(*this, "replaceCharactersInRange:withString:"_sel, range, replacement);
    }
};

} // namespace tessarin
