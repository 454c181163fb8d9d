// Reads property lists in binary form.
#pragma once

#include "TessarinPlatform/NSPropertyListSerialization.h"
#include "TessarinPlatform/Retained.h"

#include <string_view>

namespace tessarin::embedded {

// The property list that a document of any origin holds; never nil. An object that several containers refer
// to is one object, unless it is to be mutable: then each has its own.
//
// Throws PropertyListProblem, naming the object by its number, for everything that is no property list:
// counts and offsets that lead out of the document, containers inside themselves or more than 512 deep, keys
// that are no strings. What is allocated is in proportion to the document, not to what it claims; where
// separate copies of shared mutable objects, or objects that lie over each other, make more of it, their
// references are limited to 2^20 and one for each byte of the document, and the bytes of strings and data to
// 16 times the document's and 4 MiB.
Retained<NSObject> readBinaryPropertyList(std::string_view document,
                                          NSPropertyListMutabilityOptions mutability);

} // namespace tessarin::embedded
