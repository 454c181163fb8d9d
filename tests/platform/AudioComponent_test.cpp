#include "PlatformTest.h"
#include "TemporaryFolder.h"

#include "TessarinPlatform/AudioComponent.h"

#include <filesystem>
#include <set>
#include <thread>

namespace tessarin::testing {
namespace {

namespace fs = std::filesystem;

constexpr OSType code(const char (&characters)[5]) {
    OSType result = 0;
    for (int index = 0; index < 4; ++index)
        result = result << 8 | static_cast<unsigned char>(characters[index]);
    return result;
}

// The registry keeps what is registered, so every test registers under a manufacturer of its own. The codes
// from here on need no escapes in XML.
OSType newManufacturer() {
    static OSType number = 0;
    ++number;
    return code("T000") + (number / 100 << 16) + (number / 10 % 10 << 8) + number % 10;
}

class AudioComponentTest : public PlatformTest {
protected:
    const OSType manufacturer = newManufacturer();

    AudioComponent add(OSType type, OSType subType, NSString name, UInt32 version = 1,
                       UInt32 flags = 0) const {
        const AudioComponentDescription description{type, subType, manufacturer, flags, 0};
        return AudioComponentRegister(&description, name, version, nullptr);
    }
    std::vector<AudioComponent> allFitting(const AudioComponentDescription& wanted) const {
        std::vector<AudioComponent> found;
        for (AudioComponent component = nullptr; (component = AudioComponentFindNext(component, &wanted));)
            found.push_back(component);
        return found;
    }
    UInt32 countFitting(OSType type, OSType subType, UInt32 flags = 0, UInt32 mask = 0) const {
        const AudioComponentDescription wanted{type, subType, manufacturer, flags, mask};
        EXPECT_EQ(allFitting(wanted).size(), AudioComponentCount(&wanted));
        return AudioComponentCount(&wanted);
    }
    static std::string nameOf(AudioComponent component) {
        NSString name;
        EXPECT_EQ(AudioComponentCopyName(component, &name), 0);
        const Retained<NSString> owned = adopt(name);
        return text(owned);
    }
    static UInt32 versionOf(AudioComponent component) {
        UInt32 version = 0xFFFFFFFF;
        EXPECT_EQ(AudioComponentGetVersion(component, &version), 0);
        return version;
    }
};

TEST_F(AudioComponentTest, KeepsTheDescription) {
    const AudioComponentDescription description{code("aufx"), code("dely"), manufacturer, 0x11, 0x22};
    const AudioComponent component = AudioComponentRegister(&description, "Acme: Delay"_ns, 0x10203, nullptr);
    ASSERT_TRUE(component);
    AudioComponentDescription kept{};
    ASSERT_EQ(AudioComponentGetDescription(component, &kept), 0);
    EXPECT_EQ(kept.componentType, code("aufx"));
    EXPECT_EQ(kept.componentSubType, code("dely"));
    EXPECT_EQ(kept.componentManufacturer, manufacturer);
    EXPECT_EQ(kept.componentFlags, 0x11u);
    EXPECT_EQ(nameOf(component), "Acme: Delay");
    EXPECT_EQ(versionOf(component), 0x10203u);
}

TEST_F(AudioComponentTest, RegistersNothingWithoutADescriptionOrAName) {
    EXPECT_FALSE(AudioComponentRegister(nullptr, "Acme: Delay"_ns, 1, nullptr));
    EXPECT_FALSE(add(code("aufx"), code("dely"), nil));
    EXPECT_EQ(countFitting(0, 0), 0u);
}

TEST_F(AudioComponentTest, CopiesTheName) {
    const NSMutableString name = NSMutableString::stringWithString("Acme: Delay"_ns);
    const AudioComponent component = add(code("aufx"), code("dely"), name);
    name.setString("Other: Name"_ns);
    EXPECT_EQ(nameOf(component), "Acme: Delay");
}

TEST_F(AudioComponentTest, TheCopiedNameBelongsToTheCaller) {
    const AudioComponent component =
        add(code("aufx"), code("dely"), NSString(std::string("Acme: a name of this test")));
    NSString first, second;
    ASSERT_EQ(AudioComponentCopyName(component, &first), 0);
    const Retained<NSString> owned = adopt(first);
    const NSInteger left =
        referencesLeftBy([&] { return AudioComponentCopyName(component, &second); }, owned);
    // The second may be the same string, with one reference more, or one of its own.
    EXPECT_EQ(left, second == owned ? 1 : 0);
    adopt(second).reset();
}

TEST_F(AudioComponentTest, CodesOfZeroFitAny) {
    add(code("aufx"), code("dely"), "Acme: Delay"_ns);
    add(code("aufx"), code("rvrb"), "Acme: Reverb"_ns);
    add(code("aumu"), code("orgn"), "Acme: Organ"_ns);
    EXPECT_EQ(countFitting(0, 0), 3u);
    EXPECT_EQ(countFitting(code("aufx"), 0), 2u);
    EXPECT_EQ(countFitting(code("aufx"), code("rvrb")), 1u);
    EXPECT_EQ(countFitting(0, code("orgn")), 1u);
    EXPECT_EQ(countFitting(code("aumu"), code("dely")), 0u);
    const AudioComponentDescription any{};
    EXPECT_GE(AudioComponentCount(&any), 3u);
}

TEST_F(AudioComponentTest, FlagsMustAgreeInTheBitsOfTheMask) {
    add(code("aufx"), code("dely"), "Acme: Delay"_ns, 1, 0b0110);
    EXPECT_EQ(countFitting(0, 0, 0b1001, 0b0000), 1u);
    EXPECT_EQ(countFitting(0, 0, 0b0010, 0b0010), 1u);
    EXPECT_EQ(countFitting(0, 0, 0b0110, 0b1111), 1u);
    EXPECT_EQ(countFitting(0, 0, 0b0000, 0b1000), 1u);
    EXPECT_EQ(countFitting(0, 0, 0b0000, 0b0010), 0u);
    EXPECT_EQ(countFitting(0, 0, 0b1000, 0b1000), 0u);
}

TEST_F(AudioComponentTest, ANullDescriptionFitsNone) {
    add(code("aufx"), code("dely"), "Acme: Delay"_ns);
    EXPECT_EQ(AudioComponentCount(nullptr), 0u);
    EXPECT_FALSE(AudioComponentFindNext(nullptr, nullptr));
}

TEST_F(AudioComponentTest, FindsEachOnceAndThenNone) {
    const AudioComponent first = add(code("aufx"), code("aaaa"), "Acme: A"_ns);
    const AudioComponent second = add(code("aufx"), code("bbbb"), "Acme: B"_ns);
    add(code("aumu"), code("cccc"), "Acme: C"_ns);
    const AudioComponentDescription wanted{code("aufx"), 0, manufacturer, 0, 0};
    EXPECT_EQ(allFitting(wanted), (std::vector{first, second}));
    EXPECT_FALSE(AudioComponentFindNext(second, &wanted));
}

TEST_F(AudioComponentTest, FindsTheHigherVersionFirst) {
    const AudioComponent two = add(code("aufx"), code("dely"), "Acme: Delay 2"_ns, 2);
    const AudioComponent ten = add(code("aufx"), code("dely"), "Acme: Delay 10"_ns, 10);
    const AudioComponent one = add(code("aufx"), code("dely"), "Acme: Delay 1"_ns, 1);
    const AudioComponentDescription wanted{code("aufx"), code("dely"), manufacturer, 0, 0};
    EXPECT_EQ(allFitting(wanted), (std::vector{ten, two, one}));
}

TEST_F(AudioComponentTest, OfEqualVersionsFindsTheFirstRegisteredFirst) {
    const AudioComponent first = add(code("aufx"), code("dely"), "Acme: First"_ns);
    const AudioComponent second = add(code("aufx"), code("dely"), "Acme: Second"_ns);
    EXPECT_NE(first, second);
    const AudioComponentDescription wanted{code("aufx"), code("dely"), manufacturer, 0, 0};
    EXPECT_EQ(allFitting(wanted), (std::vector{first, second}));
}

TEST_F(AudioComponentTest, NullArgumentsAreParameterErrors) {
    constexpr OSStatus parameterError = -50;
    const AudioComponent component = add(code("aufx"), code("dely"), "Acme: Delay"_ns);
    AudioComponentDescription description{};
    NSString name = "untouched"_ns;
    UInt32 version = 7;
    EXPECT_EQ(AudioComponentGetDescription(nullptr, &description), parameterError);
    EXPECT_EQ(AudioComponentGetDescription(component, nullptr), parameterError);
    EXPECT_EQ(AudioComponentCopyName(nullptr, &name), parameterError);
    EXPECT_EQ(AudioComponentCopyName(component, nullptr), parameterError);
    EXPECT_EQ(AudioComponentGetVersion(nullptr, &version), parameterError);
    EXPECT_EQ(AudioComponentGetVersion(component, nullptr), parameterError);
    EXPECT_EQ(text(name), "untouched");
    EXPECT_EQ(version, 7u);
}

// ---- Bundles

class AudioComponentBundleTest : public AudioComponentTest {
protected:
    const TemporaryFolder folder;
    const fs::path bundle = folder.path() / "Acme.component";
    AudioComponentBundleTest() { fs::create_directories(bundle / "Contents"); }

