// What a binary property list would make, found out without making it.
#pragma once

#include "TessarinPlatform/NSPropertyListSerialization.h"
#include "platform/embedded/foundation/BinaryPropertyListDocument.h"

namespace tessarin::embedded {

// How many references are followed at most. A document whose objects are not shared, nor lie over each other,
// has fewer; a small one in which each place has its own mutable containers can stand for a list that no
// memory holds.
inline std::size_t mostReferences(const BinaryPropertyListDocument& document) {
    return document.size() + (std::size_t{1} << 20);
}

// Fails as reading with mutable containers would. What is shared is looked at once and counted for every
// place.
void tryBinaryPropertyList(const BinaryPropertyListDocument& document,
                           NSPropertyListMutabilityOptions mutability);

} // namespace tessarin::embedded
