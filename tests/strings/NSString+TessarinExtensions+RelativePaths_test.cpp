#include "StringSubclass.h"

#include "TessarinFoundation/NSString+TessarinExtensions.h"

#include <cctype>
#include <random>
#include <stdexcept>

namespace tessarin::testing {
namespace {

class RelativePathTest : public PlatformTest {
protected:
    static std::string relative(std::string_view path, std::string_view directory) {
        return text(tessarin_pathRelativeToDirectory(NSString(path), NSString(directory)));
    }
};

// ---- When the receiver comes back

TEST_F(RelativePathTest, ARelativeDirectoryGivesTheReceiverItself) {
    const NSString path = NSString(std::string("/a/b"));
    for (const NSString directory : {"a"_ns, ""_ns, "./a"_ns, "../a"_ns, " /a"_ns})
        EXPECT_EQ(tessarin_pathRelativeToDirectory(path, directory), path) << text(directory);
}

TEST_F(RelativePathTest, ANilDirectoryGivesTheReceiverItself) {
    const NSString path = NSString(std::string("/a/b"));
    EXPECT_EQ(tessarin_pathRelativeToDirectory(path, nil), path);
}

TEST_F(RelativePathTest, ARelativeReceiverComesBackItself) {
    for (const NSString path : {"a/b"_ns, ""_ns, "./a"_ns, "../a"_ns})
        EXPECT_EQ(tessarin_pathRelativeToDirectory(path, "/a"_ns), path) << text(path);
}

TEST_F(RelativePathTest, AMutableReceiverComesBackItselfToo) {
    const NSMutableString path = NSMutableString::stringWithString("a/b"_ns);
    EXPECT_EQ(tessarin_pathRelativeToDirectory(path, "/a"_ns), path);
}

TEST_F(RelativePathTest, ARelativeReceiverAndDirectoryGiveTheReceiverItself) {
    const NSString path = NSString(std::string("a/b"));
    EXPECT_EQ(tessarin_pathRelativeToDirectory(path, "a"_ns), path);
}

TEST_F(RelativePathTest, TheReceiverComesBackWithoutAnotherReference) {
    const Retained<NSString> path = retain(NSString(std::string("a relative path of this test")));
    EXPECT_EQ(referencesLeftBy([&] { return tessarin_pathRelativeToDirectory(path, "/a"_ns); }, path), 0);
}

TEST_F(RelativePathTest, ANilReceiverAnswersNil) {
    EXPECT_FALSE(tessarin_pathRelativeToDirectory(nil, "/a"_ns));
}

TEST_F(RelativePathTest, TheDirectoryIsAskedFirstWhetherItIsAbsolute) {
    static std::vector<NSString> asked;
    StringSubclass::classObject();
    static const ClassDefinition definition{{.name = "TessarinTestRelativePath",
                                             .superclass = "TessarinTestString",
                                             .methods = {instanceMethod(
                                                 "isAbsolutePath", +[](NSString self, SEL) -> BOOL {
                                                     asked.push_back(self);
                                                     return NO;
                                                 })}}};
    asked.clear();
    const NSString path = StringSubclass::make(definition.classObject(), "/a/b"_ns);
    const NSString directory = StringSubclass::make(definition.classObject(), "/a"_ns);
    EXPECT_EQ(tessarin_pathRelativeToDirectory(path, directory), path);
    EXPECT_EQ(asked, (std::vector<NSString>{directory}));

    asked.clear();
    EXPECT_EQ(tessarin_pathRelativeToDirectory(path, "/a"_ns), path);
    EXPECT_EQ(asked, (std::vector<NSString>{path}));
}

// ---- When the directory prefixes the receiver

TEST_F(RelativePathTest, APathInsideTheDirectoryIsWhatFollows) {
    EXPECT_EQ(relative("/Users/x/Music/a.wav", "/Users/x"), "Music/a.wav");
    EXPECT_EQ(relative("/a/b", "/"), "a/b");
}

TEST_F(RelativePathTest, APathRelativeToItselfIsEmpty) {
    EXPECT_EQ(relative("/a/b", "/a/b"), "");
    EXPECT_EQ(relative("/", "/"), "");
    EXPECT_EQ(relative("/a/b/", "/a/b/"), "");
}

TEST_F(RelativePathTest, APrefixEndsAnywhereWithinAComponent) {
    EXPECT_EQ(relative("/a/bc/d", "/a/b"), "c/d");
}

TEST_F(RelativePathTest, LeadingSlashesOfTheRemainderAreRemovedAndTrailingOnesKept) {
    EXPECT_EQ(relative("/a/b/c/", "/a/b"), "c/");
    EXPECT_EQ(relative("/a/b///c//d//", "/a/b"), "c//d//");
    EXPECT_EQ(relative("/a/b/", "/a/b"), "");
    EXPECT_EQ(relative("/a/b/c", "/a/b/"), "c");
}

TEST_F(RelativePathTest, TildePathsAreAbsolute) {
    EXPECT_EQ(relative("~/Music/a", "~/Music"), "a");
    EXPECT_EQ(relative("~/a", "~/b"), "../a");
    EXPECT_EQ(relative("/x", "~"), "..//x");
}

// ---- When it does not

TEST_F(RelativePathTest, ClimbsOncePerComponentOfTheDirectoryThatIsLeft) {
    EXPECT_EQ(relative("/x/y", "/a/b"), "../../x/y");
    EXPECT_EQ(relative("/a/x/y", "/a/b/c/d"), "../../../x/y");
}

TEST_F(RelativePathTest, EndsInASlashWhenNothingOfTheReceiverIsLeft) {
    EXPECT_EQ(relative("/a", "/a/b"), "../");
    EXPECT_EQ(relative("/a", "/a/b/c"), "../../");
}

TEST_F(RelativePathTest, EndsInASlashWhenTheReceiverDoes) {
    EXPECT_EQ(relative("/x/y/", "/a/b"), "../../x/y/");
    EXPECT_EQ(relative("/x/y", "/a/b"), "../../x/y");
}

TEST_F(RelativePathTest, ComponentsCompareWithoutRegardToCase) {
    EXPECT_EQ(relative("/A/x", "/a/b"), "../x");
    EXPECT_EQ(relative("/MUSIC/Loops/a", "/Music/loops/b/c"), "../../a");
}

TEST_F(RelativePathTest, NothingIsLeftOnEitherSide) { EXPECT_EQ(relative("/A/b", "/a/b"), ""); }

TEST_F(RelativePathTest, ADirectoryThatEndsInASlashCountsOneLevelMore) {
    EXPECT_EQ(relative("/a/c", "/a/b/"), "../../c");
    EXPECT_EQ(relative("/a/b", "/a/b/"), "../");
}

TEST_F(RelativePathTest, RepeatedSlashesAreEmptyComponents) {
    EXPECT_EQ(relative("/x//y", "/a//b"), "../../../x//y");
    EXPECT_EQ(relative("/A//y", "/a//b"), "../y");
}

TEST_F(RelativePathTest, DotsAreComponentsLikeOthers) {
    EXPECT_EQ(relative("/a/../x", "/a/b"), "../../x");
    EXPECT_EQ(relative("/./x", "/b"), ".././x");
}

TEST_F(RelativePathTest, CaseIsIgnoredOutsideASCIIToo) {
    EXPECT_EQ(relative("/\u00c9cho/x", "/\u00e9cho/b"), "../x");
    EXPECT_EQ(relative("/\u0416/x", "/\u0436/b"), "../x");
}

TEST_F(RelativePathTest, CaseIsIgnoredByFullFolding) {
    EXPECT_EQ(relative("/stra\u00dfe/x", "/STRASSE/b"), "../x");
    EXPECT_EQ(relative("/\ufb01lter/x", "/FILTER/b"), "../x");
    EXPECT_EQ(relative("/\u03bb\u03cc\u03b3\u03bf\u03c2/x", "/\u039b\u038c\u0393\u039f\u03a3/b"), "../x");
}

TEST_F(RelativePathTest, CanonicallyEqualComponentsMatch) {
    EXPECT_EQ(relative("/\u00e9cho/x", "/e\u0301cho/b"), "../x");
}

TEST_F(RelativePathTest, AccentsCount) { EXPECT_EQ(relative("/\u00e9/x", "/e/b"), "../../\u00e9/x"); }

TEST_F(RelativePathTest, RaisesWhenTheDirectoryRunsOutWithOnlyCaseDiffering) {
    EXPECT_THROWS_NAMED(relative("/A/b/c", "/a/b"), "NSRangeException");
    EXPECT_THROWS_NAMED(relative("/a/B/c/d", "/a/b"), "NSRangeException");
    EXPECT_THROWS_NAMED(relative("/A/", "/a"), "NSRangeException");
}

// ---- The result

TEST_F(RelativePathTest, TheResultIsImmutable) {
    const NSMutableString path = NSMutableString::stringWithString("/x/y"_ns);
    const NSString result = tessarin_pathRelativeToDirectory(path, "/a/b"_ns);
    EXPECT_FALSE(kindOf<NSMutableString>(result));
    path.setString("/changed"_ns);
    EXPECT_EQ(text(result), "../../x/y");
}

TEST_F(RelativePathTest, TheResultIsAutoreleased) {
    const NSString path = NSString(std::string("/the directory of this test/the file of this test"));
    EXPECT_EQ(ownedReferencesOfNew(
                  [&] { return tessarin_pathRelativeToDirectory(path, "/the directory of this test"_ns); }),
              0);
    EXPECT_EQ(ownedReferencesOfNew([&] { return tessarin_pathRelativeToDirectory(path, "/elsewhere"_ns); }),
              0);
}

TEST_F(RelativePathTest, WorksOnStringsOfAnApplicationsOwn) {
    const Class stringClass = StringSubclass::classObject();
    const NSString path = StringSubclass::make(stringClass, "/x/y"_ns);
    EXPECT_EQ(text(tessarin_pathRelativeToDirectory(path, StringSubclass::make(stringClass, "/x"_ns))), "y");
    EXPECT_EQ(text(tessarin_pathRelativeToDirectory(path, StringSubclass::make(stringClass, "/a/b"_ns))),
              "../../x/y");
}

TEST_F(RelativePathTest, AClassThatTrimsDifferentlyIsAsked) {
    StringSubclass::classObject();
    static const ClassDefinition definition{
        {.name = "TessarinTestTrimmingString",
         .superclass = "TessarinTestString",
         .methods = {instanceMethod(
                         "substringFromIndex:",
                         +[](NSString self, SEL, NSUInteger index) {
                             const NSString rest = sendSuper<NSString>(
                                 self, "TessarinTestTrimmingString"_class, "substringFromIndex:"_sel, index);
                             return StringSubclass::make(self.class_(), rest);
                         }),
                     instanceMethod(
                         "tessarin_stringByTrimmingLeadingCharactersInSet:",
                         +[](NSString self, SEL, NSCharacterSet set) {
                             const bool isOfSlashes =
                                 set.characterIsMember('/') && !set.characterIsMember('a');
                             return "trimmed by the subclass: "_ns.stringByAppendingString(
                                 isOfSlashes ? self : "of another set"_ns);
                         })}}};
    const NSString path = StringSubclass::make(definition.classObject(), "/a//b"_ns);
    EXPECT_EQ(text(tessarin_pathRelativeToDirectory(path, "/a"_ns)), "trimmed by the subclass: //b");
}

TEST_F(RelativePathTest, AClassThatRelatesDifferentlyIsAsked) {
    StringSubclass::classObject();
    static const ClassDefinition definition{{.name = "TessarinTestRelatingString",
                                             .superclass = "TessarinTestString",
                                             .methods = {instanceMethod(
                                                 "tessarin_pathRelativeToDirectory:",
                                                 +[](NSString, SEL, NSString) { return "overridden"_ns; })}}};
    const NSString path = StringSubclass::make(definition.classObject(), "/a/b"_ns);
    EXPECT_EQ(text(tessarin_pathRelativeToDirectory(path, "/a"_ns)), "overridden");
}

// ---- Against a model

// The operation on plain ASCII text; throws std::out_of_range where the platform's range exception is due.
std::string modelOfRelative(const std::string& path, const std::string& directory) {
    const auto isAbsolute = [](const std::string& text) {
        return !text.empty() && (text[0] == '/' || text[0] == '~');
    };
    if (!isAbsolute(directory) || !isAbsolute(path)) return path;
    if (path.starts_with(directory)) {
        const auto start = path.find_first_not_of('/', directory.size());
        return start == std::string::npos ? "" : path.substr(start);
    }

    const auto split = [](const std::string& text) {
        std::vector<std::string> components(1);
        for (const char character : text)
            if (character == '/')
                components.emplace_back();
            else
                components.back() += character;
        return components;
    };
    const auto lowerCase = [](std::string text) {
        for (char& character : text) character = static_cast<char>(std::tolower(character));
        return text;
    };
    const std::vector<std::string> pathComponents = split(path), directoryComponents = split(directory);
    std::size_t common = 0;
    for (; common < pathComponents.size(); ++common)
        if (lowerCase(pathComponents[common]) != lowerCase(directoryComponents.at(common))) break;

    std::string result;
    for (std::size_t index = common; index < directoryComponents.size(); ++index) result += "../";
    for (std::size_t index = common; index < pathComponents.size(); ++index)
        result += (index == common ? "" : "/") + pathComponents[index];
    return result;
}

TEST_F(RelativePathTest, AgreesWithAModelOnRandomPaths) {
    std::mt19937 random(31);
    const auto below = [&](unsigned bound) {
        return std::uniform_int_distribution<unsigned>(0, bound - 1)(random);
    };
    const auto randomPath = [&] {
        std::string path = below(10) == 0 ? "" : below(15) == 0 ? "~" : "/";
        for (unsigned length = below(9); length > 0; --length) path += "aAbB//"[below(6)];
        return path;
    };
    int exceptions = 0, prefixes = 0, climbs = 0;
    for (int round = 0; round < 20'000; ++round) {
        const AutoreleasePool pool;
        const std::string path = randomPath();
        std::string directory = randomPath();
        // Half of the directories begin as the path does but for case, which unrelated ones seldom do.
        if (below(2) == 0) {
            directory = path.substr(0, below(static_cast<unsigned>(path.size()) + 1));
            for (char& character : directory)
                if (below(4) == 0)
                    character = static_cast<char>(std::isupper(character) ? std::tolower(character)
                                                                          : std::toupper(character));
            if (below(3) == 0) directory += randomPath();
        }

        std::string expected;
        try {
            expected = modelOfRelative(path, directory);
        } catch (const std::out_of_range&) {
            expected = "NSRangeException";
            ++exceptions;
        }
        prefixes += path.starts_with(directory);
        climbs += expected.starts_with("../");
        const NSString result =
            attempt([&] { return tessarin_pathRelativeToDirectory(NSString(path), NSString(directory)); },
                    [](NSException exception) { return exception.name(); });
        ASSERT_EQ(text(result), expected) << path << " relative to " << directory;
    }
    EXPECT_GT(exceptions, 100);
    EXPECT_GT(prefixes, 1'000);
    EXPECT_GT(climbs, 1'000);
}

} // namespace
} // namespace tessarin::testing