    std::string manufacturerText() const {
        std::string result;
        for (int shift = 24; shift >= 0; shift -= 8)
            result += static_cast<char>(manufacturer >> shift & 0xFF);
        return result;
    }
    // The dictionary of one component in XML; a value of "" leaves its key out.
    std::string component(const std::string& type, const std::string& subtype, const std::string& name,
                          const std::string& version = "<integer>65536</integer>") const {
        const auto entry = [](const std::string& key, const std::string& value) {
            return value.empty() ? "" : "<key>" + key + "</key>" + value;
        };
        return "<dict>" + entry("type", type) + entry("subtype", subtype)
               + entry("manufacturer", "<string>" + manufacturerText() + "</string>") + entry("name", name)
               + entry("version", version) + "</dict>";
    }
    std::string delay() const {
        return component("<string>aufx</string>", "<string>dely</string>", "<string>Acme: Delay</string>");
    }
    static std::string propertyList(const std::string& root) {
        return "<?xml version=\"1.0\" encoding=\"UTF-8\"?>\n"
               "<!DOCTYPE plist PUBLIC \"-//Apple//DTD PLIST 1.0//EN\" "
               "\"http://www.apple.com/DTDs/PropertyList-1.0.dtd\">\n<plist version=\"1.0\">"
               + root + "</plist>\n";
    }
    static std::string information(const std::string& components) {
        return propertyList("<dict><key>CFBundleName</key><string>Test</string><key>AudioComponents</key>"
                            + components + "</dict>");
    }
    void write(const std::string& name, const std::string& contents) const {
        folder.write(bundle / name, contents);
    }
    static long registerBundle(const fs::path& path) {
        NSError error;
        const long count = TessarinRegisterAudioComponentsOfBundle(NSString(path.string()), &error);
        EXPECT_FALSE(error) << text(error.localizedDescription());
        return count;
    }
    // That a file is refused with an error and registers nothing.
    void expectRefused(const std::string& contents) {
        write("Contents/Info.plist", contents);
        expectRefusedAt(NSString(bundle.string()));
    }
    void expectRefusedAt(NSString path) {
        NSError error;
        EXPECT_EQ(TessarinRegisterAudioComponentsOfBundle(path, &error), -1);
        ASSERT_TRUE(error);
        EXPECT_EQ(text(error.domain()), "NSCocoaErrorDomain");
        EXPECT_TRUE(as<NSString>(error.userInfo().objectForKey(NSLocalizedDescriptionKey())).length() > 0);
        EXPECT_EQ(TessarinRegisterAudioComponentsOfBundle(path, nullptr), -1);
        EXPECT_EQ(countFitting(0, 0), 0u);
    }
};

TEST_F(AudioComponentBundleTest, RegistersWhatTheBundleDeclares) {
    write("Contents/Info.plist", information("<array>" + delay()
                                             + component("<string>aumu</string>", "<string>orgn</string>",
                                                         "<string>Acme: \u00d6rgan</string>")
                                             + "</array>"));
    EXPECT_EQ(registerBundle(bundle), 2);
    const AudioComponentDescription wanted{code("aumu"), code("orgn"), manufacturer, 0, 0};
    const AudioComponent organ = AudioComponentFindNext(nullptr, &wanted);
    ASSERT_TRUE(organ);
    EXPECT_EQ(nameOf(organ), "Acme: Örgan");
    EXPECT_EQ(versionOf(organ), 65536u);
    EXPECT_EQ(countFitting(0, 0), 2u);
}

TEST_F(AudioComponentBundleTest, FindsTheFileAtTheTopOfTheBundle) {
    write("Info.plist", information("<array>" + delay() + "</array>"));
    EXPECT_EQ(registerBundle(bundle), 1);
}

TEST_F(AudioComponentBundleTest, TakesTheFileItself) {
    write("Contents/Info.plist", information("<array>" + delay() + "</array>"));
    EXPECT_EQ(registerBundle(bundle / "Contents/Info.plist"), 1);
}

TEST_F(AudioComponentBundleTest, ReadsABinaryPropertyList) {
    const NSArray values =
        NSArray::arrayOf("aufx"_ns, "dely"_ns, NSString(manufacturerText()), "Acme: Delay"_ns);
    const NSDictionary declared = NSDictionary::dictionaryWithObjects_forKeys(
        values, NSArray::arrayOf("type"_ns, "subtype"_ns, "manufacturer"_ns, "name"_ns));
    const NSData data = NSPropertyListSerialization::dataWithPropertyList_format_options_error(
        NSDictionary::dictionaryWithObject_forKey(NSArray::arrayOf(declared), "AudioComponents"_ns),
        NSPropertyListBinaryFormat_v1_0, 0, nullptr);
    write("Contents/Info.plist", {static_cast<const char*>(data.bytes()), data.length()});
    EXPECT_EQ(registerBundle(bundle), 1);
}

TEST_F(AudioComponentBundleTest, AMissingVersionIsZero) {
    write("Contents/Info.plist", information("<array>"
                                             + component("<string>aufx</string>", "<string>dely</string>",
                                                         "<string>Acme: Delay</string>", "")
                                             + "</array>"));
    EXPECT_EQ(registerBundle(bundle), 1);
    const AudioComponentDescription wanted{0, 0, manufacturer, 0, 0};
    EXPECT_EQ(versionOf(AudioComponentFindNext(nullptr, &wanted)), 0u);
}

TEST_F(AudioComponentBundleTest, AnEmptyArrayRegistersNothing) {
    write("Contents/Info.plist", information("<array/>"));
    EXPECT_EQ(registerBundle(bundle), 0);
}

TEST_F(AudioComponentBundleTest, RefusesAMissingFile) {
    expectRefusedAt(NSString(bundle.string()));
    expectRefusedAt(NSString((bundle / "nowhere").string()));
    expectRefusedAt(nil);
    expectRefusedAt(""_ns);
}

TEST_F(AudioComponentBundleTest, RefusesDamagedFiles) {
    const std::string whole = information("<array>" + delay() + "</array>");
    expectRefused("");
    expectRefused(whole.substr(0, whole.size() / 2));
    expectRefused("bplist00 and nothing more");
}

TEST_F(AudioComponentBundleTest, RefusesARootThatIsNoDictionary) {
    expectRefused(propertyList("<array>" + delay() + "</array>"));
}

TEST_F(AudioComponentBundleTest, RefusesAFileWithoutComponents) {
    expectRefused(propertyList("<dict><key>CFBundleName</key><string>Test</string></dict>"));
}

TEST_F(AudioComponentBundleTest, RefusesComponentsThatAreNoArray) { expectRefused(information(delay())); }

TEST_F(AudioComponentBundleTest, RefusesAComponentThatIsNoDictionary) {
    expectRefused(information("<array>" + delay() + "<string>aufx</string></array>"));
}

TEST_F(AudioComponentBundleTest, RefusesCodesThatAreNotFourCharacters) {
    const std::string name = "<string>Acme: Delay</string>";
    for (const std::string bad : {"<string>auf</string>", "<string>aufxx</string>", "<string></string>",
                                  "<string>auf\u0100</string>", "<integer>1635083896</integer>", ""}) {
        expectRefused(
            information("<array>" + delay() + component(bad, "<string>dely</string>", name) + "</array>"));
        expectRefused(
            information("<array>" + delay() + component("<string>aufx</string>", bad, name) + "</array>"));
    }
}

TEST_F(AudioComponentBundleTest, RefusesAMissingManufacturer) {
    expectRefused(information("<array>" + delay()
                              + "<dict><key>type</key><string>aufx</string><key>subtype</key>"
                                "<string>dely</string><key>name</key><string>Delay</string></dict></array>"));
}

TEST_F(AudioComponentBundleTest, RefusesANameThatIsMissingOrNoString) {
    for (const std::string bad : {"", "<integer>1</integer>"})
        expectRefused(information("<array>" + delay()
                                  + component("<string>aufx</string>", "<string>dely</string>", bad)
                                  + "</array>"));
}

TEST_F(AudioComponentBundleTest, RefusesAVersionThatIsNoNumber) {
    expectRefused(information("<array>" + delay()
                              + component("<string>aufx</string>", "<string>dely</string>",
                                          "<string>Acme: Delay</string>", "<string>1.0</string>")
                              + "</array>"));
}

// ---- Many threads

using AudioComponentConcurrentTest = AudioComponentTest;

TEST_F(AudioComponentConcurrentTest, RegistersFindsAndCountsAtTheSameTime) {
    constexpr int threadCount = 8, perThread = 100;
    const AudioComponentDescription wanted{0, 0, manufacturer, 0, 0};
    std::vector<std::thread> threads;
    for (int thread = 0; thread < threadCount; ++thread)
        threads.emplace_back([&, thread] {
            for (int index = 0; index < perThread; ++index) {
                const AutoreleasePool pool;
                const auto version = static_cast<UInt32>(thread * perThread + index);
                const AudioComponent component = add(code("aufx"), code("dely"), "Acme: Delay"_ns, version);
                ASSERT_EQ(versionOf(component), version);
                ASSERT_EQ(nameOf(component), "Acme: Delay");
                ASSERT_GE(AudioComponentCount(&wanted), static_cast<UInt32>(index + 1));
                ASSERT_TRUE(AudioComponentFindNext(nullptr, &wanted));
                AudioComponentFindNext(component, &wanted);
            }
        });
    for (std::thread& thread : threads) thread.join();
    EXPECT_EQ(AudioComponentCount(&wanted), static_cast<UInt32>(threadCount * perThread));
    const std::vector<AudioComponent> found = allFitting(wanted);
    EXPECT_EQ(std::set<AudioComponent>(found.begin(), found.end()).size(), found.size());
    for (std::size_t index = 1; index < found.size(); ++index)
        EXPECT_GT(versionOf(found[index - 1]), versionOf(found[index]));
}

} // namespace
} // namespace tessarin::testing
