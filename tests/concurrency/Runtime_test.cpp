// Messages, classes, reference counts and autorelease pools on many threads at once.
#include "ManyThreads.h"
#include "NewClassName.h"

#include <array>
#include <atomic>

namespace tessarin::testing {
namespace {

class ConcurrentRuntimeTest : public PlatformTest {};

// Names that are new to all threads as well as known ones.
TEST_F(ConcurrentRuntimeTest, LookUps) {
    constexpr unsigned callCount = 8 * 300, callsOfAName = 8;
    std::array<std::atomic<SEL>, callCount / callsOfAName> selectors{};
    std::atomic<unsigned> calls = 0;
    onManyThreads(300, [&] {
        const unsigned number = calls++ / callsOfAName;
        const std::string name = "concurrentLookUp" + std::to_string(number);
        const SEL selector = runtime::registerSelector(name.c_str());
        SEL first = nullptr;
        const bool isFirst = selectors[number].compare_exchange_strong(first, selector);
        return difference(runtime::selectorName(selector), name)
               + (isFirst || first == selector ? "" : "another selector of the same name")
               + (NSArray::array().respondsToSelector(selector) ? "a method of no class" : "")
               + (NSArray::array().respondsToSelector("count"_sel) ? "" : "no count")
               + (runtime::lookUpClass("NSMutableArray") == NSMutableArray::classObject().object()
                      ? ""
                      : "another class")
               + (runtime::lookUpClass(name.c_str()) ? "a class of no name" : "");
    });
    EXPECT_EQ(calls.load(), callCount);
}

// ---- Classes

NSInteger answerOne(NSObject, SEL) { return 1; }
NSInteger answerTwo(NSObject, SEL) { return 2; }

// Whichever thread is the first to ask for a class that waited for its superclass, they all find the same.
TEST_F(ConcurrentRuntimeTest, ClassesThatAreAskedForTheFirstTime) {
    for (int round = 0; round < 50; ++round) {
        const std::string base = newClassName("ConcurrentBase");
        const std::string middle = newClassName("ConcurrentMiddle");
        const std::string name = newClassName("ConcurrentNew");
        const ClassDefinition definition{{.name = name.c_str(),
                                          .superclass = middle.c_str(),
                                          .methods = {instanceMethod("concurrentOwn", answerOne)}}};
        const ClassDefinition middleDefinition{{.name = middle.c_str(), .superclass = base.c_str()}};
        const ExtensionGroup group{
            name.c_str(), "ConcurrentTests", {instanceMethod("concurrentAdded", answerTwo)}};
        ASSERT_FALSE(definition.classObject());
        const ClassDefinition baseDefinition{{.name = base.c_str()}};

        std::array<Class, threadCount> found;
        std::array<NSInteger, threadCount> sums{};
        onManyThreads([&](int thread) {
            const auto position = static_cast<std::size_t>(thread);
            found[position] = definition.classObject();
            const Retained<NSObject> object = adopt(send<NSObject>(found[position].alloc(), "init"_sel));
            sums[position] = 10 * send<NSInteger>(object, "concurrentOwn"_sel)
                             + send<NSInteger>(object, "concurrentAdded"_sel);
        });
        for (const Class each : found) EXPECT_EQ(each, definition.classObject());
        for (const NSInteger sum : sums) EXPECT_EQ(sum, 12);
        EXPECT_EQ(definition.classObject().superclass(), middleDefinition.classObject());
        EXPECT_EQ(middleDefinition.classObject().superclass(), baseDefinition.classObject());
    }
}

// ---- Reference counts and pools

std::atomic<int>& departures() {
    static std::atomic<int> count;
    return count;
}
void countDeparture(NSObject self, SEL selector) {
    ++departures();
    sendSuper<void>(self, "ConcurrentRuntimeTestDeparting"_class, selector);
}

TEST_F(ConcurrentRuntimeTest, TheLastOfAllThreadsThatReleaseAnObjectEndsIt) {
    static const ClassDefinition definition{
        {.name = "ConcurrentRuntimeTestDeparting", .methods = {instanceMethod("dealloc", countDeparture)}}};
    constexpr int objectCount = 1'000;
    std::array<std::vector<Retained<NSObject>>, threadCount> owners;
    for (int number = 0; number < objectCount; ++number) {
        const Retained<NSObject> object = adopt(send<NSObject>(definition.classObject().alloc(), "init"_sel));
        for (auto& owned : owners) owned.push_back(object);
    }
    departures() = 0;
    onManyThreads([&](int thread) {
        for (Retained<NSObject>& object : owners[static_cast<std::size_t>(thread)]) {
            const Retained<NSObject> another = object;
            object.reset();
        }
    });
    EXPECT_EQ(departures(), objectCount);
}

TEST_F(ConcurrentRuntimeTest, EachThreadHasPoolsOfItsOwn) {
    const Retained<NSObject> shared = adopt(send<NSObject>(NSObject::classObject().alloc(), "init"_sel));
    onManyThreads(300, [&]() -> std::string {
        const Retained<NSObject> own = adopt(send<NSObject>(NSObject::classObject().alloc(), "init"_sel));
        const AutoreleasePool outer;
        retain(NSObject(own)).autorelease();
        {
            const AutoreleasePool inner;
            retain(NSObject(own)).autorelease();
            retain(NSObject(shared)).autorelease();
            if (own.retainCount() != 3) return "released too early";
        }
        return own.retainCount() == 2 ? "" : "not released with its pool";
    });
    EXPECT_EQ(shared.retainCount(), 1u);
}

} // namespace
} // namespace tessarin::testing
