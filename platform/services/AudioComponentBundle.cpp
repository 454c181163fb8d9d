#include "TessarinPlatform/AudioComponent.h"
#include "TessarinPlatform/Exceptions.h"
#include "TessarinPlatform/FourCharacterCodes.h"
#include "TessarinPlatform/NSFileManager.h"
#include "TessarinPlatform/NSNumber.h"
#include "TessarinPlatform/NSPropertyListSerialization.h"
#include "platform/services/BooleanNumbers.h"

#include <cmath>
#include <limits>
#include <vector>

namespace tessarin {
namespace {

// Codes of NSCocoaErrorDomain.
constexpr NSInteger fileReadUnknownError = 256;
constexpr NSInteger fileReadCorruptFileError = 259;
constexpr NSInteger fileReadNoSuchFileError = 260;
constexpr NSInteger propertyListReadCorruptError = 3840;

// What one dictionary of a bundle declares. The name belongs to that dictionary.
struct Declaration {
    AudioComponentDescription description{};
    NSString name;
    UInt32 version = 0;
};

// Stores the error and answers what a registration answers that failed.
long fail(NSError* error, NSInteger code, NSString text) {
    if (error)
        *error = NSError::errorWithDomain_code_userInfo(
            NSCocoaErrorDomain(), code,
            NSDictionary::dictionaryWithObject_forKey(text, NSLocalizedDescriptionKey()));
    return -1;
}

bool isFile(NSString path) {
    BOOL isDirectory = NO;
    return NSFileManager::defaultManager().fileExistsAtPath_isDirectory(path, &isDirectory) && !isDirectory;
}

// The Info.plist of a bundle; nil when it has none.
NSString informationFileOfBundle(NSString bundle) {
    for (const NSString place : {"Contents/Info.plist"_ns, "Info.plist"_ns}) {
        const NSString file = bundle.stringByAppendingPathComponent(place);
        if (isFile(file)) return file;
    }
    return nil;
}

// nil for what is no property list. Some platforms raise for bytes that their parser did not foresee.
NSObject propertyListWithData(NSData data) {
    return attempt(
        [&]() -> NSObject {
            return NSPropertyListSerialization::propertyListWithData_options_format_error(
                data, NSPropertyListImmutable, nullptr, nullptr);
        },
        [](NSException) { return NSObject(); });
}

// Reads one code. Answers what is wrong with it, nil when nothing is. The code 0, which four U+0000 encode,
// means "any" in searches and so names no component.
NSString readCode(NSDictionary entry, NSString key, OSType& code) {
    const NSObject value = entry.objectForKey(key);
    if (!value) return NSString::stringWithFormat("has no %@"_ns, key);
    code = UTGetOSTypeFromString(kindOf<NSString>(value));
    if (code != 0) return nil;
    return NSString::stringWithFormat("has a %@ that is no string of four Mac OS Roman characters"_ns, key);
}

NSString readName(NSDictionary entry, NSString& name) {
    const NSObject value = entry.objectForKey("name"_ns);
    if (!value) return "has no name"_ns;
    name = kindOf<NSString>(value);
    return name ? nil : "has a name that is no string"_ns;
}

NSString readVersion(NSDictionary entry, UInt32& version) {
    const NSObject value = entry.objectForKey("version"_ns);
    if (!value) return nil;
    if (const NSNumber number = kindOf<NSNumber>(value); number && !isBoolean(number)) {
        const double exact = number.doubleValue();
        if (exact >= 0 && exact <= std::numeric_limits<UInt32>::max() && exact == std::trunc(exact)) {
            version = static_cast<UInt32>(exact);
            return nil;
        }
    }
    return "has a version that is no whole number from 0 to 4294967295"_ns;
}

// Reads one dictionary of a bundle. Answers what is wrong with it, nil when nothing is.
NSString read(NSObject object, Declaration& declaration) {
    const NSDictionary entry = kindOf<NSDictionary>(object);
    if (!entry) return "is no dictionary"_ns;
    AudioComponentDescription& description = declaration.description;
    NSString problem = readCode(entry, "type"_ns, description.componentType);
    if (!problem) problem = readCode(entry, "subtype"_ns, description.componentSubType);
    if (!problem) problem = readCode(entry, "manufacturer"_ns, description.componentManufacturer);
    if (!problem) problem = readName(entry, declaration.name);
    if (!problem) problem = readVersion(entry, declaration.version);
    return problem;
}

} // namespace

long TessarinRegisterAudioComponentsOfBundle(NSString path, NSError* error) {
    if (!path) return fail(error, fileReadNoSuchFileError, "No path is given."_ns);
    if (!NSFileManager::defaultManager().fileExistsAtPath(path))
        return fail(error, fileReadNoSuchFileError, NSString::stringWithFormat("There is no %@."_ns, path));
    const NSString file = isFile(path) ? path : informationFileOfBundle(path);
    if (!file)
        return fail(
            error, fileReadNoSuchFileError,
            NSString::stringWithFormat("%@ holds neither Contents/Info.plist nor Info.plist."_ns, path));

    const NSData data = NSData::dataWithContentsOfFile(file);
    if (!data)
        return fail(error, fileReadUnknownError, NSString::stringWithFormat("%@ cannot be read."_ns, file));
    const NSObject propertyList = propertyListWithData(data);
    if (!propertyList)
        return fail(error, propertyListReadCorruptError,
                    NSString::stringWithFormat("%@ is no property list."_ns, file));
    const NSDictionary information = kindOf<NSDictionary>(propertyList);
    if (!information)
        return fail(error, fileReadCorruptFileError,
                    NSString::stringWithFormat("%@ holds no dictionary."_ns, file));
    const NSArray entries = kindOf<NSArray>(information.objectForKey("AudioComponents"_ns));
    if (!entries)
        return fail(error, fileReadCorruptFileError,
                    NSString::stringWithFormat("%@ has no array AudioComponents."_ns, file));

    // All are read before the first is registered: of a bundle with a faulty dictionary nothing is.
    std::vector<Declaration> declarations;
    for (const NSObject entry : entries) {
        Declaration& declaration = declarations.emplace_back();
        if (const NSString problem = read(entry, declaration))
            return fail(error, fileReadCorruptFileError,
                        NSString::stringWithFormat("%@: entry %lu of AudioComponents %@."_ns, file,
                                                   static_cast<unsigned long>(declarations.size()), problem));
    }
    for (const Declaration& declaration : declarations)
        AudioComponentRegister(&declaration.description, declaration.name, declaration.version, nullptr);
    return static_cast<long>(declarations.size());
}

} // namespace tessarin
