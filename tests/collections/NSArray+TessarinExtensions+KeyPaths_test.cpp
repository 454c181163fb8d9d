// Finding an object by its value at a key path.
#include "PlatformTest.h"

#include "TessarinFoundation/NSArray+TessarinExtensions.h"

namespace tessarin::testing {
namespace {

NSDictionary named(const char* name) {
    return NSDictionary::dictionaryWithObject_forKey(NSString(name), "name"_ns);
}

NSDictionary withEffect(const char* name) {
    return NSDictionary::dictionaryWithObject_forKey(named(name), "effect"_ns);
}

// Equal to anything, even to nil.
NSObject agreeable() {
    static const ClassDefinition definition{{.name = "TessarinTestAgreeable",
                                             .methods = {instanceMethod(
                                                 "isEqual:", +[](NSObject, SEL, NSObject) { return YES; })}}};
    return adopt(send<NSObject>(definition.classObject().alloc(), "init"_sel)).autorelease();
}

class ObjectWithValueTest : public PlatformTest {};

TEST_F(ObjectWithValueTest, IsTheFirstWhoseValueIsEqual) {
    const NSDictionary second = named("bass");
    const NSArray tracks = NSArray::arrayOf(named("drums"), second, named("bass"));
    EXPECT_EQ(tessarin_objectWithValue_forKeyPath(tracks, NSString("bass"), "name"_ns), second);
}

TEST_F(ObjectWithValueTest, IsFoundAlongAPath) {
    const NSArray tracks = NSArray::arrayOf(withEffect("delay"), withEffect("reverb"));
    EXPECT_EQ(tessarin_objectWithValue_forKeyPath(tracks, "reverb"_ns, "effect.name"_ns),
              tracks.objectAtIndex(1));
}

TEST_F(ObjectWithValueTest, IsNilWhenNoneHasIt) {
    EXPECT_EQ(tessarin_objectWithValue_forKeyPath(NSArray::arrayOf(named("drums")), "bass"_ns, "name"_ns),
              nil);
    EXPECT_EQ(tessarin_objectWithValue_forKeyPath(NSArray::array(), "bass"_ns, "name"_ns), nil);
}

TEST_F(ObjectWithValueTest, IsNoneOfAValueThatIsNil) {
    const NSArray tracks = NSArray::arrayOf(named("drums"));
    EXPECT_EQ(tessarin_objectWithValue_forKeyPath(tracks, nil, "colour"_ns), nil);
    EXPECT_EQ(tessarin_objectWithValue_forKeyPath(tracks, "red"_ns, "colour"_ns), nil);
}

TEST_F(ObjectWithValueTest, IsNoneForNilWhateverTheValuesSay) {
    const NSArray tracks =
        NSArray::arrayOf(NSDictionary::dictionaryWithObject_forKey(agreeable(), "name"_ns));
    EXPECT_EQ(tessarin_objectWithValue_forKeyPath(tracks, nil, "name"_ns), nil);
}

TEST_F(ObjectWithValueTest, TheObjectsValueIsAsked) {
    const NSArray tracks =
        NSArray::arrayOf(named("drums"), NSDictionary::dictionaryWithObject_forKey(agreeable(), "name"_ns));
    EXPECT_EQ(tessarin_objectWithValue_forKeyPath(tracks, "bass"_ns, "name"_ns), tracks.objectAtIndex(1));
    EXPECT_EQ(tessarin_objectWithValue_forKeyPath(NSArray::arrayOf(named("drums")), agreeable(), "name"_ns),
              nil);
}

TEST_F(ObjectWithValueTest, NumbersOfAnyKindAreEqual) {
    const NSArray strings = NSArray::arrayOf("ab"_ns, "abc"_ns);
    EXPECT_EQ(tessarin_objectWithValue_forKeyPath(strings, NSNumber::numberWithDouble(3.0), "length"_ns),
              strings.objectAtIndex(1));
}

TEST_F(ObjectWithValueTest, AKeyThatAnObjectDoesNotKnowRaises) {
    const NSArray strings = NSArray::arrayOf("ab"_ns);
    EXPECT_THROWS_NAMED(tessarin_objectWithValue_forKeyPath(strings, "x"_ns, "nope"_ns),
                        "NSUnknownKeyException");
    EXPECT_THROWS_NAMED(tessarin_objectWithValue_forKeyPath(strings, nil, "nope"_ns),
                        "NSUnknownKeyException");
}

TEST_F(ObjectWithValueTest, ObjectsBehindTheFoundOneAreNotAsked) {
    const NSArray mixed = NSArray::arrayOf(named("drums"), "a string"_ns);
    EXPECT_EQ(tessarin_objectWithValue_forKeyPath(mixed, "drums"_ns, "name"_ns), mixed.objectAtIndex(0));
}

TEST_F(ObjectWithValueTest, OutlivesTheArray) {
    Retained<NSMutableArray> tracks = adopt(NSMutableArray::alloc().init());
    {
        const Retained<NSMutableDictionary> track = adopt(NSMutableDictionary(named("drums").mutableCopy()));
        tracks.addObject(track);
    }
    const NSObject found = tessarin_objectWithValue_forKeyPath(tracks, "drums"_ns, "name"_ns);
    tracks.reset();
    EXPECT_EQ(text(as<NSDictionary>(found).objectForKey("name"_ns)), "drums");
}

} // namespace
} // namespace tessarin::testing
