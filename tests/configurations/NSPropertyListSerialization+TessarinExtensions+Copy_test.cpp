// A property list copied with mutable containers.
#include "NestedArrays.h"
#include "PlatformTest.h"

#include "TessarinFoundation/NSPropertyListSerialization+TessarinExtensions.h"

#include <cmath>
#include <limits>

namespace tessarin::testing {
namespace {

class MutableContainersTest : public PlatformTest {};

id copied(NSObject propertyList, NSError* error = nullptr) {
    return tessarin_propertyListWithMutableContainers_error(propertyList, error);
}

bool isMutableArray(NSObject object) { return object.isKindOfClass(NSMutableArray::classObject()); }
bool isMutableDictionary(NSObject object) { return object.isKindOfClass(NSMutableDictionary::classObject()); }
bool isMutableString(NSObject object) { return object.isKindOfClass(NSMutableString::classObject()); }

// The code of the error that a copy gives, 0 when it gives none.
NSInteger refusal(NSObject propertyList) {
    NSError error;
    const NSObject copy = copied(propertyList, &error);
    EXPECT_EQ(copy == nil, bool(error));
    if (!error) return 0;
    EXPECT_EQ(text(error.domain()), "NSCocoaErrorDomain");
    EXPECT_GT(as<NSString>(error.userInfo().objectForKey(NSDebugDescriptionErrorKey())).length(), 0u);
    return error.code();
}

// ---- Containers

TEST_F(MutableContainersTest, AnArrayHoldingAnEmptyDictionary) {
    const NSArray original = NSArray::arrayOf(NSDictionary::dictionary(), "text"_ns);
    const NSMutableArray copy = copied(original);
    ASSERT_TRUE(isMutableArray(copy));
    ASSERT_TRUE(isMutableDictionary(copy.objectAtIndex(0)));
    EXPECT_FALSE(isMutableString(copy.objectAtIndex(1)));
    as<NSMutableDictionary>(copy.objectAtIndex(0)).setObject_forKey("value"_ns, "key"_ns);
    copy.addObject("more"_ns);
    EXPECT_EQ(original.count(), 2u);
    EXPECT_EQ(as<NSDictionary>(original.objectAtIndex(0)).count(), 0u);
}

TEST_F(MutableContainersTest, AreMutableAtEveryDepth) {
    NSObject original = "innermost"_ns;
    for (int level = 0; level < 100; ++level)
        original = level % 2 == 0 ? static_cast<NSObject>(NSArray::arrayOf(original, "x"_ns))
                                  : NSDictionary::dictionaryWithObject_forKey(original, "k"_ns);
    const NSObject copy = copied(original);
    EXPECT_TRUE(copy.isEqual(original));
    NSObject each = copy;
    for (int level = 99; level >= 0; --level) {
        ASSERT_TRUE(level % 2 == 0 ? isMutableArray(each) : isMutableDictionary(each)) << level;
        each =
            level % 2 == 0 ? as<NSArray>(each).objectAtIndex(0) : as<NSDictionary>(each).objectForKey("k"_ns);
    }
    EXPECT_EQ(text(as<NSString>(each)), "innermost");
}

TEST_F(MutableContainersTest, MutableOnesAreCopiedToo) {
    const NSMutableArray original = NSMutableArray::array();
    original.addObject(NSMutableDictionary::dictionary());
    const NSMutableArray copy = copied(original);
    EXPECT_NE(copy, original);
    EXPECT_NE(copy.objectAtIndex(0), original.objectAtIndex(0));
    EXPECT_TRUE(copy.isEqual(original));
}

TEST_F(MutableContainersTest, ASharedOneBecomesOneForEachPlace) {
    const NSArray shared = NSArray::arrayOf("x"_ns);
    const NSArray copy = copied(NSArray::arrayOf(shared, shared));
    const NSMutableArray first = copy.objectAtIndex(0), second = copy.objectAtIndex(1);
    EXPECT_NE(first, second);
    first.addObject("y"_ns);
    EXPECT_EQ(texts(second), Texts{"x"});
}

TEST_F(MutableContainersTest, ManyKeysComeAlong) {
    const NSMutableDictionary original = NSMutableDictionary::dictionary();
    for (int key = 0; key < 1000; ++key)
        original.setObject_forKey(NSArray::arrayOf(NSString(std::to_string(key))),
                                  NSString("key " + std::to_string(key)));
    original.removeObjectForKey("key 17"_ns);
    const NSMutableDictionary copy = copied(original);
    EXPECT_TRUE(copy.isEqual(original));
    EXPECT_TRUE(isMutableArray(copy.objectForKey("key 999"_ns)));
    copy.setObject_forKey("again"_ns, "key 17"_ns);
    EXPECT_EQ(copy.count(), 1000u);
    EXPECT_EQ(original.count(), 999u);
}

// ---- Leaves

TEST_F(MutableContainersTest, LeavesAloneAreCopied) {
    for (const NSObject leaf : {NSObject("text"_ns), NSObject(NSNumber::numberWithDouble(0.1)),
                                NSObject(NSDate::date()), NSObject(NSData::dataWithBytes_length("a", 1))})
        EXPECT_TRUE(as<NSObject>(copied(leaf)).isEqual(leaf)) << leaf;
}

TEST_F(MutableContainersTest, AMutableStringBecomesImmutable) {
    const NSMutableString original = NSMutableString::stringWithString("text"_ns);
    const NSArray copy = copied(NSArray::arrayOf(original));
    original.appendString(" and more"_ns);
    EXPECT_FALSE(isMutableString(copy.objectAtIndex(0)));
    EXPECT_EQ(texts(copy), Texts{"text"});
    EXPECT_FALSE(isMutableString(copied(original)));
}

TEST_F(MutableContainersTest, MutableDataBecomesImmutable) {
    const void* const bytes = "abc";
    const NSObject original =
        send<NSObject>("NSMutableData"_class, "dataWithBytes:length:"_sel, bytes, NSUInteger{3});
    const NSArray copy = copied(NSArray::arrayOf(original));
    EXPECT_FALSE(as<NSObject>(copy.objectAtIndex(0)).isKindOfClass("NSMutableData"_class));
    EXPECT_TRUE(as<NSObject>(copy.objectAtIndex(0)).isEqual(original));
}

TEST_F(MutableContainersTest, AStringInSeveralPlacesStaysOne) {
    const NSString immutable = NSString(std::string("a string that is made at run time"));
    const NSString editable = NSMutableString::stringWithString("another one, to be edited"_ns);
    const NSArray copy = copied(NSArray::arrayOf(immutable, editable, NSArray::arrayOf(immutable, editable)));
    const NSArray inner = copy.objectAtIndex(2);
    EXPECT_EQ(copy.objectAtIndex(0), inner.objectAtIndex(0));
    EXPECT_EQ(copy.objectAtIndex(1), inner.objectAtIndex(1));
}

TEST_F(MutableContainersTest, BooleansStayTheSameObjects) {
    const NSArray copy =
        copied(NSArray::arrayOf(NSNumber::numberWithBool(true), NSNumber::numberWithBool(false)));
    EXPECT_EQ(static_cast<NSObject>(copy.objectAtIndex(0)), NSNumber::numberWithBool(true));
    EXPECT_EQ(static_cast<NSObject>(copy.objectAtIndex(1)), NSNumber::numberWithBool(false));
}

TEST_F(MutableContainersTest, IntegersBecome64BitsWide) {
    const NSArray original = NSArray::arrayOf(
        NSNumber::numberWithInt(1), NSNumber::numberWithInt(-70'000), NSNumber::numberWithUnsignedInt(70'000),
        NSNumber::numberWithLongLong(std::numeric_limits<long long>::min()));
    const NSArray copy = copied(original);
    EXPECT_TRUE(copy.isEqual(original));
    for (const NSObject number : copy) EXPECT_STREQ(as<NSNumber>(number).objCType(), "q") << number;
}

TEST_F(MutableContainersTest, TheLargestIntegersStayAsTheyAre) {
    const NSNumber largest = NSNumber::numberWithUnsignedLongLong(~0ULL);
    const NSArray copy = copied(NSArray::arrayOf(largest));
    EXPECT_EQ(as<NSNumber>(copy.objectAtIndex(0)).unsignedLongLongValue(), ~0ULL);
}

TEST_F(MutableContainersTest, RealsStayTheSameToTheBit) {
    const double reals[] = {0.1, -0.0, 1e308, std::numeric_limits<double>::denorm_min(),
                            std::numeric_limits<double>::infinity()};
    for (const double real : reals) {
        const NSNumber copy =
            NSArray(copied(NSArray::arrayOf(NSNumber::numberWithDouble(real)))).firstObject();
        EXPECT_EQ(copy.doubleValue(), real);
        EXPECT_EQ(std::signbit(copy.doubleValue()), std::signbit(real));
    }
    const NSNumber single = NSArray(copied(NSArray::arrayOf(NSNumber::numberWithFloat(0.1F)))).firstObject();
    EXPECT_EQ(single.floatValue(), 0.1F);
    EXPECT_STREQ(single.objCType(), "f");
    EXPECT_TRUE(std::isnan(as<NSNumber>(copied(NSNumber::numberWithDouble(std::nan("")))).doubleValue()));
}

TEST_F(MutableContainersTest, DatesKeepTheirFractions) {
    const NSDate date = NSDate::dateWithTimeIntervalSinceReferenceDate(1.0 / 3);
    const NSDate copy = NSArray(copied(NSArray::arrayOf(date))).firstObject();
    EXPECT_EQ(copy.timeIntervalSinceReferenceDate(), 1.0 / 3);
}

TEST_F(MutableContainersTest, StringsKeepEveryUnit) {
    const char16_t units[] = {u'a', 0xD800, 0, 0xDC00, u'\u20ac'};
    const NSString original{std::u16string_view(units, 5)};
    const NSString copy = NSArray(copied(NSArray::arrayOf(original))).firstObject();
    EXPECT_EQ(static_cast<std::u16string>(copy), std::u16string_view(units, 5));
    const NSString edited = NSMutableString::stringWithString(u"\u00e9\u20ac\U0001F600"_ns);
    EXPECT_EQ(text(NSArray(copied(NSArray::arrayOf(edited))).firstObject()), "\u00e9\u20ac\U0001F600");
}

// ---- Failures

TEST_F(MutableContainersTest, NilGivesAnError) {
    NSError error;
    EXPECT_EQ(copied(nil, &error), nil);
    EXPECT_TRUE(bool(error));
}

TEST_F(MutableContainersTest, AKeyThatIsNoStringGivesAnError) {
    const NSDictionary wrong =
        NSDictionary::dictionaryWithObject_forKey("value"_ns, NSNumber::numberWithInt(1));
    EXPECT_EQ(refusal(wrong), 3851);
    EXPECT_EQ(refusal(NSArray::arrayOf("a"_ns, wrong)), 3851);
}

TEST_F(MutableContainersTest, AnObjectThatIsNoPropertyListGivesAnError) {
    EXPECT_EQ(refusal(NSNull::null()), 3851);
    EXPECT_EQ(refusal(NSArray::arrayOf(NSURL::fileURLWithPath("/a"_ns))), 3851);
    EXPECT_EQ(refusal(NSDictionary::dictionaryWithObject_forKey(NSNull::null(), "key"_ns)), 3851);
    EXPECT_EQ(refusal(NSString::classObject()), 3851);
}

TEST_F(MutableContainersTest, AContainerInsideItselfGivesAnError) {
    const Retained<NSMutableArray> circular = adopt(NSMutableArray::alloc().init());
    circular.addObject(circular);
    EXPECT_EQ(refusal(circular), 3851);
    circular.removeAllObjects();
    const Retained<NSMutableDictionary> deeper = adopt(NSMutableDictionary::alloc().init());
    deeper.setObject_forKey(NSArray::arrayOf("a"_ns, NSArray::arrayOf(deeper)), "key"_ns);
    EXPECT_EQ(refusal(NSArray::arrayOf(deeper)), 3851);
    deeper.removeAllObjects();
}

TEST_F(MutableContainersTest, AnErrorNeedNotBeAskedFor) {
    EXPECT_EQ(copied(nil), nil);
    EXPECT_EQ(copied(NSNull::null()), nil);
    EXPECT_EQ(copied(NestedArrays(513).outermost()), nil);
}

TEST_F(MutableContainersTest, ASuccessLeavesTheErrorAlone) {
    NSError error;
    EXPECT_TRUE(bool(copied(NSArray::array(), &error)));
    EXPECT_FALSE(bool(error));
}

// ---- Bounds

TEST_F(MutableContainersTest, ContainersMayBeNested512Deep) {
    const NestedArrays nested(512);
    const NSObject copy = copied(nested.outermost());
    EXPECT_TRUE(bool(copy));
    EXPECT_TRUE(copy.isEqual(nested.outermost()));
}

TEST_F(MutableContainersTest, DeeperOnesGiveAnError) {
    EXPECT_EQ(refusal(NestedArrays(513).outermost()), 3840);
    EXPECT_EQ(refusal(NestedArrays(1'000'000).outermost()), 3840);
}

// What cannot be written at all is told before what is too deep to be read.
TEST_F(MutableContainersTest, AWrongObjectFarInsideIsTheErrorOfWriting) {
    EXPECT_EQ(refusal(NestedArrays(600, NSNull::null()).outermost()), 3851);
}

TEST_F(MutableContainersTest, ModerateSharingIsCopied) {
    const NSMutableArray shared = NSMutableArray::array();
    for (int index = 0; index < 500; ++index) shared.addObject("x"_ns);
    const NSMutableArray original = NSMutableArray::array();
    for (int index = 0; index < 500; ++index) original.addObject(shared);
    const NSArray copy = copied(original);
    ASSERT_EQ(copy.count(), 500u);
    EXPECT_EQ(as<NSArray>(copy.lastObject()).count(), 500u);
}

TEST_F(MutableContainersTest, SharingThatDoublesSixtyTimesGivesAnError) {
    NSArray doubled = NSArray::arrayOf("x"_ns);
    for (int level = 0; level < 60; ++level) doubled = NSArray::arrayOf(doubled, doubled);
    EXPECT_EQ(refusal(doubled), 3840);
}

// ---- Ownership

TEST_F(MutableContainersTest, TheCopyIsNotOwned) {
    const NSArray original = NSArray::arrayOf(NSArray::arrayOf("a"_ns), NSNumber::numberWithInt(100'000));
    EXPECT_EQ(ownedReferencesOfNew([&] { return copied(original); }), 0);
}

TEST_F(MutableContainersTest, NothingOfTheOriginalIsKeptOnceTheCopyIsGone) {
    const Retained<NSMutableString> leaf = adopt(NSMutableString::alloc().init());
    const Retained<NSArray> container = retain(NSArray::arrayOf(leaf));
    const NSArray original = NSArray::arrayOf(container, container);
    EXPECT_EQ(referencesLeftBy([&] { return copied(original); }, leaf), 0);
    EXPECT_EQ(referencesLeftBy([&] { return copied(original); }, container), 0);
    EXPECT_EQ(
        referencesLeftBy([&] { return copied(NSArray::arrayOf(container, NSNull::null())); }, container), 0);
}

} // namespace
} // namespace tessarin::testing
