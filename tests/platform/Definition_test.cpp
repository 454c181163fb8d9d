// New classes and extension groups.
#include "NewClassName.h"
#include "PlatformTest.h"

#include <cstdarg>
#include <cstdint>
#include <utility>

namespace tessarin::testing {
namespace {

struct Position {
    double x;
    double y;
    static constexpr auto typeEncoding() {
        using detail::letter;
        return letter('{') + letter('?') + letter('=') + letter('d') + letter('d') + letter('}');
    }
};

// ---- A class with data: DefinitionTrack, and DefinitionLoop derived from it

NSString trackTitle(NSObject self, SEL) { return instanceVariableOf<NSString>(self, "title"); }
void setTrackTitle(NSObject self, SEL, NSString title) {
    const NSString copy = title.copy();
    runtime::release(std::exchange(instanceVariableOf<NSString>(self, "title"), copy).object());
}
float trackGain(NSObject self, SEL) { return instanceVariableOf<float>(self, "gain"); }
void setTrackGain(NSObject self, SEL, float gain) { instanceVariableOf<float>(self, "gain") = gain; }
BOOL trackIsMuted(NSObject self, SEL) { return instanceVariableOf<BOOL>(self, "muted"); }
Position trackPosition(NSObject self, SEL) { return instanceVariableOf<Position>(self, "position"); }
void setTrackPosition(NSObject self, SEL, Position position) {
    instanceVariableOf<Position>(self, "position") = position;
}
NSString trackDescription(NSObject, SEL) { return "a track"_ns; }
id copyTrack(NSObject self, SEL, void*) {
    const NSObject copy = send<NSObject>(self.class_().alloc(), "init"_sel);
    setTrackTitle(copy, nullptr, trackTitle(self, nullptr));
    return copy;
}
void deallocTrack(NSObject self, SEL) {
    runtime::release(instanceVariableOf<NSString>(self, "title").object());
    sendSuper<void>(self, "DefinitionTrack"_class, "dealloc"_sel);
}
NSObject newNamed(Class self, SEL, NSString title) {
    const NSObject track = adopt(send<NSObject>(self.alloc(), "init"_sel)).autorelease();
    send<void>(track, "setTitle:"_sel, title);
    return track;
}
NSString kindOfThing(Class, SEL) { return "track"_ns; }

NSString loopDescription(NSObject self, SEL selector) {
    return "looped: "_ns.stringByAppendingString(sendSuper<NSString>(self, "DefinitionLoop"_class, selector));
}
NSString kindOfLoop(Class self, SEL) {
    const NSObject metaclass(runtime::classOf("DefinitionLoop"_class.object()));
    return "looped "_ns.stringByAppendingString(sendSuper<NSString>(self, metaclass, "kind"_sel));
}

class ClassDefinitionTest : public PlatformTest {
protected:
    static void SetUpTestSuite() {
        static const ClassDefinition track{
            {.name = "DefinitionTrack",
             .protocols = {"NSCopying"},
             .instanceVariables = {instanceVariable<char>("flag"), instanceVariable<NSString>("title"),
                                   instanceVariable<BOOL>("muted"), instanceVariable<float>("gain"),
                                   instanceVariable<Position>("position")},
             .methods = {instanceMethod("title", trackTitle), instanceMethod("setTitle:", setTrackTitle),
                         instanceMethod("gain", trackGain), instanceMethod("setGain:", setTrackGain),
                         instanceMethod("isMuted", trackIsMuted), instanceMethod("position", trackPosition),
                         instanceMethod("setPosition:", setTrackPosition),
                         instanceMethod("description", trackDescription),
                         instanceMethod("copyWithZone:", copyTrack), instanceMethod("dealloc", deallocTrack),
                         classMethod("trackNamed:", newNamed), classMethod("kind", kindOfThing)}}};
        static const ClassDefinition loop{
            {.name = "DefinitionLoop",
             .superclass = "DefinitionTrack",
             .instanceVariables = {instanceVariable<NSUInteger>("beats")},
             .methods = {instanceMethod("description", loopDescription), classMethod("kind", kindOfLoop)}}};
    }

