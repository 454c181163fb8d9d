// NSString: paths.
#include "Environment.h"
#include "PlatformTest.h"

#include <cstdlib>

namespace tessarin::testing {
namespace {

using NSStringPathsTest = PlatformTest;

Texts components(const char* path) { return texts(NSString(path).pathComponents()); }

template <class... Strings>
std::string joined(const Strings&... strings) {
    return text(NSString::pathWithComponents(NSArray::arrayOf(NSString(strings)...)));
}

// The user's home directory for a test.
class Home {
public:
    explicit Home(const char* path) : home_("HOME", path), profile_("USERPROFILE", path) {}

private:
    EnvironmentVariable home_;
    EnvironmentVariable profile_; // its name on Windows
};

std::string expanded(const char* path) { return text(NSString(path).stringByExpandingTildeInPath()); }

TEST_F(NSStringPathsTest, AbsolutePathBeginsWithSlashOrTilde) {
    for (const char* path : {"/", "//", "/a", "~", "~/x", "~nobody/x"})
        EXPECT_TRUE(NSString(path).isAbsolutePath()) << path;
    for (const char* path : {"", "a", "./a", "../a", " /a"})
        EXPECT_FALSE(NSString(path).isAbsolutePath()) << path;
}

TEST_F(NSStringPathsTest, Components) {
    EXPECT_EQ(components(""), (Texts{}));
    EXPECT_EQ(components("a"), (Texts{"a"}));
    EXPECT_EQ(components("a/b"), (Texts{"a", "b"}));
    EXPECT_EQ(components("/a/../b"), (Texts{"/", "a", "..", "b"}));
}

TEST_F(NSStringPathsTest, SlashAtEitherEndIsAComponent) {
    EXPECT_EQ(components("/"), (Texts{"/"}));
    EXPECT_EQ(components("//"), (Texts{"/", "/"}));
    EXPECT_EQ(components("a/"), (Texts{"a", "/"}));
    EXPECT_EQ(components("a//b/"), (Texts{"a", "b", "/"}));
    EXPECT_EQ(components("/a/"), (Texts{"/", "a", "/"}));
    EXPECT_EQ(components("//a//b//"), (Texts{"/", "a", "b", "/"}));
}

TEST_F(NSStringPathsTest, TildeIsAComponentWithoutItsSlash) {
    EXPECT_EQ(components("~/x"), (Texts{"~", "x"}));
}

TEST_F(NSStringPathsTest, PathWithComponents) {
    EXPECT_EQ(joined("/"), "/");
    EXPECT_EQ(joined("/", "/"), "/");
    EXPECT_EQ(joined("/", "a"), "/a");
    EXPECT_EQ(joined("foo", "bar"), "foo/bar");
    EXPECT_EQ(joined("foo", "/", "bar"), "foo/bar");
    EXPECT_EQ(joined("/", "foo", "..", "bar"), "/foo/../bar");
    EXPECT_EQ(joined(""), "");
    EXPECT_EQ(text(NSString::pathWithComponents(NSArray::array())), "");
}

TEST_F(NSStringPathsTest, PathWithComponentsHasNoSlashAtItsEnd) {
    EXPECT_EQ(joined("foo", ""), "foo");
    EXPECT_EQ(joined("foo", "/"), "foo");
    EXPECT_EQ(joined("foo/"), "foo");
}

TEST_F(NSStringPathsTest, PathWithComponentsCollapsesSlashesInside) {
    EXPECT_EQ(joined("foo//bar"), "foo/bar");
}

TEST_F(NSStringPathsTest, PathWithNilRaises) {
    EXPECT_THROWS_NAMED(NSString::pathWithComponents(nil), "NSInvalidArgumentException");
}

TEST_F(NSStringPathsTest, LastPathComponent) {
    EXPECT_EQ(text("/tmp/scratch.tiff"_ns.lastPathComponent()), "scratch.tiff");
    EXPECT_EQ(text("/tmp/"_ns.lastPathComponent()), "tmp");
    EXPECT_EQ(text("scratch///"_ns.lastPathComponent()), "scratch");
    EXPECT_EQ(text("/"_ns.lastPathComponent()), "/");
    EXPECT_EQ(text(""_ns.lastPathComponent()), "");
}

TEST_F(NSStringPathsTest, PathExtension) {
    EXPECT_EQ(text("/tmp/scratch.tiff"_ns.pathExtension()), "tiff");
    EXPECT_EQ(text(".scratch.tiff"_ns.pathExtension()), "tiff");
    EXPECT_EQ(text("/tmp/scratch"_ns.pathExtension()), "");
    EXPECT_EQ(text("/tmp.d/scratch"_ns.pathExtension()), "");
    EXPECT_EQ(text("/tmp/scratch..tiff"_ns.pathExtension()), "tiff");
    EXPECT_EQ(text("/tmp/.hidden"_ns.pathExtension()), "");
}

TEST_F(NSStringPathsTest, AppendingPathComponent) {
    EXPECT_EQ(text("/tmp"_ns.stringByAppendingPathComponent("scratch.tiff"_ns)), "/tmp/scratch.tiff");
    EXPECT_EQ(text("/tmp/"_ns.stringByAppendingPathComponent("scratch.tiff"_ns)), "/tmp/scratch.tiff");
    EXPECT_EQ(text("/"_ns.stringByAppendingPathComponent("scratch.tiff"_ns)), "/scratch.tiff");
    EXPECT_EQ(text(""_ns.stringByAppendingPathComponent("scratch.tiff"_ns)), "scratch.tiff");
}

TEST_F(NSStringPathsTest, DeletingLastPathComponent) {
    EXPECT_EQ(text("/tmp/scratch.tiff"_ns.stringByDeletingLastPathComponent()), "/tmp");
    EXPECT_EQ(text("/tmp/lock/"_ns.stringByDeletingLastPathComponent()), "/tmp");
    EXPECT_EQ(text("/tmp"_ns.stringByDeletingLastPathComponent()), "/");
    EXPECT_EQ(text("/"_ns.stringByDeletingLastPathComponent()), "/");
    EXPECT_EQ(text("scratch.tiff"_ns.stringByDeletingLastPathComponent()), "");
}

TEST_F(NSStringPathsTest, DeletingPathExtension) {
    EXPECT_EQ(text("/tmp/scratch.tiff"_ns.stringByDeletingPathExtension()), "/tmp/scratch");
    EXPECT_EQ(text("scratch.bundle/"_ns.stringByDeletingPathExtension()), "scratch");
    EXPECT_EQ(text("scratch..tiff"_ns.stringByDeletingPathExtension()), "scratch.");
    EXPECT_EQ(text(".tiff"_ns.stringByDeletingPathExtension()), ".tiff");
    EXPECT_EQ(text("/"_ns.stringByDeletingPathExtension()), "/");
}

TEST_F(NSStringPathsTest, ExpandsTheTildeOfTheUser) {
    const std::string home = text(homeDirectory());
    EXPECT_EQ(expanded("~"), home);
    EXPECT_EQ(expanded("~/"), home);
    EXPECT_EQ(expanded("~/test"), home + "/test");
}

TEST_F(NSStringPathsTest, ExpandsTheTildeOfAnAccount) { EXPECT_EQ(expanded("~root/x"), "/root/x"); }

TEST_F(NSStringPathsTest, LeavesOtherTildesAlone) {
    EXPECT_EQ(expanded("/foo/~/x"), "/foo/~/x");
    EXPECT_EQ(expanded("a~"), "a~");
    EXPECT_EQ(expanded(""), "");
}

TEST_F(NSStringPathsTest, LeavesTheTildeOfAnUnknownAccount) {
    EXPECT_EQ(expanded("~no-such-account/x"), "~no-such-account/x");
    EXPECT_EQ(expanded("~no-such-account"), "~no-such-account");
}

TEST_F(NSStringPathsTest, DropsTheSlashBehindAnUnknownAccount) {
    EXPECT_EQ(expanded("~no-such-account/"), "~no-such-account");
}

TEST_F(NSStringPathsTest, HomeDirectoryIsThatOfTheEnvironment) {
    const Home home("/tmp/some home");
    EXPECT_EQ(text(homeDirectory()), "/tmp/some home");
    EXPECT_EQ(expanded("~/x"), "/tmp/some home/x");
}

TEST_F(NSStringPathsTest, HomeDirectoryMayBeTheRoot) {
    const Home home("/");
    EXPECT_EQ(expanded("~/x"), "/x");
    EXPECT_EQ(expanded("~"), "/");
}

} // namespace
} // namespace tessarin::testing
