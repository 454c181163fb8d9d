// Whole files on Windows. Elsewhere FileContents+POSIX.cpp takes this file's place.
#if defined(_WIN32)

#    include "platform/embedded/foundation/FileContents.h"
#    include "platform/embedded/foundation/WindowsHeader.h"

#    include <algorithm>
#    include <atomic>
#    include <string>
#    include <utility>

namespace tessarin::embedded {
namespace {

// What one call of the system reads or writes at most.
constexpr std::size_t largestTransfer = std::size_t{1} << 30;

// An open file.
class File {
public:
    File() = default;
    explicit File(HANDLE handle) : handle_(handle) {}
    File(File&& other) noexcept : handle_(std::exchange(other.handle_, INVALID_HANDLE_VALUE)) {}
    File& operator=(File&&) = delete;
    ~File() {
        if (isOpen()) CloseHandle(handle_);
    }

    bool isOpen() const { return handle_ != INVALID_HANDLE_VALUE; }
    HANDLE handle() const { return handle_; }
    bool close() { return CloseHandle(std::exchange(handle_, INVALID_HANDLE_VALUE)) != 0; }

    bool write(std::span<const std::byte> bytes) const {
        while (!bytes.empty()) {
            DWORD written = 0;
            const auto wanted = static_cast<DWORD>(std::min(bytes.size(), largestTransfer));
            if (!WriteFile(handle_, bytes.data(), wanted, &written, nullptr) || written == 0) return false;
            bytes = bytes.subspan(written);
        }
        return true;
    }

private:
    HANDLE handle_ = INVALID_HANDLE_VALUE;
};

// As on other systems, what is open may meanwhile be read, written, renamed and removed by others.
File open(const std::filesystem::path& path, DWORD access, DWORD disposition) {
    constexpr DWORD sharing = FILE_SHARE_READ | FILE_SHARE_WRITE | FILE_SHARE_DELETE;
    return File(
        CreateFileW(path.c_str(), access, sharing, nullptr, disposition, FILE_ATTRIBUTE_NORMAL, nullptr));
}

// Makes a file in the same folder under a name that nobody else uses, and stores the name.
File makeSibling(const std::filesystem::path& path, std::filesystem::path& name) {
    static std::atomic<unsigned> serial{0};
    for (int attempt = 0; attempt < 1000; ++attempt) {
        const unsigned number = ++serial;
        name = path.parent_path()
               / (".save-" + std::to_string(GetCurrentProcessId()) + "-" + std::to_string(number));
        File file = open(name, GENERIC_WRITE, CREATE_NEW);
        if (file.isOpen() || GetLastError() != ERROR_FILE_EXISTS) return file;
    }
    return {};
}

} // namespace

std::optional<std::vector<std::byte>> readFile(const std::filesystem::path& path) {
    const File file = open(path, GENERIC_READ, OPEN_EXISTING);
    if (!file.isOpen()) return std::nullopt;
    LARGE_INTEGER size{};
    GetFileSizeEx(file.handle(), &size); // a hint: the file may grow or shrink meanwhile
    std::vector<std::byte> bytes(static_cast<std::size_t>(size.QuadPart) + 1);
    std::size_t length = 0;
    for (;;) {
        if (length == bytes.size()) bytes.resize(bytes.size() * 2);
        const auto room = static_cast<DWORD>(std::min(bytes.size() - length, largestTransfer));
        DWORD count = 0;
        if (!ReadFile(file.handle(), bytes.data() + length, room, &count, nullptr)) return std::nullopt;
        if (count == 0) break;
        length += count;
    }
    bytes.resize(length);
    return bytes;
}

bool writeFile(const std::filesystem::path& path, std::span<const std::byte> bytes) {
    File file = open(path, GENERIC_WRITE, CREATE_ALWAYS);
    return file.isOpen() && file.write(bytes) && file.close();
}

bool writeFileAtomically(const std::filesystem::path& path, std::span<const std::byte> bytes,
                         std::optional<std::filesystem::perms> permissions) {
    // The file that a symbolic link leads to, so that the link stays one.
    std::error_code ignored;
    const std::filesystem::path resolved = std::filesystem::canonical(path, ignored);
    const std::filesystem::path& destination = resolved.empty() ? path : resolved;
    std::filesystem::path sibling;
    File file = makeSibling(destination, sibling);
    if (!file.isOpen()) return false;
    const bool isWritten = file.write(bytes) && FlushFileBuffers(file.handle());
    const bool isComplete = file.close() && isWritten;
    constexpr DWORD replacing = MOVEFILE_REPLACE_EXISTING | MOVEFILE_WRITE_THROUGH;
    if (isComplete && MoveFileExW(sibling.c_str(), destination.c_str(), replacing)) {
        // They say here only whether the file may be written, so they keep nobody from reading it.
        std::error_code problem;
        if (permissions) std::filesystem::permissions(destination, *permissions, problem);
        return !problem;
    }
    DeleteFileW(sibling.c_str());
    return false;
}

} // namespace tessarin::embedded

#endif
