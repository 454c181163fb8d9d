// Every operation on many threads at once: each keeps no state, so each thread finds what it would find
// alone.
#include "ManyThreads.h"

#include "TessarinFoundation/TessarinFoundation.h"
#include "TessarinPlatform/AudioComponent.h"

#include <algorithm>
#include <array>
#include <atomic>
#include <set>

namespace tessarin::testing {
namespace {

class ConcurrentTest : public PlatformTest {
protected:
    static NSArray numbersUpTo(NSUInteger count) {
        const NSMutableArray numbers = NSMutableArray::array();
        for (NSUInteger number = 0; number < count; ++number)
            numbers.addObject(NSNumber::numberWithUnsignedInteger(number));
        return adopt(NSArray(numbers.copy())).autorelease();
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

TEST_F(ConcurrentTest, AttributedStrings) {
    const Retained<NSString> string = retain(NSString(std::string("Gain")));
    const Retained<NSDictionary> bold =
        retain(NSDictionary::dictionaryWithObject_forKey("bold"_ns, "weight"_ns));
    const Retained<NSAttributedString> shared =
        retain(tessarin_attributedStringWithString_attributes(string, bold));
    onManyThreads(300, [&] {
        const NSAttributedString made = tessarin_attributedStringWithString_attributes(string, bold);
        std::string mistake = difference(text(made.string()), "Gain");
        NSRange range{};
        if (!shared.attributesAtIndex_effectiveRange(2, &range).isEqual(bold)) mistake += "other attributes ";
        if (range != NSRange{0, 4}) mistake += "another range ";
        if (!made.isEqual(shared)) mistake += "another string ";
        return mistake;
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

TEST_F(ConcurrentTest, PredicatesOfConcurrentWalks) {
    const NSArray numbers = numbersUpTo(20'000);
    const auto passes = [](NSNumber number, NSUInteger index, BOOL*) {
        return number.unsignedIntegerValue() == index && index % 7 == 3 ? YES : NO;
    };
    const NSArray expected = tessarin_arrayWithObjectsPassingTest_options(numbers, passes, 0);
    EXPECT_EQ(expected.count(), 2857u);
    onManyThreads(3, [&]() -> std::string {
        const NSArray passed =
            tessarin_arrayWithObjectsPassingTest_options(numbers, passes, NSEnumerationConcurrent);
        return passed.isEqual(expected) ? "" : std::to_string(passed.count()) + " objects";
    });
}

TEST_F(ConcurrentTest, ThePredicatesExceptionReachesTheCallerOnce) {
    const NSArray numbers = numbersUpTo(20'000);
    std::atomic<int> raised = 0;
    bool isAnswered = false;
    std::vector<std::string> reasons;
    attempt(
        [&] {
            tessarin_arrayWithObjectsPassingTest_options(
                numbers,
                [&](id, NSUInteger index, BOOL*) {
                    if (index % 1'000 == 999) {
                        ++raised;
                        raise(NSGenericException(), "on purpose"_ns);
                    }
                    return NO;
                },
                NSEnumerationConcurrent);
            isAnswered = true;
        },
        [&](NSException exception) { reasons.push_back(text(exception.reason())); });
    EXPECT_GE(raised, 1);
    EXPECT_FALSE(isAnswered);
    EXPECT_EQ(reasons, std::vector<std::string>{"on purpose"});
}

// Each thread has an array of its own; what they share is the generator.
TEST_F(ConcurrentTest, ArraysThatAreShuffled) {
    const Retained<NSArray> numbers = retain(numbersUpTo(1'000));
    std::array<Texts, threadCount> orders;
    onManyThreads([&](int thread) {
        const NSMutableArray own = NSMutableArray::array();
        own.addObjectsFromArray(numbers);
        for (int round = 0; round < 20; ++round) tessarin_shuffle(own);
        orders[static_cast<std::size_t>(thread)] = texts(own);
    });
    EXPECT_EQ(std::set<Texts>(orders.begin(), orders.end()).size(), orders.size());
    Texts sorted = texts(numbers);
    std::ranges::sort(sorted);
    for (Texts& order : orders) {
        std::ranges::sort(order);
        EXPECT_EQ(order, sorted);
    }
}

TEST_F(ConcurrentTest, CopiesOfPropertyLists) {
    const Retained<NSArray> names = retain(NSArray::arrayOf("a"_ns, "b"_ns));
    const Retained<NSDictionary> original =
        retain(NSDictionary::dictionaryWithObject_forKey(names, "names"_ns));
    onManyThreads(300, [&]() -> std::string {
        const NSMutableDictionary copy =
            as<NSMutableDictionary>(tessarin_propertyListWithMutableContainers_error(original, nullptr));
        if (!copy.isEqual(original)) return "another property list";
        as<NSMutableArray>(copy.objectForKey("names"_ns)).addObject("c"_ns);
        return copy.isEqual(original) ? "an array in common" : "";
    });
    EXPECT_EQ(texts(names), (Texts{"a", "b"}));
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

TEST_F(ConcurrentTest, ParameterDescriptions) {
    const Retained<NSString> unitName = retain(NSString(std::string("beats")));
    const Retained<NSString> name = retain(NSString(std::string("Delay")));
    AudioUnitParameterInfo information{};
    information.unitName = unitName;
    information.clumpID = 3;
    information.cfNameString = name;
    information.unit = 13;
    information.minValue = -96.0f;
    information.maxValue = 12.0f;
    information.defaultValue = 0.5f;
    information.flags = 0xC0000000;
    const Retained<NSArray> written = retain(TSSRArrayFromAudioUnitParameterInfo(information));
    // The reader has an order of its own, with the two exchanged.
    const Retained<NSMutableArray> kept = adopt(NSMutableArray::alloc().init());
    kept.addObjectsFromArray(written);
    kept.exchangeObjectAtIndex_withObjectAtIndex(1, 2);
    onManyThreads(300, [&] {
        std::string mistake;
        if (!TSSRArrayFromAudioUnitParameterInfo(information).isEqual(written)) mistake += "another array ";
        const AudioUnitParameterInfo read = TSSRAudioUnitParameterInfoFromArray(kept);
        const Retained<NSString> readUnitName = adopt(read.unitName), readName = adopt(read.cfNameString);
        if (read.unitName != unitName || read.cfNameString != name) mistake += "another name ";
        if (read.clumpID != 3 || read.unit != 13 || read.flags != 0xC0000000) mistake += "another code ";
        if (read.minValue != -96.0f || read.maxValue != 12.0f || read.defaultValue != 0.5f)
            mistake += "another value ";
        return mistake;
    });
}

} // namespace
} // namespace tessarin::testing
