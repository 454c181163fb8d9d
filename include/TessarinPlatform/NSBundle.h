// NSBundle: a folder of code and resources, such as an application or a framework.
#pragma once

#include "TessarinPlatform/NSString.h"

namespace tessarin {

class NSBundle : public Handle<NSBundle, "NSBundle", NSObject> {
public:
    using Handle::Handle;

    // The bundle of the program itself.
    static NSBundle mainBundle() { return send<NSBundle>(classObject(), "mainBundle"_sel); }
    // The bundle of the binary that defined a class.
    static NSBundle bundleForClass(Class classObject) {
        return send<NSBundle>(NSBundle::classObject(), "bundleForClass:"_sel, classObject);
    }
    // nil for a path at which there is no folder.
    static NSBundle bundleWithPath(NSString path) {
        return send<NSBundle>(classObject(), "bundleWithPath:"_sel, path);
    }

    NSString bundlePath() const { return send<NSString>(*this, "bundlePath"_sel); }
    NSString resourcePath() const { return send<NSString>(*this, "resourcePath"_sel); }

    // The text for a key from the table of that name, in the first of the user's languages that the bundle
    // has it in. The table nil or empty is "Localizable". Where there is none, the value, or the key itself
    // for a value that is nil or empty; the value, or the empty string, for the key nil.
    NSString localizedStringForKey_value_table(NSString key, NSString value, NSString table) const {
        return send<NSString>(*this, "localizedStringForKey:value:table:"_sel, key, value, table);
    }
};

} // namespace tessarin
