// Paths between the platform's strings and the C++ file system.
//
// On Windows an absolute path is /C:/folder/file in the platform's strings: it begins with a slash, as every
// absolute path does there. C:/folder/file and backslashes are understood as well.
#pragma once

#include "TessarinPlatform/NSString.h"

#include <filesystem>
#include <optional>
#include <string_view>

namespace tessarin::embedded {

// The path that a string names; nothing for nil, for the empty string and for a string that no file system
// can hold: one with a zero character or with an unpaired surrogate.
std::optional<std::filesystem::path> fileSystemPath(NSString path);

// The same of a path in UTF-8 that names something.
std::filesystem::path fileSystemPath(std::u8string_view utf8);

// A path as a string; nil for one that is no UTF-8.
NSString stringWithPath(const std::filesystem::path& path);

} // namespace tessarin::embedded
