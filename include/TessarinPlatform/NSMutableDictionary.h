// NSMutableDictionary: a dictionary that can be edited.
#pragma once

#include "TessarinPlatform/NSDictionary.h"

namespace tessarin {

// A nil object or key raises NSInvalidArgumentException, but GNUstep only logs the removal of the key nil.
// Removing a key that is not there does nothing, and a nil dictionary as an argument is an empty one. A
// dictionary that is changed while it is walked raises NSGenericException. For one thread at a time.
class NSMutableDictionary : public Handle<NSMutableDictionary, "NSMutableDictionary", NSDictionary> {
public:
    using Handle::Handle;

    static NSMutableDictionary dictionary() {
        return send<NSMutableDictionary>(classObject(), "dictionary"_sel);
    }
    static NSMutableDictionary dictionaryWithDictionary(NSDictionary other) {
        return send<NSMutableDictionary>(classObject(), "dictionaryWithDictionary:"_sel, other);
    }

    [[nodiscard]] NSMutableDictionary init() const { return send<NSMutableDictionary>(*this, "init"_sel); }
    [[nodiscard]] NSMutableDictionary initWithCapacity(NSUInteger capacity) const {
        return send<NSMutableDictionary>(*this, "initWithCapacity:"_sel, capacity);
    }

    void setObject_forKey(NSObject object, NSObject key) const {
        send<void>(*this, "setObject:forKey:"_sel, object, key);
    }
    void removeObjectForKey(NSObject key) const { send<void>(*this, "removeObjectForKey:"_sel, key); }
    void removeAllObjects() const { send<void>(*this, "removeAllObjects"_sel); }
    void addEntriesFromDictionary(NSDictionary other) const {
        send<void>(*this, "addEntriesFromDictionary:"_sel, other);
    }
};

} // namespace tessarin
