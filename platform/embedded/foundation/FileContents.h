// Whole files, read and written.
#pragma once

#include <cstddef>
#include <filesystem>
#include <optional>
#include <span>
#include <vector>

namespace tessarin::embedded {

// The bytes of a file; nothing when it cannot be read.
std::optional<std::vector<std::byte>> readFile(const std::filesystem::path& path);

// Makes a file of those bytes, or gives an existing one these as its new contents. Whether that succeeded; a
// failure may leave a part of them.
bool writeFile(const std::filesystem::path& path, std::span<const std::byte> bytes);

// The same by way of a file beside it that takes its place when it is complete and safe on the disk: the file
// is never seen half written, and a failure leaves it as it was. Where permissions are given, nobody else can
// open the new contents before the file has these.
bool writeFileAtomically(const std::filesystem::path& path, std::span<const std::byte> bytes,
                         std::optional<std::filesystem::perms> permissions = {});

} // namespace tessarin::embedded
