#include "PlatformTest.h"

#include "TessarinFoundation/NSURL+TessarinExtensions.h"

#include <filesystem>

namespace tessarin::testing {
namespace {

class RelativeFileURLTest : public PlatformTest {
protected:
    static NSURL fileURL(std::string_view path) { return NSURL::fileURLWithPath(NSString(path)); }
    static NSURL relative(std::string_view path, std::string_view base) {
        return tessarin_fileURLRelativeToFileURL(fileURL(path), fileURL(base));
    }
    // As the platform's strings write it, which begins with a slash also where there are drives.
    static std::string inCurrentDirectory(const std::string& name) {
        const std::string folder = std::filesystem::current_path().generic_string();
        return (folder.starts_with('/') ? "" : "/") + folder + "/" + name;
    }
    const NSURL webURL = NSURL::URLWithString("http://example.com/a/b"_ns);
};

TEST_F(RelativeFileURLTest, IsTheRelativePathTakenAgainstTheCurrentDirectory) {
    const NSURL result = relative("/nowhere/x/Music/a.wav", "/nowhere/x");
    EXPECT_TRUE(result.isFileURL());
    EXPECT_EQ(text(result.path()), inCurrentDirectory("Music/a.wav"));
}

TEST_F(RelativeFileURLTest, IsWhatThePlatformMakesOfTheRelativePath) {
    EXPECT_EQ(text(relative("/nowhere/x/y", "/nowhere/a/b").absoluteString()),
              text(fileURL("../../x/y").absoluteString()));
    EXPECT_EQ(text(relative("/nowhere/A/x", "/nowhere/a/b").absoluteString()),
              text(fileURL("../x").absoluteString()));
    EXPECT_EQ(text(relative("/nowhere/a", "/nowhere/a/b").absoluteString()),
              text(fileURL("../").absoluteString()));
}

TEST_F(RelativeFileURLTest, RelatesPathsAndNotTheirEscapes) {
    const NSURL file = NSURL::URLWithString("file:///nowhere/a%20b/100%25/c"_ns);
    const NSURL result = tessarin_fileURLRelativeToFileURL(file, fileURL("/nowhere/a b"));
    EXPECT_EQ(text(result.path()), inCurrentDirectory("100%/c"));
}

TEST_F(RelativeFileURLTest, NilWhenTheReceiverIsNoFileURL) {
    EXPECT_FALSE(tessarin_fileURLRelativeToFileURL(webURL, fileURL("/a")));
}

TEST_F(RelativeFileURLTest, NilWhenTheBaseIsNoFileURL) {
    EXPECT_FALSE(tessarin_fileURLRelativeToFileURL(fileURL("/a/b"), webURL));
    EXPECT_FALSE(tessarin_fileURLRelativeToFileURL(webURL, webURL));
}

TEST_F(RelativeFileURLTest, NilForANilBaseOrReceiver) {
    EXPECT_FALSE(tessarin_fileURLRelativeToFileURL(fileURL("/a/b"), nil));
    EXPECT_FALSE(tessarin_fileURLRelativeToFileURL(nil, fileURL("/a")));
    EXPECT_FALSE(tessarin_fileURLRelativeToFileURL(nil, nil));
}

TEST_F(RelativeFileURLTest, NilForTheSameLocation) { EXPECT_FALSE(relative("/nowhere/a", "/nowhere/a")); }

TEST_F(RelativeFileURLTest, TheRangeExceptionPassesThrough) {
    EXPECT_THROWS_NAMED(relative("/nowhere/A/b/c", "/nowhere/a/b"), "NSRangeException");
}

// Its escapes are no UTF-8.
TEST_F(RelativeFileURLTest, AReceiverWithoutAPathIsRefusedByThePlatform) {
    const NSURL pathless = NSURL::URLWithString("file:///nowhere/%FF"_ns);
    EXPECT_FALSE(pathless.path());
    EXPECT_THROWS_NAMED(tessarin_fileURLRelativeToFileURL(pathless, fileURL("/nowhere")),
                        "NSInvalidArgumentException");
}

TEST_F(RelativeFileURLTest, ABaseWithoutAPathGivesTheReceiversOwnPath) {
    const NSURL pathless = NSURL::URLWithString("file:///nowhere/%FF"_ns);
    EXPECT_EQ(text(tessarin_fileURLRelativeToFileURL(fileURL("/nowhere/a"), pathless).path()), "/nowhere/a");
}

TEST_F(RelativeFileURLTest, IsAutoreleased) {
    const NSURL file = fileURL("/nowhere/a/b"), base = fileURL("/nowhere");
    EXPECT_EQ(ownedReferencesOfNew([&] { return tessarin_fileURLRelativeToFileURL(file, base); }), 0);
}

} // namespace
} // namespace tessarin::testing
