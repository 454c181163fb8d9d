// NSFileManager over the C++ file system. It keeps nothing, so every file manager serves every thread.
#include "TessarinPlatform/NSFileManager.h"

#include "TessarinPlatform/NSMutableArray.h"
#include "TessarinPlatform/NSMutableDictionary.h"
#include "TessarinPlatform/NSNumber.h"
#include "platform/embedded/foundation/DataStorage.h"
#include "platform/embedded/foundation/FileContents.h"
#include "platform/embedded/foundation/FileSystemPath.h"
#include "platform/embedded/runtime/BuiltInClass.h"

#if defined(_WIN32)
#    include <io.h>
#else
#    include <unistd.h>
#endif

namespace tessarin::embedded {
namespace {

namespace fs = std::filesystem;

enum class Access { reading, writing };

// The platform's code for what the operating system says.
NSInteger errorCode(std::error_code problem, Access access) {
    const bool isReading = access == Access::reading;
    if (problem == std::errc::no_such_file_or_directory) return isReading ? 260 : 4;
    if (problem == std::errc::permission_denied || problem == std::errc::operation_not_permitted)
        return isReading ? 257 : 513;
    if (problem == std::errc::file_exists || problem == std::errc::directory_not_empty) return 516;
    if (problem == std::errc::filename_too_long) return isReading ? 258 : 514;
    if (problem == std::errc::no_space_on_device) return 640;
    if (problem == std::errc::read_only_file_system) return 642;
    return isReading ? 256 : 512;
}

// Stores an error through `error` unless that is null. Answers NO, so that a method can return it.
BOOL fail(NSError* error, std::error_code problem, Access access, NSString path) {
    if (!error) return NO;
    const NSError underlying =
        NSError::errorWithDomain_code_userInfo("NSPOSIXErrorDomain"_ns, problem.value(), nil);
    const NSMutableDictionary userInfo = NSMutableDictionary::dictionary();
    if (path) userInfo.setObject_forKey(path, "NSFilePath"_ns);
    userInfo.setObject_forKey(underlying, "NSUnderlyingError"_ns);
    *error =
        NSError::errorWithDomain_code_userInfo(NSCocoaErrorDomain(), errorCode(problem, access), userInfo);
    return NO;
}

std::error_code noSuchFile() { return std::make_error_code(std::errc::no_such_file_or_directory); }

// Whether there is something at a path, be it a symbolic link that leads nowhere.
bool existsItself(const fs::path& path) {
    std::error_code ignored;
    const fs::file_type type = fs::symlink_status(path, ignored).type();
    return type != fs::file_type::not_found && type != fs::file_type::none;
}

std::optional<fs::perms> permissionsIn(NSDictionary attributes) {
    const NSNumber permissions = kindOf<NSNumber>(attributes.objectForKey("NSFilePosixPermissions"_ns));
    if (!permissions) return std::nullopt;
    return static_cast<fs::perms>(permissions.unsignedIntValue());
}

std::error_code setAttributes(const fs::path& path, NSDictionary attributes) {
    std::error_code problem;
    if (const auto permissions = permissionsIn(attributes)) fs::permissions(path, *permissions, problem);
    return problem;
}

NSFileManager defaultManager(Class, SEL) {
    static const NSFileManager shared = [] {
        const NSFileManager manager = NSFileManager::alloc().init();
        makeImmortal(manager);
        return manager;
    }();
    return shared;
}

BOOL fileExistsAtPathIsDirectory(NSFileManager, SEL, NSString path, BOOL* isDirectory) {
    const auto file = fileSystemPath(path);
    std::error_code problem;
    const fs::file_status status = file ? fs::status(*file, problem) : fs::file_status();
    const bool exists = fs::status_known(status) && fs::exists(status);
    if (isDirectory) *isDirectory = exists && fs::is_directory(status);
    return exists;
}

BOOL fileExistsAtPath(NSFileManager self, SEL, NSString path) {
    return self.fileExistsAtPath_isDirectory(path, nullptr);
}

// Asked of the operating system, since permission bits alone do not tell: of root, of access lists, of file
// systems that are mounted for reading.
BOOL allows(NSString path, Access access) {
    const auto file = fileSystemPath(path);
    if (!file) return NO;
#if defined(_WIN32)
    return _waccess(file->c_str(), access == Access::reading ? 4 : 2) == 0;
#else
    return ::access(file->c_str(), access == Access::reading ? R_OK : W_OK) == 0;
#endif
}

BOOL isReadableFile(NSFileManager, SEL, NSString path) { return allows(path, Access::reading); }

BOOL isWritableFile(NSFileManager, SEL, NSString path) { return allows(path, Access::writing); }

NSArray contentsOfDirectoryAtPath(NSFileManager, SEL, NSString path, NSError* error) {
    const auto directory = fileSystemPath(path);
    std::error_code problem = directory ? std::error_code() : noSuchFile();
    const NSMutableArray names = NSMutableArray::array();
    if (directory) {
        fs::directory_iterator entry(*directory, problem);
        for (; !problem && entry != fs::directory_iterator(); entry.increment(problem)) {
            // A name that is no UTF-8 could not be handed back in a path, so it is not listed.
            if (const NSString name = stringWithPath(entry->path().filename())) names.addObject(name);
        }
    }
    if (problem) {
        fail(error, problem, Access::reading, path);
        return nil;
    }
    return NSArray::arrayWithArray(names);
}

NSData contentsAtPath(NSFileManager self, SEL, NSString path) {
    BOOL isDirectory = NO;
    const bool exists = self.fileExistsAtPath_isDirectory(path, &isDirectory);
    return exists && !isDirectory ? NSData::dataWithContentsOfFile(path) : nil;
}

BOOL createFile(NSFileManager, SEL, NSString path, NSData contents, NSDictionary attributes) {
    const auto file = fileSystemPath(path);
    if (!file) return NO;
    const auto permissions = permissionsIn(attributes);
    return writeFileAtomically(*file, bytesOf(contents), permissions);
}

BOOL createDirectory(NSFileManager, SEL, NSString path, BOOL withIntermediateDirectories,
                     NSDictionary attributes, NSError* error) {
    const auto directory = fileSystemPath(path);
    std::error_code problem = directory ? std::error_code() : noSuchFile();
    if (directory && withIntermediateDirectories) {
        fs::create_directories(*directory, problem);
    } else if (directory && !fs::create_directory(*directory, problem) && !problem) {
        problem = std::make_error_code(std::errc::file_exists);
    }
    if (!problem) problem = setAttributes(*directory, attributes);
    return problem ? fail(error, problem, Access::writing, path) : YES;
}

BOOL removeItem(NSFileManager, SEL, NSString path, NSError* error) {
    const auto item = fileSystemPath(path);
    std::error_code problem;
    if (!item || !existsItself(*item))
        problem = noSuchFile();
    else
        fs::remove_all(*item, problem);
    return problem ? fail(error, problem, Access::writing, path) : YES;
}

BOOL moveItem(NSFileManager, SEL, NSString path, NSString newPath, NSError* error) {
    const auto from = fileSystemPath(path);
    const auto to = fileSystemPath(newPath);
    if (!from || !existsItself(*from)) return fail(error, noSuchFile(), Access::writing, path);
    if (!to) return fail(error, noSuchFile(), Access::writing, newPath);
    if (existsItself(*to))
        return fail(error, std::make_error_code(std::errc::file_exists), Access::writing, newPath);
    std::error_code problem;
    fs::rename(*from, *to, problem);
    if (problem == std::errc::cross_device_link) {
        fs::copy(*from, *to, fs::copy_options::recursive | fs::copy_options::copy_symlinks, problem);
        if (!problem) fs::remove_all(*from, problem);
    }
    return problem ? fail(error, problem, Access::writing, path) : YES;
}

NSString currentDirectoryPath(NSFileManager, SEL) {
    std::error_code problem;
    const fs::path path = fs::current_path(problem);
    return problem ? nil : stringWithPath(path);
}

BOOL changeCurrentDirectoryPath(NSFileManager, SEL, NSString path) {
    const auto directory = fileSystemPath(path);
    std::error_code problem;
    if (directory) fs::current_path(*directory, problem);
    return directory && !problem;
}

} // namespace

ClassDescription describeNSFileManager() {
    return {.name = "NSFileManager",
            .superclass = "NSObject",
            .methods = {classMethod("defaultManager", defaultManager),
                        instanceMethod("fileExistsAtPath:", fileExistsAtPath),
                        instanceMethod("fileExistsAtPath:isDirectory:", fileExistsAtPathIsDirectory),
                        instanceMethod("isReadableFileAtPath:", isReadableFile),
                        instanceMethod("isWritableFileAtPath:", isWritableFile),
                        instanceMethod("contentsOfDirectoryAtPath:error:", contentsOfDirectoryAtPath),
                        instanceMethod("contentsAtPath:", contentsAtPath),
                        instanceMethod("createFileAtPath:contents:attributes:", createFile),
                        instanceMethod("createDirectoryAtPath:withIntermediateDirectories:attributes:error:",
                                       createDirectory),
                        instanceMethod("removeItemAtPath:error:", removeItem),
                        instanceMethod("moveItemAtPath:toPath:error:", moveItem),
                        instanceMethod("currentDirectoryPath", currentDirectoryPath),
                        instanceMethod("changeCurrentDirectoryPath:", changeCurrentDirectoryPath)}};
}

} // namespace tessarin::embedded
