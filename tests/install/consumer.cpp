// An application outside the project, in C++. With an argument it also says which file it has the library
// from.
#include <TessarinFoundation/TessarinFoundation.h>
#include <TessarinPlatform/TessarinPlatform.h>

#include <fstream>
#include <iostream>
#include <string>

using namespace tessarin;

#if defined(CONSUMER_IS_NATIVE) != TESSARIN_PLATFORM_NATIVE
#    error "The package says the wrong platform"
#endif
#if defined(CONSUMER_IS_STATIC) != defined(TESSARIN_STATIC)
#    error "The package says the wrong kind of library"
#endif

namespace {

// The file of the library that the process has loaded, with every link on the way resolved.
void printLoadedLibrary() {
    std::ifstream maps("/proc/self/maps");
    std::string last;
    for (std::string line; std::getline(maps, line);) {
        const std::size_t name = line.find('/');
        if (name == std::string::npos
            || line.find("TessarinFoundation", line.rfind('/')) == std::string::npos)
            continue;
        if (line.substr(name) == last) continue;
        last = line.substr(name);
        std::cout << "loaded " << last << '\n';
    }
}

} // namespace

int main(int argumentCount, char**) {
    const AutoreleasePool pool;

    const AudioStreamBasicDescription format{44100, 0x6C70636D, 12, 4, 1, 4, 2, 16, 0};
    std::cout << TSSRArrayFromASBD(format).componentsJoinedByString(" "_ns) << '\n';
    const AudioComponentDescription delay{0x61756678, 0x64656C79, 0x41636D65, 0, 0};
    std::cout << TSSRIdentifierStringFromAudioComponentDescriptionAndManufacturer(delay, "Acme"_ns) << '\n';

    std::cout << tessarin_pathRelativeToDirectory("/Users/x/Music/a.wav"_ns, "/Users/x"_ns) << '\n';
    const NSArray letters = NSArray::arrayOf("a"_ns, "b"_ns, "a"_ns);
    std::cout << tessarin_arrayByMergingWithArray_receiverFirst(letters, NSArray::arrayOf("b"_ns, "c"_ns),
                                                                true)
                     .componentsJoinedByString(" "_ns)
              << '\n';

    const Retained<TSSRUniqueIndexer> indexer = adopt(TSSRUniqueIndexer::alloc().init());
    std::cout << indexer.registerIndex(0) << ' ' << indexer.registerIndex(NSNotFound) << '\n';

    // An exception of the platform on its way through this program's frames.
    std::cout << attempt([&] { return NSString(letters.objectAtIndex(3)); },
                         [](NSException exception) { return exception.name(); })
              << '\n';

    // What this program names only as text, so that no linker knows that it is used.
    std::cout << send<NSString>("Music/My Song"_ns, "tessarin_fileNameByReplacingIllegalCharacters"_sel)
              << '\n';
    std::cout << runtime::className(runtime::lookUpClass("TSSRTransformedValue")) << std::endl;

    if (argumentCount > 1) printLoadedLibrary();
    return 0;
}
