#include <TessarinFoundation/TessarinFoundation.h>
#include <TessarinPlatform/TessarinPlatform.h>

#include <iostream>

using namespace tessarin;

int main() {
    const AutoreleasePool pool;

    // A stream format (16-bit stereo in 'lpcm') as nine numbers, which any property list can hold, and back.
    const AudioStreamBasicDescription format{44100, 0x6C70636D, 12, 4, 1, 4, 2, 16, 0};
    const NSArray numbers = TSSRArrayFromASBD(format);
    std::cout << numbers.componentsJoinedByString(" "_ns) << '\n';        // 44100 1819304813 12 4 1 4 2 16 0
    std::cout << TSSRASBDFromArray(numbers).mBitsPerChannel << " bits\n"; // 16 bits

    // An effect's identity as one line.
    const AudioComponentDescription delay{0x61756678, 0x64656C79, 0x41636D65, 0, 0}; // 'aufx' 'dely' 'Acme'
    std::cout << TSSRIdentifierStringFromAudioComponentDescriptionAndManufacturer(delay, "Acme"_ns) << '\n';
    // Acme: aufx; dely; Acme

    // A path as seen from a folder.
    const NSString path = tessarin_pathRelativeToDirectory("/Users/x/Music/a.wav"_ns, "/Users/x"_ns);
    std::cout << path << '\n'; // Music/a.wav
}
