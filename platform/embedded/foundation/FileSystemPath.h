// Paths between the platform's strings and the C++ file system.
#pragma once

#include "TessarinPlatform/NSString.h"

#include <filesystem>
#include <optional>

namespace tessarin::embedded {

// The path that a string names; nothing for nil, for the empty string and for a string that no file system
// can hold: one with a zero character or with an unpaired surrogate.
std::optional<std::filesystem::path> fileSystemPath(NSString path);

// A path as a string; nil for one that is no UTF-8.
NSString stringWithPath(const std::filesystem::path& path);

} // namespace tessarin::embedded
