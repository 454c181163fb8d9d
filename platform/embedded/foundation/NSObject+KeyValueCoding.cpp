#include "platform/embedded/foundation/NSObject+KeyValueCoding.h"

#include "platform/embedded/foundation/KeyPathOperators.h"
#include "platform/embedded/foundation/NestedItems.h"
#include "platform/embedded/foundation/NumberValue.h"
#include "platform/embedded/foundation/StringFormat.h"
#include "platform/embedded/runtime/Classes.h"
#include "platform/embedded/runtime/Selectors.h"

#include "TessarinPlatform/NSException.h"
#include "TessarinPlatform/NSNull.h"
#include "TessarinPlatform/NSNumber.h"

#include <algorithm>
#include <array>
#include <optional>
#include <string>
#include <type_traits>

namespace tessarin::embedded {
namespace {

// ---- Numbers of the type that an encoding stands for

// Calls `visitor` with the C++ type of a number, or answers that the encoding is of something else.
template <class Visitor>
bool visitNumberType(char encoding, Visitor&& visitor) {
    const auto visit = [&]<class T>(std::type_identity<T> type) {
        visitor(type);
        return true;
    };
    switch (encoding) {
    case 'B':
        return visit(std::type_identity<bool>());
    case 'c':
        return visit(std::type_identity<signed char>());
    case 'C':
        return visit(std::type_identity<unsigned char>());
    case 's':
        return visit(std::type_identity<short>());
    case 'S':
        return visit(std::type_identity<unsigned short>());
    case 'i':
        return visit(std::type_identity<int>());
    case 'I':
        return visit(std::type_identity<unsigned>());
    case 'l':
        return visit(std::type_identity<long>());
    case 'L':
        return visit(std::type_identity<unsigned long>());
    case 'q':
        return visit(std::type_identity<long long>());
    case 'Q':
        return visit(std::type_identity<unsigned long long>());
    case 'f':
        return visit(std::type_identity<float>());
    case 'd':
        return visit(std::type_identity<double>());
    default:
        return false;
    }
}

bool isObjectType(char encoding) { return encoding == '@' || encoding == '#'; }

template <class T>
NSNumber boxed(T value) {
    return newNumber(numberValue(value)).autorelease();
}

// Of any object that answers the message for the type: a string too has an intValue.
template <class T>
T unboxed(NSObject value) {
    if constexpr (std::is_same_v<T, bool>)
        return send<BOOL>(value, "boolValue"_sel) != NO;
    else if constexpr (std::is_same_v<T, signed char>)
        return send<T>(value, "charValue"_sel);
    else if constexpr (std::is_same_v<T, unsigned char>)
        return send<T>(value, "unsignedCharValue"_sel);
    else if constexpr (std::is_same_v<T, short>)
        return send<T>(value, "shortValue"_sel);
    else if constexpr (std::is_same_v<T, unsigned short>)
        return send<T>(value, "unsignedShortValue"_sel);
    else if constexpr (std::is_same_v<T, int>)
        return send<T>(value, "intValue"_sel);
    else if constexpr (std::is_same_v<T, unsigned>)
        return send<T>(value, "unsignedIntValue"_sel);
    else if constexpr (std::is_same_v<T, long>)
        return send<T>(value, "longValue"_sel);
    else if constexpr (std::is_same_v<T, unsigned long>)
        return send<T>(value, "unsignedLongValue"_sel);
    else if constexpr (std::is_same_v<T, long long>)
        return send<T>(value, "longLongValue"_sel);
    else if constexpr (std::is_same_v<T, unsigned long long>)
        return send<T>(value, "unsignedLongLongValue"_sel);
    else if constexpr (std::is_same_v<T, float>)
        return send<T>(value, "floatValue"_sel);
    else
        return send<T>(value, "doubleValue"_sel);
}

// ---- The names that a key stands for

struct KeyNames {
    explicit KeyNames(NSString key) : plain(utf8Of(key)), capitalized(plain) {
        // With a colon it would be the name of an operation that wants arguments.
        if (plain.find(':') != std::string::npos) plain.clear();
        if (!plain.empty() && plain[0] >= 'a' && plain[0] <= 'z')
            capitalized[0] = static_cast<char>(plain[0] - 'a' + 'A');
    }
    bool isNone() const { return plain.empty(); }

