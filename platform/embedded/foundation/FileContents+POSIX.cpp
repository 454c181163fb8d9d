// Whole files. On Windows FileContents+Windows.cpp takes this file's place.
#if !defined(_WIN32)

#    include "platform/embedded/foundation/FileContents.h"

#    include <atomic>
#    include <cerrno>
#    include <cstdio>
#    include <cstdlib>
#    include <fcntl.h>
#    include <memory>
#    include <string>
#    include <sys/stat.h>
#    include <unistd.h>
#    include <utility>

namespace tessarin::embedded {
namespace {

// An open file.
class File {
public:
    File() = default;
    explicit File(int descriptor) : descriptor_(descriptor) {}
    File(File&& other) noexcept : descriptor_(std::exchange(other.descriptor_, -1)) {}
    File& operator=(File&&) = delete;
    ~File() {
        if (isOpen()) ::close(descriptor_);
    }

    bool isOpen() const { return descriptor_ >= 0; }
    int descriptor() const { return descriptor_; }
    // Closing is the last chance to learn that writing failed.
    bool close() { return ::close(std::exchange(descriptor_, -1)) == 0; }

    bool write(std::span<const std::byte> bytes) const {
        while (!bytes.empty()) {
            const ssize_t written = ::write(descriptor_, bytes.data(), bytes.size());
            if (written < 0 && errno == EINTR) continue;
            if (written <= 0) return false;
            bytes = bytes.subspan(static_cast<std::size_t>(written));
        }
        return true;
    }

private:
    int descriptor_ = -1;
};

constexpr mode_t newFileMode = 0666; // less what the process masks
constexpr mode_t ownersMode = 0600;

// The file that a path leads to, so that a symbolic link stays one.
std::string destinationOf(const std::string& path) {
    const std::unique_ptr<char, decltype(&std::free)> resolved(::realpath(path.c_str(), nullptr), &std::free);
    return resolved ? std::string(resolved.get()) : path;
}

// Makes a file beside another under a name that nobody else uses, and stores the name.
File makeSibling(const std::string& path, mode_t mode, std::string& name) {
    static std::atomic<unsigned> serial{0};
    // In the same folder, since only there a renaming is one step. The name does not grow with the file's
    // own, which may be as long as the file system allows.
    const std::string folder = path.substr(0, path.rfind('/') + 1);
    for (int attempt = 0; attempt < 1000; ++attempt) {
        name = folder + ".save-" + std::to_string(::getpid()) + "-" + std::to_string(++serial);
        File file(::open(name.c_str(), O_WRONLY | O_CREAT | O_EXCL | O_CLOEXEC, mode));
        if (file.isOpen() || errno != EEXIST) return file;
    }
    return {};
}

} // namespace

std::optional<std::vector<std::byte>> readFile(const std::filesystem::path& path) {
    const File file(::open(path.c_str(), O_RDONLY | O_CLOEXEC));
    if (!file.isOpen()) return std::nullopt;
    struct stat status {};
    if (::fstat(file.descriptor(), &status) != 0 || S_ISDIR(status.st_mode)) return std::nullopt;
    std::vector<std::byte> bytes;
    // The size is a hint: the file may grow or shrink meanwhile, and some files have none. One more byte is
    // room enough to see the end.
    bytes.resize(static_cast<std::size_t>(status.st_size) + 1);
    std::size_t length = 0;
    for (;;) {
        if (length == bytes.size()) bytes.resize(bytes.size() * 2);
        const ssize_t count = ::read(file.descriptor(), bytes.data() + length, bytes.size() - length);
        if (count < 0 && errno == EINTR) continue;
        if (count < 0) return std::nullopt;
        if (count == 0) break;
        length += static_cast<std::size_t>(count);
    }
    bytes.resize(length);
    return bytes;
}

bool writeFile(const std::filesystem::path& path, std::span<const std::byte> bytes) {
    File file(::open(path.c_str(), O_WRONLY | O_CREAT | O_TRUNC | O_CLOEXEC, newFileMode));
    return file.isOpen() && file.write(bytes) && file.close();
}

bool writeFileAtomically(const std::filesystem::path& path, std::span<const std::byte> bytes,
                         std::optional<std::filesystem::perms> permissions) {
    const std::string destination = destinationOf(path.native());
    // The mode that was asked for, or that of the file whose place this one takes.
    std::optional<mode_t> mode;
    struct stat status {};
    if (permissions)
        mode = static_cast<mode_t>(*permissions);
    else if (::stat(destination.c_str(), &status) == 0)
        mode = status.st_mode & 07777;
    std::string sibling;
    // Open to nobody else until it is given its mode.
    File file = makeSibling(destination, mode ? ownersMode : newFileMode, sibling);
    if (!file.isOpen()) return false;
    // The mode comes last, since writing takes away the bits that lend somebody's rights.
    const bool isWritten = file.write(bytes) && (!mode || ::fchmod(file.descriptor(), *mode) == 0)
                           && ::fsync(file.descriptor()) == 0;
    const bool isComplete = file.close() && isWritten;
    if (isComplete && std::rename(sibling.c_str(), destination.c_str()) == 0) return true;
    ::unlink(sibling.c_str());
    return false;
}

} // namespace tessarin::embedded

#endif
