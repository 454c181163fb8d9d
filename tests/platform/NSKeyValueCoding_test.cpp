// Operations and instance variables by name.
#include "PlatformTest.h"

#include <limits>

namespace tessarin::testing {
namespace {

// ---- A class with operations and instance variables of all kinds

template <class T>
T& variable(NSObject self, const char* name) {
    return instanceVariableOf<T>(self, name);
}

// An operation that answers an instance variable, and one that sets it.
template <class T, detail::FixedString Name>
T get(NSObject self, SEL) {
    return variable<T>(self, Name.c_str());
}
template <class T, detail::FixedString Name>
void set(NSObject self, SEL, T value) {
    variable<T>(self, Name.c_str()) = value;
}

class Car {
public:
    static Class classObject() {
        static const ClassDefinition definition{
            {.name = "TessarinTestCar",
             .instanceVariables =
                 {instanceVariable<NSString>("_name"),    instanceVariable<NSString>("_isName"),
                  instanceVariable<NSString>("owner"),    instanceVariable<NSString>("isDriver"),
                  instanceVariable<NSString>("_isColor"), instanceVariable<NSString>("color"),
                  instanceVariable<Class>("maker"),       instanceVariable<void*>("engine"),
                  instanceVariable<signed char>("gear"),  instanceVariable<unsigned char>("doors"),
                  instanceVariable<short>("height"),      instanceVariable<unsigned short>("length"),
                  instanceVariable<int>("year"),          instanceVariable<unsigned>("seats"),
                  instanceVariable<long long>("balance"), instanceVariable<unsigned long long>("mileage"),
                  instanceVariable<float>("load"),        instanceVariable<double>("speed"),
                  instanceVariable<BOOL>("open"),         instanceVariable<id>("_next")},
             .methods = {
                 instanceMethod(
                     "getWidth", +[](NSObject, SEL) { return 3; }),
                 instanceMethod(
                     "width", +[](NSObject, SEL) { return 4; }),
                 instanceMethod(
                     "isWidth", +[](NSObject, SEL) { return 5; }),
                 instanceMethod(
                     "range",
                     +[](NSObject, SEL) {
                         return NSRange{1, 2};
                     }),
                 instanceMethod(
                     "isParked", +[](NSObject, SEL) { return YES; }),
                 instanceMethod("speed", get<double, "speed">),
                 instanceMethod("setSpeed:", set<double, "speed">),
                 instanceMethod("gear", get<signed char, "gear">),
                 instanceMethod("setGear:", set<signed char, "gear">),
                 instanceMethod("doors", get<unsigned char, "doors">),
                 instanceMethod("setDoors:", set<unsigned char, "doors">),
                 instanceMethod("mileage", get<unsigned long long, "mileage">),
                 instanceMethod("setMileage:", set<unsigned long long, "mileage">),
                 instanceMethod("open", get<BOOL, "open">), instanceMethod("setOpen:", set<BOOL, "open">),
                 instanceMethod("load", get<float, "load">), instanceMethod("setLoad:", set<float, "load">),
                 instanceMethod("setTitle:", set<NSString, "owner">), instanceMethod("dealloc", dealloc)}}};
        return definition.classObject();
    }
    static NSObject make(Class carClass = classObject()) {
        return adopt(send<NSObject>(carClass.alloc(), "init"_sel)).autorelease();
    }

private:
    static void dealloc(NSObject self, SEL) {
        for (const char* name : {"_name", "_isName", "isDriver", "_isColor", "color"})
            adopt(variable<NSString>(self, name)).reset();
        adopt(variable<id>(self, "_next")).reset();
        sendSuper<void>(self, classObject(), "dealloc"_sel);
    }
};

// A class that takes the keys it does not know.
class Album {
public:
    static Class classObject() {
        static const ClassDefinition definition{
            {.name = "TessarinTestAlbum",
             .superclass = "TessarinTestCar",
             .methods = {
                 instanceMethod(
                     "valueForUndefinedKey:",
                     +[](NSObject, SEL, NSString key) { return id("no "_ns.stringByAppendingString(key)); }),
                 instanceMethod(
                     "setValue:forUndefinedKey:",
                     +[](NSObject self, SEL, NSObject value, NSString key) {
                         self.setValue_forKey(key.stringByAppendingString(as<NSString>(value)), "name"_ns);
                     }),
                 instanceMethod(
                     "setNilValueForKey:",
                     +[](NSObject self, SEL, NSString) { variable<double>(self, "speed") = -1; })}}};
        return definition.classObject();
    }
};

// One whose instance variables cannot be reached.
class Safe {
public:
    static Class classObject() {
        static const ClassDefinition definition{
            {.name = "TessarinTestSafe",
             .instanceVariables = {instanceVariable<int>("content")},
             .methods = {classMethod(
                 "accessInstanceVariablesDirectly", +[](Class, SEL) { return NO; })}}};
        return definition.classObject();
    }
};

class KeyValueCodingTest : public PlatformTest {
protected:
    static void SetUpTestSuite() {
        Car::classObject();
        Album::classObject();
    }

