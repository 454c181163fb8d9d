// Methods that are found while others take their places.
#include "platform/embedded/runtime/Classes.h"

#include "ManyThreads.h"
#include "NewClassName.h"

#include <atomic>

namespace tessarin::testing {
namespace {

class MethodLookUpTest : public PlatformTest {};

id answerNil(NSObject, SEL) { return nil; }
int answerOne(NSObject, SEL) { return 1; }

TEST_F(MethodLookUpTest, WhatWasFoundStaysAsItWasWhenAnotherMethodTakesItsPlace) {
    const std::string name = newClassName("MethodLookUpTestObject");
    const ClassDefinition definition{{.name = name.c_str(), .methods = {instanceMethod("value", answerNil)}}};
    embedded::RuntimeClass* const record = embedded::runtimeClass(definition.classObject().object());
    const auto found = embedded::findMethod(record, "value"_sel);
    const MethodRow another = instanceMethod("value", answerOne);
    {
        const std::lock_guard lock(embedded::runtimeMutex());
        embedded::addMethod(record, "value"_sel, {another.implementation, another.encoding});
    }
    EXPECT_EQ(found->encoding[0], '@');
    EXPECT_EQ(embedded::findMethod(record, "value"_sel)->encoding[0], 'i');
}

TEST_F(MethodLookUpTest, AMethodThatNoClassHasIsNotFound) {
    embedded::RuntimeClass* const record = embedded::runtimeClass(NSObject::classObject().object());
    EXPECT_FALSE(embedded::findMethod(record, "methodLookUpTestNothing"_sel));
}

// ---- Many threads

void addMethod(embedded::RuntimeClass* record, SEL selector, const MethodRow& row) {
    const std::lock_guard lock(embedded::runtimeMutex());
    embedded::addMethod(record, selector, {row.implementation, row.encoding});
}

template <int number>
int answerNumber(NSObject, SEL) {
    return number;
}

// The class's table of methods found before grows on all threads at once, and is read meanwhile without a
// lock.
TEST_F(MethodLookUpTest, ConcurrentSendersFindTheMethodsOfNewNames) {
    const MethodRow rows[] = {
        instanceMethod("0", answerNumber<0>), instanceMethod("1", answerNumber<1>),
        instanceMethod("2", answerNumber<2>), instanceMethod("3", answerNumber<3>),
        instanceMethod("4", answerNumber<4>), instanceMethod("5", answerNumber<5>),
        instanceMethod("6", answerNumber<6>),
    };
    constexpr std::size_t perThread = 300, count = threadCount * perThread;
    const std::string name = newClassName("MethodLookUpTestManyMethods");
    const ClassDefinition definition{{.name = name.c_str()}};
    embedded::RuntimeClass* const record = embedded::runtimeClass(definition.classObject().object());
    std::vector<SEL> selectors;
    for (std::size_t number = 0; number < count; ++number) {
        selectors.push_back(
            runtime::registerSelector(("methodLookUpTestNumber" + std::to_string(number)).c_str()));
        addMethod(record, selectors.back(), rows[number % std::size(rows)]);
    }
    const Retained<NSObject> object = adopt(send<NSObject>(definition.classObject().alloc(), "init"_sel));
    std::array<int, threadCount> mistakes{};
    onManyThreads([&](int thread) {
        // First the names that no other thread has sent, then those of the others, then all once more.
        const auto position = static_cast<std::size_t>(thread);
        for (std::size_t step = 0; step < 2 * count; ++step) {
            const std::size_t number = (position * perThread + step) % count;
            const int answer = send<int>(object, selectors[number]);
            if (answer != static_cast<int>(number % std::size(rows))) ++mistakes[position];
        }
    });
    EXPECT_EQ(mistakes, (std::array<int, threadCount>{}));
}

TEST_F(MethodLookUpTest, ConcurrentSendersMeetTheOneMethodOrTheOtherThatTakesItsPlace) {
    const MethodRow rows[] = {instanceMethod("value", answerNumber<0>),
                              instanceMethod("value", answerNumber<1>)};
    const std::string name = newClassName("MethodLookUpTestChanging");
    const ClassDefinition definition{{.name = name.c_str(), .methods = {rows[0]}}};
    embedded::RuntimeClass* const record = embedded::runtimeClass(definition.classObject().object());
    const Retained<NSObject> object = adopt(send<NSObject>(definition.classObject().alloc(), "init"_sel));
    std::atomic<bool> isChanging = true;
    std::array<int, threadCount> mistakes{};
    onManyThreads([&](int thread) {
        if (thread == 0) {
            for (std::size_t change = 1; change <= 301; ++change)
                addMethod(record, "value"_sel, rows[change % 2]);
            isChanging = false;
        }
        while (isChanging) {
            const int answer = send<int>(object, "value"_sel);
            if (answer != 0 && answer != 1) ++mistakes[static_cast<std::size_t>(thread)];
        }
        if (send<int>(object, "value"_sel) != 1) ++mistakes[static_cast<std::size_t>(thread)];
    });
    EXPECT_EQ(mistakes, (std::array<int, threadCount>{}));
}

} // namespace
} // namespace tessarin::testing
