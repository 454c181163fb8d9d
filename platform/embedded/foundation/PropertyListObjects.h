// The objects that readers of property lists make, as immutable or mutable as the reader was asked for.
#pragma once

#include "TessarinPlatform/NSDictionary.h"
#include "TessarinPlatform/NSPropertyListSerialization.h"
#include "TessarinPlatform/Retained.h"
#include "platform/services/PropertyListKinds.h"

#include <array>
#include <cstdint>
#include <span>
#include <string_view>

namespace tessarin::embedded {

class PropertyListObjects {
public:
    explicit PropertyListObjects(NSPropertyListMutabilityOptions mutability) : mutability_(mutability) {}

    bool hasMutableContainers() const { return mutability_ != NSPropertyListImmutable; }
    bool hasMutableLeaves() const { return mutability_ == NSPropertyListMutableContainersAndLeaves; }

    // nil for ill-formed UTF-8. A key is immutable in any case, and one that was met before may be the same
    // object.
    Retained<NSObject> string(std::string_view utf8, bool isKey);
    Retained<NSObject> string(std::u16string_view units, bool isKey) const;
    Retained<NSObject> asciiString(std::string_view ascii, bool isKey) const;
    Retained<NSObject> data(std::string_view bytes) const;
    // Integers are 64 bits wide, whatever width they were written in.
    static Retained<NSObject> integer(std::int64_t value);
    static Retained<NSObject> unsignedInteger(std::uint64_t value);
    static Retained<NSObject> boolean(bool value);
    static Retained<NSObject> real(double value);
    static Retained<NSObject> singleReal(float value);
    static Retained<NSObject> date(NSTimeInterval sinceReferenceDate);

    // Containers take over the references to what they hold, which leaves nil there.
    Retained<NSObject> array(std::span<Retained<NSObject>> items) const;
    // Key, value, key, value, ... The keys are strings that this has made. Of equal keys the last counts, and
    // what does not is left where it was.
    Retained<NSObject> dictionary(std::span<Retained<NSObject>> keysAndValues) const;

    // Containers to be filled: the places in their storage hold nil until the caller, who lets nobody see
    // them before, puts an object there that it owns.
    Retained<NSArray> arrayToFill(std::size_t count) const;
    // A key that equals one before it is left where it was.
    Retained<NSDictionary> dictionaryToFill(std::span<Retained<NSObject>> keys) const;
    // With the keys, in their order, of another one that was made to be filled and that no other thread has
    // seen yet.
    Retained<NSDictionary> dictionaryToFill(NSDictionary model) const;

private:
    Retained<NSObject> key(std::string_view utf8);
    // Empty, with room for as many items or entries.
    Retained<NSArray> newArray(std::size_t count) const;
    Retained<NSDictionary> newDictionary(std::size_t count) const;

    NSPropertyListMutabilityOptions mutability_;
    // Keys of the last dictionaries, all ASCII, each in the one place where its text belongs.
    std::array<Retained<NSString>, 64> keys_;
};

} // namespace tessarin::embedded
