// NSMutableAttributedString: a string whose characters and attributes can be changed.
#pragma once

#include "TessarinPlatform/NSAttributedString.h"

namespace tessarin {

// Each raises NSRangeException for a range behind the end.
class NSMutableAttributedString
    : public Handle<NSMutableAttributedString, "NSMutableAttributedString", NSAttributedString> {
public:
    using Handle::Handle;

    [[nodiscard]] NSMutableAttributedString initWithString(NSString string) const {
        return send<NSMutableAttributedString>(*this, "initWithString:"_sel, string);
    }
    [[nodiscard]] NSMutableAttributedString initWithString_attributes(NSString string,
                                                                      NSDictionary attributes) const {
        return send<NSMutableAttributedString>(*this, "initWithString:attributes:"_sel, string, attributes);
    }

    // New characters take the attributes of the first that they replace, or of the one before them.
    void replaceCharactersInRange_withString(NSRange range, NSString string) const {
        send<void>(*this, "replaceCharactersInRange:withString:"_sel, range, string);
    }
    void deleteCharactersInRange(NSRange range) const {
        send<void>(*this, "deleteCharactersInRange:"_sel, range);
    }
    // nil attributes are none.
    void setAttributes_range(NSDictionary attributes, NSRange range) const {
        send<void>(*this, "setAttributes:range:"_sel, attributes, range);
    }
    void addAttribute_value_range(NSString name, NSObject value, NSRange range) const {
        send<void>(*this, "addAttribute:value:range:"_sel, name, value, range);
    }
    void removeAttribute_range(NSString name, NSRange range) const {
        send<void>(*this, "removeAttribute:range:"_sel, name, range);
    }
    void appendAttributedString(NSAttributedString other) const {
        send<void>(*this, "appendAttributedString:"_sel, other);
    }
};

} // namespace tessarin