    std::string plain; // empty where there can be neither an operation nor a variable
    std::string capitalized;
};

// An operation that an object answers. The selector is null where there is none.
struct Accessor {
    SEL selector;
    const char* encoding;
};
// Keys may come from outside. These operations would release an object that somebody else still has, empty
// one that is in use by initialising it again, or make one that nobody releases.
bool beginsOrEndsALife(std::string_view name) {
    constexpr std::array<std::string_view, 8> others{"retain", "release", "autorelease", "dealloc",
                                                     "alloc",  "new",     "copy",        "mutableCopy"};
    constexpr std::string_view initializer = "init"; // initial is none
    if (name.starts_with(initializer))
        return name.size() == initializer.size() || name[initializer.size()] < 'a'
               || name[initializer.size()] > 'z';
    return std::find(others.begin(), others.end(), name) != others.end();
}

Accessor findAccessor(NSObject object, const std::string& name) {
    const SEL selector = findSelector(name);
    if (!selector || beginsOrEndsALife(name)) return {nullptr, ""};
    const std::optional<Method> method = findMethod(classRecordOf(object.object()), selector);
    return method ? Accessor{selector, method->encoding} : Accessor{nullptr, ""};
}

// The encoding of the argument of an operation that takes one: behind those of the result, which is a single
// letter in a setter, of the receiver and of the selector.
char argumentEncoding(const Accessor& setter) {
    const std::string_view encoding = setter.encoding;
    return encoding.size() > 3 && encoding[2] == ':' ? encoding[3] : '\0';
}

// An instance variable in an object. The address is null where there is none.
struct Variable {
    void* address;
    char encoding;

