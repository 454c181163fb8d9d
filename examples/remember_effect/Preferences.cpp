#include "Preferences.h"

#include "FileSystem.h"
#include "Text.h"

#include <TessarinFoundation/TessarinFoundation.h>
#include <TessarinPlatform/TessarinPlatform.h>

#include <cmath>
#include <limits>

using namespace tessarin;

namespace {

constexpr NSUInteger streamFormatCount = 9;

NSString identifierKey() { return "effect"_ns; }
NSString streamFormatKey() { return "streamFormat"_ns; }

struct PropertyListFile {
    NSDictionary contents;
    NSPropertyListFormat format = NSPropertyListXMLFormat_v1_0;
};

PropertyListFile read(NSString path) {
    const NSFileManager manager = NSFileManager::defaultManager();
    if (isDirectory(path)) throw Failure(text(path) + " is a directory");
    if (!manager.fileExistsAtPath(path)) throw Failure("there is no preferences file " + text(path));
    const NSData data = manager.isReadableFileAtPath(path) ? NSData::dataWithContentsOfFile(path) : nil;
    if (!data) throw Failure(text(path) + " cannot be read");

    PropertyListFile file;
    // A platform's parser may raise for bytes that it did not foresee.
    file.contents = attempt(
        [&] {
            return kindOf<NSDictionary>(
                NSPropertyListSerialization::propertyListWithData_options_format_error(
                    data, NSPropertyListImmutable, &file.format, nullptr));
        },
        [](NSException) { return NSDictionary(); });
    if (!file.contents)
        throw Failure(text(path) + " is damaged: it is no property list that holds a dictionary");
    return file;
}

void write(const PropertyListFile& file, NSString path) {
    // Asked beforehand, since a platform may log a failed attempt to write in a line of its own.
    const NSFileManager manager = NSFileManager::defaultManager();
    const NSString parent = path.stringByDeletingLastPathComponent();
    const NSString directory = parent.length() == 0 ? "."_ns : parent;
    if (!isDirectory(directory)) throw Failure("there is no directory " + text(directory));
    if (!manager.isWritableFileAtPath(directory)
        || (manager.fileExistsAtPath(path) && !manager.isWritableFileAtPath(path)))
        throw Failure(text(path) + " cannot be written");

    // What can be read in the oldest format, which knows no numbers, is written in the newer text format.
    const NSPropertyListFormat format = file.format == NSPropertyListBinaryFormat_v1_0
                                            ? NSPropertyListBinaryFormat_v1_0
                                            : NSPropertyListXMLFormat_v1_0;
    NSError error;
    const NSData data = NSPropertyListSerialization::dataWithPropertyList_format_options_error(
        file.contents, format, 0, &error);
    if (!data || !data.writeToFile_atomically(path, true)) throw Failure(text(path) + " cannot be written");
}

bool isWholeUInt32(double number) {
    return number >= 0 && number <= std::numeric_limits<UInt32>::max() && number == std::trunc(number);
}

// TSSRASBDFromArray trusts its argument, and a file may hold anything.
void checkStreamFormat(NSArray array, const std::string& file) {
    if (!array) throw Failure(file + " keeps no array of numbers as the stream format");
    if (array.count() < streamFormatCount)
        throw Failure(file + " keeps a stream format of " + std::to_string(array.count())
                      + " numbers; it should be nine");
    for (NSUInteger index = 0; index < streamFormatCount; ++index) {
        const NSNumber number = kindOf<NSNumber>(array.objectAtIndex(index));
        const std::string position = "number " + std::to_string(index + 1) + " of the stream format";
        if (!number) throw Failure(file + ": " + position + " is no number");
        const double value = number.doubleValue();
        if (index == 0 ? !(std::isfinite(value) && value > 0) : !isWholeUInt32(value))
            throw Failure(file + ": " + position + " is out of range");
    }
}

} // namespace

void keepSelection(const std::string& file, const Selection& selection) {
    const NSString path = stringFromArgument(file);
    if (path.hasSuffix("/"_ns)) throw Failure(file + " names a directory");
    PropertyListFile preferences;
    if (NSFileManager::defaultManager().fileExistsAtPath(path)) preferences = read(path);

    const NSMutableDictionary contents = NSMutableDictionary::dictionary();
    contents.addEntriesFromDictionary(preferences.contents);
    contents.setObject_forKey(selection.identifier, identifierKey());
    contents.setObject_forKey(TSSRArrayFromASBD(selection.format), streamFormatKey());
    preferences.contents = contents;
    write(preferences, path);
}

Selection keptSelection(const std::string& file) {
    const NSDictionary contents = read(stringFromArgument(file)).contents;
    const NSString identifier = kindOf<NSString>(contents.objectForKey(identifierKey()));
    if (!identifier) throw Failure(file + " keeps no component");
    const NSArray streamFormat = kindOf<NSArray>(contents.objectForKey(streamFormatKey()));
    checkStreamFormat(streamFormat, file);
    return {identifier, TSSRASBDFromArray(streamFormat)};
}
