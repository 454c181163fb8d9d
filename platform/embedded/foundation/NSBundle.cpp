#include "TessarinPlatform/NSBundle.h"

#include "platform/embedded/foundation/BundleFolders.h"
#include "platform/embedded/foundation/FileContents.h"
#include "platform/embedded/foundation/FileSystemPath.h"
#include "platform/embedded/foundation/StringsFile.h"
#include "platform/embedded/foundation/UserLanguages.h"
#include "platform/embedded/runtime/Classes.h"

#include <map>
#include <mutex>
#include <string>

namespace tessarin::embedded {
namespace {

namespace fs = std::filesystem;

struct BundleStorage {
    fs::path folder;
    std::mutex mutex;                                        // of what follows
    std::map<std::u16string, Retained<NSDictionary>> tables; // of texts, by name; nil for none
};

// ---- Making. There is one bundle for each folder, which lives as long as the process.

NSBundle bundleOfFolder(const fs::path& folder) {
    static auto* const mutex = new std::mutex;
    static auto* const bundles = new std::map<fs::path, NSBundle>;
    const std::lock_guard lock(*mutex);
    NSBundle& bundle = (*bundles)[folder];
    if (!bundle) {
        bundle = NSBundle(NSObject(createInstance(NSBundle::classObject())));
        makeImmortal(bundle);
        storageOf<BundleStorage>(bundle).folder = folder;
    }
    return bundle;
}

NSBundle mainBundle(Class, SEL) { return bundleOfFolder(bundleFolderOfBinary(binaryOfAddress(nullptr))); }

NSBundle bundleForClass(Class, SEL, Class described) {
    const void* definition = described ? runtimeClass(described.object())->definition : nullptr;
    return bundleOfFolder(bundleFolderOfBinary(binaryOfAddress(definition)));
}

NSBundle bundleWithPath(Class, SEL, NSString path) {
    const auto wanted = fileSystemPath(path);
    std::error_code problem;
    if (!wanted || !fs::is_directory(*wanted, problem)) return nil;
    const fs::path folder = fs::canonical(*wanted, problem);
    return problem ? NSBundle() : bundleOfFolder(folder);
}

// ---- Places

NSString bundlePath(NSBundle self, SEL) { return stringWithPath(storageOf<BundleStorage>(self).folder); }

NSString resourcePath(NSBundle self, SEL) {
    return stringWithPath(resourceFolderOfBundle(storageOf<BundleStorage>(self).folder));
}

// ---- Texts

NSDictionary readTable(const fs::path& path) {
    const auto bytes = readFile(path);
    if (!bytes) return nil;
    return textsOfStringsFile({reinterpret_cast<const char*>(bytes->data()), bytes->size()});
}

// In the first language that it is there in, or in none.
NSDictionary findTable(const fs::path& bundle, const std::u16string& name) {
    const auto file = fileSystemPath(NSString(name + u".strings"));
    if (!file) return nil;
    const fs::path resources = resourceFolderOfBundle(bundle);
    for (const std::string& language : userLanguages())
        if (const NSDictionary table = readTable(resources / (language + ".lproj") / *file)) return table;
    return readTable(resources / *file);
}

Retained<NSDictionary> tableNamed(BundleStorage& storage, const std::u16string& name) {
    const std::lock_guard lock(storage.mutex);
    const auto known = storage.tables.find(name);
    if (known != storage.tables.end()) return known->second;
    return storage.tables.emplace(name, retain(findTable(storage.folder, name))).first->second;
}

NSString localizedStringForKey_value_table(NSBundle self, SEL, NSString key, NSString value, NSString table) {
    if (!key) return value ? value : ""_ns;
    const auto name = table.length() > 0 ? static_cast<std::u16string>(table) : u"Localizable";
    const Retained<NSDictionary> texts = tableNamed(storageOf<BundleStorage>(self), name);
    if (const NSString text = kindOf<NSString>(texts.objectForKey(key))) return retain(text).autorelease();
    return value.length() > 0 ? value : key;
}

} // namespace

ClassDescription describeNSBundle() {
    return {
        .name = "NSBundle",
        .superclass = "NSObject",
        .storage = storageLayout<BundleStorage>(),
        .methods = {classMethod("mainBundle", mainBundle), classMethod("bundleForClass:", bundleForClass),
                    classMethod("bundleWithPath:", bundleWithPath), instanceMethod("bundlePath", bundlePath),
                    instanceMethod("resourcePath", resourcePath),
                    instanceMethod("localizedStringForKey:value:table:", localizedStringForKey_value_table)},
    };
}

} // namespace tessarin::embedded
