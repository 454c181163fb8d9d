// Bundles: the texts that they hold.
#include "PlatformTest.h"
#include "TemporaryFolder.h"

namespace tessarin::testing {
namespace {

class NSBundleTest : public PlatformTest {
protected:
    NSBundle bundleAt(const char* name) const {
        return NSBundle::bundleWithPath(NSString((folder_.path() / name).string()));
    }
    const TemporaryFolder folder_;
};

TEST_F(NSBundleTest, AnswersTheTextOfAKey) {
    folder_.write("Texts.bundle/Resources/Localizable.strings", "\"Cancel\" = \"Annuler\";");
    EXPECT_EQ(
        text(bundleAt("Texts.bundle").localizedStringForKey_value_table(NSString("Cancel"), ""_ns, nil)),
        "Annuler");
    EXPECT_EQ(text(bundleAt("Texts.bundle").localizedStringForKey_value_table("Cancel"_ns, "x"_ns, ""_ns)),
              "Annuler");
}

TEST_F(NSBundleTest, AnswersTheTextOfAnotherTable) {
    folder_.write("Texts.bundle/Resources/Menus.strings", "\"Open\" = \"Ouvrir\";");
    const NSBundle bundle = bundleAt("Texts.bundle");
    EXPECT_EQ(text(bundle.localizedStringForKey_value_table("Open"_ns, nil, "Menus"_ns)), "Ouvrir");
    EXPECT_EQ(text(bundle.localizedStringForKey_value_table("Open"_ns, nil, nil)), "Open");
}

TEST_F(NSBundleTest, WithoutATextAnswersTheValueOrTheKey) {
    folder_.write("Empty.bundle/Resources/readme", "");
    const NSBundle bundle = bundleAt("Empty.bundle");
    EXPECT_EQ(text(bundle.localizedStringForKey_value_table("K"_ns, "V"_ns, nil)), "V");
    EXPECT_EQ(text(bundle.localizedStringForKey_value_table("K"_ns, ""_ns, nil)), "K");
    EXPECT_EQ(text(bundle.localizedStringForKey_value_table("K"_ns, nil, nil)), "K");
}

TEST_F(NSBundleTest, WithoutAKeyAnswersTheValueOrNoText) {
    folder_.write("Empty.bundle/Resources/readme", "");
    const NSBundle bundle = bundleAt("Empty.bundle");
    EXPECT_EQ(text(bundle.localizedStringForKey_value_table(nil, "V"_ns, nil)), "V");
    EXPECT_EQ(text(bundle.localizedStringForKey_value_table(nil, nil, nil)), "");
}

TEST_F(NSBundleTest, ThereIsOneForEachFolder) {
    folder_.write("Empty.bundle/Resources/readme", "");
    EXPECT_TRUE(bundleAt("Empty.bundle"));
    EXPECT_EQ(bundleAt("Empty.bundle"), bundleAt("Empty.bundle"));
    EXPECT_EQ(NSBundle::mainBundle(), NSBundle::mainBundle());
}

TEST_F(NSBundleTest, ThereIsNoneForNoFolder) {
    folder_.write("file", "");
    EXPECT_FALSE(bundleAt("missing.bundle"));
    EXPECT_FALSE(bundleAt("file"));
    EXPECT_FALSE(NSBundle::bundleWithPath(nil));
}

TEST_F(NSBundleTest, AClassOfTheProgramIsOfTheMainBundle) {
    static const ClassDefinition definition{{.name = "TessarinTestBundled",
                                             .methods = {instanceMethod(
                                                 "one", +[](NSObject, SEL) { return 1; })}}};
    EXPECT_EQ(NSBundle::bundleForClass(definition.classObject()), NSBundle::mainBundle());
}

TEST_F(NSBundleTest, AClassOfThePlatformIsOfAnother) {
    EXPECT_TRUE(NSBundle::bundleForClass(NSArray::classObject()));
    EXPECT_NE(NSBundle::bundleForClass(NSArray::classObject()), NSBundle::mainBundle());
}

} // namespace
} // namespace tessarin::testing
