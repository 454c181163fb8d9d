// Classes that come to exist without the library's doing.
#include "PlatformTest.h"

#include "platform/native/ObjectiveC.h"

namespace tessarin::testing {
namespace {

NSUInteger answer(NSObject, SEL) { return 42; }

class LateClassTest : public PlatformTest {
protected:
    static ::Class define(const char* name) {
        const ::Class created =
            objc_allocateClassPair(native::runtimeClass("NSObject"_class.object()), name, 0);
        objc_registerClassPair(created);
        return created;
    }
    static NSUInteger answerOfInstance(::Class classObject) {
        const Class asked(NSObject(native::objectOf(classObject)));
        return send<NSUInteger>(adopt(send<NSObject>(asked, "new"_sel)), "lateClassTest_answer"_sel);
    }
};

TEST_F(LateClassTest, GroupsAreAttachedWhenTheClassIsLookedUp) {
    static const ExtensionGroup group{
        "LateClassFound", "LateClassTest", {instanceMethod("lateClassTest_answer", answer)}};
    EXPECT_FALSE(group.isAttached());
    const ::Class created = define("LateClassFound");
    EXPECT_EQ("LateClassFound"_class.object(), native::objectOf(created));
    EXPECT_EQ(answerOfInstance(created), 42u);
    EXPECT_TRUE(group.isAttached());
}

TEST_F(LateClassTest, DefinitionsFollowTheirSuperclass) {
    static const ClassDefinition definition{{.name = "LateClassDerived", .superclass = "LateClassBase"}};
    EXPECT_FALSE(definition.classObject());
    define("LateClassBase");
    EXPECT_TRUE("LateClassDerived"_class);
    EXPECT_EQ(definition.classObject().superclass(), "LateClassBase"_class);
}

TEST_F(LateClassTest, ANameTakenMeanwhileKeepsItsClass) {
    static const ClassDefinition definition{{.name = "LateClassTaken", .superclass = "LateClassAbsent"}};
    const ::Class taken = define("LateClassTaken");
    define("LateClassAbsent");
    EXPECT_EQ("LateClassTaken"_class.object(), native::objectOf(taken));
    EXPECT_EQ("LateClassTaken"_class.superclass(), "NSObject"_class);
}

#if !defined(__APPLE__)

TEST_F(LateClassTest, GroupsAreAttachedWhenTheRuntimeReportsTheClass) {
    static const ExtensionGroup group{
        "LateClassLoaded", "LateClassTest", {instanceMethod("lateClassTest_answer", answer)}};
    static const ExtensionGroup other{
        "LateClassUnreported", "LateClassTest", {instanceMethod("lateClassTest_answer", answer)}};
    const ::Class created = define("LateClassLoaded");
    const ::Class unreported = define("LateClassUnreported");
    ASSERT_NE(_objc_load_callback, nullptr);
    _objc_load_callback(created, nullptr);
    EXPECT_EQ(answerOfInstance(created), 42u);
    EXPECT_FALSE(class_respondsToSelector(unreported, native::runtimeSelector("lateClassTest_answer"_sel)));
    EXPECT_TRUE(other.isAttached());
    EXPECT_EQ(answerOfInstance(unreported), 42u);
}

#endif

} // namespace
} // namespace tessarin::testing
