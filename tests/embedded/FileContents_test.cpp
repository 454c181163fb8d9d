// Who may open a file while it is written. Where programs are linked in the manner of ELF, this one can put a
// function in the place of the system's, which is how it looks at a file at a certain moment.
#if defined(__ELF__)

#    include "platform/embedded/foundation/FileContents.h"

#    include "PlatformTest.h"
#    include "TemporaryFolder.h"

#    include <gtest/gtest.h>

#    include <dlfcn.h>
#    include <sys/stat.h>
#    include <vector>

namespace {

// The modes that files have before they are given others, while somebody wants to know them.
std::vector<mode_t>* modesBefore = nullptr;

} // namespace

extern "C" int fchmod(int descriptor, mode_t mode) noexcept {
    struct stat status {};
    if (modesBefore && ::fstat(descriptor, &status) == 0) modesBefore->push_back(status.st_mode & 07777);
    const auto ofTheSystem = reinterpret_cast<int (*)(int, mode_t)>(::dlsym(RTLD_NEXT, "fchmod"));
    return ofTheSystem(descriptor, mode);
}

namespace tessarin::testing {
namespace {

TEST(FileContentsTest, WhatTakesAPrivateFilesPlaceIsNeverOpenToOthers) {
    const TemporaryFolder folder;
    const std::filesystem::path file = folder.path() / "private";
    folder.write("private", "before");
    std::filesystem::permissions(file, std::filesystem::perms(0600));
    std::vector<mode_t> modes;
    modesBefore = &modes;
    EXPECT_TRUE(embedded::writeFileAtomically(file, std::as_bytes(std::span("after", 5))));
    modesBefore = nullptr;
    EXPECT_EQ(modes, std::vector<mode_t>{0600});
    EXPECT_EQ(std::filesystem::status(file).permissions(), std::filesystem::perms(0600));
}

TEST(FileContentsTest, WhatTakesAFilesPlaceTakesItsMode) {
    const TemporaryFolder folder;
    const std::filesystem::path file = folder.path() / "shared";
    folder.write("shared", "before");
    std::filesystem::permissions(file, std::filesystem::perms(0664));
    EXPECT_TRUE(embedded::writeFileAtomically(file, std::as_bytes(std::span("after", 5))));
    EXPECT_EQ(std::filesystem::status(file).permissions(), std::filesystem::perms(0664));
}

TEST(FileContentsTest, AFileThatIsToBePrivateIsNeverOpenToOthers) {
    const AutoreleasePool pool;
    const TemporaryFolder folder;
    const std::filesystem::path file = folder.path() / "private";
    const NSDictionary attributes =
        NSDictionary::dictionaryWithObject_forKey(NSNumber::numberWithInt(0400), "NSFilePosixPermissions"_ns);
    std::vector<mode_t> modes;
    modesBefore = &modes;
    EXPECT_TRUE(NSFileManager::defaultManager().createFileAtPath_contents_attributes(
        NSString(file.string()), NSData::dataWithBytes_length("secret", 6), attributes));
    modesBefore = nullptr;
    EXPECT_EQ(modes, std::vector<mode_t>{0600});
    EXPECT_EQ(std::filesystem::status(file).permissions(), std::filesystem::perms(0400));
    EXPECT_EQ(std::filesystem::file_size(file), 6u);
}

} // namespace
} // namespace tessarin::testing

#endif
