#include "platform/embedded/foundation/FileSystemPath.h"

namespace tessarin::embedded {
namespace {

#if defined(_WIN32)

bool isLetter(char8_t unit) { return (unit | 0x20) >= u8'a' && (unit | 0x20) <= u8'z'; }

bool beginsWithDrive(std::u8string_view path) {
    return path.size() >= 2 && isLetter(path[0]) && path[1] == u8':';
}

std::u8string_view systemsForm(std::u8string_view path) {
    return path.starts_with(u8'/') && beginsWithDrive(path.substr(1)) ? path.substr(1) : path;
}
std::u8string platformsForm(std::u8string path) { return beginsWithDrive(path) ? u8"/" + path : path; }

#else

std::u8string_view systemsForm(std::u8string_view path) { return path; }
std::u8string platformsForm(std::u8string path) { return path; }

#endif

} // namespace

std::filesystem::path fileSystemPath(std::u8string_view utf8) { return systemsForm(utf8); }

std::optional<std::filesystem::path> fileSystemPath(NSString path) {
    const NSData bytes = path.dataUsingEncoding(NSUTF8StringEncoding);
    const std::u8string_view utf8(static_cast<const char8_t*>(bytes.bytes()), bytes.length());
    if (utf8.empty() || utf8.find(u8'\0') != std::u8string_view::npos) return {};
    return fileSystemPath(utf8);
}

NSString stringWithPath(const std::filesystem::path& path) {
    const std::u8string utf8 = platformsForm(path.generic_u8string());
    return NSString(std::string_view(reinterpret_cast<const char*>(utf8.data()), utf8.size()));
}

} // namespace tessarin::embedded
