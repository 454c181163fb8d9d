// The embedded platform's screens, which the application describes.
#include "InterfaceTest.h"

#include <atomic>
#include <thread>

namespace tessarin::testing {
namespace {

class DescribedScreensTest : public PlatformTest {
protected:
    ~DescribedScreensTest() override { describeScreens({}); }

    static constexpr NSRect frame_ = NSMakeRect(0, 0, 1440, 900);
    static constexpr NSRect visibleFrame_ = NSMakeRect(0, 70, 1440, 807);
};

TEST_F(DescribedScreensTest, ThereAreNoneWithoutADescription) {
    describeScreens({});
    EXPECT_FALSE(NSScreen::mainScreen());
    EXPECT_EQ(NSScreen::screens().count(), 0u);
}

TEST_F(DescribedScreensTest, AreAsTheyAreDescribed) {
    describeScreens({{frame_, visibleFrame_}});
    EXPECT_EQ(NSScreen::mainScreen().frame(), frame_);
    EXPECT_EQ(NSScreen::mainScreen().visibleFrame(), visibleFrame_);
}

TEST_F(DescribedScreensTest, TheFirstIsTheMainScreen) {
    const NSRect second = NSMakeRect(1440, -100, 1920, 1080);
    describeScreens({{frame_, visibleFrame_}, {second, second}});
    ASSERT_EQ(NSScreen::screens().count(), 2u);
    EXPECT_EQ(NSScreen::mainScreen(), NSScreen::screens().objectAtIndex(0));
    EXPECT_EQ(as<NSScreen>(NSScreen::screens().objectAtIndex(1)).frame(), second);
}

TEST_F(DescribedScreensTest, StayTheSameObjectsUntilTheyAreDescribedAnew) {
    describeScreens({{frame_, visibleFrame_}});
    const NSScreen before = NSScreen::mainScreen();
    EXPECT_EQ(NSScreen::mainScreen(), before);
    describeScreens({{frame_, visibleFrame_}});
    EXPECT_NE(NSScreen::mainScreen(), before);
}

TEST_F(DescribedScreensTest, ScreensAnsweredBeforeStayAsTheyWere) {
    describeScreens({{frame_, visibleFrame_}});
    const NSScreen before = NSScreen::mainScreen();
    const NSArray all = NSScreen::screens();
    describeScreens({});
    EXPECT_EQ(before.frame(), frame_);
    EXPECT_EQ(all.count(), 1u);
}

TEST_F(DescribedScreensTest, AreAutoreleased) {
    EXPECT_EQ(ownedReferencesOfNew([] {
                  describeScreens({{frame_, visibleFrame_}});
                  const NSScreen screen = NSScreen::mainScreen();
                  describeScreens({});
                  return screen;
              }),
              0);
}

TEST_F(DescribedScreensTest, ConcurrentReadersSeeWholeDescriptions) {
    std::atomic<bool> isDone{false};
    std::vector<std::thread> readers;
    for (int reader = 0; reader < 4; ++reader)
        readers.emplace_back([&] {
            while (!isDone) {
                const AutoreleasePool pool;
                const NSScreen screen = NSScreen::mainScreen();
                EXPECT_EQ(screen.frame(), screen.visibleFrame());
                EXPECT_LE(NSScreen::screens().count(), 2u);
            }
        });
    for (int round = 0; round < 2'000; ++round) {
        const NSRect rect = NSMakeRect(0, 0, round, round);
        if (round % 3 == 0)
            describeScreens({});
        else
            describeScreens({{rect, rect}, {frame_, visibleFrame_}});
    }
    isDone = true;
    for (std::thread& reader : readers) reader.join();
}

} // namespace
} // namespace tessarin::testing
