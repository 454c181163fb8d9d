// Writes property lists of every kind, and reads what other software made of them.
//
//   property_lists write <directory>   NAME.binary.plist, NAME.xml.plist, and NAME.txt with the plain form
//   property_lists record <directory>  the same without the large ones and the plain forms
//   property_lists show <file>...      the plain form of each file on a line, or the problem after "!"
#include "PropertyListTrees.h"

#include <filesystem>
#include <fstream>
#include <iostream>
#include <iterator>

using namespace tessarin;
using namespace tessarin::interop;

namespace {

std::string textOf(NSError error) {
    return static_cast<std::string>(NSString(error.userInfo().objectForKey(NSDebugDescriptionErrorKey())));
}

void writeTree(const PropertyListTree& tree, const std::filesystem::path& directory) {
    const AutoreleasePool pool;
    const auto writeAs = [&](NSPropertyListFormat format, const char* extension) {
        NSError error;
        const NSData document = NSPropertyListSerialization::dataWithPropertyList_format_options_error(
            tree.root, format, 0, &error);
        const std::string path = (directory / (tree.name + extension)).string();
        if (!document || !document.writeToFile_atomically(NSString(path), true))
            throw std::runtime_error("cannot write " + path + ": " + textOf(error));
    };
    writeAs(NSPropertyListBinaryFormat_v1_0, ".binary.plist");
    if (tree.hasXML) writeAs(NSPropertyListXMLFormat_v1_0, ".xml.plist");
}

void writePlainForm(const PropertyListTree& tree, const std::filesystem::path& directory) {
    std::ofstream(directory / (tree.name + ".txt")) << plainForm(tree.root) << '\n';
}

std::string shown(const char* path) {
    const AutoreleasePool pool;
    std::ifstream file(path, std::ios::binary);
    const std::string document{std::istreambuf_iterator<char>(file), {}};
    NSError error;
    const NSObject read = NSPropertyListSerialization::propertyListWithData_options_format_error(
        NSData::dataWithBytes_length(document.data(), document.size()), 0, nullptr, &error);
    return read ? plainForm(read) : "!" + textOf(error);
}

} // namespace

int main(int argumentCount, char** arguments) {
    const std::string command = argumentCount > 2 ? arguments[1] : "";
    const AutoreleasePool pool;
    if (command == "write" || command == "record") {
        std::filesystem::create_directories(arguments[2]);
        for (const PropertyListTree& tree : propertyListTrees()) {
            const bool isRecord = command == "record";
            if (isRecord && !tree.isRecorded) continue;
            writeTree(tree, arguments[2]);
            if (!isRecord) writePlainForm(tree, arguments[2]);
        }
    } else if (command == "show") {
        for (int index = 2; index < argumentCount; ++index) std::cout << shown(arguments[index]) << '\n';
    } else {
        std::cerr << "usage: property_lists write <directory> | record <directory> | show <file>...\n";
        return 2;
    }
}
