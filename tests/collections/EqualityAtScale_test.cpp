// What is found by hash is what comparing one by one finds, object for object.
#include "PlatformTest.h"

#include "TessarinFoundation/NSArray+TessarinExtensions.h"
#include "TessarinFoundation/NSMutableArray+TessarinExtensions.h"

#include <optional>
#include <random>

namespace tessarin::testing {
namespace {

using Objects = std::vector<NSObject>;

constexpr auto notFound = static_cast<NSUInteger>(NSNotFound);

// ---- Objects whose isEqual: and hash are their own

// Compares by a number, with a hash that may be of no use.
class OddObject {
public:
    enum class Manner : int {
        sound,        // equal numbers are equal and have equal hashes
        badHash,      // equal numbers are equal, the hash is another one each time
        equalsNothing // not even itself
    };

    static NSObject make(Manner manner, int number) {
        static const ClassDefinition definition{
            {.name = "TessarinTestOddObject",
             .instanceVariables = {instanceVariable<int>("manner"), instanceVariable<int>("number")},
             .methods = {instanceMethod("isEqual:", isEqual), instanceMethod("hash", hash)}}};
        const NSObject object =
            adopt(send<NSObject>(definition.classObject().alloc(), "init"_sel)).autorelease();
        instanceVariableOf<int>(object, "manner") = static_cast<int>(manner);
        instanceVariableOf<int>(object, "number") = number;
        return object;
    }
    static inline int comparisons = 0;

private:
    static Manner mannerOf(NSObject object) {
        return static_cast<Manner>(instanceVariableOf<int>(object, "manner"));
    }
    static BOOL isEqual(NSObject self, SEL, NSObject other) {
        ++comparisons;
        if (!other || mannerOf(self) == Manner::equalsNothing || self.class_() != other.class_()
            || mannerOf(other) == Manner::equalsNothing)
            return NO;
        return instanceVariableOf<int>(self, "number") == instanceVariableOf<int>(other, "number") ? YES : NO;
    }
    static NSUInteger hash(NSObject self, SEL) {
        static NSUInteger next = 0;
        return mannerOf(self) == Manner::badHash
                   ? ++next
                   : static_cast<NSUInteger>(instanceVariableOf<int>(self, "number"));
    }
};

// ---- Random arrays

class RandomObjects {
public:
    explicit RandomObjects(unsigned seed) : numbers_(seed) {}

    int below(int bound) { return static_cast<int>(numbers_() % static_cast<unsigned>(bound)); }

