#include "PlatformTest.h"

#include "TessarinFoundation/NSString+TessarinExtensions.h"

namespace tessarin::testing {
namespace {

class KeyPathTest : public PlatformTest {};

TEST_F(KeyPathTest, ASingleComponentIsThePath) {
    EXPECT_EQ(text(tessarin_keyPathWithComponents("a"_ns)), "a");
}

TEST_F(KeyPathTest, JoinsComponentsWithDots) {
    EXPECT_EQ(text(tessarin_keyPathWithComponents("track"_ns, "effect"_ns, "gain"_ns)), "track.effect.gain");
}

TEST_F(KeyPathTest, JoinsMoreComponentsThanThereAreRegisters) {
    EXPECT_EQ(text(tessarin_keyPathWithComponents("a"_ns, "b"_ns, "c"_ns, "d"_ns, "e"_ns, "f"_ns, "g"_ns,
                                                  "h"_ns, "i"_ns, "j"_ns, "k"_ns, "l"_ns)),
              "a.b.c.d.e.f.g.h.i.j.k.l");
}

TEST_F(KeyPathTest, KeepsEmptyComponents) {
    EXPECT_EQ(text(tessarin_keyPathWithComponents("a"_ns, ""_ns, "b"_ns)), "a..b");
    EXPECT_EQ(text(tessarin_keyPathWithComponents(""_ns)), "");
    EXPECT_EQ(text(tessarin_keyPathWithComponents(""_ns, ""_ns)), ".");
    EXPECT_EQ(text(tessarin_keyPathWithComponents("a"_ns, ""_ns)), "a.");
}

TEST_F(KeyPathTest, KeepsComponentsAsTheyAre) {
    EXPECT_EQ(text(tessarin_keyPathWithComponents("@sum"_ns, "a.b"_ns, "100%@"_ns, u"\u00e9"_ns)),
              "@sum.a.b.100%@.é");
}

TEST_F(KeyPathTest, NilWhenTheFirstComponentIs) {
    EXPECT_FALSE(tessarin_keyPathWithComponents(NSString()));
    EXPECT_FALSE(tessarin_keyPathWithComponents(NSString(), "a"_ns));
}

TEST_F(KeyPathTest, EndsAtTheFirstNil) {
    EXPECT_EQ(text(tessarin_keyPathWithComponents("a"_ns, "b"_ns, NSString(), "c"_ns)), "a.b");
    EXPECT_EQ(text(tessarin_keyPathWithComponents("a"_ns, NSString(), "c"_ns)), "a");
}

TEST_F(KeyPathTest, TakesMutableAndOwnedComponents) {
    const NSMutableString first = NSMutableString::stringWithString("a"_ns);
    const Retained<NSMutableString> second = retain(NSMutableString::stringWithString("b"_ns));
    const NSString path = tessarin_keyPathWithComponents(first, second);
    EXPECT_EQ(text(path), "a.b");
    EXPECT_EQ(text(first), "a");
}

TEST_F(KeyPathTest, IsImmutableWhateverClassIsAsked) {
    for (const NSString path :
         {tessarin_keyPathWithComponents("a"_ns, "b"_ns),
          tessarin_keyPathWithComponents(NSMutableString::classObject(), "a"_ns, "b"_ns)}) {
        EXPECT_EQ(text(path), "a.b");
        EXPECT_TRUE(kindOf<NSString>(path));
        EXPECT_FALSE(kindOf<NSMutableString>(path));
    }
}

TEST_F(KeyPathTest, ASingleMutableComponentIsNotThePathItself) {
    const NSMutableString component = NSMutableString::stringWithString("a"_ns);
    const NSString path = tessarin_keyPathWithComponents(component);
    component.setString("changed"_ns);
    EXPECT_EQ(text(path), "a");
    EXPECT_FALSE(kindOf<NSMutableString>(path));
}

TEST_F(KeyPathTest, IsAutoreleased) {
    EXPECT_EQ(ownedReferencesOfNew(
                  [] { return tessarin_keyPathWithComponents("a component of"_ns, "this very test"_ns); }),
              0);
}

TEST_F(KeyPathTest, KeepsNoComponent) {
    const Retained<NSString> first = retain(NSString(std::string("first component of this test")));
    const Retained<NSString> second = retain(NSString(std::string("second component of this test")));
    const auto joining = [&] { return tessarin_keyPathWithComponents(first, second); };
    EXPECT_EQ(referencesLeftBy(joining, first), 0);
    EXPECT_EQ(referencesLeftBy(joining, second), 0);
}

} // namespace
} // namespace tessarin::testing
