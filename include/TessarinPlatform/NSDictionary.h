// NSDictionary: an immutable map from keys, which it copies, to objects.
#pragma once

#include "TessarinPlatform/NSArray.h"

namespace tessarin {

// A nil object or key to be put in raises NSInvalidArgumentException, and so do lists of objects and keys
// that differ in length. A key that is not there, or nil, has the object nil. A nil dictionary as an argument
// is an empty one. Keys and values are listed in no particular order. Results are autoreleased; what alloc
// and init give is the caller's. An immutable dictionary may be read on any number of threads at once.
class NSDictionary : public Handle<NSDictionary, "NSDictionary", NSObject> {
public:
    using Handle::Handle;

    static NSDictionary dictionary() { return send<NSDictionary>(classObject(), "dictionary"_sel); }
    static NSDictionary dictionaryWithDictionary(NSDictionary other) {
        return send<NSDictionary>(classObject(), "dictionaryWithDictionary:"_sel, other);
    }
    static NSDictionary dictionaryWithObject_forKey(NSObject object, NSObject key) {
        return send<NSDictionary>(classObject(), "dictionaryWithObject:forKey:"_sel, object, key);
    }
    static NSDictionary dictionaryWithObjects_forKeys(NSArray objects, NSArray keys) {
        return send<NSDictionary>(classObject(), "dictionaryWithObjects:forKeys:"_sel, objects, keys);
    }
    static NSDictionary dictionaryWithObjects_forKeys_count(const NSObject* objects, const NSObject* keys,
                                                            NSUInteger count) {
        return send<NSDictionary>(classObject(), "dictionaryWithObjects:forKeys:count:"_sel, objects, keys,
                                  count);
    }

    [[nodiscard]] NSDictionary init() const { return send<NSDictionary>(*this, "init"_sel); }
    [[nodiscard]] NSDictionary initWithDictionary(NSDictionary other) const {
        return send<NSDictionary>(*this, "initWithDictionary:"_sel, other);
    }
    [[nodiscard]] NSDictionary initWithObjects_forKeys_count(const NSObject* objects, const NSObject* keys,
                                                             NSUInteger count) const {
        return send<NSDictionary>(*this, "initWithObjects:forKeys:count:"_sel, objects, keys, count);
    }

    NSUInteger count() const { return send<NSUInteger>(*this, "count"_sel); }
    id objectForKey(NSObject key) const { return send<id>(*this, "objectForKey:"_sel, key); }
    NSArray allKeys() const { return send<NSArray>(*this, "allKeys"_sel); }
    NSArray allValues() const { return send<NSArray>(*this, "allValues"_sel); }
    bool isEqualToDictionary(NSDictionary other) const {
        return send<BOOL>(*this, "isEqualToDictionary:"_sel, other) != NO;
    }

    // Walks the keys, in no particular order.
    FastEnumerator begin() const { return *this ? FastEnumerator(*this) : FastEnumerator(); }
    std::default_sentinel_t end() const { return {}; }
};

} // namespace tessarin
