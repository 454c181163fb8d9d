// Classes that come to exist without the library's doing.
#include "PlatformTest.h"

#include "platform/native/ObjectiveC.h"

#include <atomic>
#include <deque>
#include <thread>
#include <utility>

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

TEST_F(LateClassTest, GroupsAreAttachedWhileThreadsLookUpConcurrently) {
    constexpr int count = 50;
    const auto nameOf = [](int number) { return "LateClassNumber" + std::to_string(number); };
    std::deque<ExtensionGroup> groups;
    for (int number = 0; number < count; ++number)
        groups.emplace_back(nameOf(number).c_str(), "LateClassTest",
                            std::initializer_list<MethodRow>{instanceMethod("lateClassTest_answer", answer)});
    std::vector<std::thread> threads;
    for (int thread = 0; thread < 4; ++thread) {
        threads.emplace_back([&] {
            for (int number = 0; number < count; ++number)
                while (!runtime::lookUpClass(nameOf(number).c_str())) std::this_thread::yield();
        });
    }
    for (int number = 0; number < count; ++number) define(nameOf(number).c_str());
    for (std::thread& thread : threads) thread.join();
    for (const ExtensionGroup& group : groups) EXPECT_TRUE(group.isAttached());
    for (int number = 0; number < count; ++number)
        EXPECT_EQ(answerOfInstance(native::loadedClass(nameOf(number).c_str())), 42u) << number;
}

TEST_F(LateClassTest, AGroupIsAttachedWhenItsConstructorIsDoneWhileThreadsLookUpConcurrently) {
    static const ExtensionGroup waiting{"LateClassNever", "LateClassTest", {}};
    const ::Class extended = define("LateClassExtendedOften");
    std::atomic<bool> isDone{false};
    std::vector<std::thread> threads;
    for (int thread = 0; thread < 3; ++thread) {
        threads.emplace_back([&] {
            while (!isDone) runtime::lookUpClass("LateClassNever");
        });
    }
    int missing = 0;
    for (int number = 0; number < 3000; ++number) {
        const std::string selector = "lateClassTest_answer" + std::to_string(number);
        const ExtensionGroup group{
            "LateClassExtendedOften", "LateClassTest", {instanceMethod(selector.c_str(), answer)}};
        missing += !class_respondsToSelector(extended, sel_registerName(selector.c_str()));
    }
    isDone = true;
    for (std::thread& thread : threads) thread.join();
    EXPECT_EQ(missing, 0);
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

TEST_F(LateClassTest, GroupsAreAttachedWhenABundleIsLoaded) {
    static const ExtensionGroup group{
        "LateClassOfBundle", "LateClassTest", {instanceMethod("lateClassTest_answer", answer)}};
    const NSBundle bundle = NSBundle::bundleWithPath(NSString(TESSARIN_TEST_BUNDLE));
    ASSERT_EQ(native::loadedClass("LateClassOfBundle"), nullptr);
    ASSERT_TRUE(send<BOOL>(bundle, "load"_sel));
    const ::Class loaded = native::loadedClass("LateClassOfBundle");
    ASSERT_NE(loaded, nullptr);
    EXPECT_EQ(answerOfInstance(loaded), 42u);
}

TEST_F(LateClassTest, TheRuntimeReportsClassesAlsoAfterNSBundleHasTakenItsReports) {
    static const ExtensionGroup group{
        "LateClassAfterBundle", "LateClassTest", {instanceMethod("lateClassTest_answer", answer)}};
    const auto listening = std::exchange(_objc_load_callback, nullptr);
    ASSERT_NE(listening, nullptr);
    runtime::lookUpClass("LateClassAfterBundle");
    EXPECT_EQ(_objc_load_callback, listening);
}

#endif

} // namespace
} // namespace tessarin::testing
