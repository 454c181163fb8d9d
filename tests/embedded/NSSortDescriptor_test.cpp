// What the embedded platform promises of sort descriptors beyond the platform's own contract.
#include "Archived.h"
#include "PlatformTest.h"

namespace tessarin::testing {
namespace {

NSSortDescriptor by(NSString key, bool ascending = true, SEL selector = "compare:"_sel) {
    return NSSortDescriptor::sortDescriptorWithKey_ascending_selector(key, ascending, selector);
}

// Counts how often it is asked for its name, and edits an array when it is.
struct Watch {
    int questions = 0;
    NSMutableArray edited;
};

NSString nameOf(NSObject self, SEL) {
    auto* const watch = instanceVariableOf<Watch*>(self, "watch");
    ++watch->questions;
    if (watch->edited) watch->edited.removeAllObjects();
    return instanceVariableOf<NSString>(self, "text");
}

class EmbeddedSortDescriptorTest : public PlatformTest {
protected:
    NSObject watched(const char* name) {
        static const ClassDefinition definition{
            {.name = "EmbeddedSortDescriptorTestWatched",
             .instanceVariables = {instanceVariable<Watch*>("watch"), instanceVariable<NSString>("text")},
             .methods = {instanceMethod("name", nameOf)}}};
        const NSObject made =
            adopt(send<NSObject>(NSObject(definition.classObject().alloc()), "init"_sel)).autorelease();
        instanceVariableOf<Watch*>(made, "watch") = &watch;
        instanceVariableOf<NSString>(made, "text") = NSString(std::string(name));
        return made;
    }

