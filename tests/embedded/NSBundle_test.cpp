// Bundles of the embedded platform: where they lie, and the languages of their texts.
#include "Environment.h"
#include "PlatformTest.h"
#include "TemporaryFolder.h"

#include "TessarinFoundation/NSArray+TessarinExtensions.h"
#include "platform/embedded/foundation/BundleFolders.h"
#include "platform/embedded/foundation/UserLanguages.h"

#include <deque>
#include <map>

namespace tessarin::testing {
namespace {

namespace fs = std::filesystem;

// The environment's languages while it exists; those that are not named are not set.
class LanguageEnvironment {
public:
    explicit LanguageEnvironment(const std::map<std::string, std::string>& values) {
        for (const char* name : {"LANGUAGE", "LC_ALL", "LC_MESSAGES", "LANG"}) {
            const auto found = values.find(name);
            variables_.emplace_back(name, found == values.end() ? std::nullopt
                                                                : std::optional<std::string>(found->second));
        }
    }

private:
    std::deque<EnvironmentVariable> variables_;
};

std::vector<std::string> languagesIn(const std::map<std::string, std::string>& environment) {
    const LanguageEnvironment set(environment);
    return embedded::userLanguages();
}

using Languages = std::vector<std::string>;

TEST(UserLanguagesTest, AreThoseOfTheLocale) {
    EXPECT_EQ(languagesIn({{"LANG", "de_AT.UTF-8@euro"}}), (Languages{"de_AT", "de-AT", "de", "en"}));
    EXPECT_EQ(languagesIn({{"LANG", "de_DE"}, {"LC_MESSAGES", "fr"}}), (Languages{"fr", "en"}));
    EXPECT_EQ(languagesIn({{"LC_MESSAGES", "fr"}, {"LC_ALL", "it"}}), (Languages{"it", "en"}));
    EXPECT_EQ(languagesIn({{"LANG", "de"}, {"LC_ALL", ""}}), (Languages{"de", "en"}));
}

TEST(UserLanguagesTest, AreFirstThoseOfTheList) {
    EXPECT_EQ(languagesIn({{"LANG", "de"}, {"LANGUAGE", "fr::it_IT:en"}}),
              (Languages{"fr", "it_IT", "it-IT", "it", "en", "de"}));
}

TEST(UserLanguagesTest, AreEnglishInThePlainLocale) {
    EXPECT_EQ(languagesIn({}), Languages{"en"});
    EXPECT_EQ(languagesIn({{"LANG", "C.UTF-8"}, {"LANGUAGE", "de"}}), Languages{"en"});
    EXPECT_EQ(languagesIn({{"LC_ALL", "POSIX"}, {"LANG", "de"}}), Languages{"en"});
}

TEST(BundleFoldersTest, AreFoundFromTheBinary) {
    const TemporaryFolder folder;
    folder.write("beside/Resources/readme", "");
    folder.write("above/Resources/readme", "");
    const auto bundle = [&](const char* binary) {
        return embedded::bundleFolderOfBinary(folder.path() / binary).lexically_relative(folder.path());
    };
    EXPECT_EQ(bundle("A.framework/Versions/A/A"), "A.framework");
    EXPECT_EQ(bundle("A.framework/A"), "A.framework");
    EXPECT_EQ(bundle("B.app/Contents/MacOS/B"), "B.app");
    EXPECT_EQ(bundle("B.app/B"), "B.app");
    EXPECT_EQ(bundle("B.app/Contents/Frameworks/A.framework/Versions/A/A"),
              "B.app/Contents/Frameworks/A.framework");
    EXPECT_EQ(bundle("beside/program"), "beside");
    EXPECT_EQ(bundle("above/bin/program"), "above");
    EXPECT_EQ(bundle("plain/bin/program"), "plain/bin");
}

TEST(BundleFoldersTest, HoldTheirResources) {
    const TemporaryFolder folder;
    for (const char* file : {"A.framework/Versions/Current/Resources/x", "B.app/Contents/Resources/x",
                             "C.app/Resources/x", "D.bundle/x"})
        folder.write(file, "");
    const auto resources = [&](const char* bundle) {
        return embedded::resourceFolderOfBundle(folder.path() / bundle).lexically_relative(folder.path());
    };
    EXPECT_EQ(resources("A.framework"), "A.framework/Versions/Current/Resources");
    EXPECT_EQ(resources("B.app"), "B.app/Contents/Resources");
    EXPECT_EQ(resources("C.app"), "C.app/Resources");
    EXPECT_EQ(resources("D.bundle"), "D.bundle");
}

TEST(BundleFoldersTest, TheBinaryOfAnAddressIsTheOneThatHoldsIt) {
    const fs::path program = testProgram();
    EXPECT_EQ(embedded::binaryOfAddress(nullptr), program);
    EXPECT_EQ(embedded::binaryOfAddress(reinterpret_cast<const void*>(&languagesIn)), program);
    EXPECT_NE(embedded::binaryOfAddress(reinterpret_cast<const void*>(&::getenv)), program);
}

class BundleLanguagesTest : public PlatformTest {
protected:
    // What a bundle has for the key "k", its files' texts being the names of their folders.
    static std::string textIn(const char* language, std::initializer_list<const char*> folders) {
        const TemporaryFolder folder;
        for (const std::string each : folders)
            folder.write("Resources/" + each + "/Localizable.strings", "k = \"" + each + "\";");
        const LanguageEnvironment set(std::map<std::string, std::string>{{"LANG", language}});
        return text(NSBundle::bundleWithPath(NSString(folder.path().string()))
                        .localizedStringForKey_value_table("k"_ns, nil, nil));
    }
};

TEST_F(BundleLanguagesTest, TheFirstLanguageThatIsThereCounts) {
    EXPECT_EQ(textIn("de_AT", {"de.lproj", "en.lproj", "."}), "de.lproj");
    EXPECT_EQ(textIn("de_AT", {"de.lproj", "de_AT.lproj"}), "de_AT.lproj");
    EXPECT_EQ(textIn("fr", {"de.lproj", "en.lproj", "."}), "en.lproj");
    EXPECT_EQ(textIn("fr", {"de.lproj", "."}), ".");
    EXPECT_EQ(textIn("fr", {"de.lproj"}), "k");
}

TEST_F(BundleLanguagesTest, ADamagedFileIsNone) {
    const TemporaryFolder folder;
    folder.write("Resources/en.lproj/Localizable.strings", "k = ");
    folder.write("Resources/Localizable.strings", "k = \"plain\";");
    EXPECT_EQ(text(NSBundle::bundleWithPath(NSString(folder.path().string()))
                       .localizedStringForKey_value_table("k"_ns, nil, nil)),
              "plain");
}

TEST_F(BundleLanguagesTest, ATableWhoseNameNoFileCanHaveIsNone) {
    const TemporaryFolder folder;
    folder.write(u8"Resources/\uFFFD.strings", "k = \"of the replacement character\";");
    const NSBundle bundle = NSBundle::bundleWithPath(NSString(folder.path().string()));
    const auto textIn = [&](const std::u16string& table) {
        return text(bundle.localizedStringForKey_value_table("k"_ns, nil, NSString(table)));
    };
    EXPECT_EQ(textIn(u"\uFFFD"), "of the replacement character");
    EXPECT_EQ(textIn({0xD800}), "k"); // a surrogate without its other half
}

// This program holds the platform itself, so that its folder is that of the array's class.
TEST_F(BundleLanguagesTest, TheReasonOfAnObjectThatIsNotContainedIsATextOfTheBundle) {
    const fs::path resources = testProgram().parent_path() / "Resources";
    fs::create_directories(resources);
    std::ofstream(resources / "Localizable.strings")
        << "\"One or more of passed objects is not contained in receiver.\" = \"Nicht dabei: 100 %%\";";
    std::string reason;
    attempt(
        [] {
            static_cast<void>(
                tessarin_indexesOfObjectsInArray(NSArray::arrayOf("a"_ns), NSArray::arrayOf("b"_ns)));
        },
        [&](NSException exception) { reason = text(exception.reason()); });
    fs::remove_all(resources);
    EXPECT_EQ(reason, "Nicht dabei: 100 %");
}

} // namespace
} // namespace tessarin::testing
