#include "PlatformTest.h"
#include "TemporaryFolder.h"

#include <algorithm>
#include <filesystem>
#include <fstream>

namespace tessarin::testing {
namespace {

namespace fs = std::filesystem;

// Works in a directory of its own, which goes with the test.
class NSFileManagerTest : public PlatformTest {
protected:
    std::string place(const char* name) const { return (directory_ / name).string(); }
    NSString path(const char* name) const { return NSString(place(name)); }
    void makeFile(const char* name, const char* contents = "contents") const {
        std::ofstream(place(name)) << contents;
    }

    const NSFileManager manager_ = NSFileManager::defaultManager();
    const TemporaryFolder folder_;
    const fs::path& directory_ = folder_.path();
};

std::string contentsOf(NSData data) {
    return data ? std::string(static_cast<const char*>(data.bytes()), data.length()) : "(nil)";
}
NSData dataWith(std::string_view contents) {
    return NSData::dataWithBytes_length(contents.data(), contents.size());
}

TEST_F(NSFileManagerTest, ThereIsOneDefaultManager) {
    EXPECT_EQ(NSFileManager::defaultManager(), manager_);
    EXPECT_TRUE(bool(manager_));
}

TEST_F(NSFileManagerTest, OthersMayBeMade) {
    makeFile("file");
    const Retained<NSFileManager> other = adopt(NSFileManager::alloc().init());
    EXPECT_FALSE(other == manager_);
    EXPECT_TRUE(other.fileExistsAtPath(path("file")));
}

TEST_F(NSFileManagerTest, TellsWhatExists) {
    makeFile("file");
    EXPECT_TRUE(manager_.fileExistsAtPath(path("file")));
    EXPECT_TRUE(manager_.fileExistsAtPath(path("")));
    EXPECT_FALSE(manager_.fileExistsAtPath(path("none")));
    EXPECT_FALSE(manager_.fileExistsAtPath(path("file/below")));
    EXPECT_FALSE(manager_.fileExistsAtPath(""_ns));
    EXPECT_FALSE(manager_.fileExistsAtPath(nil));
}

TEST_F(NSFileManagerTest, TellsDirectoriesFromFiles) {
    makeFile("file");
    BOOL isDirectory = YES;
    EXPECT_TRUE(manager_.fileExistsAtPath_isDirectory(path("file"), &isDirectory));
    EXPECT_EQ(isDirectory, NO);
    EXPECT_TRUE(manager_.fileExistsAtPath_isDirectory(path(""), &isDirectory));
    EXPECT_EQ(isDirectory, YES);
    EXPECT_TRUE(manager_.fileExistsAtPath_isDirectory(path("file"), nullptr));
}

TEST_F(NSFileManagerTest, FollowsSymbolicLinks) {
    fs::create_directory_symlink(directory_, directory_ / "link");
    fs::create_symlink(directory_ / "none", directory_ / "dangling");
    BOOL isDirectory = NO;
    EXPECT_TRUE(manager_.fileExistsAtPath_isDirectory(path("link"), &isDirectory));
    EXPECT_EQ(isDirectory, YES);
    EXPECT_FALSE(manager_.fileExistsAtPath(path("dangling")));
}

TEST_F(NSFileManagerTest, ListsADirectory) {
    makeFile("b");
    makeFile(".hidden");
    folder_.write(u8"gr\u00fc\u00dfe", "contents");
    fs::create_directory(directory_ / "a");
    makeFile("a/below");
    NSError error;
    Texts names = texts(manager_.contentsOfDirectoryAtPath_error(path(""), &error));
    std::sort(names.begin(), names.end());
    EXPECT_EQ(names, (Texts{".hidden", "a", "b", "gr\u00fc\u00dfe"}));
    EXPECT_EQ(error, nil);
}

TEST_F(NSFileManagerTest, ListsAnEmptyDirectory) {
    const NSArray names = manager_.contentsOfDirectoryAtPath_error(path(""), nullptr);
    EXPECT_TRUE(bool(names));
    EXPECT_EQ(names.count(), 0u);
}

TEST_F(NSFileManagerTest, AMissingDirectoryGivesNil) {
    EXPECT_EQ(manager_.contentsOfDirectoryAtPath_error(path("none"), nullptr), nil);
}

TEST_F(NSFileManagerTest, AMissingDirectoryGivesAnError) {
    NSError error;
    EXPECT_EQ(manager_.contentsOfDirectoryAtPath_error(path("none"), &error), nil);
    EXPECT_EQ(text(error.domain()), "NSCocoaErrorDomain");
    EXPECT_EQ(error.code(), 260);
    EXPECT_EQ(text(error.userInfo().objectForKey("NSFilePath"_ns)), place("none"));
}

TEST_F(NSFileManagerTest, AFileCannotBeListed) {
    makeFile("file");
    NSError error;
    EXPECT_EQ(manager_.contentsOfDirectoryAtPath_error(path("file"), &error), nil);
    EXPECT_TRUE(bool(error));
}

TEST_F(NSFileManagerTest, ReadsAFile) {
    makeFile("file", "some bytes");
    EXPECT_EQ(contentsOf(manager_.contentsAtPath(path("file"))), "some bytes");
    EXPECT_EQ(manager_.contentsAtPath(path("none")), nil);
    EXPECT_EQ(manager_.contentsAtPath(path("")), nil);
    EXPECT_EQ(manager_.contentsAtPath(nil), nil);
}

TEST_F(NSFileManagerTest, CreatesAFile) {
    EXPECT_TRUE(manager_.createFileAtPath_contents_attributes(path("file"), dataWith("new"), nil));
    EXPECT_EQ(contentsOf(manager_.contentsAtPath(path("file"))), "new");
    EXPECT_TRUE(manager_.createFileAtPath_contents_attributes(path("file"), dataWith("newer"), nil));
    EXPECT_EQ(contentsOf(manager_.contentsAtPath(path("file"))), "newer");
    EXPECT_TRUE(manager_.createFileAtPath_contents_attributes(path("empty"), nil, nil));
    EXPECT_EQ(contentsOf(manager_.contentsAtPath(path("empty"))), "");
    EXPECT_FALSE(manager_.createFileAtPath_contents_attributes(path("none/file"), dataWith("new"), nil));
}

TEST_F(NSFileManagerTest, SetsPermissions) {
    const NSDictionary attributes =
        NSDictionary::dictionaryWithObject_forKey(NSNumber::numberWithInt(0600), "NSFilePosixPermissions"_ns);
    EXPECT_TRUE(manager_.createFileAtPath_contents_attributes(path("file"), dataWith("a"), attributes));
    EXPECT_EQ(fs::status(place("file")).permissions(), fs::perms::owner_read | fs::perms::owner_write);
}

TEST_F(NSFileManagerTest, CreatesADirectory) {
    NSError error;
    EXPECT_TRUE(manager_.createDirectoryAtPath_withIntermediateDirectories_attributes_error(path("a"), false,
                                                                                            nil, &error));
    EXPECT_TRUE(fs::is_directory(directory_ / "a"));
    EXPECT_FALSE(manager_.createDirectoryAtPath_withIntermediateDirectories_attributes_error(
        path("b/c/d"), false, nil, &error));
    EXPECT_TRUE(bool(error));
}

TEST_F(NSFileManagerTest, CreatesIntermediateDirectories) {
    for (int time = 0; time < 2; ++time) {
        EXPECT_TRUE(manager_.createDirectoryAtPath_withIntermediateDirectories_attributes_error(
            path("a/b/c"), true, nil, nullptr));
        EXPECT_TRUE(fs::is_directory(directory_ / "a/b/c"));
    }
}

TEST_F(NSFileManagerTest, ADirectoryThatExistsIsAnErrorWithoutIntermediateDirectories) {
    NSError error;
    EXPECT_FALSE(manager_.createDirectoryAtPath_withIntermediateDirectories_attributes_error(path(""), false,
                                                                                             nil, &error));
    EXPECT_EQ(text(error.domain()), "NSCocoaErrorDomain");
    EXPECT_EQ(error.code(), 516);
}

TEST_F(NSFileManagerTest, RemovesADirectoryWithAllThatIsInIt) {
    fs::create_directories(directory_ / "a/b/c");
    makeFile("a/b/file");
    EXPECT_TRUE(manager_.removeItemAtPath_error(path("a"), nullptr));
    EXPECT_FALSE(fs::exists(directory_ / "a"));
}

TEST_F(NSFileManagerTest, RemovesALinkAndNotWhatItLeadsTo) {
    fs::create_directory(directory_ / "a");
    makeFile("a/file");
    fs::create_directory_symlink(directory_ / "a", directory_ / "link");
    EXPECT_TRUE(manager_.removeItemAtPath_error(path("link"), nullptr));
    EXPECT_TRUE(fs::exists(directory_ / "a/file"));
}

TEST_F(NSFileManagerTest, RemovingNothingIsAnError) {
    NSError error;
    EXPECT_FALSE(manager_.removeItemAtPath_error(path("none"), &error));
    EXPECT_EQ(text(error.domain()), "NSCocoaErrorDomain");
    EXPECT_EQ(error.code(), 4);
}

TEST_F(NSFileManagerTest, MovesAnItem) {
    makeFile("file", "moved");
    fs::create_directory(directory_ / "a");
    EXPECT_TRUE(manager_.moveItemAtPath_toPath_error(path("file"), path("a/new"), nullptr));
    EXPECT_FALSE(fs::exists(place("file")));
    EXPECT_EQ(contentsOf(manager_.contentsAtPath(path("a/new"))), "moved");
}

TEST_F(NSFileManagerTest, AMoveReplacesNothing) {
    makeFile("file");
    makeFile("other", "other");
    NSError error;
    EXPECT_FALSE(manager_.moveItemAtPath_toPath_error(path("file"), path("other"), &error));
    EXPECT_EQ(contentsOf(manager_.contentsAtPath(path("other"))), "other");
    EXPECT_TRUE(fs::exists(place("file")));
    EXPECT_TRUE(bool(error));
}

TEST_F(NSFileManagerTest, MovingNothingIsAnError) {
    NSError error;
    EXPECT_FALSE(manager_.moveItemAtPath_toPath_error(path("none"), path("new"), &error));
    EXPECT_TRUE(bool(error));
}

TEST_F(NSFileManagerTest, ChangesTheCurrentDirectory) {
    const NSString before = manager_.currentDirectoryPath();
    makeFile("file");
    EXPECT_TRUE(manager_.changeCurrentDirectoryPath(path("")));
    EXPECT_TRUE(fs::equivalent(std::string(manager_.currentDirectoryPath()), directory_));
    EXPECT_TRUE(manager_.fileExistsAtPath("file"_ns));
    EXPECT_FALSE(manager_.changeCurrentDirectoryPath(path("none")));
    EXPECT_TRUE(manager_.changeCurrentDirectoryPath(before));
}

} // namespace
} // namespace tessarin::testing
