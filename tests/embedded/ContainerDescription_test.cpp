// The text of containers and dates, and the wording of the collections' exceptions, which other platforms
// choose for themselves.
#include "PlatformTest.h"

namespace tessarin::testing {
namespace {

class ContainerDescriptionTest : public PlatformTest {};
class CollectionReasonsTest : public PlatformTest {
protected:
    template <class Body>
    static std::string reasonOf(Body&& body) {
        std::string reason = "(nothing)";
        attempt([&] { body(); }, [&](NSException exception) { reason = text(exception.reason()); });
        return reason;
    }
    const NSMutableArray array_ = NSMutableArray::arrayWithArray(NSArray::arrayOf("a"_ns, "b"_ns));
    const NSMutableDictionary dictionary_ = NSMutableDictionary::dictionary();
};

TEST_F(ContainerDescriptionTest, AnArrayShowsOneObjectALine) {
    EXPECT_EQ(text(NSArray::arrayOf(NSNumber::numberWithInt(1), "two"_ns).description()),
              "(\n    1,\n    two\n)");
    EXPECT_EQ(text(NSArray::array().description()), "(\n)");
}

TEST_F(ContainerDescriptionTest, ADictionaryShowsItsKeysInOrder) {
    const NSMutableDictionary dictionary = NSMutableDictionary::dictionary();
    dictionary.setObject_forKey(NSNumber::numberWithInt(1), "k2"_ns);
    dictionary.setObject_forKey(NSNumber::numberWithInt(3), "k1"_ns);
    EXPECT_EQ(text(dictionary.description()), "{\n    k1 = 3;\n    k2 = 1;\n}");
    EXPECT_EQ(text(NSDictionary::dictionary().description()), "{\n}");
}

TEST_F(ContainerDescriptionTest, InnerContainersAreIndented) {
    const NSArray inner = NSArray::arrayOf(NSNumber::numberWithInt(1), NSArray::array());
    EXPECT_EQ(text(NSDictionary::dictionaryWithObject_forKey(inner, "k"_ns).description()),
              "{\n    k =     (\n        1,\n                (\n        )\n    );\n}");
}

TEST_F(ContainerDescriptionTest, WhatIsNotPlainIsQuoted) {
    const NSArray array =
        NSArray::arrayOf("two words"_ns, ""_ns, NSNumber::numberWithDouble(0.5), NSNumber::numberWithInt(-1),
                         NSNull::null(), "say \"\\\"\n"_ns, NSString("\u00e9\U0001F600"));
    EXPECT_EQ(text(array.description()),
              "(\n    \"two words\",\n    \"\",\n    \"0.5\",\n    \"-1\",\n    \"<null>\",\n"
              "    \"say \\\"\\\\\\\"\\n\",\n    \"\\U00e9\\Ud83d\\Ude00\"\n)");
}

TEST_F(ContainerDescriptionTest, DataIsNotQuoted) {
    EXPECT_EQ(text(NSArray::arrayWithObject(NSData::dataWithBytes_length("Hello", 5)).description()),
              "(\n    <48656c6c 6f>\n)");
}

TEST_F(ContainerDescriptionTest, DatesAreInUniversalTime) {
    const auto shown = [](NSTimeInterval seconds) {
        return text(NSDate::dateWithTimeIntervalSinceReferenceDate(seconds).description());
    };
    EXPECT_EQ(shown(0), "2001-01-01 00:00:00 +0000");
    EXPECT_EQ(shown(1389044286.5453091 - 978307200), "2014-01-06 21:38:06 +0000");
    EXPECT_EQ(shown(-0.5), "2000-12-31 23:59:59 +0000");
    EXPECT_EQ(shown(1e300).substr(0, 5), "10000");
}

// ---- Descriptions that would be larger than memory

constexpr std::size_t longest = std::size_t{64} << 20;

// An array of which each level holds the next one twice.
NSArray doubled(int levels) {
    NSArray array = NSArray::arrayOf("innermost"_ns);
    for (int level = 0; level < levels; ++level) array = NSArray::arrayOf(array, array);
    return array;
}

TEST_F(ContainerDescriptionTest, AContainerInManyPlacesIsShownInFewOfThem) {
    const auto shown = text(doubled(20).description());
    EXPECT_GT(shown.size(), longest);
    EXPECT_LT(shown.size(), longest + longest / 16);
    EXPECT_TRUE(shown.ends_with("),\n    ...\n)")) << shown.substr(shown.size() - 80);
}

TEST_F(ContainerDescriptionTest, ALongTextInManyPlacesIsShownInFewOfThem) {
    const NSString longText = NSString(std::string(longest / 8, 'x'));
    const NSMutableArray array = NSMutableArray::array();
    for (int place = 0; place < 20; ++place) array.addObject(longText);
    array.addObject("short"_ns);
    array.addObject("short"_ns);
    const auto shown = text(array.description());
    EXPECT_LT(shown.size(), longest + longest / 4);
    EXPECT_TRUE(shown.ends_with(",\n    ...,\n    ...,\n    short,\n    short\n)"))
        << shown.substr(shown.size() - 80);
}

TEST_F(ContainerDescriptionTest, TheAttributesOfAllRunsAreOneDescription) {
    const Retained<NSMutableAttributedString> string =
        adopt(NSMutableAttributedString::alloc().initWithString("abc"_ns));
    for (NSUInteger place = 0; place < 3; ++place)
        string.addAttribute_value_range(
            "k"_ns, NSArray::arrayOf(doubled(20), NSNumber::numberWithUnsignedInteger(place)), {place, 1});
    EXPECT_LT(text(string.description()).size(), longest + longest / 8);
}

// ---- Reasons

TEST_F(CollectionReasonsTest, NameTheIndexAndTheBounds) {
    EXPECT_EQ(reasonOf([&] { array_.objectAtIndex(9); }),
              "*** -[NSMutableArray objectAtIndex:]: index 9 beyond bounds [0 .. 1]");
    EXPECT_EQ(reasonOf([&] { NSArray::array().objectAtIndex(0); }),
              "*** -[NSArray objectAtIndex:]: index 0 beyond bounds for empty array");
    EXPECT_EQ(reasonOf([&] { array_.insertObject_atIndex("x"_ns, 5); }),
              "*** -[NSMutableArray insertObject:atIndex:]: index 5 beyond bounds [0 .. 1]");
    EXPECT_EQ(
        reasonOf([&] { array_.exchangeObjectAtIndex_withObjectAtIndex(0, 10); }),
        "*** -[NSMutableArray exchangeObjectAtIndex:withObjectAtIndex:]: index 10 beyond bounds [0 .. 1]");
    EXPECT_EQ(reasonOf([&] {
                  array_.subarrayWithRange({5, 1});
              }),
              "*** -[NSMutableArray subarrayWithRange:]: range {5, 1} extends beyond bounds [0 .. 1]");
}

TEST_F(CollectionReasonsTest, SayWhatIsNil) {
    EXPECT_EQ(reasonOf([&] { array_.addObject(nil); }),
              "*** -[NSMutableArray insertObject:atIndex:]: object cannot be nil");
    EXPECT_EQ(reasonOf([&] { NSArray::arrayOf("a"_ns, NSString()); }),
              "*** -[NSArray initWithObjects:count:]: attempt to insert nil object from objects[1]");
    EXPECT_EQ(reasonOf([&] { dictionary_.setObject_forKey(nil, "keypath"_ns); }),
              "*** -[NSMutableDictionary setObject:forKey:]: object cannot be nil (key: keypath)");
    EXPECT_EQ(reasonOf([&] { dictionary_.setObject_forKey("x"_ns, nil); }),
              "*** -[NSMutableDictionary setObject:forKey:]: key cannot be nil");
    EXPECT_EQ(reasonOf([&] { dictionary_.removeObjectForKey(nil); }),
              "*** -[NSMutableDictionary removeObjectForKey:]: key cannot be nil");
}

TEST_F(CollectionReasonsTest, SayWhatWasChanged) {
    const auto reason = reasonOf([&] {
        for (const NSString item : array_) array_.addObject(item);
    });
    EXPECT_EQ(reason.substr(0, 32), "*** Collection <NSMutableArray: ");
    EXPECT_NE(reason.find("> was mutated while being enumerated."), std::string::npos);
}

} // namespace
} // namespace tessarin::testing
