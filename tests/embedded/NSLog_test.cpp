#include "PlatformTest.h"

#include <regex>
#include <set>
#include <thread>

#include <unistd.h>

namespace tessarin::testing {
namespace {

class NSLogTest : public PlatformTest {};

std::vector<std::string> logged(NSString text) {
    const CapturedStandardError captured;
    logText(text);
    return captured.lines();
}

TEST_F(NSLogTest, ALineHasDateTimeProgramProcessAndThread) {
    const std::vector<std::string> lines = logged("some text"_ns);
    ASSERT_EQ(lines.size(), 1u);
    const std::regex form(R"(\d{4}-\d\d-\d\d \d\d:\d\d:\d\d\.\d{3} (\S+)\[(\d+):(\d+)\] some text)");
    std::smatch parts;
    ASSERT_TRUE(std::regex_match(lines[0], parts, form)) << lines[0];
    EXPECT_EQ(parts[2], std::to_string(getpid()));
    EXPECT_EQ(parts[1], TESSARIN_TEST_EXECUTABLE);
}

TEST_F(NSLogTest, WritesTextInUTF8) {
    const std::vector<std::string> lines = logged(u"gr\u00fc\u00dfe \U0001D11E"_ns);
    ASSERT_EQ(lines.size(), 1u);
    EXPECT_TRUE(lines[0].ends_with("] gr\u00fc\u00dfe \U0001D11E")) << lines[0];
}

TEST_F(NSLogTest, ALineBreakAtTheEndIsNotDoubled) { EXPECT_EQ(logged("text\n"_ns).size(), 1u); }

TEST_F(NSLogTest, NilIsShown) {
    const std::vector<std::string> lines = logged(nil);
    ASSERT_EQ(lines.size(), 1u);
    EXPECT_TRUE(lines[0].ends_with("] (null)")) << lines[0];
}

TEST_F(NSLogTest, FormatsArguments) {
    const CapturedStandardError captured;
    NSLog("%@ of %d, 100%%"_ns, "one"_ns, 7);
    const std::vector<std::string> lines = captured.lines();
    ASSERT_EQ(lines.size(), 1u);
    EXPECT_TRUE(lines[0].ends_with("] one of 7, 100%")) << lines[0];
}

TEST_F(NSLogTest, ConcurrentLinesStayWhole) {
    constexpr int threadCount = 4;
    constexpr int linesPerThread = 250;
    const std::string longText(2000, 'x');
    const CapturedStandardError captured;
    std::vector<std::thread> threads;
    for (int thread = 0; thread < threadCount; ++thread)
        threads.emplace_back([&] {
            const AutoreleasePool pool;
            const NSString text(longText);
            for (int line = 0; line < linesPerThread; ++line) logText(text);
        });
    for (std::thread& thread : threads) thread.join();
    const std::vector<std::string> lines = captured.lines();
    EXPECT_EQ(lines.size(), std::size_t{threadCount * linesPerThread});
    std::set<std::string> threadNumbers;
    for (const std::string& line : lines) {
        ASSERT_TRUE(line.ends_with("] " + longText)) << line.substr(0, 100);
        const std::size_t colon = line.find(':', line.find('['));
        threadNumbers.insert(line.substr(colon, line.find(']') - colon));
    }
    EXPECT_EQ(threadNumbers.size(), std::size_t{threadCount});
}

} // namespace
} // namespace tessarin::testing
