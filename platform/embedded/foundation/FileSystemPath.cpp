#include "platform/embedded/foundation/FileSystemPath.h"

namespace tessarin::embedded {

std::optional<std::filesystem::path> fileSystemPath(NSString path) {
    const NSData bytes = path.dataUsingEncoding(NSUTF8StringEncoding);
    const std::u8string_view utf8(static_cast<const char8_t*>(bytes.bytes()), bytes.length());
    if (utf8.empty() || utf8.find(u8'\0') != std::u8string_view::npos) return {};
    return std::filesystem::path(utf8);
}

NSString stringWithPath(const std::filesystem::path& path) {
    const std::u8string utf8 = path.generic_u8string();
    return NSString(std::string_view(reinterpret_cast<const char*>(utf8.data()), utf8.size()));
}

} // namespace tessarin::embedded
