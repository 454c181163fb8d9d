// The objects that readers of property lists make, as immutable or mutable as the reader was asked for.
#pragma once

#include "TessarinPlatform/NSPropertyListSerialization.h"
#include "TessarinPlatform/Retained.h"
#include "platform/services/PropertyListKinds.h"

#include <cstdint>
#include <span>
#include <string_view>

namespace tessarin::embedded {

class PropertyListObjects {
public:
    explicit PropertyListObjects(NSPropertyListMutabilityOptions mutability) : mutability_(mutability) {}

    bool hasMutableContainers() const { return mutability_ != NSPropertyListImmutable; }
    bool hasMutableLeaves() const { return mutability_ == NSPropertyListMutableContainersAndLeaves; }

    // nil for ill-formed UTF-8. A key is immutable in any case.
    Retained<NSObject> string(std::string_view utf8, bool isKey) const;
    Retained<NSObject> string(std::u16string_view units, bool isKey) const;
    Retained<NSObject> data(std::string_view bytes) const;
    // Integers are 64 bits wide, whatever width they were written in.
    static Retained<NSObject> integer(std::int64_t value);
    static Retained<NSObject> unsignedInteger(std::uint64_t value);
    Retained<NSObject> array(std::span<const Retained<NSObject>> items) const;
    // Key, value, key, value, ... Of equal keys the last counts.
    Retained<NSObject> dictionary(std::span<const Retained<NSObject>> keysAndValues) const;

private:
    NSString newString(bool isKey) const;

    NSPropertyListMutabilityOptions mutability_;
};

} // namespace tessarin::embedded