    template <class T>
    T& as() const {
        return *static_cast<T*>(address);
    }
};
bool isAccessible(const Variable& variable) {
    return variable.address
           && (isObjectType(variable.encoding) || visitNumberType(variable.encoding, [](auto) {}));
}

Variable findVariableNamed(NSObject object, const std::string& name) {
    for (const RuntimeClass* record = classRecordOf(object.object()); record; record = record->superclass)
        for (const InstanceVariable& variable : record->instanceVariables)
            if (variable.name == name)
                return {reinterpret_cast<std::byte*>(object.object()) + variable.offset,
                        variable.encoding[0]};
    return {nullptr, '\0'};
}
Variable findVariable(NSObject object, const KeyNames& names) {
    if (send<BOOL>(object.class_(), "accessInstanceVariablesDirectly"_sel) == NO) return {nullptr, '\0'};
    for (const std::string& name :
         {"_" + names.plain, "_is" + names.capitalized, names.plain, "is" + names.capitalized})
        if (const Variable variable = findVariableNamed(object, name); isAccessible(variable))
            return variable;
    return {nullptr, '\0'};
}

// ---- One key

std::array<std::string, 3> getterNames(const KeyNames& names) {
    return {"get" + names.capitalized, names.plain, "is" + names.capitalized};
}

BOOL accessInstanceVariablesDirectly(Class, SEL) { return YES; }

id valueForKey(NSObject self, SEL, NSString key) {
    const KeyNames names(key);
    if (names.isNone()) return send<id>(self, "valueForUndefinedKey:"_sel, key);

    id value;
    for (const std::string& name : getterNames(names)) {
        const Accessor getter = findAccessor(self, name);
        if (!getter.selector) continue;
        if (isObjectType(getter.encoding[0])) return send<id>(self, getter.selector);
        if (visitNumberType(getter.encoding[0], [&]<class T>(std::type_identity<T>) {
                value = boxed(send<T>(self, getter.selector));
            }))
            return value;
    }
    const Variable variable = findVariable(self, names);
    if (!variable.address) return send<id>(self, "valueForUndefinedKey:"_sel, key);
    if (isObjectType(variable.encoding)) return variable.as<NSObject>();
    visitNumberType(variable.encoding,
                    [&]<class T>(std::type_identity<T>) { value = boxed(variable.as<T>()); });
    return value;
}

void setValue_forKey(NSObject self, SEL, NSObject value, NSString key) {
    const KeyNames names(key);
    if (names.isNone()) return send<void>(self, "setValue:forUndefinedKey:"_sel, value, key);

    const Accessor setter = findAccessor(self, "set" + names.capitalized + ":");
    const char type = argumentEncoding(setter);
    if (isObjectType(type)) return send<void>(self, setter.selector, value);
    const bool isNumber = visitNumberType(type, [&]<class T>(std::type_identity<T>) {
        if (value)
            send<void>(self, setter.selector, unboxed<T>(value));
        else
            send<void>(self, "setNilValueForKey:"_sel, key);
    });
    if (isNumber) return;

    const Variable variable = findVariable(self, names);
    if (!variable.address) return send<void>(self, "setValue:forUndefinedKey:"_sel, value, key);
    if (isObjectType(variable.encoding)) {
        // Released last, since that may set off anything.
        const Retained<NSObject> before = adopt(variable.as<NSObject>());
        variable.as<NSObject>() = retain(value).leak();
        return;
    }
    if (!value) return send<void>(self, "setNilValueForKey:"_sel, key);
    visitNumberType(variable.encoding,
                    [&]<class T>(std::type_identity<T>) { variable.as<T>() = unboxed<T>(value); });
}

[[noreturn]] void raiseUndefined(NSObject object, const char* operation, NSString key) {
    raise(NSUndefinedKeyException(),
          formatted("[<%s %p> %s]: this class is not key value coding-compliant for the key %@.",
                    runtime::className(runtime::classOf(object.object())),
                    static_cast<const void*>(object.object()), operation, key.object()));
}
id valueForUndefinedKey(NSObject self, SEL, NSString key) {
    raiseUndefined(self, "valueForUndefinedKey:", key);
}
void setValue_forUndefinedKey(NSObject self, SEL, NSObject, NSString key) {
    raiseUndefined(self, "setValue:forUndefinedKey:", key);
}
void setNilValueForKey(NSObject self, SEL, NSString key) {
    raise(NSInvalidArgumentException(),
          formatted("[<%s %p> setNilValueForKey]: could not set nil as the value for the key %@.",
                    runtime::className(runtime::classOf(self.object())),
                    static_cast<const void*>(self.object()), key.object()));
}

// ---- Paths of keys

id valueForKeyPath(NSObject self, SEL, NSString path);
bool readsPathsItself(NSObject object) {
    return !answersWith(object, "valueForKeyPath:"_sel, valueForKeyPath);
}

// One key after the other. An object on the way that reads paths in its own way gets what is left.
id valueOnTheWay(NSObject self, NSString path, EnteredItems* entered) {
    const Retained<NSString> kept = adopt(as<NSString>(path.copy()));
    const Contents units = contentsOf(kept);
    id value(self);
    std::size_t start = 0;
    while (value) {
        if (value != self && readsPathsItself(value))
            return value.valueForKeyPath(makeString(units.from(start)));
        if (start < units.length() && units[start] == u'@')
            if (const NSArray array = kindOf<NSArray>(value))
                if (const auto gathered = valueOfOperator(array, makeString(units.from(start)), entered))
                    return *gathered;
        const std::size_t end = findUnit(units, u'.', start);
        if (end >= units.length())
            return value.valueForKey(start == 0 ? path : makeString(units.from(start)));
        value = value.valueForKey(makeString(units.sub(start, end - start)));
        start = end + 1;
    }
    return nil;
}

id valueForKeyPath(NSObject self, SEL, NSString path) { return valueOnTheWay(self, path, nullptr); }

void setValue_forKeyPath(NSObject self, SEL, NSObject value, NSString path) {
    const NSRange last = path.rangeOfString_options("."_ns, NSBackwardsSearch);
    if (last.length == 0) return self.setValue_forKey(value, path);
    self.valueForKeyPath(path.substringToIndex(last.location))
        .setValue_forKey(value, path.substringFromIndex(last.location + 1));
}

// ---- Containers

// What is behind the "@" that a key of the container itself begins with; nil for any other key.
NSString ownKey(NSString key) { return key.hasPrefix("@"_ns) ? key.substringFromIndex(1) : NSString(); }

} // namespace

id valueAtKeyPath(NSObject object, NSString path, EnteredItems* entered) {
    return readsPathsItself(object) ? object.valueForKeyPath(path) : valueOnTheWay(object, path, entered);
}

id valueForKeyOfItems(NSArray self, SEL selector, NSString key) {
    if (const NSString own = ownKey(key)) return valueForKey(self, selector, own);
    NestedItems items(self, selector);
    // Of each open array. They retain one by one, since a later item may let go of what an earlier one
    // answered.
    std::vector<Retained<NSMutableArray>> values;
    for (;;) {
        if (values.size() < items.depth()) values.push_back(adopt(NSMutableArray::alloc().init()));
        if (const NSObject item = items.next()) {
            if (answersWith(item, selector, valueForKeyOfItems)) {
                items.enter(as<NSArray>(item));
                continue;
            }
            const NSObject value = item.valueForKey(key);
            values.back().addObject(value ? value : NSNull::null());
            continue;
        }
        items.leave();
        Retained<NSArray> ended = adopt(as<NSArray>(values.back().copy()));
        values.pop_back();
        if (values.empty()) return ended.autorelease();
        values.back().addObject(ended);
    }
}

void setValueForKeyOfItems(NSArray self, SEL selector, NSObject value, NSString key) {
    NestedItems items(self, selector);
    while (items.depth() > 0) {
        const NSObject item = items.next();
        if (!item)
            items.leave();
        else if (answersWith(item, selector, setValueForKeyOfItems))
            items.enter(as<NSArray>(item));
        else
            item.setValue_forKey(value, key);
    }
}

id valueForKeyOfDictionary(NSDictionary self, SEL selector, NSString key) {
    if (const NSString own = ownKey(key)) return valueForKey(self, selector, own);
    return self.objectForKey(key);
}

void setValueForKeyOfDictionary(NSMutableDictionary self, SEL, NSObject value, NSString key) {
    if (value)
        self.setObject_forKey(value, key);
    else
        self.removeObjectForKey(key);
}

SEL directAccessor(NSObject object, NSString key) {
    if (!answersWith(object, "valueForKeyPath:"_sel, valueForKeyPath)
        || !answersWith(object, "valueForKey:"_sel, valueForKey))
        return nullptr;
    const KeyNames names(key);
    if (names.isNone() || names.plain.find('.') != std::string::npos) return nullptr;
    for (const std::string& name : getterNames(names))
        if (const Accessor getter = findAccessor(object, name); getter.selector)
            return isObjectType(getter.encoding[0]) ? getter.selector : nullptr;
    return nullptr;
}

std::vector<MethodRow> keyValueCodingMethods() {
    return {classMethod("accessInstanceVariablesDirectly", accessInstanceVariablesDirectly),
            instanceMethod("valueForKey:", valueForKey),
            instanceMethod("setValue:forKey:", setValue_forKey),
            instanceMethod("valueForUndefinedKey:", valueForUndefinedKey),
            instanceMethod("setValue:forUndefinedKey:", setValue_forUndefinedKey),
            instanceMethod("setNilValueForKey:", setNilValueForKey),
            instanceMethod("valueForKeyPath:", valueForKeyPath),
            instanceMethod("setValue:forKeyPath:", setValue_forKeyPath)};
}

} // namespace tessarin::embedded
