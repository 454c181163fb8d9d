// Runs of bytes, and files of them.
#include "PlatformTest.h"
#include "TemporaryFolder.h"

#include "TessarinPlatform/NSData.h"

#include <cstring>
#include <filesystem>
#include <fstream>
#include <iterator>

namespace tessarin::testing {
namespace {

namespace fs = std::filesystem;

class NSDataTest : public PlatformTest {
protected:
    static NSData dataOf(const std::string& bytes) {
        return NSData::dataWithBytes_length(bytes.data(), bytes.size());
    }
    static std::string bytesOf(NSData data) {
        return data ? std::string(static_cast<const char*>(data.bytes()), data.length()) : "(nil)";
    }
    NSString pathOf(const std::string& name) const { return NSString((folder_ / name).string()); }
    std::string contentsOf(const std::string& name) const {
        std::ifstream file(folder_ / name, std::ios::binary);
        return {std::istreambuf_iterator<char>(file), {}};
    }
    std::size_t numberOfFiles() const {
        return static_cast<std::size_t>(std::distance(fs::directory_iterator(folder_), {}));
    }

    const TemporaryFolder temporary_;
    const fs::path& folder_ = temporary_.path();
};

TEST_F(NSDataTest, HoldsACopyOfItsBytes) {
    char bytes[] = "abc";
    const NSData data = NSData::dataWithBytes_length(bytes, 3);
    bytes[0] = 'x';
    EXPECT_EQ(bytesOf(data), "abc");
    EXPECT_EQ(NSData::data().length(), 0u);
    EXPECT_EQ(bytesOf(NSData::dataWithBytes_length(nullptr, 0)), "");
}

TEST_F(NSDataTest, EqualsDataOfTheSameBytes) {
    EXPECT_TRUE(dataOf("abc").isEqual(dataOf("abc")));
    EXPECT_TRUE(dataOf("abc").isEqualToData(dataOf("abc")));
    EXPECT_EQ(dataOf("abc").hash(), dataOf("abc").hash());
    EXPECT_FALSE(dataOf("abc").isEqual(dataOf("abd")));
    EXPECT_FALSE(dataOf("abc").isEqual(dataOf("ab")));
    EXPECT_FALSE(dataOf("abc").isEqual("abc"_ns));
    EXPECT_FALSE(dataOf("abc").isEqual(nil));
}

TEST_F(NSDataTest, AnswersAPartOfItself) {
    const auto part = [](NSRange range) {
        return send<NSData>(dataOf("abcde"), "subdataWithRange:"_sel, range);
    };
    EXPECT_EQ(bytesOf(part({1, 3})), "bcd");
    EXPECT_EQ(bytesOf(part({5, 0})), "");
    EXPECT_THROWS_NAMED(part({3, 3}), "NSRangeException");
}

TEST_F(NSDataTest, GivesNoMoreBytesThanItHas) {
    char buffer[8] = {};
    send<void>(dataOf("abc"), "getBytes:length:"_sel, static_cast<void*>(buffer), NSUInteger{2});
    EXPECT_STREQ(buffer, "ab");
    send<void>(dataOf("abc"), "getBytes:length:"_sel, static_cast<void*>(buffer), NSUInteger{8});
    EXPECT_STREQ(buffer, "abc");
}

TEST_F(NSDataTest, ShowsItsBytesAsHexadecimalDigits) {
    EXPECT_EQ(text(dataOf("Hello").description()), "<48656c6c 6f>");
    EXPECT_EQ(text(NSData::data().description()), "<>");
}

TEST_F(NSDataTest, CopiesAreApart) {
    const Retained<NSData> mutableCopy = adopt(dataOf("abc").mutableCopy());
    const Retained<NSData> copy = adopt(mutableCopy.copy());
    send<void>(mutableCopy, "appendBytes:length:"_sel, static_cast<const void*>("de"), NSUInteger{2});
    EXPECT_EQ(bytesOf(mutableCopy), "abcde");
    EXPECT_EQ(bytesOf(copy), "abc");
}

TEST_F(NSDataTest, GrowsWithZeros) {
    const Retained<NSData> data = adopt(dataOf("abc").mutableCopy());
    send<void>(data, "setLength:"_sel, NSUInteger{2});
    send<void>(data, "setLength:"_sel, NSUInteger{4});
    EXPECT_EQ(bytesOf(data), std::string("ab\0\0", 4));
    std::memcpy(send<void*>(data, "mutableBytes"_sel), "wxyz", 4);
    EXPECT_EQ(bytesOf(data), "wxyz");
}

// ---- Files

TEST_F(NSDataTest, ReadsWhatItWrote) {
    const std::string bytes("a\0b", 3);
    for (const bool atomically : {false, true}) {
        EXPECT_TRUE(dataOf(bytes).writeToFile_atomically(pathOf("file"), atomically));
        EXPECT_EQ(contentsOf("file"), bytes);
        EXPECT_EQ(bytesOf(NSData::dataWithContentsOfFile(pathOf("file"))), bytes);
    }
    EXPECT_EQ(numberOfFiles(), 1u);
}

TEST_F(NSDataTest, AWrittenFileHasNothingOfTheOldOne) {
    for (const bool atomically : {false, true}) {
        EXPECT_TRUE(dataOf("long contents").writeToFile_atomically(pathOf("file"), atomically));
        EXPECT_TRUE(dataOf("short").writeToFile_atomically(pathOf("file"), atomically));
        EXPECT_EQ(contentsOf("file"), "short");
    }
}

TEST_F(NSDataTest, AFileThatCannotBeReadIsNil) {
    EXPECT_EQ(NSData::dataWithContentsOfFile(pathOf("none")), nil);
    EXPECT_EQ(NSData::dataWithContentsOfFile(NSString(folder_.string())), nil);
    const Retained<NSData> data =
        adopt(send<NSData>(NSData::alloc(), "initWithContentsOfFile:"_sel, pathOf("none")));
    EXPECT_EQ(static_cast<NSObject>(data), nil);
}

TEST_F(NSDataTest, ReadsAnEmptyFile) {
    std::ofstream(folder_ / "empty").flush();
    EXPECT_EQ(bytesOf(NSData::dataWithContentsOfFile(pathOf("empty"))), "");
}

TEST_F(NSDataTest, WritingWhereNothingCanBeWrittenFails) {
    for (const bool atomically : {false, true}) {
        EXPECT_FALSE(dataOf("abc").writeToFile_atomically(pathOf("none/file"), atomically));
        EXPECT_FALSE(dataOf("abc").writeToFile_atomically(NSString(folder_.string()), atomically));
    }
    EXPECT_EQ(numberOfFiles(), 0u);
}

TEST_F(NSDataTest, AFailedAtomicWriteLeavesNothingBehind) {
    fs::create_directory(folder_ / "folder");
    std::ofstream(folder_ / "folder" / "file").flush();
    EXPECT_FALSE(dataOf("abc").writeToFile_atomically(pathOf("folder"), true));
    EXPECT_EQ(numberOfFiles(), 1u);
    EXPECT_TRUE(fs::is_directory(folder_ / "folder"));
}

TEST_F(NSDataTest, AnAtomicWriteKeepsTheFilesPermissions) {
    std::ofstream(folder_ / "file").flush();
    const auto permissions = fs::perms::owner_read | fs::perms::owner_write;
    fs::permissions(folder_ / "file", permissions);
    EXPECT_TRUE(dataOf("abc").writeToFile_atomically(pathOf("file"), true));
    EXPECT_EQ(fs::status(folder_ / "file").permissions(), permissions);
}

} // namespace
} // namespace tessarin::testing