    NSObject value(int variety) {
        const int number = below(variety);
        switch (below(8)) {
        case 0:
            return NSNumber::numberWithInt(number);
        case 1:
            return NSNumber::numberWithDouble(number);
        case 2:
            return NSNumber::numberWithBool(number % 2 != 0);
        case 3:
            return NSNumber::numberWithDouble(number + 0.5);
        case 4:
            return NSString("text " + std::to_string(number)).dataUsingEncoding(NSUTF8StringEncoding);
        case 5:
            return NSDate::dateWithTimeIntervalSinceReferenceDate(number);
        case 6:
            return NSMutableString::stringWithString(NSString("text " + std::to_string(number)));
        default:
            return NSString("text " + std::to_string(number));
        }
    }
    NSObject anything(int variety) {
        switch (below(8)) {
        case 0:
            return NSArray::arrayOf(value(variety));
        case 1:
            return OddObject::make(OddObject::Manner::sound, below(variety));
        case 2:
            return OddObject::make(OddObject::Manner::badHash, below(variety));
        case 3:
            return OddObject::make(OddObject::Manner::equalsNothing, below(variety));
        default:
            return value(variety);
        }
    }
    NSArray array(bool holdsAnything, int variety) {
        Objects objects;
        for (int count = below(90); count > 0; --count)
            objects.push_back(holdsAnything ? anything(variety) : value(variety));
        return NSArray::arrayWithObjects_count(objects.data(), objects.size());
    }

private:
    std::mt19937 numbers_;
};

// ---- One by one

Objects objectsOf(NSArray array) {
    Objects objects;
    for (const NSObject object : array) objects.push_back(object);
    return objects;
}

bool areEqual(NSObject searched, NSObject object) { return searched == object || searched.isEqual(object); }

NSUInteger positionIn(const Objects& objects, NSObject searched) {
    for (NSUInteger position = 0; position < objects.size(); ++position)
        if (areEqual(searched, objects[position])) return position;
    return notFound;
}

Objects merged(NSArray base, NSArray added) {
    Objects result = objectsOf(base);
    for (const NSObject object : added)
        if (positionIn(result, object) == notFound) result.push_back(object);
    return result;
}

Objects removed(NSArray array, NSArray objects) {
    Objects result = objectsOf(array);
    for (const NSObject object : objects)
        std::erase_if(result, [&](NSObject each) { return areEqual(object, each); });
    return result;
}

// Nothing when an object is not there.
std::optional<std::vector<NSUInteger>> indexes(NSArray array, NSArray objects) {
    std::vector<NSUInteger> found;
    for (const NSObject object : objects) {
        found.push_back(array.indexOfObject(object));
        if (found.back() == notFound) return std::nullopt;
    }
    std::sort(found.begin(), found.end());
    found.erase(std::unique(found.begin(), found.end()), found.end());
    return found;
}

std::optional<std::vector<NSUInteger>> indexesByTheLibrary(NSArray array, NSArray objects) {
    std::optional<std::vector<NSUInteger>> found;
    attempt(
        [&] {
            const NSIndexSet set = tessarin_indexesOfObjectsInArray(array, objects);
            found.emplace();
            for (NSUInteger index = set.firstIndex(); index != notFound;
                 index = set.indexGreaterThanIndex(index))
                found->push_back(index);
        },
        [](NSException) {});
    return found;
}

class EqualityAtScaleTest : public PlatformTest {
protected:
    // Calls `check` with random pairs of arrays, of values alone and of anything.
    template <class Check>
    static void forRandomArrays(Check&& check) {
        for (unsigned seed = 0; seed < 300; ++seed) {
            const AutoreleasePool pool;
            RandomObjects random(seed);
            const int variety = 1 + random.below(60);
            const bool holdsAnything = seed % 2 != 0;
            const NSArray array = random.array(holdsAnything, variety);
            const NSArray other = random.array(holdsAnything, variety);
            SCOPED_TRACE("seed " + std::to_string(seed));
            check(array, other, random);
            if (HasFailure()) return;
        }
    }
};

TEST_F(EqualityAtScaleTest, MergesTheSame) {
    forRandomArrays([](NSArray array, NSArray other, RandomObjects&) {
        EXPECT_TRUE(objectsOf(tessarin_arrayByMergingWithArray_receiverFirst(array, other, true))
                    == merged(array, other));
        EXPECT_TRUE(objectsOf(tessarin_arrayByMergingWithArray_receiverFirst(array, other, false))
                    == merged(other, array));
    });
}

TEST_F(EqualityAtScaleTest, MergesInPlaceTheSame) {
    forRandomArrays([](NSArray array, NSArray other, RandomObjects&) {
        const NSMutableArray edited = NSMutableArray::arrayWithArray(array);
        tessarin_mergeWithArray(edited, other);
        EXPECT_TRUE(objectsOf(edited) == merged(array, other));
    });
}

TEST_F(EqualityAtScaleTest, RemovesTheSame) {
    forRandomArrays([](NSArray array, NSArray other, RandomObjects&) {
        EXPECT_TRUE(objectsOf(tessarin_arrayByRemovingObjectsInArray(array, other)) == removed(array, other));
    });
}

TEST_F(EqualityAtScaleTest, FindsTheSameIndexes) {
    forRandomArrays([](NSArray array, NSArray other, RandomObjects& random) {
        EXPECT_TRUE(indexesByTheLibrary(array, other) == indexes(array, other));
        // Objects that are there, some of them others that are equal.
        Objects searched;
        for (int count = random.below(60); count > 0 && array.count() > 0; --count)
            searched.push_back(
                array.objectAtIndex(static_cast<NSUInteger>(random.below(static_cast<int>(array.count())))));
        const NSArray present = NSArray::arrayWithObjects_count(searched.data(), searched.size());
        EXPECT_TRUE(indexesByTheLibrary(array, present) == indexes(array, present));
    });
}

TEST_F(EqualityAtScaleTest, TheFirstOfEqualNumbersIsFound) {
    const NSMutableArray array = NSMutableArray::array();
    const NSMutableArray searched = NSMutableArray::array();
    for (int number = 0; number < 50; ++number) {
        array.addObject(NSNumber::numberWithDouble(number));
        searched.addObject(NSNumber::numberWithInt(number));
    }
    array.addObjectsFromArray(searched);
    const NSIndexSet found = tessarin_indexesOfObjectsInArray(array, searched);
    EXPECT_EQ(found.count(), 50u);
    EXPECT_EQ(found.lastIndex(), 49u);
    EXPECT_EQ(tessarin_arrayByMergingWithArray_receiverFirst(searched, array, true).count(), 50u);
}

// Integers that a platform which rounds them may take for equal: whatever it says, both ways say the same.
TEST_F(EqualityAtScaleTest, LargeNumbersAreFoundAsTheyCompare) {
    constexpr long long large = 1LL << 53;
    Objects objects;
    for (int repetition = 0; repetition < 20; ++repetition) {
        objects.push_back(NSNumber::numberWithLongLong(large + 1 + repetition));
        objects.push_back(NSNumber::numberWithDouble(static_cast<double>(large) + 2 * repetition));
        objects.push_back(NSNumber::numberWithLongLong(large + repetition));
    }
    const NSArray array = NSArray::arrayWithObjects_count(objects.data(), objects.size());
    const NSArray reversed = [&] {
        const Objects backwards(objects.rbegin(), objects.rend());
        return NSArray::arrayWithObjects_count(backwards.data(), backwards.size());
    }();
    for (const NSArray first : {array, reversed})
        for (const NSArray second : {array, reversed}) {
            EXPECT_TRUE(objectsOf(tessarin_arrayByMergingWithArray_receiverFirst(first, second, true))
                        == merged(first, second));
            EXPECT_TRUE(indexesByTheLibrary(first, second) == indexes(first, second));
        }
}

// Containers are compared one by one, however many there are.
TEST_F(EqualityAtScaleTest, ArraysOfArraysGiveTheSame) {
    RandomObjects random(1);
    const auto arrays = [&] {
        Objects objects;
        for (int count = 0; count < 1000; ++count)
            objects.push_back(NSArray::arrayOf(random.value(25), NSArray::arrayOf(random.value(4))));
        return NSArray::arrayWithObjects_count(objects.data(), objects.size());
    };
    const NSArray array = arrays(), other = arrays();
    EXPECT_TRUE(objectsOf(tessarin_arrayByMergingWithArray_receiverFirst(array, other, true))
                == merged(array, other));
    EXPECT_TRUE(objectsOf(tessarin_arrayByRemovingObjectsInArray(array, other)) == removed(array, other));
    const NSArray present = tessarin_arrayByMergingWithArray_receiverFirst(other, array, true);
    EXPECT_TRUE(indexesByTheLibrary(present, array) == indexes(present, array));
}

// Enough of them for a table that grows several times, and many of each.
TEST_F(EqualityAtScaleTest, ManyEqualValuesGiveTheSame) {
    RandomObjects random(2);
    const auto values = [&](int variety) {
        Objects objects;
        for (int count = 0; count < 3000; ++count) objects.push_back(random.value(variety));
        return NSArray::arrayWithObjects_count(objects.data(), objects.size());
    };
    for (const int variety : {1, 40, 2000}) {
        const NSArray array = values(variety), other = values(variety);
        EXPECT_TRUE(objectsOf(tessarin_arrayByMergingWithArray_receiverFirst(array, other, true))
                    == merged(array, other));
        EXPECT_TRUE(objectsOf(tessarin_arrayByRemovingObjectsInArray(array, other)) == removed(array, other));
        EXPECT_TRUE(indexesByTheLibrary(array, array) == indexes(array, array));
    }
}

// ---- As many comparisons as there are objects, not as there are pairs

TEST_F(EqualityAtScaleTest, AnObjectOfItsOwnIsComparedWithEachOnce) {
    const NSMutableArray array = NSMutableArray::array();
    for (int number = 0; number < 1000; ++number) array.addObject(NSNumber::numberWithInt(number));
    const NSArray other =
        NSArray::arrayOf(OddObject::make(OddObject::Manner::sound, 1), NSNumber::numberWithInt(7));
    OddObject::comparisons = 0;
    const NSArray all = tessarin_arrayByMergingWithArray_receiverFirst(array, other, true);
    EXPECT_EQ(all.count(), 1001u);
    EXPECT_EQ(OddObject::comparisons, 1000);
}

} // namespace
} // namespace tessarin::testing