    Watch watch;
};

TEST_F(EmbeddedSortDescriptorTest, AsksEachItemOnceForItsValue) {
    const NSArray items =
        NSArray::arrayOf(watched("d"), watched("b"), watched("a"), watched("c"), watched("f"), watched("e"));
    const NSArray sorted = items.sortedArrayUsingDescriptors(NSArray::arrayOf(by("name"_ns)));
    EXPECT_EQ(watch.questions, 6);
    EXPECT_EQ(texts(sorted.valueForKey("name"_ns)), (Texts{"a", "b", "c", "d", "e", "f"}));
}

TEST_F(EmbeddedSortDescriptorTest, AsksEachItemInTheWayOfItsClass) {
    static const ClassDefinition definition{
        {.name = "EmbeddedSortDescriptorTestReader",
         .methods = {instanceMethod(
                         "valueForKey:", +[](NSObject, SEL, NSString) { return id("c"_ns); }),
                     instanceMethod(
                         "name", +[](NSObject, SEL) { return "z"_ns; })}}};
    const NSObject reader =
        adopt(send<NSObject>(NSObject(definition.classObject().alloc()), "init"_sel)).autorelease();
    const NSArray items = NSArray::arrayOf(
        watched("d"), reader, NSDictionary::dictionaryWithObject_forKey("a"_ns, "name"_ns), watched("b"));
    const NSArray sorted = items.sortedArrayUsingDescriptors(NSArray::arrayOf(by("name"_ns)));
    EXPECT_EQ(texts(sorted.valueForKey("name"_ns)), (Texts{"a", "b", "c", "d"}));
    // A value that is no object comes as a number.
    const NSArray words = NSArray::arrayOf("ccc"_ns, "a"_ns, "bb"_ns);
    EXPECT_EQ(texts(words.sortedArrayUsingDescriptors(NSArray::arrayOf(by("length"_ns, false)))),
              (Texts{"ccc", "bb", "a"}));
    EXPECT_THROWS_NAMED(words.sortedArrayUsingDescriptors(NSArray::arrayOf(by("release"_ns))),
                        "NSUnknownKeyException");
}

TEST_F(EmbeddedSortDescriptorTest, AsksForTheNextKeyOnlyWhereItDecides) {
    const NSArray items = NSArray::arrayOf("b"_ns, "a"_ns, "c"_ns);
    const NSArray sorted = items.sortedArrayUsingDescriptors(NSArray::arrayOf(by("self"_ns), by("nope"_ns)));
    EXPECT_EQ(texts(sorted), (Texts{"a", "b", "c"}));
}

TEST_F(EmbeddedSortDescriptorTest, AsksOnlyWhatIsTheSameForTheNextKey) {
    // The names' lengths tell apart what is not asked for its name again.
    const NSArray items = NSArray::arrayOf(watched("ccc"), watched("b"), watched("aa"), watched("a"));
    const NSArray sorted =
        items.sortedArrayUsingDescriptors(NSArray::arrayOf(by("name.length"_ns), by("name"_ns)));
    EXPECT_EQ(watch.questions, 4 + 2);
    EXPECT_EQ(texts(sorted.valueForKey("name"_ns)), (Texts{"a", "b", "aa", "ccc"}));
}

TEST_F(EmbeddedSortDescriptorTest, WhatIsNoNumberStandsBetweenTheNegativeOnesAndZero) {
    using Limits = std::numeric_limits<double>;
    const double none = Limits::quiet_NaN();
    const NSMutableArray numbers = NSMutableArray::array();
    for (const double value :
         {0.0, none, -5e-324, 5e-324, -0.0, -1.0, none, Limits::infinity(), -Limits::infinity()})
        numbers.addObject(NSNumber::numberWithDouble(value));
    numbers.sortUsingDescriptors(NSArray::arrayOf(by("self"_ns)));
    EXPECT_EQ(texts(numbers), (Texts{"-inf", "-1", "-4.940656458412465e-324", "nan", "nan", "0", "-0",
                                     "4.940656458412465e-324", "inf"}));
}

TEST_F(EmbeddedSortDescriptorTest, NumbersThatADoubleRoundsAreComparedExactlyAndThenByTheNextKey) {
    constexpr long long large = 1LL << 60;
    NSDictionary (*const item)(NSNumber, NSString) = [](NSNumber number, NSString name) {
        const NSObject values[] = {number, name};
        const NSObject keys[] = {"number"_ns, "name"_ns};
        return NSDictionary::dictionaryWithObjects_forKeys_count(values, keys, 2);
    };
    const NSArray items =
        NSArray::arrayOf(item(NSNumber::numberWithLongLong(large + 1), "c"_ns),
                         item(NSNumber::numberWithLongLong(large), "b"_ns),
                         item(NSNumber::numberWithLongLong(large + 1), "a"_ns),
                         item(NSNumber::numberWithDouble(static_cast<double>(large)), "a"_ns));
    const auto sorted = [&](bool ascending) {
        const NSArray result =
            items.sortedArrayUsingDescriptors(NSArray::arrayOf(by("number"_ns, ascending), by("name"_ns)));
        return texts(result.valueForKey("name"_ns));
    };
    EXPECT_EQ(sorted(true), (Texts{"a", "b", "a", "c"}));
    EXPECT_EQ(sorted(false), (Texts{"a", "c", "a", "b"}));
}

TEST_F(EmbeddedSortDescriptorTest, NilStandsFirstAmongWhatIsTheSame) {
    const NSMutableArray items = NSMutableArray::array();
    for (const char* const name : {"b", "", "a", "", "c"}) {
        const NSMutableDictionary item = NSMutableDictionary::dictionary();
        item.setObject_forKey(NSNumber::numberWithInt(1), "group"_ns);
        if (*name != 0) item.setObject_forKey(NSString(name), "name"_ns);
        items.addObject(item);
    }
    const auto sorted = [&](bool ascending) {
        Texts names;
        for (const NSObject item : NSArray(items.sortedArrayUsingDescriptors(
                 NSArray::arrayOf(by("group"_ns), by("name"_ns, ascending)))))
            names.push_back(text(item.valueForKey("name"_ns)));
        return names;
    };
    EXPECT_EQ(sorted(true), (Texts{"(nil)", "(nil)", "a", "b", "c"}));
    EXPECT_EQ(sorted(false), (Texts{"c", "b", "a", "(nil)", "(nil)"}));
}

TEST_F(EmbeddedSortDescriptorTest, AnyNumberOfDescriptors) {
    const NSMutableArray descriptors = NSMutableArray::array();
    for (int index = 0; index < 100'000; ++index) descriptors.addObject(by("length"_ns));
    descriptors.addObject(by("self"_ns));
    const NSArray words = NSArray::arrayOf("b"_ns, "a"_ns);
    EXPECT_EQ(texts(words.sortedArrayUsingDescriptors(descriptors)), (Texts{"a", "b"}));
}

TEST_F(EmbeddedSortDescriptorTest, AnArrayThatIsEditedWhileItIsSortedIsRefused) {
    const NSMutableArray items = NSMutableArray::array();
    items.addObject(watched("b"));
    items.addObject(watched("a"));
    watch.edited = items;
    EXPECT_THROWS_NAMED(items.sortUsingDescriptors(NSArray::arrayOf(by("name"_ns))), "NSGenericException");
    EXPECT_EQ(items.count(), 0u);
}

TEST_F(EmbeddedSortDescriptorTest, WithoutASelectorAllObjectsAreTheSame) {
    const Retained<NSSortDescriptor> empty = adopt(NSSortDescriptor::alloc());
    EXPECT_EQ(empty.compareObject_toObject("a"_ns, "b"_ns), NSOrderedSame);
    EXPECT_EQ(text(empty.description()), "((null), descending, (null))");
    const NSMutableArray letters = NSMutableArray::arrayWithArray(NSArray::arrayOf("b"_ns, "a"_ns));
    letters.sortUsingDescriptors(NSArray::arrayOf(empty, by("self"_ns)));
    EXPECT_EQ(texts(letters), (Texts{"a", "b"}));
}

TEST_F(EmbeddedSortDescriptorTest, WhatCannotBeAComparisonIsNotCalled) {
    const NSArray texts = NSArray::arrayOf(NSMutableString::stringWithString("b"_ns),
                                           NSMutableString::stringWithString("a"_ns));
    for (const char* name :
         {"release", "dealloc", "initWithString:", "getCharacters:range:", "description",
          "appendString:", "compare:options:", "substringFromIndex:", "performSelector:"}) {
        const NSSortDescriptor descriptor = by("self"_ns, true, runtime::registerSelector(name));
        EXPECT_THROWS_NAMED(texts.sortedArrayUsingDescriptors(NSArray::arrayOf(descriptor)),
                            "NSInvalidArgumentException")
            << name;
        EXPECT_THROWS_NAMED(descriptor.compareObject_toObject("b"_ns, "a"_ns), "NSInvalidArgumentException")
            << name;
    }
}

TEST_F(EmbeddedSortDescriptorTest, AComparisonOfAnotherTypeIsNotCalled) {
    static const ClassDefinition definition{
        {.name = "EmbeddedSortDescriptorTestSmallResults",
         .methods = {instanceMethod(
                         "whole:", +[](NSObject, SEL, NSObject) -> NSInteger { return -1; }),
                     instanceMethod(
                         "int:", +[](NSObject, SEL, NSObject) -> int { return -1; }),
                     instanceMethod(
                         "char:", +[](NSObject, SEL, NSObject) -> signed char { return -1; }),
                     instanceMethod(
                         "bool:", +[](NSObject, SEL, NSObject) -> bool { return true; })}}};
    const Retained<NSObject> one =
        adopt(send<NSObject>(NSObject(definition.classObject().alloc()), "init"_sel));
    EXPECT_EQ(by("self"_ns, true, "whole:"_sel).compareObject_toObject(one, one), NSOrderedAscending);
    for (const SEL comparison : {"int:"_sel, "char:"_sel, "bool:"_sel})
        EXPECT_THROWS_NAMED(by("self"_ns, true, comparison).compareObject_toObject(one, one),
                            "NSInvalidArgumentException")
            << runtime::selectorName(comparison);
}

TEST_F(EmbeddedSortDescriptorTest, AnyNumberIsAResult) {
    static const ClassDefinition definition{
        {.name = "EmbeddedSortDescriptorTestExtreme",
         .methods = {instanceMethod(
             "extreme:", +[](NSObject, SEL, NSObject) { return std::numeric_limits<NSInteger>::min(); })}}};
    const Retained<NSObject> one =
        adopt(send<NSObject>(NSObject(definition.classObject().alloc()), "init"_sel));
    EXPECT_EQ(by("self"_ns, true, "extreme:"_sel).compareObject_toObject(one, one), NSOrderedAscending);
    EXPECT_EQ(by("self"_ns, false, "extreme:"_sel).compareObject_toObject(one, one), NSOrderedDescending);
}

TEST_F(EmbeddedSortDescriptorTest, AnUninitialisedOneComesBackFromArchives) {
    const Retained<NSSortDescriptor> empty = adopt(NSSortDescriptor::alloc());
    const NSSortDescriptor back =
        NSKeyedUnarchiver::unarchiveObjectWithData(archived(empty, NSPropertyListXMLFormat_v1_0));
    EXPECT_TRUE(back.isEqual(empty));
    EXPECT_EQ(back.selector(), SEL());
}

TEST_F(EmbeddedSortDescriptorTest, IsArchivedUnderThePlatformsKeys) {
    const NSData data = archived(by("name"_ns, true, "localizedCompare:"_sel), NSPropertyListXMLFormat_v1_0);
    const Retained<NSString> xml = adopt(NSString::alloc().initWithData_encoding(data, NSUTF8StringEncoding));
    for (const NSString key : {"<key>NSKey</key>"_ns, "<key>NSAscending</key>"_ns, "<key>NSSelector</key>"_ns,
                               "<string>localizedCompare:</string>"_ns})
        EXPECT_GT(xml.rangeOfString(key).length, 0u) << text(key);
}

TEST_F(EmbeddedSortDescriptorTest, AnArchiveWithOtherThingsInPlaceOfTextIsRefused) {
    const NSData data = archived(by("name"_ns), NSPropertyListXMLFormat_v1_0);
    const Retained<NSString> xml = adopt(NSString::alloc().initWithData_encoding(data, NSUTF8StringEncoding));
    std::string damaged = text(xml);
    const std::string name = "<string>name</string>";
    damaged.replace(damaged.find(name), name.size(), "<integer>5</integer>");
    EXPECT_THROWS_NAMED(
        NSKeyedUnarchiver::unarchiveObjectWithData(NSString(damaged).dataUsingEncoding(NSUTF8StringEncoding)),
        "NSInvalidUnarchiveOperationException");
}

} // namespace
} // namespace tessarin::testing
