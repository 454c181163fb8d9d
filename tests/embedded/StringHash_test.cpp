// The hash of strings, which nobody outside of the process can foresee.
#include "Environment.h"
#include "PlatformTest.h"

#include "platform/embedded/foundation/StringStorage.h"

#include <cstdlib>
#include <iostream>
#include <string>
#include <unordered_set>

namespace tessarin::testing {
namespace {

class StringHashTest : public PlatformTest {};

std::size_t hashOfText() {
    return embedded::hashOf(embedded::StringView(std::string_view("a text of some length")));
}

TEST_F(StringHashTest, IsTheSameWhateverTheUnitsAreKeptIn) {
    std::u16string wide;
    std::string narrow;
    for (int length = 0; length < 40; ++length) {
        EXPECT_EQ(embedded::hashOf(embedded::StringView(std::string_view(narrow))),
                  embedded::hashOf(embedded::StringView(std::u16string_view(wide))))
            << length;
        const auto unit = static_cast<unsigned char>(0xC0 + length);
        narrow += static_cast<char>(unit);
        wide += static_cast<char16_t>(unit);
    }
}

TEST_F(StringHashTest, TellsTextsApart) {
    std::unordered_set<std::size_t> hashes;
    std::size_t count = 0;
    const auto add = [&](std::u16string_view text) {
        hashes.insert(embedded::hashOf(embedded::StringView(text)));
        ++count;
    };
    for (int zeros = 0; zeros < 20; ++zeros) add(std::u16string(static_cast<std::size_t>(zeros), u'\0'));
    for (char16_t unit = 1; unit < 0x1000; ++unit)
        for (const std::u16string rest : {u"", u"name", u"a longer name"}) {
            add(unit + rest);
            add(rest.empty() ? std::u16string(2, unit) : rest + unit);
        }
    add(u"ab");
    add(u"\u6261"); // the same bytes
    EXPECT_EQ(hashes.size(), count);
}

class StringHashDeathTest : public StringHashTest {
protected:
    StringHashDeathTest() { GTEST_FLAG_SET(death_test_style, "threadsafe"); }
};

TEST_F(StringHashDeathTest, IsAnotherInEachProcess) {
    const std::string variable = "TESSARIN_TEST_HASH";
    const std::string hash = std::to_string(hashOfText());
    // The other process begins with this one's variables, and leaves it as it is.
    const EnvironmentVariable kept(variable, environmentVariable(variable).value_or(hash));
    EXPECT_EXIT(
        {
            const bool isTheSame = hash == environmentVariable(variable);
            std::cerr << (isTheSame ? "the same" : "another");
            std::exit(0);
        },
        ::testing::ExitedWithCode(0), "another");
}

} // namespace
} // namespace tessarin::testing
