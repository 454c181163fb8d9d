// Property lists that were written once, by this library and by others, and are to be read for ever.
#include "PlatformTest.h"
#include "PropertyListTrees.h"

#include <algorithm>
#include <cctype>
#include <tuple>

namespace tessarin::testing {
namespace {

struct RecordedPropertyList {
    std::string writer;
    std::string file;
    std::string plainForm;

    friend void PrintTo(const RecordedPropertyList& list, std::ostream* stream) { *stream << list.file; }
};

class RecordedPropertyListsTest : public ::testing::TestWithParam<RecordedPropertyList> {
private:
    AutoreleasePool pool_;
};

TEST_P(RecordedPropertyListsTest, IsRead) {
    const auto& [writer, file, plainForm] = GetParam();
    const std::string path = testFile("data/property_lists/") + writer + "/" + file;
    const NSData document = NSData::dataWithContentsOfFile(NSString(path));
    ASSERT_TRUE(document) << path;
    EXPECT_EQ(interop::plainForm(NSPropertyListSerialization::propertyListWithData_options_format_error(
                  document, 0, nullptr, nullptr)),
              plainForm);
}

// What GNUstep does not write as it is: in XML control characters and those beyond the basic plane, and reals
// to the last bit; in binary form integers above 2^63.
bool isLostByGNUstep(const std::string& file) {
    static const std::vector<std::string> lost = {"control-characters.xml.plist", "emoji.xml.plist",
                                                  "reals.xml.plist", "integers-beyond-63-bits.binary.plist"};
    return std::ranges::find(lost, file) != lost.end();
}

std::vector<RecordedPropertyList> recordedPropertyLists() {
    const AutoreleasePool pool;
    std::vector<RecordedPropertyList> all;
    for (const interop::PropertyListTree& tree : interop::propertyListTrees()) {
        if (!tree.isRecorded) continue;
        for (const char* const writer : {"embedded", "gnustep"})
            for (const char* const extension : {".binary.plist", ".xml.plist"}) {
                const std::string file = tree.name + extension;
                if (!tree.hasXML && std::string_view(extension) == ".xml.plist") continue;
                if (writer == std::string_view("gnustep") && isLostByGNUstep(file)) continue;
                all.push_back({writer, file, interop::plainForm(tree.root)});
            }
    }
    return all;
}

// Such as gnustep_empty_array_binary: the name of a test holds no hyphens.
std::string nameOf(const ::testing::TestParamInfo<RecordedPropertyList>& test) {
    std::string name = test.param.writer + "_" + test.param.file.substr(0, test.param.file.rfind('.'));
    std::ranges::replace_if(
        name, [](unsigned char character) { return !std::isalnum(character); }, '_');
    return name;
}

INSTANTIATE_TEST_SUITE_P(All, RecordedPropertyListsTest, ::testing::ValuesIn(recordedPropertyLists()),
                         nameOf);

} // namespace
} // namespace tessarin::testing
