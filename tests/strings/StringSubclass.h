// A string class of an application's own. It keeps its text in another string and defines no more than the
// primitive methods and the initialisers.
#pragma once

#include "PlatformTest.h"

#include <atomic>

namespace tessarin::testing {

class StringSubclass {
public:
    static Class classObject() {
        static const ClassDefinition definition{
            {.name = "TessarinTestString",
             .superclass = "NSString",
             .instanceVariables = {instanceVariable<NSString>("content")},
             .methods = {instanceMethod("init", init), instanceMethod("initWithString:", initWithString),
                         instanceMethod("dealloc", dealloc), instanceMethod("length", length),
                         instanceMethod("characterAtIndex:", characterAtIndex)}}};
        return definition.classObject();
    }
    // An autoreleased instance of this class or of one derived from it.
    static NSString make(Class stringClass, NSString content) {
        return adopt(as<NSString>(stringClass.alloc()).initWithString(content)).autorelease();
    }

    // How many instances there are.
    static inline std::atomic<int> instances = 0;

private:
    static NSString& contentOf(NSString self) { return instanceVariableOf<NSString>(self, "content"); }

    static NSString initWithString(NSString self, SEL, NSString content) {
        contentOf(self) = as<NSString>(content.copy());
        ++instances;
        return self;
    }
    static NSString init(NSString self, SEL) { return self.initWithString(""_ns); }
    static void dealloc(NSString self, SEL) {
        --instances;
        adopt(contentOf(self)).reset();
        sendSuper<void>(self, classObject(), "dealloc"_sel);
    }
    static NSUInteger length(NSString self, SEL) { return contentOf(self).length(); }
    static unichar characterAtIndex(NSString self, SEL, NSUInteger index) {
        return contentOf(self).characterAtIndex(index);
    }
};

} // namespace tessarin::testing
