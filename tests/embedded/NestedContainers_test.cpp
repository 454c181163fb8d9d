// What the embedded platform promises of containers nested beyond any stack, of shared and of circular ones.
#include "PlatformTest.h"

namespace tessarin::testing {
namespace {

constexpr int depth = 1'000'000;

class DeeplyNestedContainersTest : public PlatformTest {
protected:
    // Arrays and dictionaries in turn.
    static Retained<NSObject> newNested(NSObject innermost) {
        Retained<NSObject> container = retain(innermost);
        for (int level = 0; level < depth; ++level) {
            const AutoreleasePool pool;
            container = retain(level % 2 == 0 ? static_cast<NSObject>(NSArray::arrayOf(container))
                                              : NSDictionary::dictionaryWithObject_forKey(container, "k"_ns));
        }
        return container;
    }
    // An array of an array twice, again and again: few objects, but 2 to the power of `levels` ways through
    // them.
    static NSArray shared(int levels) {
        NSArray array = NSArray::arrayOf(NSMutableString::stringWithString("x"_ns));
        for (int level = 0; level < levels; ++level) array = NSArray::arrayOf(array, array);
        return array;
    }
    static Retained<NSMutableArray> newCircular() {
        Retained<NSMutableArray> array = adopt(NSMutableArray::alloc().init());
        array.addObject(array);
        return array;
    }
    static void breakUp(NSMutableArray circular) { circular.removeAllObjects(); }
};

TEST_F(DeeplyNestedContainersTest, AreReleased) {
    const Retained<NSMutableString> innermost = adopt(NSMutableString::alloc().init());
    Retained<NSObject> container = newNested(innermost);
    EXPECT_EQ(innermost.retainCount(), 2u);
    container.reset();
    EXPECT_EQ(innermost.retainCount(), 1u);
}

TEST_F(DeeplyNestedContainersTest, AreCompared) {
    const Retained<NSObject> container = newNested("a"_ns);
    EXPECT_TRUE(container.isEqual(newNested("a"_ns)));
    EXPECT_FALSE(container.isEqual(newNested("b"_ns)));
}

TEST_F(DeeplyNestedContainersTest, AreComparedAsKeys) {
    Retained<NSObject> left = retain(static_cast<NSObject>("a"_ns)), right = left;
    for (int level = 0; level < depth / 10; ++level) {
        const AutoreleasePool pool;
        for (Retained<NSObject>* container : {&left, &right})
            *container = retain(static_cast<NSObject>(
                NSDictionary::dictionaryWithObject_forKey("x"_ns, NSArray::arrayOf(*container))));
    }
    EXPECT_TRUE(left.isEqual(right));
}

TEST_F(DeeplyNestedContainersTest, AreHashedAndCopied) {
    const Retained<NSObject> container = newNested("a"_ns);
    EXPECT_EQ(container.hash(), 1u);
    const Retained<NSObject> copy = adopt(static_cast<NSObject>(container.copy()));
    const Retained<NSObject> mutableCopy = adopt(static_cast<NSObject>(container.mutableCopy()));
    EXPECT_TRUE(copy.isEqual(mutableCopy));
}

TEST_F(DeeplyNestedContainersTest, AreDescribed) {
    const Retained<NSObject> container = newNested("a"_ns);
    const NSUInteger length = container.description().length();
    EXPECT_GT(length, static_cast<NSUInteger>(depth) * 4);
    EXPECT_LT(length, static_cast<NSUInteger>(depth) * 10);
}

TEST_F(DeeplyNestedContainersTest, SharedPartsAreComparedOnce) {
    EXPECT_TRUE(shared(60).isEqual(shared(60)));
    EXPECT_FALSE(shared(60).isEqual(shared(59)));
}

TEST_F(DeeplyNestedContainersTest, PartsSharedOnOneSideInTurnAreComparedOnce) {
    const auto make = [](int sharedLevels) {
        NSArray first = NSArray::arrayOf("x"_ns), second = NSArray::arrayOf("x"_ns);
        for (int level = 0; level < 60; ++level) {
            const NSArray before = first;
            const bool isShared = level % 2 == sharedLevels;
            first = NSArray::arrayOf(before, isShared ? before : second);
            second = NSArray::arrayOf(before, isShared ? before : second);
        }
        return first;
    };
    EXPECT_TRUE(make(0).isEqual(make(1)));
}

TEST_F(DeeplyNestedContainersTest, CircularOnesAreCompared) {
    const Retained<NSMutableArray> left = newCircular(), right = newCircular();
    EXPECT_TRUE(left.isEqual(right));
    right.addObject("x"_ns);
    EXPECT_FALSE(left.isEqual(right));
    breakUp(left);
    breakUp(right);
}

TEST_F(DeeplyNestedContainersTest, CircularOnesAreDescribed) {
    const Retained<NSMutableArray> array = newCircular();
    EXPECT_EQ(text(array.description()), "(\n    \"<itself>\"\n)");
    breakUp(array);
}

// ---- Objects that interfere

NSMutableArray interferedWith;

BOOL emptyTheArray(NSObject, SEL, NSObject) {
    interferedWith.removeAllObjects();
    return YES;
}

TEST_F(DeeplyNestedContainersTest, AComparisonThatChangesWhatIsComparedIsRefused) {
    static const ClassDefinition definition{
        {.name = "NestedContainersTestInterfering", .methods = {instanceMethod("isEqual:", emptyTheArray)}}};
    const Retained<NSObject> object = adopt(send<NSObject>(definition.classObject().alloc(), "init"_sel));
    const NSMutableArray array = NSMutableArray::arrayWithArray(NSArray::arrayOf(object, object, object));
    interferedWith = array;
    EXPECT_THROWS_NAMED(array.isEqual(NSArray::arrayOf("x"_ns, "x"_ns, "x"_ns)), "NSGenericException");
    array.addObject(object);
    array.addObject("y"_ns);
    EXPECT_THROWS_NAMED(array.removeObject(object), "NSGenericException");
    interferedWith = nil;
}

} // namespace
} // namespace tessarin::testing
