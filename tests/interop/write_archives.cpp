// Writes the archives of all samples, in both formats, into a directory.
#include "Archived.h"
#include "Samples.h"

#include <filesystem>
#include <iostream>

using namespace tessarin;
using namespace tessarin::interop;

int main(int argumentCount, char** arguments) {
    if (argumentCount != 2) {
        std::cerr << "usage: write_archives <directory>\n";
        return 2;
    }
    const std::filesystem::path directory = arguments[1];
    std::filesystem::create_directories(directory);
    for (const Sample& sample : samples())
        for (const ArchiveFormat& format : archiveFormats) {
            const AutoreleasePool pool;
            const std::string path = (directory / fileName(sample, format)).string();
            if (testing::archived(sample.make(), format.format).writeToFile_atomically(NSString(path), true))
                continue;
            std::cerr << "cannot write " << path << '\n';
            return 1;
        }
}
