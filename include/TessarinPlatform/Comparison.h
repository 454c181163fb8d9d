// Objects as keys of the standard library's containers.
//
// The containers' own comparison of handles is that of the platform: two handles are equal when they are of
// the same object. For equal objects name these functors. What a container holds it does not retain: make it
// one of Retained<T>.
//
//   std::unordered_set<Retained<NSString>, ObjectHash, ObjectEqual> names;
//   std::map<Retained<NSString>, int, ObjectLess> positions;
#pragma once

#include "TessarinPlatform/NSObject.h"

#include <functional>

namespace tessarin {

// An object's hash; 0 for nil.
struct ObjectHash {
    using is_transparent = void;
    std::size_t operator()(NSObject object) const { return object.hash(); }
};

// Whether isEqual: says so, or both are nil.
struct ObjectEqual {
    using is_transparent = void;
    bool operator()(NSObject left, NSObject right) const { return left == right || left.isEqual(right); }
};

// Whether compare: says that the left comes first. nil comes before everything. Raises
// NSInvalidArgumentException for an object that does not answer compare:.
struct ObjectLess {
    using is_transparent = void;
    bool operator()(NSObject left, NSObject right) const {
        if (!left || !right) return !left && right;
        return send<NSComparisonResult>(left, "compare:"_sel, right) == NSOrderedAscending;
    }
};

} // namespace tessarin

// Of the object, not of what it holds, as handles are compared.
namespace std {

template <derived_from<tessarin::NSObject> T>
struct hash<T> {
    size_t operator()(const T& handle) const noexcept { return hash<tessarin::Object*>()(handle.object()); }
};

} // namespace std
