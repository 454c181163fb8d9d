// Every operation on many threads at once: each keeps no state, so each thread finds what it would find
// alone.
#include "PlatformTest.h"

#include "TessarinFoundation/TessarinFoundation.h"
#include "TessarinPlatform/AudioComponent.h"

#include <array>
#include <atomic>
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

TEST_F(ConcurrentTest, ArraysAndDictionaries) {
    const Retained<NSArray> letters = retain(NSArray::arrayOf("a"_ns, "b"_ns, "a"_ns));
    const Retained<NSArray> added = retain(NSArray::arrayOf("b"_ns, "c"_ns));
    const Retained<NSDictionary> numbers = retain(NSDictionary::dictionaryWithObjects_forKeys(
        NSArray::arrayOf("2"_ns, "1"_ns), NSArray::arrayOf("b"_ns, "a"_ns)));
    const Retained<NSArray> dictionaries = retain(NSArray::arrayOf(NSDictionary::dictionary(), numbers));
    const auto joined = [](NSArray array) { return text(array.componentsJoinedByString(" "_ns)); };
    onManyThreads(300, [&] {
        std::string mistake;
        const auto expect = [&](NSArray found, const char* expected) {
            mistake += difference(joined(found), expected);
        };
        expect(tessarin_arrayWithArray_copyItems(letters, true), "a b a");
        expect(tessarin_arrayByMergingWithArray_receiverFirst(letters, added, true), "a b a c");
        expect(tessarin_arrayByRemovingObject(letters, "a"_ns), "b");
        expect(tessarin_arrayByRemovingObjectIdenticalTo(letters, "a"_ns), "b");
        expect(tessarin_arrayByRemovingObjectsInArray(letters, added), "a a");
        expect(tessarin_arrayWithObjectsPassingTest_options(
                   letters, [](NSString, NSUInteger index, BOOL*) { return index > 0 ? YES : NO; }, 0),
               "b a");
        if (tessarin_firstObject(letters) != "a"_ns) mistake += "another first object";
        if (tessarin_penultimeteObject(letters) != "b"_ns) mistake += "another last but one";
        if (!tessarin_containsObjectIdenticalTo(letters, "b"_ns)) mistake += "an object that is missing";
        if (tessarin_objectWithValue_forKeyPath(dictionaries, "1"_ns, "a"_ns) != numbers)
            mistake += "another object of the value";
        if (tessarin_indexesOfObjectsInArray(letters, NSArray::arrayOf("b"_ns, "a"_ns)).count() != 2)
            mistake += "other indexes";
        expect(tessarin_allValuesSortedByKeys(numbers), "1 2");
        expect(tessarin_dictionaryByRemovingObjectForKey(numbers, "a"_ns).allValues(), "2");
        return mistake;
    });
}

// Names that are new to all threads as well as known ones.
TEST_F(ConcurrentTest, LookUps) {
    constexpr unsigned callCount = 8 * 300, callsOfAName = 8;
    std::array<std::atomic<SEL>, callCount / callsOfAName> selectors{};
    std::atomic<unsigned> calls = 0;
    onManyThreads(300, [&] {
        const unsigned number = calls++ / callsOfAName;
        const std::string name = "concurrentLookUp" + std::to_string(number);
        const SEL selector = runtime::registerSelector(name.c_str());
        SEL first = nullptr;
        const bool isFirst = selectors[number].compare_exchange_strong(first, selector);
        return difference(runtime::selectorName(selector), name)
               + (isFirst || first == selector ? "" : "another selector of the same name")
               + (NSArray::array().respondsToSelector(selector) ? "a method of no class" : "")
               + (NSArray::array().respondsToSelector("count"_sel) ? "" : "no count")
               + (runtime::lookUpClass("NSMutableArray") == NSMutableArray::classObject().object()
                      ? ""
                      : "another class")
               + (runtime::lookUpClass(name.c_str()) ? "a class of no name" : "");
    });
    EXPECT_EQ(calls.load(), callCount);
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
