// Prints the session that the application of ../session_window keeps: a program in C++, on the library's own
// platform, reads what an application in Objective-C wrote.
//
//   session_state FILE

#include <TessarinFoundation/TessarinFoundation.h>
#include <TessarinPlatform/TessarinPlatform.h>

#include <cstdio>

using namespace tessarin;

namespace {

NSDictionary dictionaryOfFile(NSString path) {
    return kindOf<NSDictionary>(NSPropertyListSerialization::propertyListWithData_options_format_error(
        NSData::dataWithContentsOfFile(path), NSPropertyListImmutable, nullptr, nullptr));
}

// The object under a key where it is of that class, nil where it is not.
template <HandleType T>
T kept(NSDictionary contents, NSString key) {
    return kindOf<T>(contents.objectForKey(key));
}

double component(NSDictionary configuration, NSString key) {
    return as<NSNumber>(configuration.objectForKey(key)).doubleValue();
}

void printStreamFormat(NSArray numbers) {
    const AudioStreamBasicDescription format = TSSRASBDFromArray(numbers);
    std::printf("stream format  %g frames per second, %u channels, %u bits\n", format.mSampleRate,
                static_cast<unsigned>(format.mChannelsPerFrame),
                static_cast<unsigned>(format.mBitsPerChannel));
}

void printColor(NSDictionary configuration) {
    const NSDictionary shown = tessarin_configuration(tessarin_colorWithConfiguration(configuration));
    std::printf("color          hue %.0f, saturation %.0f, brightness %.0f, alpha %.0f\n",
                component(shown, "Hue"_ns), component(shown, "Saturation"_ns),
                component(shown, "Brightness"_ns), component(shown, "Alpha"_ns));
}

void printOrder(NSDictionary configuration) {
    const NSSortDescriptor order = tessarin_sortDescriptorWithConfiguration(configuration);
    std::printf("sorted by      %s, %s\n", std::string(order.key()).c_str(),
                order.ascending() ? "ascending" : "descending");
}

void print(NSDictionary session) {
    const auto effect = kept<NSString>(session, "effect"_ns);
    std::printf("effect         %s\n", effect ? std::string(effect).c_str() : "(none)");
    printStreamFormat(kept<NSArray>(session, "streamFormat"_ns));
    printColor(kept<NSDictionary>(session, "color"_ns));
    printOrder(kept<NSDictionary>(session, "order"_ns));
    std::printf("meters         %s\n",
                kept<NSNumber>(session, "meters"_ns).integerValue() == 1 ? "on" : "off");
    const auto corner = kept<NSArray>(session, "windowTopLeftPoint"_ns);
    std::printf("window         top left at %g, %g\n", as<NSNumber>(corner.firstObject()).doubleValue(),
                as<NSNumber>(corner.lastObject()).doubleValue());
}

} // namespace

int main(int count, char** words) {
    const AutoreleasePool pool;
    if (count != 2) {
        std::fprintf(stderr, "usage: session_state FILE\n");
        return 2;
    }
    int exitStatus = 1;
    attempt(
        [&] {
            if (const NSDictionary session = dictionaryOfFile(NSString(words[1]))) {
                print(session);
                exitStatus = 0;
            } else {
                std::fprintf(stderr, "session_state: %s keeps no session\n", words[1]);
            }
        },
        [&](NSException exception) {
            std::fprintf(stderr, "session_state: %s\n", std::string(exception.reason()).c_str());
        });
    return exitStatus;
}
