// What the tests of file names and of their percent escapes have in common.
#pragma once

#include "StringSubclass.h"

#include "TessarinFoundation/NSString+TessarinExtensions.h"

namespace tessarin::testing {

inline std::string withoutIllegal(NSString name) {
    return text(tessarin_fileNameByReplacingIllegalCharacters(name));
}
inline std::string escaped(NSString name, NSStringEncoding encoding = NSUTF8StringEncoding) {
    return text(tessarin_fileNameByAddingPercentEscapesUsingEncoding(name, encoding));
}
inline std::string unescaped(NSString name, NSStringEncoding encoding = NSUTF8StringEncoding) {
    return text(tessarin_fileNameByReplacingPercentEscapesUsingEncoding(name, encoding));
}

// A string class with rules of its own: x and y are illegal, z is reserved, and "__" stands for what is not
// allowed.
class RuledString {
public:
    static NSString make(NSString content) { return StringSubclass::make(classObject(), content); }
    static Class classObject() {
        // The class that it is derived from comes first.
        static const Class superclass = StringSubclass::classObject();
        static const ClassDefinition definition{
            {.name = "TessarinRuledString",
             .superclass = superclass ? "TessarinTestString" : "",
             .methods = {classMethod("tessarin_fileNameIllegalCharacters", illegalCharacters),
                         classMethod("tessarin_fileNameReservedCharacters", reservedCharacters),
                         classMethod("tessarin_escapingFileNameCharacter", escapingCharacter)}}};
        return definition.classObject();
    }

private:
    static NSCharacterSet illegalCharacters(Class, SEL) {
        return NSCharacterSet::characterSetWithCharactersInString("xy"_ns);
    }
    static NSCharacterSet reservedCharacters(Class, SEL) {
        return NSCharacterSet::characterSetWithCharactersInString("z"_ns);
    }
    static NSString escapingCharacter(Class, SEL) { return "__"_ns; }
};

// A string class whose instances say themselves what they contain.
class SayingString {
public:
    static NSString make(NSString content) { return StringSubclass::make(classObject(), content); }
    static Class classObject() {
        static const Class superclass = StringSubclass::classObject();
        static const ClassDefinition definition{
            {.name = "TessarinSayingString",
             .superclass = superclass ? "TessarinTestString" : "",
             .methods = {instanceMethod("tesarin_containsFileNameIllegalCharacters", containsNone),
                         instanceMethod("tessarin_containsFileNameReservedCharacters", containsSome)}}};
        return definition.classObject();
    }

private:
    static BOOL containsNone(NSString, SEL) { return NO; }
    static BOOL containsSome(NSString, SEL) { return YES; }
};

} // namespace tessarin::testing
