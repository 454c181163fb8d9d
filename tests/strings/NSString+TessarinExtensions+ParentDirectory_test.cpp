#include "StringSubclass.h"

#include "TessarinFoundation/NSString+TessarinExtensions.h"

#include <algorithm>
#include <random>
#include <stdexcept>

namespace tessarin::testing {
namespace {

class ParentDirectoryTest : public PlatformTest {
protected:
    static NSArray paths(const Texts& list) {
        const NSMutableArray array = NSMutableArray::array();
        for (const std::string& path : list) array.addObject(NSString(path));
        return array;
    }
    static std::string parent(const Texts& list) {
        return text(tessarin_parentDirectoryForPaths(paths(list)));
    }
};

// ---- The parent

TEST_F(ParentDirectoryTest, OfASinglePathIsWhereItLies) {
    EXPECT_EQ(parent({"/a/b/c.txt"}), "/a/b");
    EXPECT_EQ(parent({"/a"}), "/");
    EXPECT_EQ(parent({"a/b"}), "a");
}

TEST_F(ParentDirectoryTest, OfSeveralPathsIsTheDeepestThatHoldsThemAll) {
    EXPECT_EQ(parent({"/a/b/x", "/a/c/y"}), "/a");
    EXPECT_EQ(parent({"/a/b/x", "/a/b/y"}), "/a/b");
    EXPECT_EQ(parent({"/a/b/x", "/a/b/c/d/y", "/a/b/c/z"}), "/a/b");
    EXPECT_EQ(parent({"a/b/x", "a/c/y"}), "a");
}

TEST_F(ParentDirectoryTest, APathHoldsNoneButThoseBelowIt) {
    EXPECT_EQ(parent({"/a/b", "/a/b/c"}), "/a");
    EXPECT_EQ(parent({"/a/b/c", "/a/b"}), "/a");
}

TEST_F(ParentDirectoryTest, OfPathsThatShareTheRootOnlyIsTheRoot) {
    EXPECT_EQ(parent({"/x/1", "/y/2"}), "/");
    EXPECT_EQ(parent({"/x", "/y"}), "/");
}

TEST_F(ParentDirectoryTest, OfPathsThatShareNothingIsTheEmptyString) {
    EXPECT_EQ(parent({"a/x", "b/y"}), "");
    EXPECT_EQ(parent({"/a/x", "a/x"}), "");
}

TEST_F(ParentDirectoryTest, OfEqualPathsIsWhereTheyLie) { EXPECT_EQ(parent({"/a/b", "/a/b", "/a/b"}), "/a"); }

TEST_F(ParentDirectoryTest, IsTheSameInEveryOrderOfThePaths) {
    Texts list = {"/a/b/c/d", "/a/b/e", "/a/b/c/x/y", "/a/b/z"};
    std::sort(list.begin(), list.end());
    do EXPECT_EQ(parent(list), "/a/b");
    while (std::next_permutation(list.begin(), list.end()));
}

TEST_F(ParentDirectoryTest, ComparesWithRegardToCase) { EXPECT_EQ(parent({"/A/x", "/a/y"}), "/"); }

TEST_F(ParentDirectoryTest, ComparesWholeComponents) { EXPECT_EQ(parent({"/abc/x", "/abd/x"}), "/"); }

TEST_F(ParentDirectoryTest, ComparesUnitsAndNotCanonicalForms) {
    EXPECT_EQ(parent({"/\u00e9cho/x", "/e\u0301cho/y"}), "/");
}

TEST_F(ParentDirectoryTest, ATrailingSlashIsAComponentOfItsOwn) {
    EXPECT_EQ(parent({"/a/b/"}), "/a/b");
    EXPECT_EQ(parent({"//"}), "/");
    EXPECT_EQ(parent({"a/"}), "a");
    EXPECT_EQ(parent({"/a/b/", "/a/b/c"}), "/a/b");
}

TEST_F(ParentDirectoryTest, RepeatedSlashesCountOnce) { EXPECT_EQ(parent({"//a///b//x", "/a/b/y"}), "/a/b"); }

TEST_F(ParentDirectoryTest, TwoLeadingSlashesAreNoRootOfTheirOwn) {
    EXPECT_EQ(parent({"//a/b/"}), "/a/b");
    EXPECT_EQ(parent({"//a/b/c"}), "/a/b");
}

TEST_F(ParentDirectoryTest, DotsAreComponentsLikeOthers) { EXPECT_EQ(parent({"/a/../b"}), "/a/.."); }

TEST_F(ParentDirectoryTest, ExpandsALeadingTilde) {
    const std::string home = text(homeDirectory());
    ASSERT_TRUE(home.starts_with("/")) << home;
    EXPECT_EQ(parent({"~/x/y"}), home + "/x");
    EXPECT_EQ(parent({"~/x/y", home + "/x/z"}), home + "/x");
    EXPECT_EQ(parent({"~/x"}), home);
    EXPECT_EQ(parent({"a/~/x"}), "a/~");
}

TEST_F(ParentDirectoryTest, TheTildeOfAnUnknownAccountStays) {
    EXPECT_EQ(parent({"~no account of this name/x/y"}), "~no account of this name/x");
}

// ---- Nil and the empty string

TEST_F(ParentDirectoryTest, AnEmptyListGivesNil) { EXPECT_EQ(parent({}), "(nil)"); }

TEST_F(ParentDirectoryTest, ANilListGivesNil) { EXPECT_FALSE(tessarin_parentDirectoryForPaths(nil)); }

TEST_F(ParentDirectoryTest, AShortestPathOfASingleComponentGivesNil) {
    EXPECT_EQ(parent({"a"}), "(nil)");
    EXPECT_EQ(parent({"/"}), "(nil)");
    EXPECT_EQ(parent({"/a/b", "a"}), "(nil)");
    EXPECT_EQ(parent({"/", "/a/b"}), "(nil)");
}

TEST_F(ParentDirectoryTest, AnEmptyPathGivesTheEmptyString) {
    EXPECT_EQ(parent({""}), "");
    EXPECT_EQ(parent({"", "/a/b"}), "");
    EXPECT_EQ(parent({"a/x", ""}), "");
    EXPECT_EQ(parent({"a", ""}), "");
}

TEST_F(ParentDirectoryTest, NoPathAfterAnEmptyOneIsLookedAt) {
    const CapturedStandardError log;
    const NSArray list = NSArray::arrayOf(""_ns, NSNumber::numberWithInt(1));
    EXPECT_EQ(text(tessarin_parentDirectoryForPaths(list)), "");
    EXPECT_EQ(log.lines(), Texts{});
}

// ---- The result's class and owner

TEST_F(ParentDirectoryTest, IsAnImmutableStringOfTheStringClass) {
    EXPECT_FALSE(kindOf<NSMutableString>(tessarin_parentDirectoryForPaths(paths({"/a/b"}))));
}

TEST_F(ParentDirectoryTest, IsAMutableStringWhenThatClassIsAsked) {
    for (const auto& [list, expected] : {std::pair<Texts, std::string>{{"/a/b"}, "/a"},
                                         {{"/a/b/x", "/a/b/y"}, "/a/b"},
                                         {{"a/x", "b/y"}, ""},
                                         {{""}, ""}}) {
        const auto result = tessarin_parentDirectoryForPaths<NSMutableString>(paths(list));
        ASSERT_TRUE(kindOf<NSMutableString>(result));
        EXPECT_EQ(text(result), expected);
        result.appendString("!"_ns);
        EXPECT_EQ(text(result), expected + "!");
    }
    EXPECT_FALSE(tessarin_parentDirectoryForPaths<NSMutableString>(paths({})));
}

TEST_F(ParentDirectoryTest, IsAStringOfAnApplicationsOwnClassWhenThatIsAsked) {
    const Class stringClass = StringSubclass::classObject();
    for (const auto& [list, expected] :
         {std::pair<Texts, std::string>{{"/a/b/x", "/a/b/y"}, "/a/b"}, {{"a/x", "b/y"}, ""}, {{""}, ""}}) {
        const NSString result = tessarin_parentDirectoryForPaths(stringClass, paths(list));
        EXPECT_TRUE(result.isMemberOfClass(stringClass));
        EXPECT_EQ(text(result), expected);
    }
}

TEST_F(ParentDirectoryTest, IsAutoreleasedIntoTheCallersPool) {
    EXPECT_EQ(ownedReferencesOfNew(
                  [] { return tessarin_parentDirectoryForPaths(paths({"/a parent of this test/a file"})); }),
              0);
    EXPECT_EQ(ownedReferencesOfNew([] {
                  return tessarin_parentDirectoryForPaths<NSMutableString>(
                      paths({"/a parent of this test/x"}));
              }),
              0);
}

TEST_F(ParentDirectoryTest, WorksOnStringsOfAnApplicationsOwn) {
    const Class stringClass = StringSubclass::classObject();
    EXPECT_EQ(
        text(tessarin_parentDirectoryForPaths(NSArray::arrayOf(
            StringSubclass::make(stringClass, "/a/b/x"_ns), StringSubclass::make(stringClass, "/a/c/y"_ns)))),
        "/a");
}

// ---- What happens inside

// A string class whose expansion of tildes is `expand`.
template <NSString (*expand)(NSString)>
Class expandingClass(const char* name) {
    StringSubclass::classObject();
    static const ClassDefinition definition{
        {.name = name,
         .superclass = "TessarinTestString",
         .methods = {instanceMethod(
             "stringByExpandingTildeInPath", +[](NSString self, SEL) { return expand(self); })}}};
    return definition.classObject();
}

NSString expandIntoAnother(NSString) {
    return StringSubclass::make(StringSubclass::classObject(), "/a/b/c"_ns);
}
NSString expandIntoAnotherAndRaise(NSString string) {
    expandIntoAnother(string);
    raise("TestException"_ns, "of this test"_ns);
}
NSString expandIntoAnotherAndThrow(NSString string) {
    expandIntoAnother(string);
    throw std::runtime_error("of this test");
}

TEST_F(ParentDirectoryTest, ReleasesItsTemporariesBeforeItReturns) {
    const NSString path =
        StringSubclass::make(expandingClass<expandIntoAnother>("TessarinTestExpandingString"), "~"_ns);
    const NSArray list = NSArray::arrayOf(path, path, path);
    const int before = StringSubclass::instances;
    EXPECT_EQ(text(tessarin_parentDirectoryForPaths(list)), "/a/b");
    EXPECT_EQ(StringSubclass::instances, before);
}

TEST_F(ParentDirectoryTest, AnExceptionOfAnyNameIsLoggedAndGivesNil) {
    const NSString path =
        StringSubclass::make(expandingClass<expandIntoAnotherAndRaise>("TessarinTestRaisingString"), "~"_ns);
    const NSArray list = NSArray::arrayOf("/a/b"_ns, path, "/a/c"_ns);
    const int before = StringSubclass::instances;
    const CapturedStandardError log;
    EXPECT_FALSE(tessarin_parentDirectoryForPaths(list));
    ASSERT_EQ(log.lines().size(), 1u);
    EXPECT_TRUE(log.lines()[0].ends_with("Exception: TestException, reason: of this test")) << log.lines()[0];
    EXPECT_EQ(StringSubclass::instances, before);
}

TEST_F(ParentDirectoryTest, WhatIsNoExceptionOfThePlatformPassesThrough) {
    const NSString path =
        StringSubclass::make(expandingClass<expandIntoAnotherAndThrow>("TessarinTestThrowingString"), "~"_ns);
    const NSArray list = NSArray::arrayOf("/a/b"_ns, path);
    const int before = StringSubclass::instances;
    const CapturedStandardError log;
    EXPECT_THROW(tessarin_parentDirectoryForPaths(list), std::runtime_error);
    EXPECT_EQ(log.lines(), Texts{});
    EXPECT_EQ(StringSubclass::instances, before);
}

TEST_F(ParentDirectoryTest, ANumberInTheListIsLoggedInOneLineAndGivesNil) {
    for (const NSArray list : {NSArray::arrayOf(NSNumber::numberWithInt(7)),
                               NSArray::arrayOf("/a/b"_ns, NSNumber::numberWithInt(7), "/a/c"_ns),
                               NSArray::arrayOf("/a/b"_ns, NSNull::null())}) {
        const CapturedStandardError log;
        EXPECT_FALSE(tessarin_parentDirectoryForPaths(list));
        ASSERT_EQ(log.lines().size(), 1u);
        const std::string line = log.lines()[0];
        const std::string message = "Exception: NSInvalidArgumentException, reason: ";
        const auto start = line.find(message);
        ASSERT_NE(start, std::string::npos) << line;
        EXPECT_GT(line.size(), start + message.size()) << line;
    }
}

TEST_F(ParentDirectoryTest, LogsNothingWhenNothingIsRaised) {
    const CapturedStandardError log;
    EXPECT_EQ(parent({"/a/b"}), "/a");
    EXPECT_EQ(parent({}), "(nil)");
    EXPECT_EQ(log.lines(), Texts{});
}

TEST_F(ParentDirectoryTest, TheResultSurvivesTheOperationsOwnScope) {
    NSString result;
    {
        const NSArray list =
            paths({"/a rather long parent/of this test/x", "/a rather long parent/of this test/y"});
        result = tessarin_parentDirectoryForPaths(list);
    }
    for (int round = 0; round < 100; ++round)
        NSString(std::string("something else of about the same length"));
    EXPECT_EQ(text(result), "/a rather long parent/of this test");
}

TEST_F(ParentDirectoryTest, ManyPaths) {
    Texts list;
    for (int index = 0; index < 10'000; ++index)
        list.push_back("/Users/x/Music/" + std::to_string(index % 7) + "/" + std::to_string(index));
    EXPECT_EQ(parent(list), "/Users/x/Music");
}

// ---- Against a model

// What the operation answers for ASCII paths without tildes; (nil) for nil.
std::string modelOfParent(const Texts& list) {
    std::vector<Texts> parents;
    for (const std::string& path : list) {
        Texts components;
        if (path.starts_with("/")) components.push_back("/");
        std::string component;
        for (const char character : path + "/") {
            if (character != '/')
                component += character;
            else if (!component.empty())
                components.push_back(std::exchange(component, ""));
        }
        if (path.size() > 1 && path.ends_with("/")) components.push_back("/");
        if (components.empty()) return "";
        components.pop_back();
        parents.push_back(components);
    }
    if (parents.empty()) return "(nil)";
    const Texts& shortest =
        *std::min_element(parents.begin(), parents.end(),
                          [](const Texts& left, const Texts& right) { return left.size() < right.size(); });
    if (shortest.empty()) return "(nil)";
    std::string result;
    for (std::size_t index = 0; index < shortest.size(); ++index) {
        for (const Texts& parent : parents)
            if (parent[index] != shortest[index]) return result;
        if (!result.empty() && result != "/") result += "/";
        result += shortest[index];
    }
    return result;
}

TEST_F(ParentDirectoryTest, AgreesWithAModelOnRandomPaths) {
    std::mt19937 random(32);
    const auto below = [&](unsigned bound) {
        return std::uniform_int_distribution<unsigned>(0, bound - 1)(random);
    };
    for (int round = 0; round < 10'000; ++round) {
        const AutoreleasePool pool;
        const std::string common = below(4) == 0 ? "" : below(2) == 0 ? "/a/B/" : "a//b/";
        Texts list;
        for (unsigned count = below(5); count > 0; --count) {
            std::string path = common;
            for (unsigned length = below(7); length > 0; --length) path += "abA///"[below(6)];
            // Two slashes at the beginning have a test of their own.
            while (path.starts_with("//")) path.erase(0, 1);
            list.push_back(path);
        }
        ASSERT_EQ(parent(list), modelOfParent(list)) << ::testing::PrintToString(list);
    }
}

} // namespace
} // namespace tessarin::testing
