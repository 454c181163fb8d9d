// NSAttributedString: an immutable string with attributes on its characters.
#pragma once

#include "TessarinPlatform/NSDictionary.h"

namespace tessarin {

class NSAttributedString : public Handle<NSAttributedString, "NSAttributedString", NSObject> {
public:
    using Handle::Handle;

    // The string and the attributes are copied. A nil string raises NSInvalidArgumentException; nil
    // attributes are none.
    [[nodiscard]] NSAttributedString initWithString(NSString string) const {
        return send<NSAttributedString>(*this, "initWithString:"_sel, string);
    }
    [[nodiscard]] NSAttributedString initWithString_attributes(NSString string,
                                                               NSDictionary attributes) const {
        return send<NSAttributedString>(*this, "initWithString:attributes:"_sel, string, attributes);
    }
    [[nodiscard]] NSAttributedString initWithAttributedString(NSAttributedString other) const {
        return send<NSAttributedString>(*this, "initWithAttributedString:"_sel, other);
    }

    NSString string() const { return send<NSString>(*this, "string"_sel); }
    NSUInteger length() const { return send<NSUInteger>(*this, "length"_sel); }
    // The attributes at an index, an empty dictionary for none, and through `range`, unless that is null, the
    // run around the index that has them. Raises NSRangeException for an index behind the last character.
    NSDictionary attributesAtIndex_effectiveRange(NSUInteger index, NSRange* range) const {
        return send<NSDictionary>(*this, "attributesAtIndex:effectiveRange:"_sel, index, range);
    }
    id attribute_atIndex_effectiveRange(NSString name, NSUInteger index, NSRange* range) const {
        return send<id>(*this, "attribute:atIndex:effectiveRange:"_sel, name, index, range);
    }
    NSAttributedString attributedSubstringFromRange(NSRange range) const {
        return send<NSAttributedString>(*this, "attributedSubstringFromRange:"_sel, range);
    }
    bool isEqualToAttributedString(NSAttributedString other) const {
        return send<BOOL>(*this, "isEqualToAttributedString:"_sel, other) != NO;
    }
};

} // namespace tessarin
