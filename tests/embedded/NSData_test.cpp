// Which files data is read from and written to.
#include "PlatformTest.h"
#include "TemporaryFolder.h"

namespace tessarin::testing {
namespace {

class EmbeddedDataTest : public PlatformTest {
protected:
    NSString pathOf(const std::u16string& name) const {
        return NSString(folder_.path().u16string() + u'/' + name);
    }
    std::size_t numberOfFiles() const {
        return static_cast<std::size_t>(
            std::distance(std::filesystem::directory_iterator(folder_.path()), {}));
    }

    const TemporaryFolder folder_;
};

TEST_F(EmbeddedDataTest, ANameWithHalfASurrogatePairNamesNoFile) {
    folder_.write(u8"\uFFFD", "the replacement character's");
    const NSString path = pathOf({0xD800});
    EXPECT_EQ(NSData::dataWithContentsOfFile(pathOf(u"\uFFFD")).length(), 27u);
    EXPECT_FALSE(NSData::dataWithContentsOfFile(path));
    EXPECT_FALSE(NSData::data().writeToFile_atomically(path, false));
    EXPECT_FALSE(NSData::data().writeToFile_atomically(path, true));
    EXPECT_EQ(NSData::dataWithContentsOfFile(pathOf(u"\uFFFD")).length(), 27u);
    EXPECT_EQ(numberOfFiles(), 1u);
}

} // namespace
} // namespace tessarin::testing
