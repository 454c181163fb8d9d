// Handles with the standard library: containers, ranges, streams, formatting.
#include "PlatformTest.h"

#include "TessarinPlatform/Comparison.h"
#include "TessarinPlatform/Formatting.h"
#include "TessarinPlatform/Ranges.h"

#include <algorithm>
#include <map>
#include <set>
#include <sstream>
#include <unordered_set>

#if __has_include(<fmt/format.h>)
#    define FMT_HEADER_ONLY
#    include "TessarinPlatform/FmtFormatting.h"
#endif

namespace tessarin::testing {
namespace {

static_assert(std::ranges::input_range<NSArray> && std::ranges::borrowed_range<NSArray>);
static_assert(std::ranges::input_range<NSMutableArray> && std::ranges::borrowed_range<NSMutableArray>);
static_assert(std::ranges::input_range<NSDictionary> && std::ranges::borrowed_range<NSDictionary>);
static_assert(std::ranges::forward_range<NSIndexSet> && std::ranges::common_range<NSIndexSet>);
static_assert(std::ranges::borrowed_range<NSMutableIndexSet>);
// What owns the object must outlive the walk.
static_assert(!std::ranges::borrowed_range<Retained<NSArray>>);

class StandardLibraryTest : public PlatformTest {
protected:
    static NSIndexSet indexes(std::initializer_list<NSUInteger> members) {
        const NSMutableIndexSet set = adopt(NSMutableIndexSet::alloc().init()).autorelease();
        for (const NSUInteger index : members) set.addIndex(index);
        return set;
    }
    // Equal to others of the same text, and never the same object.
    static Retained<NSString> another(std::string_view characters) {
        return adopt(NSString(NSString(characters).mutableCopy()));
    }
};

TEST_F(StandardLibraryTest, AnArrayIsARange) {
    const NSArray names = NSArray::arrayOf("Delay"_ns, "Reverb"_ns, "Dynamics"_ns);
    const auto beginsWithD = [](NSString name) { return name.hasPrefix("D"_ns); };
    EXPECT_EQ(std::ranges::count_if(names, beginsWithD), 2);
}

// Clang before 16 does not compile the views of GCC's library.
#if !defined(__clang__) || __clang_major__ >= 16
TEST_F(StandardLibraryTest, AnArrayGoesThroughViews) {
    const NSArray names = NSArray::arrayOf("Delay"_ns, "Reverb"_ns, "Dynamics"_ns);
    const auto beginsWithD = [](NSString name) { return name.hasPrefix("D"_ns); };
    std::vector<std::string> found;
    for (const NSString name : names | std::views::filter(beginsWithD)) found.push_back(text(name));
    EXPECT_EQ(found, (std::vector<std::string>{"Delay", "Dynamics"}));
}
#endif

TEST_F(StandardLibraryTest, ADictionaryIsARangeOfItsKeys) {
    const NSDictionary dictionary = NSDictionary::dictionaryWithObject_forKey("value"_ns, "key"_ns);
    EXPECT_TRUE(std::ranges::any_of(dictionary, [](NSString key) { return key.isEqual("key"_ns); }));
}

TEST_F(StandardLibraryTest, AnIndexSetIsARangeOfAscendingIndexes) {
    const NSIndexSet set = indexes({70, 2, 1'000'000, 3});
    EXPECT_EQ((std::vector<NSUInteger>(set.begin(), set.end())),
              (std::vector<NSUInteger>{2, 3, 70, 1'000'000}));
    EXPECT_EQ(*std::ranges::find_if(set, [](NSUInteger index) { return index > 3; }), 70u);
}

TEST_F(StandardLibraryTest, AnEmptyAndANilIndexSetHaveNoIndexes) {
    EXPECT_TRUE(std::ranges::empty(indexes({})));
    EXPECT_TRUE(std::ranges::empty(NSIndexSet()));
}

TEST_F(StandardLibraryTest, HandlesHashByTheObjectTheyAreOf) {
    const Retained<NSString> first = another("text"), second = another("text");
    const std::unordered_set<NSString> both{first, second, first};
    EXPECT_EQ(both.size(), 2u);
    EXPECT_TRUE(both.contains(NSString(first.object())));
}

TEST_F(StandardLibraryTest, EqualObjectsAreOneKeyByTheirOwnHashAndEquality) {
    std::unordered_set<Retained<NSString>, ObjectHash, ObjectEqual> names;
    names.insert(another("text"));
    EXPECT_FALSE(names.insert(another("text")).second);
    EXPECT_TRUE(names.contains("text"_ns));
    EXPECT_TRUE(names.insert(Retained<NSString>()).second);
    EXPECT_FALSE(names.insert(Retained<NSString>()).second);
}

TEST_F(StandardLibraryTest, KeysAreSortedByTheirOwnComparison) {
    std::map<Retained<NSString>, int, ObjectLess> positions;
    positions[another("b")] = 2;
    positions[another("a")] = 1;
    positions[another("b")] = 3;
    positions[Retained<NSString>()] = 0;
    std::vector<int> values;
    for (const auto& [key, value] : positions) values.push_back(value);
    EXPECT_EQ(values, (std::vector<int>{0, 1, 3}));
}

TEST_F(StandardLibraryTest, AnObjectIsWrittenAsItsDescription) {
    std::ostringstream stream;
    stream << NSNumber::numberWithInt(5) << ' ' << "text"_ns << ' ' << NSObject();
    EXPECT_EQ(stream.str(), "5 text (null)");
}

#if defined(__cpp_lib_format)
TEST_F(StandardLibraryTest, AnObjectIsFormattedAsItsDescription) {
    EXPECT_EQ(std::format("{} {:>6} {}", NSNumber::numberWithInt(5), "text"_ns, NSObject()),
              "5   text (null)");
}
#endif

#if defined(FMT_VERSION)
TEST_F(StandardLibraryTest, AnObjectIsFormattedByFmtAsItsDescription) {
    EXPECT_EQ(fmt::format("{} {:>6} {}", NSNumber::numberWithInt(5), "text"_ns, NSObject()),
              "5   text (null)");
}
#endif

} // namespace
} // namespace tessarin::testing
