// Sort descriptors, and arrays sorted by them.
#include "KeyedCoding.h"
#include "PlatformTest.h"

#include <algorithm>
#include <cmath>
#include <random>

namespace tessarin::testing {
namespace {

NSSortDescriptor by(NSString key, bool ascending = true, SEL selector = "compare:"_sel) {
    return NSSortDescriptor::sortDescriptorWithKey_ascending_selector(key, ascending, selector);
}

NSDictionary track(NSString name, int length) {
    const NSMutableDictionary track = NSMutableDictionary::dictionary();
    if (name) track.setObject_forKey(name, "name"_ns);
    track.setObject_forKey(NSNumber::numberWithInt(length), "length"_ns);
    return track;
}

Texts names(NSArray tracks) {
    Texts result;
    for (const NSObject track : tracks) result.push_back(text(track.valueForKey("name"_ns)));
    return result;
}

template <class... Descriptors>
Texts sortedNames(NSArray tracks, const Descriptors&... descriptors) {
    return names(tracks.sortedArrayUsingDescriptors(NSArray::arrayOf(descriptors...)));
}

class NSSortDescriptorTest : public PlatformTest {};

TEST_F(NSSortDescriptorTest, HoldsKeyDirectionAndSelector) {
    const NSSortDescriptor descriptor = by("name"_ns, false, "caseInsensitiveCompare:"_sel);
    EXPECT_EQ(text(descriptor.key()), "name");
    EXPECT_FALSE(descriptor.ascending());
    EXPECT_EQ(text(NSStringFromSelector(descriptor.selector())), "caseInsensitiveCompare:");
}

TEST_F(NSSortDescriptorTest, ComparesByCompareUnlessToldOtherwise) {
    const NSSortDescriptor plain = NSSortDescriptor::sortDescriptorWithKey_ascending("name"_ns, true);
    EXPECT_EQ(text(NSStringFromSelector(plain.selector())), "compare:");
    EXPECT_TRUE(plain.isEqual(by("name"_ns, true, nullptr)));
    EXPECT_TRUE(plain.isEqual(by("name"_ns)));
    const Retained<NSSortDescriptor> initialised =
        adopt(NSSortDescriptor::alloc().initWithKey_ascending("name"_ns, true));
    EXPECT_TRUE(initialised.isEqual(plain));
}

TEST_F(NSSortDescriptorTest, CopiesItsKey) {
    const NSMutableString key = NSMutableString::stringWithString("name"_ns);
    const NSSortDescriptor descriptor = by(key);
    key.appendString("s"_ns);
    EXPECT_EQ(text(descriptor.key()), "name");
}

TEST_F(NSSortDescriptorTest, EqualsWhatHasTheSameParts) {
    const NSSortDescriptor descriptor = by("name"_ns);
    EXPECT_TRUE(descriptor.isEqual(by(NSMutableString::stringWithString("name"_ns))));
    EXPECT_EQ(descriptor.hash(), by("name"_ns).hash());
    EXPECT_FALSE(descriptor.isEqual(by("names"_ns)));
    EXPECT_FALSE(descriptor.isEqual(by("name"_ns, false)));
    EXPECT_FALSE(descriptor.isEqual(by("name"_ns, true, "caseInsensitiveCompare:"_sel)));
    EXPECT_FALSE(descriptor.isEqual("name"_ns));
    EXPECT_FALSE(descriptor.isEqual(nil));
}

TEST_F(NSSortDescriptorTest, CopiesAreEqual) {
    EXPECT_TRUE(NSSortDescriptor::classObject().isSubclassOfClass("NSObject"_class));
    const NSSortDescriptor descriptor = by("name"_ns);
    EXPECT_TRUE(descriptor.conformsToProtocol("NSCopying"_protocol));
    EXPECT_TRUE(adopt(NSSortDescriptor(descriptor.copy())).isEqual(descriptor));
}

TEST_F(NSSortDescriptorTest, IsReversed) {
    EXPECT_TRUE(by("name"_ns).reversedSortDescriptor().isEqual(by("name"_ns, false)));
    EXPECT_TRUE(by("name"_ns, false, "localizedCompare:"_sel)
                    .reversedSortDescriptor()
                    .isEqual(by("name"_ns, true, "localizedCompare:"_sel)));
}

TEST_F(NSSortDescriptorTest, ShowsItsParts) {
    EXPECT_EQ(text(by("name"_ns).description()), "(name, ascending, compare:)");
    EXPECT_EQ(text(by("a.b"_ns, false, "localizedCompare:"_sel).description()),
              "(a.b, descending, localizedCompare:)");
}

TEST_F(NSSortDescriptorTest, IsEmptyBeforeItIsInitialised) {
    const Retained<NSSortDescriptor> descriptor = adopt(NSSortDescriptor::alloc());
    EXPECT_FALSE(descriptor.key());
    EXPECT_FALSE(descriptor.ascending());
    EXPECT_EQ(descriptor.selector(), SEL());
}

TEST_F(NSSortDescriptorTest, CanBeArchived) {
    expectKeyedCoding(by("name"_ns));
    expectKeyedCoding(by("effect.name"_ns, false, "caseInsensitiveCompare:"_sel));
}

TEST_F(NSSortDescriptorTest, ClassOperationsMakeTheReceivingClass) {
    static const ClassDefinition definition{
        {.name = "NSSortDescriptorTestOwn", .superclass = "NSSortDescriptor"}};
    const NSObject made = send<NSObject>(definition.classObject(), "sortDescriptorWithKey:ascending:"_sel,
                                         "name"_ns, static_cast<BOOL>(YES));
    EXPECT_TRUE(made.isMemberOfClass(definition.classObject()));
    EXPECT_EQ(ownedReferencesOfNew([] { return by("name"_ns); }), 0);
}

TEST_F(NSSortDescriptorTest, WithoutAKeyComparesTheObjectsThemselves) {
    const NSArray letters = NSArray::arrayOf("b"_ns, "a"_ns);
    NSSortDescriptor descriptor;
    ASSERT_EQ(thrownName([&] { return descriptor = by(nil); }), "(nothing)");
    EXPECT_FALSE(descriptor.key());
    EXPECT_EQ(texts(letters.sortedArrayUsingDescriptors(NSArray::arrayOf(descriptor))), (Texts{"a", "b"}));
    EXPECT_TRUE(descriptor.isEqual(by(nil)));
}

// ---- Two objects

TEST_F(NSSortDescriptorTest, ComparesTheValuesForItsKey) {
    const NSDictionary one = track("a"_ns, 1), other = track("b"_ns, 1);
    EXPECT_EQ(by("name"_ns).compareObject_toObject(one, other), NSOrderedAscending);
    EXPECT_EQ(by("name"_ns).compareObject_toObject(other, one), NSOrderedDescending);
    EXPECT_EQ(by("name"_ns, false).compareObject_toObject(one, other), NSOrderedDescending);
    EXPECT_EQ(by("length"_ns).compareObject_toObject(one, other), NSOrderedSame);
    EXPECT_EQ(by("name.length"_ns).compareObject_toObject(one, other), NSOrderedSame);
}

TEST_F(NSSortDescriptorTest, PutsNilBeforeEverything) {
    const NSDictionary none = track(nil, 1), some = track(""_ns, 1);
    const auto compared = [](NSSortDescriptor descriptor, NSObject left, NSObject right) {
        NSComparisonResult result = NSOrderedSame;
        EXPECT_EQ(thrownName([&] { return result = descriptor.compareObject_toObject(left, right); }),
                  "(nothing)");
        return result;
    };
    EXPECT_EQ(compared(by("name"_ns), none, some), NSOrderedAscending);
    EXPECT_EQ(compared(by("name"_ns), some, none), NSOrderedDescending);
    EXPECT_EQ(compared(by("name"_ns, false), none, some), NSOrderedDescending);
}

TEST_F(NSSortDescriptorTest, TwoValuesThatAreNilAreTheSame) {
    const NSDictionary none = track(nil, 1);
    EXPECT_EQ(by("name"_ns).compareObject_toObject(none, none), NSOrderedSame);
}

TEST_F(NSSortDescriptorTest, UsesItsSelector) {
    const NSDictionary one = track("A"_ns, 1), other = track("a"_ns, 1);
    EXPECT_EQ(by("name"_ns).compareObject_toObject(one, other), NSOrderedAscending);
    EXPECT_EQ(by("name"_ns, true, "caseInsensitiveCompare:"_sel).compareObject_toObject(one, other),
              NSOrderedSame);
}

TEST_F(NSSortDescriptorTest, AnUnknownKeyRaises) {
    const NSArray letters = NSArray::arrayOf("b"_ns, "a"_ns);
    EXPECT_THROWS_NAMED(letters.sortedArrayUsingDescriptors(NSArray::arrayOf(by("nope"_ns))),
                        "NSUnknownKeyException");
}

TEST_F(NSSortDescriptorTest, AnUnknownComparisonRaises) {
    const NSArray tracks = NSArray::arrayOf(track("b"_ns, 1), track("a"_ns, 2));
    EXPECT_THROWS_NAMED(
        tracks.sortedArrayUsingDescriptors(NSArray::arrayOf(by("name"_ns, true, "no such comparison"_sel))),
        "NSInvalidArgumentException");
}

// ---- Arrays

class DescriptorSortingTest : public PlatformTest {
protected:
    const NSArray tracks = NSArray::arrayOf(track("bass"_ns, 3), track("Alto"_ns, 1), track("choir"_ns, 3),
                                            track("drums"_ns, 2), track("alto"_ns, 3));
};

TEST_F(DescriptorSortingTest, GoesByTheValuesForAKey) {
    EXPECT_EQ(sortedNames(tracks, by("name"_ns)), (Texts{"Alto", "alto", "bass", "choir", "drums"}));
    EXPECT_EQ(sortedNames(tracks, by("name"_ns, false)), (Texts{"drums", "choir", "bass", "alto", "Alto"}));
}

TEST_F(DescriptorSortingTest, KeepsTheOrderOfWhatIsTheSame) {
    EXPECT_EQ(sortedNames(tracks, by("length"_ns)), (Texts{"Alto", "drums", "bass", "choir", "alto"}));
    EXPECT_EQ(sortedNames(tracks, by("length"_ns, false)), (Texts{"bass", "choir", "alto", "drums", "Alto"}));
    EXPECT_EQ(sortedNames(tracks, by("name"_ns, false, "caseInsensitiveCompare:"_sel)),
              (Texts{"drums", "choir", "bass", "Alto", "alto"}));
}

TEST_F(DescriptorSortingTest, GoesByTheNextDescriptorWhereTheFirstFindsNoDifference) {
    EXPECT_EQ(sortedNames(tracks, by("length"_ns, false), by("name"_ns)),
              (Texts{"alto", "bass", "choir", "drums", "Alto"}));
    EXPECT_EQ(sortedNames(tracks, by("name"_ns, true, "caseInsensitiveCompare:"_sel), by("length"_ns, false)),
              (Texts{"alto", "Alto", "bass", "choir", "drums"}));
}

TEST_F(DescriptorSortingTest, ReadsKeyPaths) {
    EXPECT_EQ(sortedNames(tracks, by("name.length"_ns), by("name"_ns)),
              (Texts{"Alto", "alto", "bass", "choir", "drums"}));
    EXPECT_EQ(
        texts(NSArray::arrayOf("b"_ns, "a"_ns).sortedArrayUsingDescriptors(NSArray::arrayOf(by("self"_ns)))),
        (Texts{"a", "b"}));
}

TEST_F(DescriptorSortingTest, NoDescriptorsLeaveTheOrder) {
    for (const NSArray none : {NSArray::array(), NSArray()}) {
        const NSArray sorted = tracks.sortedArrayUsingDescriptors(none);
        EXPECT_TRUE(sorted.isEqual(tracks));
        const NSMutableArray array = NSMutableArray::arrayWithArray(tracks);
        array.sortUsingDescriptors(none);
        EXPECT_TRUE(array.isEqual(tracks));
    }
}

TEST_F(DescriptorSortingTest, ASingleItemIsAskedNothing) {
    const NSArray single = NSArray::arrayOf("a"_ns);
    const NSArray sorted = single.sortedArrayUsingDescriptors(NSArray::arrayOf(by("nope"_ns)));
    EXPECT_EQ(texts(sorted), (Texts{"a"}));
    EXPECT_EQ(NSArray::array().sortedArrayUsingDescriptors(NSArray::arrayOf(by("nope"_ns))).count(), 0u);
}

TEST_F(DescriptorSortingTest, TheSortedArrayIsAnotherAndImmutable) {
    const NSMutableArray array = NSMutableArray::arrayWithArray(tracks);
    const NSArray sorted = array.sortedArrayUsingDescriptors(NSArray::arrayOf(by("name"_ns)));
    EXPECT_EQ(names(array), names(tracks));
    EXPECT_FALSE(sorted.isKindOfClass(NSMutableArray::classObject()));
}

TEST_F(DescriptorSortingTest, SortsAMutableArrayInPlace) {
    const NSMutableArray array = NSMutableArray::arrayWithArray(tracks);
    array.sortUsingDescriptors(NSArray::arrayOf(by("length"_ns), by("name"_ns)));
    EXPECT_EQ(names(array), (Texts{"Alto", "drums", "alto", "bass", "choir"}));
    EXPECT_EQ(array.count(), 5u);
}

TEST_F(DescriptorSortingTest, PutsNilFirst) {
    const NSArray some = NSArray::arrayOf(track("a"_ns, 1), track(nil, 2), track(""_ns, 3));
    const auto sorted = [&](NSSortDescriptor descriptor) {
        Texts result;
        EXPECT_EQ(thrownName([&] { return result = sortedNames(some, descriptor), 0; }), "(nothing)");
        return result;
    };
    EXPECT_EQ(sorted(by("name"_ns)), (Texts{"(nil)", "", "a"}));
    EXPECT_EQ(sorted(by("name"_ns, false)), (Texts{"a", "", "(nil)"}));
}

TEST_F(DescriptorSortingTest, NumbersOfAllKindsSortByTheirValues) {
    const NSArray numbers = NSArray::arrayOf(
        NSNumber::numberWithDouble(1.5), NSNumber::numberWithInt(-3), NSNumber::numberWithDouble(-0.0),
        NSNumber::numberWithInt(1), NSNumber::numberWithInt(0), NSNumber::numberWithDouble(-1e300),
        NSNumber::numberWithFloat(2.0f), NSNumber::numberWithDouble(1e300));
    // Zeros are the same and keep their order.
    EXPECT_EQ(texts(numbers.sortedArrayUsingDescriptors(NSArray::arrayOf(by("self"_ns)))),
              (Texts{"-1e+300", "-3", "-0", "0", "1", "1.5", "2", "1e+300"}));
    EXPECT_EQ(texts(numbers.sortedArrayUsingDescriptors(NSArray::arrayOf(by("self"_ns, false)))),
              (Texts{"1e+300", "2", "1.5", "1", "-0", "0", "-3", "-1e+300"}));
}

TEST_F(DescriptorSortingTest, LargeIntegersAreNotRounded) {
    const long long large = 1LL << 60;
    const NSArray numbers =
        NSArray::arrayOf(NSNumber::numberWithLongLong(large + 2), NSNumber::numberWithLongLong(large + 1),
                         NSNumber::numberWithLongLong(large));
    const NSArray sorted = numbers.sortedArrayUsingDescriptors(NSArray::arrayOf(by("self"_ns)));
    EXPECT_EQ(texts(sorted),
              (Texts{std::to_string(large), std::to_string(large + 1), std::to_string(large + 2)}));
}

TEST_F(DescriptorSortingTest, TextsThatBeginAlikeAreToldApart) {
    const NSArray words = NSArray::arrayOf("instrument 10"_ns, "instrument 2"_ns, "instrument"_ns, ""_ns,
                                           "instrumént"_ns, "inst"_ns);
    EXPECT_EQ(texts(words.sortedArrayUsingDescriptors(NSArray::arrayOf(by("self"_ns)))),
              (Texts{"", "inst", "instrument", "instrument 10", "instrument 2", "instrumént"}));
    const NSArray ascii = NSArray::arrayOf("instrument 10"_ns, "instrument 2"_ns, "instrument"_ns, ""_ns);
    EXPECT_EQ(texts(ascii.sortedArrayUsingDescriptors(NSArray::arrayOf(by("self"_ns, false)))),
              (Texts{"instrument 2", "instrument 10", "instrument", ""}));
}

TEST_F(DescriptorSortingTest, AgreesWithTheStandardLibraryOnManyItems) {
    struct Row {
        std::string name;
        int length;
        std::size_t place;
    };
    std::mt19937 random(7);
    std::vector<Row> rows;
    const NSMutableArray items = NSMutableArray::array();
    for (std::size_t place = 0; place < 2000; ++place) {
        rows.push_back({"track " + std::to_string(random() % 60), static_cast<int>(random() % 20), place});
        const NSMutableDictionary item = NSMutableDictionary::dictionary();
        item.setObject_forKey(NSString(rows.back().name), "name"_ns);
        item.setObject_forKey(NSNumber::numberWithInt(rows.back().length), "length"_ns);
        item.setObject_forKey(NSNumber::numberWithUnsignedInteger(place), "place"_ns);
        items.addObject(item);
    }
    const auto check = [&](NSArray descriptors, auto&& isBefore) {
        std::stable_sort(rows.begin(), rows.end(), isBefore);
        const NSArray sorted = items.sortedArrayUsingDescriptors(descriptors);
        for (std::size_t index = 0; index < rows.size(); ++index) {
            const NSNumber place = NSObject(sorted.objectAtIndex(index)).valueForKey("place"_ns);
            ASSERT_EQ(place.unsignedIntegerValue(), rows[index].place) << index;
        }
        std::sort(rows.begin(), rows.end(),
                  [](const Row& left, const Row& right) { return left.place < right.place; });
    };
    check(NSArray::arrayOf(by("name"_ns)),
          [](const Row& left, const Row& right) { return left.name < right.name; });
    check(NSArray::arrayOf(by("length"_ns, false)),
          [](const Row& left, const Row& right) { return left.length > right.length; });
    check(NSArray::arrayOf(by("length"_ns, false), by("name"_ns)), [](const Row& left, const Row& right) {
        return left.length != right.length ? left.length > right.length : left.name < right.name;
    });
    check(NSArray::arrayOf(by("name"_ns, false), by("length"_ns)), [](const Row& left, const Row& right) {
        return left.name != right.name ? left.name > right.name : left.length < right.length;
    });
}

TEST_F(DescriptorSortingTest, ManyNumbersAgreeWithTheStandardLibrary) {
    std::mt19937 random(8);
    std::vector<double> expected;
    const NSMutableArray numbers = NSMutableArray::array();
    for (int index = 0; index < 1000; ++index) {
        const auto whole = static_cast<int>(random() % 200) - 100;
        const double value =
            index % 2 == 0 ? whole : std::ldexp(whole, static_cast<int>(random() % 2000) - 1000);
        expected.push_back(value);
        numbers.addObject(index % 2 == 0 ? NSNumber::numberWithInt(whole)
                                         : NSNumber::numberWithDouble(value));
    }
    std::sort(expected.begin(), expected.end());
    const NSArray sorted = numbers.sortedArrayUsingDescriptors(NSArray::arrayOf(by("self"_ns)));
    for (NSUInteger index = 0; index < expected.size(); ++index)
        ASSERT_EQ(as<NSNumber>(sorted.objectAtIndex(index)).doubleValue(), expected[index]) << index;
    numbers.sortUsingDescriptors(NSArray::arrayOf(by("self"_ns, false)));
    for (NSUInteger index = 0; index < expected.size(); ++index)
        ASSERT_EQ(as<NSNumber>(numbers.objectAtIndex(index)).doubleValue(),
                  expected[expected.size() - 1 - index])
            << index;
}

TEST_F(DescriptorSortingTest, ManyTextsThatBeginAlikeAreToldApart) {
    std::mt19937 random(9);
    Texts expected = {"i"};
    for (int index = 0; index < 300; ++index)
        expected.push_back("instrument track " + std::to_string(random() % 100'000));
    const NSMutableArray words = NSMutableArray::array();
    for (const std::string& word : expected) words.addObject(NSString(word));
    std::sort(expected.begin(), expected.end());
    EXPECT_EQ(texts(words.sortedArrayUsingDescriptors(NSArray::arrayOf(by("self"_ns)))), expected);
}

TEST_F(DescriptorSortingTest, TextsOfSeveralKindsAmongWhatIsTheSame) {
    const NSArray some = NSArray::arrayOf(track("b"_ns, 2), track("\u00E9"_ns, 1), track("\u0142"_ns, 1),
                                          track("e"_ns, 1), track("a"_ns, 2));
    EXPECT_EQ(sortedNames(some, by("length"_ns), by("name"_ns)), (Texts{"e", "\u00E9", "\u0142", "a", "b"}));
    EXPECT_EQ(sortedNames(some, by("length"_ns), by("name"_ns, false)),
              (Texts{"\u0142", "\u00E9", "e", "b", "a"}));
}

} // namespace
} // namespace tessarin::testing
