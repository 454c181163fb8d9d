#include "platform/embedded/foundation/BundleFolders.h"

#include <system_error>

#if defined(_WIN32)
#    include "platform/embedded/foundation/WindowsHeader.h"
#    include <string>
#else
#    include <dlfcn.h>
#endif

namespace tessarin::embedded {
namespace {

namespace fs = std::filesystem;

bool isFolder(const fs::path& path) {
    std::error_code ignored;
    return fs::is_directory(path, ignored);
}

#if defined(_WIN32)

// Empty where the system does not say.
fs::path fileOfModule(HMODULE module) {
    std::wstring name(MAX_PATH, L'\0');
    for (;;) {
        const auto room = static_cast<DWORD>(name.size());
        const DWORD length = GetModuleFileNameW(module, name.data(), room);
        if (length < room) return name.substr(0, length);
        name.resize(name.size() * 2);
    }
}

// The path of the file that an address was loaded from; empty where the system does not say.
fs::path loadedFile(const void* address) {
    constexpr DWORD byAddress =
        GET_MODULE_HANDLE_EX_FLAG_FROM_ADDRESS | GET_MODULE_HANDLE_EX_FLAG_UNCHANGED_REFCOUNT;
    HMODULE module = nullptr;
    if (!address || !GetModuleHandleExW(byAddress, static_cast<const wchar_t*>(address), &module)) return {};
    return fileOfModule(module);
}

fs::path program() { return fileOfModule(nullptr); }

#else

fs::path currentFolder() {
    std::error_code ignored;
    return fs::current_path(ignored);
}

// The path of the file that an address was loaded from; empty where the system does not say. That of the
// program is the name by which it was called.
fs::path loadedFile(const void* address) {
    Dl_info information;
    if (!address || dladdr(address, &information) == 0 || !information.dli_fname) return {};
    std::error_code problem;
    const fs::path path = fs::canonical(information.dli_fname, problem);
    return problem ? fs::path() : path;
}

fs::path program() {
    std::error_code problem;
    fs::path path = fs::read_symlink("/proc/self/exe", problem);
    if (problem) path = loadedFile(dlsym(RTLD_DEFAULT, "main"));
    return path.empty() ? currentFolder() / "program" : path;
}

#endif

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