    const NSObject car = Car::make();

    static NSNumber number(NSObject object, NSString key) { return as<NSNumber>(object.valueForKey(key)); }
    static std::string shown(NSObject object) { return object ? text(object.description()) : "(nil)"; }
};

// ---- Reading one key

TEST_F(KeyValueCodingTest, ReadsByTheFirstOfThreeOperations) {
    EXPECT_EQ(number(car, "width"_ns).intValue(), 3);
    EXPECT_EQ(number(car, "isWidth"_ns).intValue(), 5);
    EXPECT_TRUE(number(car, "parked"_ns).boolValue());
    EXPECT_EQ(as<NSNumber>(car.valueForKey("hash"_ns)).unsignedIntegerValue(), car.hash());
    EXPECT_EQ(car.valueForKey("class"_ns), Car::classObject());
    EXPECT_EQ(car.valueForKey("self"_ns), car);
}

TEST_F(KeyValueCodingTest, ReadsTheFirstOfFourInstanceVariables) {
    variable<NSString>(car, "_name") = "first"_ns;
    variable<NSString>(car, "_isName") = "second"_ns;
    EXPECT_EQ(shown(car.valueForKey("name"_ns)), "first");
    variable<NSString>(car, "_isColor") = "red"_ns;
    variable<NSString>(car, "color") = "blue"_ns;
    EXPECT_EQ(shown(car.valueForKey("color"_ns)), "red");
    variable<NSString>(car, "owner") = "third"_ns;
    EXPECT_EQ(shown(car.valueForKey("owner"_ns)), "third");
    variable<NSString>(car, "isDriver") = "fourth"_ns;
    EXPECT_EQ(shown(car.valueForKey("driver"_ns)), "fourth");
    variable<Class>(car, "maker") = "NSString"_class;
    EXPECT_EQ(car.valueForKey("maker"_ns), "NSString"_class);
    EXPECT_EQ(car.valueForKey("next"_ns), nil);
}

TEST_F(KeyValueCodingTest, ReadsInheritedInstanceVariables) {
    const NSObject album = Car::make(Album::classObject());
    variable<int>(album, "year") = 1969;
    EXPECT_EQ(number(album, "year"_ns).intValue(), 1969);
}

TEST_F(KeyValueCodingTest, NumbersOfEveryTypeGoInAndOut) {
    const auto roundTrip = [&](NSString key, NSNumber value) {
        car.setValue_forKey(value, key);
        return text(number(car, key).stringValue());
    };
    // Through operations.
    EXPECT_EQ(roundTrip("gear"_ns, NSNumber::numberWithInt(-128)), "-128");
    EXPECT_EQ(roundTrip("doors"_ns, NSNumber::numberWithInt(255)), "255");
    EXPECT_EQ(roundTrip("mileage"_ns,
                        NSNumber::numberWithUnsignedLongLong(std::numeric_limits<unsigned long long>::max())),
              "18446744073709551615");
    EXPECT_EQ(roundTrip("open"_ns, NSNumber::numberWithBool(true)), "1");
    EXPECT_EQ(roundTrip("load"_ns, NSNumber::numberWithDouble(0.5)), "0.5");
    EXPECT_EQ(roundTrip("speed"_ns, NSNumber::numberWithDouble(1e300)), "1e+300");
    // Into instance variables.
    EXPECT_EQ(roundTrip("height"_ns, NSNumber::numberWithInt(-32768)), "-32768");
    EXPECT_EQ(roundTrip("length"_ns, NSNumber::numberWithInt(65535)), "65535");
    EXPECT_EQ(roundTrip("year"_ns, NSNumber::numberWithInt(-2147483647 - 1)), "-2147483648");
    EXPECT_EQ(roundTrip("seats"_ns, NSNumber::numberWithUnsignedInt(4294967295)), "4294967295");
    EXPECT_EQ(roundTrip("balance"_ns, NSNumber::numberWithLongLong(std::numeric_limits<long long>::min())),
              "-9223372036854775808");
}

TEST_F(KeyValueCodingTest, AKeyThatIsNotKnownRaises) {
    for (const NSString key : {"nope"_ns, ""_ns, "a.b"_ns, u"n\u00F6"_ns})
        EXPECT_THROWS_NAMED(car.valueForKey(key), "NSUnknownKeyException") << text(key);
    EXPECT_THROWS_NAMED("text"_ns.valueForKey("nope"_ns), "NSUnknownKeyException");
}

TEST_F(KeyValueCodingTest, AnOperationThatWantsArgumentsHasNoKey) {
    EXPECT_THROWS_NAMED(car.valueForKey("isEqual:"_ns), "NSUnknownKeyException");
}

TEST_F(KeyValueCodingTest, TheKeyNilRaises) {
    EXPECT_EQ(thrownName([&] { return car.valueForKey(nil); }), "NSUnknownKeyException");
}

TEST_F(KeyValueCodingTest, TheReasonNamesObjectAndKey) {
    const std::string reason = attempt([&] { return shown(car.valueForKey("nope"_ns)); },
                                       [](NSException exception) { return text(exception.reason()); });
    EXPECT_TRUE(reason.starts_with("[<TessarinTestCar 0x")) << reason;
    EXPECT_TRUE(reason.ends_with(
        "> valueForUndefinedKey:]: this class is not key value coding-compliant for the key nope."))
        << reason;
}

TEST_F(KeyValueCodingTest, AClassMayTakeKeysThatAreNotKnown) {
    const NSObject album = Car::make(Album::classObject());
    EXPECT_EQ(shown(album.valueForKey("nope"_ns)), "no nope");
    album.setValue_forKey("value"_ns, "key"_ns);
    EXPECT_EQ(shown(album.valueForKey("name"_ns)), "keyvalue");
}

TEST_F(KeyValueCodingTest, AClassMayKeepItsInstanceVariablesToItself) {
    const NSObject safe = Car::make(Safe::classObject());
    EXPECT_THROWS_NAMED(safe.valueForKey("content"_ns), "NSUnknownKeyException");
    EXPECT_THROWS_NAMED(safe.setValue_forKey(NSNumber::numberWithInt(1), "content"_ns),
                        "NSUnknownKeyException");
}

TEST_F(KeyValueCodingTest, AClassIsAnObjectToo) {
    EXPECT_EQ(static_cast<NSObject>(Car::classObject()).valueForKey("superclass"_ns), "NSObject"_class);
    EXPECT_THROWS_NAMED(static_cast<NSObject>(Car::classObject()).valueForKey("year"_ns),
                        "NSUnknownKeyException");
}

TEST_F(KeyValueCodingTest, ANilReceiverAnswersNil) {
    EXPECT_EQ(NSObject().valueForKey("a"_ns), nil);
    EXPECT_EQ(NSObject().valueForKeyPath("a.b"_ns), nil);
    NSObject().setValue_forKey("value"_ns, "a"_ns);
}

TEST_F(KeyValueCodingTest, TheLengthOfAStringIsANumber) {
    EXPECT_EQ(number("abc"_ns, "length"_ns).intValue(), 3);
}

// ---- Writing one key

TEST_F(KeyValueCodingTest, WritesByTheOperation) {
    car.setValue_forKey("Jo"_ns, "title"_ns);
    EXPECT_EQ(text(variable<NSString>(car, "owner")), "Jo");
}

TEST_F(KeyValueCodingTest, WritesTheFirstOfFourInstanceVariables) {
    car.setValue_forKey("a"_ns, "name"_ns);
    car.setValue_forKey("b"_ns, "color"_ns);
    car.setValue_forKey("c"_ns, "driver"_ns);
    EXPECT_EQ(text(variable<NSString>(car, "_name")), "a");
    EXPECT_EQ(text(variable<NSString>(car, "_isName")), "(nil)");
    EXPECT_EQ(text(variable<NSString>(car, "_isColor")), "b");
    EXPECT_EQ(text(variable<NSString>(car, "color")), "(nil)");
    EXPECT_EQ(text(variable<NSString>(car, "isDriver")), "c");
}

TEST_F(KeyValueCodingTest, AnInstanceVariableRetainsWhatItHolds) {
    const NSObject first = Car::make();
    const NSObject second = Car::make();
    EXPECT_EQ(referencesLeftBy([&] { car.setValue_forKey(first, "next"_ns); }, first), 1);
    EXPECT_EQ(referencesLeftBy([&] { car.setValue_forKey(first, "next"_ns); }, first), 0);
    EXPECT_EQ(referencesLeftBy([&] { car.setValue_forKey(second, "next"_ns); }, first), -1);
    EXPECT_EQ(referencesLeftBy([&] { car.setValue_forKey(nil, "next"_ns); }, second), -1);
    EXPECT_EQ(car.valueForKey("next"_ns), nil);
}

TEST_F(KeyValueCodingTest, AStringIsReadAsANumber) {
    car.setValue_forKey("1.5"_ns, "speed"_ns);
    car.setValue_forKey("1970"_ns, "year"_ns);
    EXPECT_EQ(variable<double>(car, "speed"), 1.5);
    EXPECT_EQ(variable<int>(car, "year"), 1970);
}

TEST_F(KeyValueCodingTest, NilIsNoNumber) {
    EXPECT_THROWS_NAMED(car.setValue_forKey(nil, "speed"_ns), "NSInvalidArgumentException");
    EXPECT_THROWS_NAMED(car.setValue_forKey(nil, "year"_ns), "NSInvalidArgumentException");
    const NSObject album = Car::make(Album::classObject());
    album.setValue_forKey(nil, "speed"_ns);
    EXPECT_EQ(variable<double>(album, "speed"), -1);
}

TEST_F(KeyValueCodingTest, WritingAKeyThatIsNotKnownRaises) {
    for (const NSString key : {"nope"_ns, ""_ns, "parked"_ns})
        EXPECT_THROWS_NAMED(car.setValue_forKey(NSNumber::numberWithInt(1), key), "NSUnknownKeyException")
            << text(key);
    EXPECT_THROWS_NAMED(NSDictionary::dictionary().setValue_forKey("a"_ns, "b"_ns), "NSUnknownKeyException");
}

// ---- Paths

TEST_F(KeyValueCodingTest, WalksAPath) {
    const NSObject next = Car::make();
    car.setValue_forKey(next, "next"_ns);
    car.setValue_forKey(car, "next"_ns);
    EXPECT_EQ(car.valueForKeyPath("next.next"_ns), car);
    car.setValue_forKey(next, "next"_ns);
    next.setValue_forKey("Ann"_ns, "name"_ns);
    EXPECT_EQ(shown(car.valueForKeyPath("next.name"_ns)), "Ann");
    EXPECT_EQ(as<NSNumber>(car.valueForKeyPath("next.name.length"_ns)).intValue(), 3);
    EXPECT_EQ(car.valueForKeyPath("next.next.name.length"_ns), nil);
    EXPECT_THROWS_NAMED(car.valueForKeyPath("next.nope"_ns), "NSUnknownKeyException");
}

TEST_F(KeyValueCodingTest, WritesAtTheEndOfAPath) {
    const NSObject next = Car::make();
    car.setValue_forKey(next, "next"_ns);
    send<void>(car, "setValue:forKeyPath:"_sel, "Ann"_ns, "next.name"_ns);
    send<void>(car, "setValue:forKeyPath:"_sel, "Jo"_ns, "name"_ns);
    send<void>(car, "setValue:forKeyPath:"_sel, "nobody"_ns, "next.next.name"_ns);
    EXPECT_EQ(shown(next.valueForKey("name"_ns)), "Ann");
    EXPECT_EQ(shown(car.valueForKey("name"_ns)), "Jo");
}

TEST_F(KeyValueCodingTest, AnEmptyPathRaises) {
    EXPECT_THROWS_NAMED(car.valueForKeyPath(""_ns), "NSUnknownKeyException");
    EXPECT_THROWS_NAMED(car.valueForKeyPath("."_ns), "NSUnknownKeyException");
    EXPECT_THROWS_NAMED(car.valueForKeyPath("self."_ns), "NSUnknownKeyException");
}

TEST_F(KeyValueCodingTest, ThePathNilRaises) {
    EXPECT_EQ(thrownName([&] { return car.valueForKeyPath(nil); }), "NSUnknownKeyException");
}

TEST_F(KeyValueCodingTest, AnObjectMayReadPathsInItsOwnWay) {
    static const ClassDefinition definition{
        {.name = "TessarinTestPathReader",
         .methods = {instanceMethod(
             "valueForKeyPath:", +[](NSObject, SEL, NSString path) { return id(path); })}}};
    const NSObject reader = Car::make(definition.classObject());
    car.setValue_forKey(reader, "next"_ns);
    EXPECT_EQ(shown(car.valueForKeyPath("next.a.b.c"_ns)), "a.b.c");
}

TEST_F(KeyValueCodingTest, AVeryLongPath) {
    std::string path = "self";
    for (int step = 0; step < 2000; ++step) path += ".self";
    EXPECT_EQ(car.valueForKeyPath(NSString(path)), car);
}

// ---- Dictionaries

class DictionaryKeyValueCodingTest : public KeyValueCodingTest {
protected:
    const NSDictionary inner = NSDictionary::dictionaryWithObject_forKey("value"_ns, "b"_ns);
    const NSDictionary outer = NSDictionary::dictionaryWithObjects_forKeys(
        NSArray::arrayOf(inner, "empty"_ns), NSArray::arrayOf("a"_ns, ""_ns));
};

TEST_F(DictionaryKeyValueCodingTest, AnswersTheObjectOfTheKey) {
    EXPECT_EQ(outer.valueForKey("a"_ns), inner);
    EXPECT_EQ(shown(outer.valueForKeyPath("a.b"_ns)), "value");
}

TEST_F(DictionaryKeyValueCodingTest, AMissingKeyIsNil) {
    EXPECT_EQ(outer.valueForKey("count"_ns), nil);
    EXPECT_EQ(outer.valueForKeyPath("c.b.d"_ns), nil);
    EXPECT_EQ(outer.valueForKeyPath("a.c.d"_ns), nil);
}

TEST_F(DictionaryKeyValueCodingTest, AnEmptyComponentIsTheEmptyKey) {
    EXPECT_EQ(shown(outer.valueForKey(""_ns)), "empty");
    EXPECT_EQ(shown(outer.valueForKeyPath(""_ns)), "empty");
    EXPECT_EQ(outer.valueForKeyPath("a."_ns), nil);
    EXPECT_EQ(inner.valueForKeyPath("."_ns), nil);
    EXPECT_EQ(inner.valueForKeyPath(".a"_ns), nil);
    EXPECT_EQ(inner.valueForKeyPath("..."_ns), nil);
}

TEST_F(DictionaryKeyValueCodingTest, AnAtSignAsksTheDictionaryItself) {
    EXPECT_EQ(number(outer, "@count"_ns).intValue(), 2);
    EXPECT_EQ(outer.valueForKeyPath("@self.a"_ns), inner);
    EXPECT_THROWS_NAMED(outer.valueForKey("@nope"_ns), "NSUnknownKeyException");
}

TEST_F(DictionaryKeyValueCodingTest, AMutableOneTakesValues) {
    const NSMutableDictionary dictionary =
        as<NSMutableDictionary>(NSMutableDictionary::dictionaryWithDictionary(outer));
    dictionary.setValue_forKey("new"_ns, "key"_ns);
    EXPECT_EQ(shown(dictionary.objectForKey("key"_ns)), "new");
    dictionary.setValue_forKey(nil, "key"_ns);
    dictionary.setValue_forKey(nil, "none"_ns);
    EXPECT_EQ(dictionary.count(), 2u);
}

// ---- Arrays

class ArrayKeyValueCodingTest : public KeyValueCodingTest {};

TEST_F(ArrayKeyValueCodingTest, AnswersTheValuesOfItsItems) {
    EXPECT_EQ(texts(as<NSArray>(NSArray::arrayOf("a"_ns, "bcd"_ns).valueForKey("length"_ns))),
              (Texts{"1", "3"}));
    EXPECT_EQ(as<NSArray>(NSArray::array().valueForKey("nope"_ns)).count(), 0u);
    EXPECT_THROWS_NAMED(NSArray::arrayOf("a"_ns).valueForKey("nope"_ns), "NSUnknownKeyException");
}

TEST_F(ArrayKeyValueCodingTest, NullStandsForNil) {
    const NSArray values = as<NSArray>(NSArray::arrayOf(car).valueForKey("next"_ns));
    EXPECT_EQ(values.objectAtIndex(0), NSNull::null());
}

TEST_F(ArrayKeyValueCodingTest, WalksAPathInEachItem) {
    const NSArray cars = NSArray::arrayOf(car, Car::make());
    car.setValue_forKey("Ann"_ns, "name"_ns);
    as<NSObject>(cars.objectAtIndex(1)).setValue_forKey("Jo"_ns, "name"_ns);
    EXPECT_EQ(texts(as<NSArray>(cars.valueForKeyPath("name.length"_ns))), (Texts{"3", "2"}));
    EXPECT_EQ(texts(as<NSArray>(NSArray::arrayOf(cars).valueForKey("name"_ns)))[0],
              shown(NSArray::arrayOf("Ann"_ns, "Jo"_ns)));
}

TEST_F(ArrayKeyValueCodingTest, AnAtSignAsksTheArrayItself) {
    EXPECT_EQ(number(NSArray::arrayOf("a"_ns, "b"_ns), "@count"_ns).intValue(), 2);
    EXPECT_EQ(as<NSNumber>(NSArray::arrayOf("a"_ns).valueForKeyPath("@count"_ns)).intValue(), 1);
    EXPECT_EQ(as<NSNumber>(NSArray::arrayOf("a"_ns).valueForKeyPath("length.@count"_ns)).intValue(), 1);
}

TEST_F(ArrayKeyValueCodingTest, GivesAValueToEachItem) {
    const NSObject other = Car::make();
    NSArray::arrayOf(car, other).setValue_forKey("Jo"_ns, "name"_ns);
    EXPECT_EQ(shown(car.valueForKey("name"_ns)), "Jo");
    EXPECT_EQ(shown(other.valueForKey("name"_ns)), "Jo");
}

} // namespace
} // namespace tessarin::testing
