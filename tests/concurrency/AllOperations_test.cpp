// Every operation on many threads at once: each keeps no state, so each thread finds what it would find
// alone.
#include "PlatformTest.h"

#include "TessarinFoundation/TessarinFoundation.h"
#include "TessarinPlatform/AudioComponent.h"

#include <functional>
#include <thread>

namespace tessarin::testing {
namespace {

class ConcurrentTest : public PlatformTest {
protected:
    // Runs `work` on several threads at once, each time in a pool of its own; `work` answers what went wrong,
    // if anything.
    static void onManyThreads(int rounds, const std::function<std::string()>& work) {
        constexpr int threadCount = 8;
        std::vector<std::string> mistakes(threadCount);
        std::vector<std::thread> threads;
        for (std::string& mistake : mistakes)
            threads.emplace_back([&, rounds] {
                for (int round = 0; round < rounds && mistake.empty(); ++round) {
                    const AutoreleasePool pool;
                    mistake = work();
                }
            });
        for (std::thread& thread : threads) thread.join();
        for (const std::string& mistake : mistakes) EXPECT_EQ(mistake, "");
    }
    static std::string difference(const std::string& found, const std::string& expected) {
        return found == expected ? "" : "found " + found + " instead of " + expected;
    }
};

TEST_F(ConcurrentTest, PathsOfSharedStrings) {
    const Retained<NSString> path = retain(NSString(std::string("/Users/x/Music/a.wav")));
    const Retained<NSString> directory = retain(NSString(std::string("/users/X/Samples")));
    const Retained<NSArray> paths = retain(NSArray::arrayOf(path, NSString(std::string("/Users/x/y"))));
    onManyThreads(500, [&] {
        return difference(text(tessarin_pathRelativeToDirectory(path, directory)), "../Music/a.wav")
               + difference(text(tessarin_parentDirectoryForPaths(paths)), "/Users/x");
    });
}

TEST_F(ConcurrentTest, ExceptionsOnEveryThread) {
    onManyThreads(200, [] {
        return difference(thrownName([] { return tessarin_pathRelativeToDirectory("/A/b/c"_ns, "/a/b"_ns); }),
                          "NSRangeException");
    });
}

TEST_F(ConcurrentTest, KeyPathsTrimmingURLsAndFileManagers) {
    const Retained<NSCharacterSet> slash = retain(NSCharacterSet::characterSetWithCharactersInString("/"_ns));
    const Retained<NSURL> base = retain(NSURL::fileURLWithPath("/nowhere/x"_ns));
    const std::string expected = text(NSURL::fileURLWithPath("y/z"_ns).path());
    onManyThreads(300, [&] {
        const NSURL url = NSURL::fileURLWithPath("/nowhere/x/y/z"_ns);
        return difference(text(tessarin_keyPathWithComponents("a"_ns, "b"_ns)), "a.b")
               + difference(text(tessarin_stringByTrimmingLeadingCharactersInSet("//a"_ns, slash)), "a")
               + difference(text(tessarin_fileURLRelativeToFileURL(url, base).path()), expected)
               + (tessarin_fileManager() == NSFileManager::defaultManager() ? "the shared manager" : "");
    });
}

TEST_F(ConcurrentTest, SizesAndDurations) {
    const Retained<NSNumber> size = retain(NSNumber::numberWithUnsignedLongLong(1536));
    onManyThreads(300, [&] {
        return difference(text(tessarin_stringWithFileSize_ofUnit_forPrecision_longUnit_separateSuffix(
                              size, 65535, 1, false, true)),
                          "1.5 kB")
               + difference(text(tessarin_timeStringWithSeconds(61)), "1 : 01")
               + difference(text(tessarin_timeStringWithSeconds<NSMutableString>(3661)), "1 : 01 : 01");
    });
}

TEST_F(ConcurrentTest, Colors) {
    const Retained<NSColor> shared =
        retain(NSColor::colorWithCalibratedHue_saturation_brightness_alpha(0.25, 0.5, 0.75, 1));
    const Retained<NSDictionary> configuration = retain(tessarin_configuration(shared));
    onManyThreads(300, [&] {
        const NSColor red = tessarin_colorWithHexadecimalRGBAString("0xFF0000FF"_ns);
        const NSColor read = tessarin_colorWithConfiguration(configuration);
        return difference(text(tessarin_hexadecimalRGBStringWithAlpha(red, true)), "FF0000FF")
               + difference(text(tessarin_hexadecimalRGBStringWithAlpha(shared, false)), "8FBF5F")
               + difference(text(tessarin_hexadecimalRGBStringWithAlpha(
                                NSColor::colorWithDeviceWhite_alpha(1, 1), false)),
                            "FFFFFF")
               + (read.hueComponent() == 0.25 ? "" : "another hue")
               + (tessarin_configuration(read).isEqual(configuration) ? "" : "another configuration");
    });
}

TEST_F(ConcurrentTest, AudioDescriptionsAndComponents) {
    const AudioComponentDescription description{0x61756678, 0x636F6E63, 0x54535430, 0, 0};
    const AudioStreamBasicDescription format{44100.0, 0x6C70636D, 9, 8, 1, 8, 2, 32, 0};
    const Retained<NSArray> kept = retain(TSSRArrayFromASBD(format));
    const UInt32 before = AudioComponentCount(&description);
    onManyThreads(200, [&] {
        std::string mistake;
        const AudioComponent component = AudioComponentRegister(&description, "Acme: Delay"_ns, 1, nullptr);
        NSString manufacturer;
        mistake += difference(text(TSSRGetAudioComponentName(component, &manufacturer)), "Delay");
        const NSString line =
            TSSRIdentifierStringFromAudioComponentDescriptionAndManufacturer(description, manufacturer);
        adopt(manufacturer).reset();
        mistake += difference(text(line), "Acme: aufx; conc; TST0");
        const AudioComponentDescription read =
            TSSRAudioComponentDescriptionFromIdentifierString(line, nullptr);
        if (!TSSREqualAudioComponentDescriptions(read, description)) mistake += "another description";
        if (TSSRASBDFromArray(kept).mSampleRate != 44100.0) mistake += "another sample rate";
        if (!TSSRArrayFromASBD(format).isEqual(kept)) mistake += "another array";
        return mistake;
    });
    EXPECT_EQ(AudioComponentCount(&description), before + 8 * 200);
}

} // namespace
} // namespace tessarin::testing
