// Archives that were written once, by this library and by others, and are to be read for ever.
#include "PlatformTest.h"
#include "Samples.h"

#include <algorithm>
#include <cctype>
#include <tuple>

namespace tessarin::testing {
namespace {

using namespace interop;

using Recorded = std::tuple<const char*, Sample, ArchiveFormat>; // whose archive it is

class RecordedArchivesTest : public ::testing::TestWithParam<Recorded> {
private:
    AutoreleasePool pool_;
};

TEST_P(RecordedArchivesTest, IsRead) {
    const auto [writer, sample, format] = GetParam();
    const std::string path = testFile("data/archives/") + writer + "/" + fileName(sample, format);
    const NSData archive = NSData::dataWithContentsOfFile(NSString(path));
    ASSERT_TRUE(archive) << path;
    const id read = NSKeyedUnarchiver::unarchiveObjectWithData(archive);
    const NSObject expected = sample.make();
    EXPECT_TRUE(sample.isReadAs(read, expected))
        << "read: " << text(read.description()) << "\nexpected: " << text(expected.description());
    EXPECT_EQ(read.isKindOfClass(send<Class>(expected, "classForCoder"_sel)), bool(expected));
}

// All archives that hold what they should: GNUstep loses the fraction of dates in XML, and integers above
// 2^63.
std::vector<Recorded> recordedArchives() {
    std::vector<Recorded> all;
    for (const char* const writer : {"embedded", "gnustep"})
        for (const Sample& sample : samples())
            for (const ArchiveFormat& format : archiveFormats) {
                const bool isGNUstep = writer == std::string("gnustep");
                const std::string name = fileName(sample, format);
                if (isGNUstep
                    && (name == "date-with-fraction.xml.archive" || name == "largest-integer.binary.archive"))
                    continue;
                all.emplace_back(writer, sample, format);
            }
    return all;
}

// Such as embedded_mutable_string_binary: the name of a test holds no hyphens.
std::string nameOf(const ::testing::TestParamInfo<Recorded>& test) {
    const auto& [writer, sample, format] = test.param;
    std::string name = std::string(writer) + "_" + sample.name + "_" + format.name;
    std::ranges::replace_if(
        name, [](unsigned char character) { return !std::isalnum(character); }, '_');
    return name;
}

INSTANTIATE_TEST_SUITE_P(All, RecordedArchivesTest, ::testing::ValuesIn(recordedArchives()), nameOf);

} // namespace
} // namespace tessarin::testing