    static NSObject newTrack(Class trackClass = "DefinitionTrack"_class) {
        return adopt(send<NSObject>(trackClass.alloc(), "init"_sel)).autorelease();
    }
};

TEST_F(ClassDefinitionTest, IsAClassLikeAnyOther) {
    const NSObject track = newTrack();
    EXPECT_EQ(track.class_(), "DefinitionTrack"_class);
    EXPECT_TRUE(track.isKindOfClass("NSObject"_class));
    EXPECT_TRUE(track.isEqual(track));
    EXPECT_FALSE(track.isEqual(newTrack()));
    EXPECT_STREQ(runtime::className("DefinitionTrack"_class.object()), "DefinitionTrack");
    EXPECT_EQ("DefinitionTrack"_class.superclass(), "NSObject"_class);
}

TEST_F(ClassDefinitionTest, InstanceVariablesAreZeroInANewObject) {
    const NSObject track = newTrack("DefinitionLoop"_class);
    EXPECT_FALSE(instanceVariableOf<NSString>(track, "title"));
    EXPECT_EQ(instanceVariableOf<float>(track, "gain"), 0.0f);
    EXPECT_EQ(instanceVariableOf<Position>(track, "position").y, 0.0);
    EXPECT_EQ(instanceVariableOf<NSUInteger>(track, "beats"), 0u);
}

TEST_F(ClassDefinitionTest, InstanceVariablesDoNotOverlap) {
    const NSObject track = newTrack("DefinitionLoop"_class);
    instanceVariableOf<char>(track, "flag") = 'f';
    instanceVariableOf<BOOL>(track, "muted") = YES;
    instanceVariableOf<NSUInteger>(track, "beats") = NSUInteger{0} - 1;
    send<void>(track, "setTitle:"_sel, "Bass"_ns);
    send<void>(track, "setGain:"_sel, 0.5f);
    send<void>(track, "setPosition:"_sel, Position{1.5, -2.5});
    EXPECT_EQ(instanceVariableOf<char>(track, "flag"), 'f');
    EXPECT_EQ(send<BOOL>(track, "isMuted"_sel), YES);
    EXPECT_EQ(text(send<NSString>(track, "title"_sel)), "Bass");
    EXPECT_EQ(send<float>(track, "gain"_sel), 0.5f);
    EXPECT_EQ(send<Position>(track, "position"_sel).x, 1.5);
    EXPECT_EQ(send<Position>(track, "position"_sel).y, -2.5);
    EXPECT_EQ(instanceVariableOf<NSUInteger>(track, "beats"), NSUInteger{0} - 1);
}

TEST_F(ClassDefinitionTest, InstanceVariablesAreAligned) {
    const NSObject track = newTrack("DefinitionLoop"_class);
    for (const char* name : {"title", "position", "beats"})
        EXPECT_EQ(
            reinterpret_cast<std::uintptr_t>(runtime::instanceVariableAddress(track.object(), name)) % 8, 0u)
            << name;
}

TEST_F(ClassDefinitionTest, AnUnknownInstanceVariableHasNoPlace) {
    EXPECT_EQ(runtime::instanceVariableAddress(newTrack().object(), "beats"), nullptr);
    EXPECT_EQ(runtime::instanceVariableAddress(newTrack().object(), ""), nullptr);
}

TEST_F(ClassDefinitionTest, OverriddenMethodsAreAsked) {
    EXPECT_EQ(text(newTrack().description()), "a track");
    EXPECT_EQ(text(NSString::stringWithFormat("%@"_ns, newTrack())), "a track");
}

TEST_F(ClassDefinitionTest, OverridingMethodsReachTheOverriddenOne) {
    EXPECT_EQ(text(newTrack("DefinitionLoop"_class).description()), "looped: a track");
}

TEST_F(ClassDefinitionTest, ClassMethodsAreInheritedAndOverridden) {
    EXPECT_EQ(text(send<NSString>("DefinitionTrack"_class, "kind"_sel)), "track");
    EXPECT_EQ(text(send<NSString>("DefinitionLoop"_class, "kind"_sel)), "looped track");
    const NSObject loop = send<NSObject>("DefinitionLoop"_class, "trackNamed:"_sel, "Drums"_ns);
    EXPECT_EQ(loop.class_(), "DefinitionLoop"_class);
    EXPECT_EQ(text(send<NSString>(loop, "title"_sel)), "Drums");
}

TEST_F(ClassDefinitionTest, ProtocolsAreAdoptedAndInherited) {
    EXPECT_TRUE(newTrack().conformsToProtocol("NSCopying"_protocol));
    EXPECT_TRUE(newTrack("DefinitionLoop"_class).conformsToProtocol("NSCopying"_protocol));
    EXPECT_FALSE(newTrack().conformsToProtocol("NSMutableCopying"_protocol));
}

TEST_F(ClassDefinitionTest, CopyAsksCopyWithZone) {
    const NSObject track = send<NSObject>("DefinitionTrack"_class, "trackNamed:"_sel, "Drums"_ns);
    const Retained<NSObject> copy = adopt(static_cast<NSObject>(track.copy()));
    EXPECT_NE(copy, track);
    EXPECT_EQ(copy.retainCount(), 1u);
    EXPECT_EQ(text(send<NSString>(copy, "title"_sel)), "Drums");
}

TEST_F(ClassDefinitionTest, DeallocRunsOnceWhenTheLastReferenceGoes) {
    const Retained<NSMutableString> title = adopt(NSMutableString::alloc().init());
    {
        const AutoreleasePool pool;
        const NSObject track = newTrack();
        runtime::retain(title.object());
        instanceVariableOf<NSString>(track, "title") = title;
        EXPECT_EQ(title.retainCount(), 2u);
    }
    EXPECT_EQ(title.retainCount(), 1u);
}

TEST_F(ClassDefinitionTest, InstancesAreElementsOfThePlatformsCollections) {
    const NSObject track = newTrack();
    const NSArray array = NSArray::arrayOf("a"_ns, track);
    EXPECT_EQ(array.indexOfObject(track), 1u);
    const NSDictionary dictionary = NSDictionary::dictionaryWithObject_forKey(track, "key"_ns);
    EXPECT_EQ(dictionary.objectForKey("key"_ns), track);
}

TEST_F(ClassDefinitionTest, ATakenNameRaises) {
    EXPECT_THROWS_NAMED(ClassDefinition({.name = "DefinitionTrack"}), "NSInvalidArgumentException");
    EXPECT_THROWS_NAMED(ClassDefinition({.name = "NSString"}), "NSInvalidArgumentException");
    EXPECT_EQ("NSString"_class.superclass(), "NSObject"_class);
}

TEST_F(ClassDefinitionTest, WaitsForItsSuperclass) {
    const std::string names[] = {newClassName("DefinitionFirst"), newClassName("DefinitionSecond"),
                                 newClassName("DefinitionThird")};
    const ClassDefinition third{{.name = names[2].c_str(), .superclass = names[1].c_str()}};
    const ClassDefinition second{{.name = names[1].c_str(), .superclass = names[0].c_str()}};
    EXPECT_FALSE(third.classObject());
    EXPECT_FALSE(second.classObject());
    EXPECT_THROWS_NAMED(ClassDefinition({.name = names[2].c_str()}), "NSInvalidArgumentException");

    const ClassDefinition first{{.name = names[0].c_str()}};
    EXPECT_TRUE(first.classObject());
    EXPECT_EQ(second.classObject().superclass(), first.classObject());
    EXPECT_EQ(third.classObject().superclass(), second.classObject());
    EXPECT_TRUE(newTrack(third.classObject()).isKindOfClass(first.classObject()));
}

TEST_F(ClassDefinitionTest, ALiteralIsTheClassAsSoonAsItExists) {
    if ("DefinitionLiteral"_class) GTEST_SKIP() << "the class exists since an earlier run in this process";
    const ClassDefinition definition{{.name = "DefinitionLiteral"}};
    EXPECT_TRUE("DefinitionLiteral"_class);
    EXPECT_EQ("DefinitionLiteral"_class, definition.classObject());
}

// ---- A string class of one's own: the letters from a to z, so many of them

NSUInteger alphabetLength(NSString self, SEL) { return instanceVariableOf<NSUInteger>(self, "count"); }
unichar alphabetCharacter(NSString self, SEL, NSUInteger index) {
    if (index >= alphabetLength(self, nullptr)) raise(NSRangeException(), "beyond the alphabet"_ns);
    return static_cast<unichar>('a' + index);
}

TEST_F(ClassDefinitionTest, MayBeDerivedFromAClassOfThePlatform) {
    static const ClassDefinition definition{
        {.name = "DefinitionAlphabet",
         .superclass = "NSString",
         .instanceVariables = {instanceVariable<NSUInteger>("count")},
         .methods = {instanceMethod("length", alphabetLength),
                     instanceMethod("characterAtIndex:", alphabetCharacter)}}};
    const NSString letters =
        adopt(send<NSString>(definition.classObject().alloc(), "init"_sel)).autorelease();
    instanceVariableOf<NSUInteger>(letters, "count") = 5;
    EXPECT_EQ(text(letters), "abcde");
    EXPECT_EQ(text(letters.substringFromIndex(2)), "cde");
    EXPECT_TRUE(letters.hasPrefix("ab"_ns));
    EXPECT_TRUE(letters.isEqualToString("abcde"_ns));
    EXPECT_TRUE("abcde"_ns.isEqual(letters));
    EXPECT_EQ(text(letters.uppercaseString()), "ABCDE");
    EXPECT_EQ(text(letters.stringByAppendingString("f"_ns)), "abcdef");
}

// ---- Extension groups

NSString twice(NSString self, SEL) { return self.stringByAppendingString(self); }
NSString sharedGreeting(Class, SEL, NSString name) { return "hello "_ns.stringByAppendingString(name); }
double halfLength(NSString self, SEL) { return static_cast<double>(self.length()) / 2; }
NSUInteger sumOfList(NSString self, SEL, int first, ...) {
    std::va_list list;
    va_start(list, first);
    auto sum = static_cast<NSUInteger>(first) + self.length();
    for (int next = va_arg(list, int); next != 0; next = va_arg(list, int))
        sum += static_cast<NSUInteger>(next);
    va_end(list);
    return sum;
}

const ExtensionGroup stringGroup{"NSString",
                                 "DefinitionTests",
                                 {instanceMethod("definitionTests_twice", twice),
                                  instanceMethod("definitionTests_half", halfLength),
                                  instanceMethod("definitionTests_sum:", sumOfList),
                                  classMethod("definitionTests_greet:", sharedGreeting)}};

class ExtensionGroupTest : public PlatformTest {
protected:
    static ExtensionGroupRecord recordOf(const std::string& className, const std::string& groupName) {
        for (const ExtensionGroupRecord& record : extensionGroups())
            if (record.className == className && record.groupName == groupName) return record;
        ADD_FAILURE() << "no record of " << className << " (" << groupName << ")";
        return {};
    }
};

TEST_F(ExtensionGroupTest, AddsInstanceMethods) {
    EXPECT_EQ(text(send<NSString>("ab"_ns, "definitionTests_twice"_sel)), "abab");
    EXPECT_EQ(send<double>("abc"_ns, "definitionTests_half"_sel), 1.5);
}

TEST_F(ExtensionGroupTest, AddsClassMethods) {
    EXPECT_EQ(text(send<NSString>("NSString"_class, "definitionTests_greet:"_sel, "you"_ns)), "hello you");
}

TEST_F(ExtensionGroupTest, AddsMethodsWithListsOfVariableLength) {
    EXPECT_EQ(sendVariadic<NSUInteger>("abc"_ns, "definitionTests_sum:"_sel, 1, 10, 100, 0), 114u);
}

TEST_F(ExtensionGroupTest, SubclassesAnswerTheOperations) {
    EXPECT_EQ(text(send<NSString>(NSMutableString::stringWithString("ab"_ns), "definitionTests_twice"_sel)),
              "abab");
    EXPECT_EQ(text(send<NSString>("NSMutableString"_class, "definitionTests_greet:"_sel, "you"_ns)),
              "hello you");
}

TEST_F(ExtensionGroupTest, ObjectsSayThatTheyRespond) {
    EXPECT_TRUE("a"_ns.respondsToSelector("definitionTests_twice"));
    EXPECT_TRUE("NSString"_class.respondsToSelector("definitionTests_greet:"));
    EXPECT_TRUE("NSMutableString"_class.instancesRespondToSelector("definitionTests_twice"_sel));
    EXPECT_FALSE("a"_ns.respondsToSelector("definitionTests_greet:"));
    EXPECT_FALSE(NSArray::array().respondsToSelector("definitionTests_twice"));
}

NSString never(NSString, SEL) { return "overridden"_ns; }

TEST_F(ExtensionGroupTest, SubclassesMayOverrideTheOperations) {
    static const ClassDefinition definition{{.name = "DefinitionStubbornString",
                                             .superclass = "DefinitionPlainString",
                                             .methods = {instanceMethod("definitionTests_twice", never)}}};
    static const ClassDefinition plain{{.name = "DefinitionPlainString",
                                        .superclass = "NSString",
                                        .instanceVariables = {instanceVariable<NSUInteger>("count")},
                                        .methods = {instanceMethod("length", alphabetLength),
                                                    instanceMethod("characterAtIndex:", alphabetCharacter)}}};
    const NSString stubborn =
        adopt(send<NSString>(definition.classObject().alloc(), "init"_sel)).autorelease();
    EXPECT_EQ(text(send<NSString>(stubborn, "definitionTests_twice"_sel)), "overridden");
    EXPECT_EQ(text(sendSuper<NSString>(stubborn, definition.classObject(), "definitionTests_twice"_sel)), "");
}

NSString replacedAnswer(NSObject, SEL) { return "second"_ns; }
NSString firstAnswer(NSObject, SEL) { return "first"_ns; }

TEST_F(ExtensionGroupTest, TakesTheClassesOwnMethodsPlace) {
    const std::string name = newClassName("DefinitionReplaced");
    const ClassDefinition definition{
        {.name = name.c_str(), .methods = {instanceMethod("answer", firstAnswer)}}};
    const NSObject object = adopt(send<NSObject>(definition.classObject().alloc(), "init"_sel)).autorelease();
    EXPECT_EQ(text(send<NSString>(object, "answer"_sel)), "first");
    const ExtensionGroup group{name.c_str(), "Replacing", {instanceMethod("answer", replacedAnswer)}};
    EXPECT_EQ(text(send<NSString>(object, "answer"_sel)), "second");
}

TEST_F(ExtensionGroupTest, AnsweredBeforeByAnotherIsTakenNoticeOf) {
    const std::string name = newClassName("DefinitionLateMethod");
    const ClassDefinition definition{{.name = name.c_str()}};
    const NSObject object = adopt(send<NSObject>(definition.classObject().alloc(), "init"_sel)).autorelease();
    EXPECT_THROWS_NAMED(send<NSString>(object, "answer"_sel), "NSInvalidArgumentException");
    EXPECT_FALSE(object.respondsToSelector("answer"));
    const ExtensionGroup group{name.c_str(), "Late", {instanceMethod("answer", firstAnswer)}};
    EXPECT_TRUE(object.respondsToSelector("answer"));
    EXPECT_EQ(text(send<NSString>(object, "answer"_sel)), "first");
}

TEST_F(ExtensionGroupTest, IsLeftOffWhereTheClassIsMissing) {
    static const ExtensionGroup group{
        "NoClassOfThisName", "Unattached", {instanceMethod("answer", firstAnswer)}};
    EXPECT_FALSE(group.isAttached());
    EXPECT_FALSE("NoClassOfThisName"_class);
    EXPECT_FALSE(recordOf("NoClassOfThisName", "Unattached").attached);
}

TEST_F(ExtensionGroupTest, IsAttachedWhenTheClassComesToExist) {
    const std::string name = newClassName("DefinitionLate");
    const ExtensionGroup group{name.c_str(), "Waiting", {instanceMethod("answer", firstAnswer)}};
    EXPECT_FALSE(group.isAttached());
    const ClassDefinition definition{{.name = name.c_str()}};
    EXPECT_TRUE(group.isAttached());
    EXPECT_TRUE(recordOf(name, "Waiting").attached);
    const NSObject object = adopt(send<NSObject>(definition.classObject().alloc(), "init"_sel)).autorelease();
    EXPECT_EQ(text(send<NSString>(object, "answer"_sel)), "first");
}

TEST_F(ExtensionGroupTest, IsOnRecord) {
    EXPECT_TRUE(stringGroup.isAttached());
    const ExtensionGroupRecord record = recordOf("NSString", "DefinitionTests");
    EXPECT_TRUE(record.attached);
    EXPECT_EQ(record.selectors,
              (std::vector<std::string>{"-definitionTests_twice", "-definitionTests_half",
                                        "-definitionTests_sum:", "+definitionTests_greet:"}));
}

} // namespace
} // namespace tessarin::testing
