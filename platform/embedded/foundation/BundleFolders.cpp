#include "platform/embedded/foundation/BundleFolders.h"

#include <system_error>

#if __has_include(<dlfcn.h>)
#    include <dlfcn.h>
#    define TESSARIN_HAS_DLADDR 1
#else
#    define TESSARIN_HAS_DLADDR 0
#endif

namespace tessarin::embedded {
namespace {

namespace fs = std::filesystem;

bool isFolder(const fs::path& path) {
    std::error_code ignored;
    return fs::is_directory(path, ignored);
}

fs::path currentFolder() {
    std::error_code ignored;
    return fs::current_path(ignored);
}

// The path of the file that an address was loaded from; empty where the system does not say. That of the
// program is the name by which it was called.
fs::path loadedFile(const void* address) {
#if TESSARIN_HAS_DLADDR
    Dl_info information;
    if (address && dladdr(address, &information) != 0 && information.dli_fname) {
        std::error_code problem;
        const fs::path path = fs::canonical(information.dli_fname, problem);
        if (!problem) return path;
    }
#else
    static_cast<void>(address);
#endif
    return {};
}

fs::path program() {
    std::error_code problem;
    fs::path path = fs::read_symlink("/proc/self/exe", problem);
#if TESSARIN_HAS_DLADDR
    if (problem) path = loadedFile(dlsym(RTLD_DEFAULT, "main"));
#endif
    return path.empty() ? currentFolder() / "program" : path;
}

bool isBundleName(const fs::path& folder) {
    const fs::path extension = folder.extension();
    return extension == ".framework" || extension == ".app" || extension == ".bundle"
           || extension == ".component" || extension == ".vst" || extension == ".vst3";
}

} // namespace

fs::path binaryOfAddress(const void* address) {
    const fs::path file = loadedFile(address);
    return file.empty() ? program() : file;
}

fs::path bundleFolderOfBinary(const fs::path& binary) {
    constexpr int deepestLevel = 3; // Contents/MacOS and Versions/A lie between
    const fs::path folder = binary.parent_path();
    fs::path enclosing = folder;
    for (int level = 0; level < deepestLevel; ++level, enclosing = enclosing.parent_path())
        if (isBundleName(enclosing)) return enclosing;
    for (const fs::path& candidate : {folder, folder.parent_path()})
        if (isFolder(candidate / "Resources")) return candidate;
    return folder;
}

fs::path resourceFolderOfBundle(const fs::path& bundle) {
    for (const char* place : {"Resources", "Contents/Resources", "Versions/Current/Resources"})
        if (isFolder(bundle / place)) return bundle / place;
    return bundle;
}

} // namespace tessarin::embedded
