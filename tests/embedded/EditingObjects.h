// Objects of an application's own that edit others while they are asked.
#pragma once

#include "PlatformTest.h"

#include <functional>
#include <utility>

namespace tessarin::testing {

// What the next question to an object of these classes sets off.
inline std::function<void()> edit;
inline void makeEdit() {
    if (const std::function<void()> made = std::exchange(edit, nullptr)) made();
}

template <class T>
Retained<T> newObject(const ClassDefinition& definition) {
    return adopt(as<T>(send<NSObject>(definition.classObject().alloc(), "init"_sel)));
}

// "qqq"
inline Retained<NSString> editingString() {
    static const ClassDefinition definition{
        {.name = "EditingMeanwhileString",
         .superclass = "NSString",
         .methods = {instanceMethod(
                         "length",
                         +[](NSString, SEL) -> NSUInteger {
                             makeEdit();
                             return 3;
                         }),
                     instanceMethod(
                         "characterAtIndex:", +[](NSString, SEL, NSUInteger) -> unichar { return 'q'; })}}};
    return newObject<NSString>(definition);
}

class EditingTest : public PlatformTest {
protected:
    ~EditingTest() override { edit = nullptr; }
};

} // namespace tessarin::testing
