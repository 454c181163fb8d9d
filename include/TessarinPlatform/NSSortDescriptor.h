// NSSortDescriptor: by what, in which direction and with which comparison objects are sorted.
#pragma once

#include "TessarinPlatform/NSArray.h"
#include "TessarinPlatform/NSData.h"

namespace tessarin {

// Before it is initialised, a sort descriptor has no key and no selector and is not ascending; asking is
// safe.
class NSSortDescriptor : public Handle<NSSortDescriptor, "NSSortDescriptor", NSObject> {
public:
    using Handle::Handle;

    static NSSortDescriptor sortDescriptorWithKey_ascending(NSString key, bool ascending) {
        return send<NSSortDescriptor>(classObject(), "sortDescriptorWithKey:ascending:"_sel, key,
                                      static_cast<BOOL>(ascending));
    }
    static NSSortDescriptor sortDescriptorWithKey_ascending_selector(NSString key, bool ascending,
                                                                     SEL selector) {
        return send<NSSortDescriptor>(classObject(), "sortDescriptorWithKey:ascending:selector:"_sel, key,
                                      static_cast<BOOL>(ascending), selector);
    }
    // Compares with compare:. The key is a key path, copied; nil sorts by the objects themselves (GNUstep
    // raises).
    [[nodiscard]] NSSortDescriptor initWithKey_ascending(NSString key, bool ascending) const {
        return send<NSSortDescriptor>(*this, "initWithKey:ascending:"_sel, key, static_cast<BOOL>(ascending));
    }
    // The selector of a comparison that answers NSComparisonResult, such as caseInsensitiveCompare:; the null
    // selector stands for compare:. A method that answers anything else, or takes no object, raises
    // NSInvalidArgumentException when it is to compare (embedded).
    [[nodiscard]] NSSortDescriptor initWithKey_ascending_selector(NSString key, bool ascending,
                                                                  SEL selector) const {
        return send<NSSortDescriptor>(*this, "initWithKey:ascending:selector:"_sel, key,
                                      static_cast<BOOL>(ascending), selector);
    }

    NSString key() const { return send<NSString>(*this, "key"_sel); }
    bool ascending() const { return send<BOOL>(*this, "ascending"_sel) != NO; }
    SEL selector() const { return send<SEL>(*this, "selector"_sel); }

    // The two objects' values for the key compared, in the descriptor's direction.
    NSComparisonResult compareObject_toObject(NSObject left, NSObject right) const {
        return send<NSComparisonResult>(*this, "compareObject:toObject:"_sel, left, right);
    }
    // The same in the other direction. Autoreleased.
    NSSortDescriptor reversedSortDescriptor() const {
        return send<NSSortDescriptor>(*this, "reversedSortDescriptor"_sel);
    }
};

// The selector of that name; any string makes one. Null for nil, and for what no name can be: text with the
// character U+0000 or with an unpaired surrogate.
inline SEL NSSelectorFromString(NSString name) {
    const NSData utf8 = name.dataUsingEncoding(NSUTF8StringEncoding);
    if (!utf8) return SEL();
    const std::string text(static_cast<const char*>(utf8.bytes()), utf8.length());
    return text.find('\0') == std::string::npos ? runtime::registerSelector(text.c_str()) : SEL();
}
// The selector's name, nil for the null selector.
inline NSString NSStringFromSelector(SEL selector) {
    return selector ? NSString(runtime::selectorName(selector)) : NSString();
}

} // namespace tessarin
