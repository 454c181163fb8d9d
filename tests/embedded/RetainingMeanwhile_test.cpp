// Collections that are edited by an object that they are just about to retain.
#include "EditingObjects.h"

namespace tessarin::testing {
namespace {

id editAndRetain(NSObject self, SEL selector) {
    makeEdit();
    return sendSuper<id>(self, "RetainingMeanwhileObject"_class, selector);
}
id copyOfObject(NSObject self, SEL, void*) { return retain(self).leak(); }

class RetainingMeanwhileTest : public EditingTest {
protected:
    static Retained<NSObject> newEditingObject() {
        static const ClassDefinition definition{{.name = "RetainingMeanwhileObject",
                                                 .protocols = {"NSCopying"},
                                                 .methods = {instanceMethod("retain", editAndRetain),
                                                             instanceMethod("copyWithZone:", copyOfObject)}}};
        return newObject<NSObject>(definition);
    }
    // Strings that nobody else keeps.
    static Retained<NSMutableArray> newArray(int count, NSUInteger capacity = 0) {
        Retained<NSMutableArray> array = adopt(NSMutableArray::alloc().initWithCapacity(capacity));
        const AutoreleasePool pool;
        for (int number = 0; number < count; ++number) array.addObject(NSString(std::to_string(number)));
        return array;
    }
    static Retained<NSMutableDictionary> newDictionary(int count) {
        Retained<NSMutableDictionary> dictionary = adopt(NSMutableDictionary::alloc().init());
        const AutoreleasePool pool;
        for (int number = 0; number < count; ++number)
            dictionary.setObject_forKey(NSString("object"), NSString(std::to_string(number)));
        return dictionary;
    }
};

TEST_F(RetainingMeanwhileTest, AnObjectIsAddedBehindWhatItAddsItself) {
    const Retained<NSMutableArray> array = newArray(3, 4);
    const Retained<NSObject> object = newEditingObject();
    edit = [&] { array.addObject("meanwhile"_ns); };
    array.addObject(object);
    ASSERT_EQ(array.count(), 5u);
    EXPECT_EQ(text(array.objectAtIndex(3)), "meanwhile");
    EXPECT_EQ(array.objectAtIndex(4), object);
}

TEST_F(RetainingMeanwhileTest, AnArrayIsAddedBehindWhatItsItemsAdd) {
    const Retained<NSMutableArray> array = newArray(3, 4);
    const Retained<NSObject> object = newEditingObject();
    const NSArray added = NSArray::arrayOf(object);
    edit = [&] { array.addObject("meanwhile"_ns); };
    array.addObjectsFromArray(added);
    ASSERT_EQ(array.count(), 5u);
    EXPECT_EQ(array.objectAtIndex(4), object);
}

TEST_F(RetainingMeanwhileTest, AnArrayIsAddedAsFarAsItIsStillThere) {
    const Retained<NSMutableArray> array = newArray(1), added = newArray(3);
    const Retained<NSObject> object = newEditingObject();
    added.insertObject_atIndex(object, 1);
    edit = [&] { added.setArray(NSArray::arrayOf("one"_ns, "two"_ns, "three"_ns)); };
    array.addObjectsFromArray(added);
    ASSERT_EQ(array.count(), 4u);
    EXPECT_EQ(text(array.objectAtIndex(1)), "0");
    EXPECT_EQ(text(array.objectAtIndex(3)), "three");
}

TEST_F(RetainingMeanwhileTest, AnArrayMayBeAddedToItself) {
    const Retained<NSMutableArray> array = newArray(3, 4);
    array.insertObject_atIndex(newEditingObject(), 1);
    edit = [&] { array.addObject("meanwhile"_ns); };
    array.addObjectsFromArray(array);
    ASSERT_EQ(array.count(), 9u);
    EXPECT_EQ(text(array.objectAtIndex(5)), "meanwhile");
    EXPECT_EQ(text(array.objectAtIndex(8)), "2");
}

TEST_F(RetainingMeanwhileTest, AnIndexIsCheckedWhenTheObjectIsRetained) {
    const Retained<NSMutableArray> array = newArray(3);
    const Retained<NSObject> object = newEditingObject();
    edit = [&] { array.removeAllObjects(); };
    EXPECT_THROWS_NAMED(array.insertObject_atIndex(object, 3), "NSRangeException");
    EXPECT_EQ(array.count(), 0u);

    array.addObject("again"_ns);
    edit = [&] { array.removeAllObjects(); };
    EXPECT_THROWS_NAMED(array.replaceObjectAtIndex_withObject(0, object), "NSRangeException");
    EXPECT_EQ(array.count(), 0u);
}

TEST_F(RetainingMeanwhileTest, AnObjectMayEmptyTheDictionaryInWhichItTakesAnothersPlace) {
    const Retained<NSMutableDictionary> dictionary = newDictionary(3);
    const Retained<NSObject> object = newEditingObject();
    edit = [&] { dictionary.removeAllObjects(); };
    dictionary.setObject_forKey(object, "1"_ns);
    EXPECT_EQ(texts(dictionary.allKeys()), Texts{"1"});
    EXPECT_EQ(dictionary.objectForKey("1"_ns), object);
}

TEST_F(RetainingMeanwhileTest, ADictionaryThatIsEmptiedWhileItIsCopiedRaises) {
    for (const bool isKey : {true, false}) {
        const Retained<NSMutableDictionary> dictionary = newDictionary(3);
        const Retained<NSObject> object = newEditingObject();
        if (isKey)
            dictionary.setObject_forKey("object"_ns, object);
        else
            dictionary.setObject_forKey(object, "key"_ns);
        dictionary.setObject_forKey("object"_ns, "last"_ns);
        edit = [&] { dictionary.removeAllObjects(); };
        EXPECT_THROWS_NAMED(adopt(dictionary.copy()), "NSGenericException");
        EXPECT_EQ(dictionary.count(), 0u);
    }
}

} // namespace
} // namespace tessarin::testing
