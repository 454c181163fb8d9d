// What goes wrong with property lists, as the readers and writers of all formats report it.
#pragma once

#include "TessarinPlatform/NSPropertyListSerialization.h"

#include <stdexcept>
#include <string>

namespace tessarin {

inline constexpr NSInteger NSPropertyListReadCorruptError = 3840;
inline constexpr NSInteger NSPropertyListWriteStreamError = 3851;
inline constexpr NSInteger NSPropertyListWriteInvalidError = 3852;

// Thrown by a reader or writer of one format, with a text for developers. It never leaves
// NSPropertyListSerialization, which makes an NSError of it.
class PropertyListProblem : public std::runtime_error {
public:
    using std::runtime_error::runtime_error;
};

// Stores an autoreleased error of the Cocoa domain through `error` unless that is null.
void storePropertyListError(NSError* error, NSInteger code, const std::string& text);

// The same for what cannot be written in a format: nil, which needs no reason, or an object that has a
// defect.
void storeNilPropertyListError(NSError* error);
void storeInvalidPropertyListError(NSError* error, NSPropertyListFormat format, const std::string& defect);

} // namespace tessarin
