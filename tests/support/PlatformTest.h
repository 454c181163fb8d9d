// What tests of platform objects have in common.
#pragma once

#include "TessarinPlatform/TessarinPlatform.h"

#include <gtest/gtest.h>

#include <filesystem>
#include <string>
#include <string_view>
#include <vector>

namespace tessarin::testing {

// The path of a file that belongs to the tests: testFile("data/audio/parameter-description.plist").
std::string testFile(std::string_view name);

// The file of the running program; main stores it.
std::filesystem::path& testProgram();

// Keeps an autorelease pool open for each test.
class PlatformTest : public ::testing::Test {
private:
    AutoreleasePool pool_;
};

// A string as UTF-8, so that a failure shows it: EXPECT_EQ(text(string), "a/b"). nil gives (nil).
inline std::string text(NSString string) { return string ? static_cast<std::string>(string) : "(nil)"; }

// The strings of an array: EXPECT_EQ(texts(array), (Texts{"a", "b"})). An object that is no string gives its
// description.
using Texts = std::vector<std::string>;
inline Texts texts(NSArray array) {
    Texts result;
    const NSUInteger count = array.count();
    for (NSUInteger index = 0; index < count; ++index)
        result.push_back(text(static_cast<NSObject>(array.objectAtIndex(index)).description()));
    return result;
}

// The name of the platform's exception that `body` throws, (nothing) when it throws none. Anything else that
// is thrown passes through.
template <class Body>
std::string thrownName(Body&& body) {
    std::string name = "(nothing)";
    attempt([&] { static_cast<void>(body()); },
            [&](NSException exception) { name = text(exception.name()); });
    return name;
}

// EXPECT_THROWS_NAMED(array.objectAtIndex(9), "NSRangeException"); what takes more than an expression goes to
// thrownName as a lambda.
#define EXPECT_THROWS_NAMED(expression, exceptionName)                                                       \
    EXPECT_EQ(::tessarin::testing::thrownName([&] { static_cast<void>(expression); }), exceptionName)

// How many references to an object `body` leaves behind once what it autoreleased is gone: 1 for a result
// that the caller owns, 0 for one that it does not. Not for constant strings and other objects that are never
// released.
template <class Body>
NSInteger referencesLeftBy(Body&& body, NSObject object) {
    const auto before = static_cast<NSInteger>(object.retainCount());
    {
        const AutoreleasePool pool;
        static_cast<void>(body());
    }
    return static_cast<NSInteger>(object.retainCount()) - before;
}

// How many references to a new object, which `make` answers, its caller has to release: 0 for an autoreleased
// object, 1 for one that the caller owns. They are released.
template <class Make>
NSInteger ownedReferencesOfNew(Make&& make) {
    Retained<NSObject> object;
    {
        const AutoreleasePool pool;
        object = retain(static_cast<NSObject>(make()));
    }
    const auto references = static_cast<NSInteger>(object.retainCount()) - 1;
    for (NSInteger index = 0; index < references; ++index) runtime::release(object.object());
    return references;
}

// The lines that are written to standard error while it exists, by whatever means.
class CapturedStandardError {
public:
    CapturedStandardError();
    ~CapturedStandardError();
    CapturedStandardError(const CapturedStandardError&) = delete;
    CapturedStandardError& operator=(const CapturedStandardError&) = delete;

    // The lines so far, without their line breaks.
    std::vector<std::string> lines() const;

private:
    std::string path_;
    int original_; // where standard error went before
};

} // namespace tessarin::testing
