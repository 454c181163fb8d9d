// Where bundles lie.
#pragma once

#include <filesystem>

namespace tessarin::embedded {

// The binary that an address of code or data belongs to, as an absolute path; the program itself for null,
// and where the system does not say.
std::filesystem::path binaryOfAddress(const void* address);

// The folder of the bundle that a binary is the code of: a framework, application or other bundle that it
// lies in (Name.framework/Versions/A/Name, Name.app/Contents/MacOS/Name, Name.app/Name), else the folder it
// is in or the one above, whichever has a folder Resources, else the one it is in.
std::filesystem::path bundleFolderOfBinary(const std::filesystem::path& binary);

// The folder of a bundle's resources: Resources in the bundle itself, in its Contents or in the current one
// of its Versions; the bundle itself where there is none.
std::filesystem::path resourceFolderOfBundle(const std::filesystem::path& bundle);

} // namespace tessarin::embedded
