// What an object is as a part of a property list.
#pragma once

#include "TessarinPlatform/Retained.h"

#include <array>
#include <cstdint>
#include <string>
#include <vector>

namespace tessarin {

enum class PropertyListKind : unsigned char { string, data, number, date, uid, array, dictionary, other };

constexpr bool isContainer(PropertyListKind kind) {
    return kind == PropertyListKind::array || kind == PropertyListKind::dictionary;
}

// As many containers inside each other as the platform reads.
inline constexpr std::size_t deepestPropertyList = 512;

// The kind of an object that is not nil, by asking it for its class. A reference in a keyed archive counts as
// a kind of its own on the platforms that have a class for it.
PropertyListKind askForPropertyListKind(NSObject object);
// Whether that answer holds for every object of the same class.
bool isKindOfItsClass(NSObject object);

// The name that the platform's error texts give to an object's type.
std::string propertyListTypeName(NSObject object);

// Kinds of many objects, each class asked once. `Platform::classOf` answers the class of an object that is
// not nil.
//
// An object that answers for its class itself is asked each time, which is other code: it may say something
// else than before, and release what stands around it. `beforeOtherCode()` is called first, for what has to
// be held meanwhile.
template <class Platform>
class PropertyListKinds {
public:
    template <class BeforeOtherCode>
    PropertyListKind of(NSObject object, BeforeOtherCode&& beforeOtherCode) {
        if (!object) return PropertyListKind::other;
        const Object* const classObject = Platform::classOf(object);
        const std::uint64_t spread = reinterpret_cast<std::uintptr_t>(classObject) * 0x9E3779B97F4A7C15u;
        Entry& entry = entries_[spread >> (64 - entryBits)];
        if (entry.classObject == classObject) [[likely]]
            return entry.kind;
        if (!isKindOfItsClass(object)) {
            beforeOtherCode();
            return askForPropertyListKind(object);
        }
        const PropertyListKind kind = askForPropertyListKind(object);
        entry = {classObject, kind};
        if (kind == PropertyListKind::string) stringClass_ = classObject;
        return kind;
    }
    // Where everything is held.
    PropertyListKind of(NSObject object) {
        return of(object, [] {});
    }

    // Whether an object is a string. Nearly all keys are of one class.
    template <class BeforeOtherCode>
    bool isString(NSObject object, BeforeOtherCode&& beforeOtherCode) {
        if (object && Platform::classOf(object) == stringClass_) [[likely]]
            return true;
        return of(object, beforeOtherCode) == PropertyListKind::string;
    }

private:
    struct Entry {
        const Object* classObject = nullptr;
        PropertyListKind kind = PropertyListKind::other;
    };
    static constexpr int entryBits = 5;

    std::array<Entry, 1 << entryBits> entries_{};
    const Object* stringClass_ = nullptr; // one whose objects are strings
};

// The objects of a container, of a dictionary the keys too, fetched by its own operations and kept.
struct FetchedContents {
    FetchedContents(NSObject container, PropertyListKind kind);

    std::vector<Retained<NSObject>> keys; // none in an array
    std::vector<Retained<NSObject>> objects;
};

} // namespace tessarin
