// Among many objects values are looked for several at a time. What is no value is compared in its place all
// the same, before anything behind it is read, wherever it stands.
#include "PlatformTest.h"

#include "TessarinFoundation/NSArray+TessarinExtensions.h"
#include "TessarinFoundation/NSMutableArray+TessarinExtensions.h"

#include <algorithm>
#include <functional>

namespace tessarin::testing {
namespace {

using Objects = std::vector<NSObject>;

NSArray arrayOf(const Objects& objects) {
    return NSArray::arrayWithObjects_count(objects.data(), objects.size());
}

Objects objectsOf(NSArray array) {
    Objects objects;
    for (const NSObject object : array) objects.push_back(object);
    return objects;
}

// Strings of their own with the numbers from `first` on.
Objects names(int first, int count) {
    Objects objects;
    for (int number = first; number < first + count; ++number)
        objects.push_back(NSString("name " + std::to_string(number)));
    return objects;
}

// An object that is no value, equal to itself alone. What happens as it is compared is the test's.
class Stranger {
public:
    explicit Stranger(std::function<void()> compared = [] {}) : compared_(std::move(compared)) {
        static const ClassDefinition definition{
            {.name = "TessarinTestStranger",
             .instanceVariables = {instanceVariable<Stranger*>("record")},
             .methods = {instanceMethod("isEqual:", isEqual), instanceMethod("hash", hash)}}};
        object_ = adopt(send<NSObject>(definition.classObject().alloc(), "init"_sel));
        instanceVariableOf<Stranger*>(object_, "record") = this;
    }
    Stranger(const Stranger&) = delete;
    Stranger& operator=(const Stranger&) = delete;

    NSObject object() const { return object_; }
    int comparisons() const { return comparisons_; }

private:
    static BOOL isEqual(NSObject self, SEL, NSObject other) {
        Stranger& record = *instanceVariableOf<Stranger*>(self, "record");
        ++record.comparisons_;
        record.compared_();
        return self == other ? YES : NO;
    }
    static NSUInteger hash(NSObject, SEL) { return 0; }

    std::function<void()> compared_;
    int comparisons_ = 0;
    Retained<NSObject> object_;
};

// As many are too many to be looked for one by one.
constexpr int many = 5000;

// Places at the ends of whatever is read at a time.
const int places[] = {0, 1, 15, 16, 17, 31, 32, 33, 62, 63, 64, 65, 66, 127, 128, 129, 199};
constexpr int fewAdded = 200; // half of them new

class EqualityReadAheadTest : public PlatformTest {
protected:
    const Objects present_ = names(0, many);
    // Of 200 names the last 100 are new.
    Objects halfNew_ = names(many - fewAdded / 2, fewAdded);

    static NSUInteger newBefore(int place) { return static_cast<NSUInteger>(std::max(0, place - 100)); }
    Objects withStranger(const Stranger& stranger, int place) const {
        Objects objects = halfNew_;
        objects.insert(objects.begin() + place, stranger.object());
        return objects;
    }
};

TEST_F(EqualityReadAheadTest, AnyNumberOfValuesGivesTheSame) {
    for (const int count : {4095, 4096, 4097, 4127, 4128, 4129, 4159, 4160, 4161, 4223, 4224, 4225}) {
        SCOPED_TRACE(count);
        const AutoreleasePool pool;
        const int half = count / 2;
        const Objects present = names(0, count), other = names(half, count);
        Objects merged = present;
        merged.insert(merged.end(), other.begin() + (count - half), other.end());
        EXPECT_TRUE(
            objectsOf(tessarin_arrayByMergingWithArray_receiverFirst(arrayOf(present), arrayOf(other), true))
            == merged);
        EXPECT_TRUE(objectsOf(tessarin_arrayByRemovingObjectsInArray(arrayOf(present), arrayOf(other)))
                    == Objects(present.begin(), present.begin() + half));
        const Objects searched(other.rbegin() + half, other.rend());
        const NSIndexSet found = tessarin_indexesOfObjectsInArray(arrayOf(present), arrayOf(searched));
        EXPECT_EQ(found.firstIndex(), static_cast<NSUInteger>(half));
        EXPECT_EQ(found.lastIndex(), static_cast<NSUInteger>(count - 1));
        EXPECT_EQ(found.count(), static_cast<NSUInteger>(count - half));
    }
}

TEST_F(EqualityReadAheadTest, EqualValuesSideBySideAreTakenOnce) {
    const Objects first = names(many, 100), second = names(many, 100);
    Objects added, merged = present_;
    for (std::size_t index = 0; index < first.size(); ++index)
        added.insert(added.end(), {first[index], second[index]});
    merged.insert(merged.end(), first.begin(), first.end());
    EXPECT_TRUE(
        objectsOf(tessarin_arrayByMergingWithArray_receiverFirst(arrayOf(present_), arrayOf(added), true))
        == merged);
    const Objects twice =
        objectsOf(tessarin_arrayByMergingWithArray_receiverFirst(arrayOf(added), arrayOf(present_), true));
    EXPECT_EQ(twice.size(), added.size() + present_.size());
    EXPECT_EQ(tessarin_indexesOfObjectsInArray(arrayOf(twice), arrayOf(second)).lastIndex(),
              NSUInteger{198}); // of each two the first
}

TEST_F(EqualityReadAheadTest, AForeignObjectIsMergedInItsPlace) {
    for (const int place : places) {
        SCOPED_TRACE(place);
        const AutoreleasePool pool;
        const Stranger stranger;
        const NSArray merged = tessarin_arrayByMergingWithArray_receiverFirst(
            arrayOf(present_), arrayOf(withStranger(stranger, place)), true);
        const NSUInteger before = many + newBefore(place);
        EXPECT_EQ(merged.count(), NSUInteger{many + fewAdded / 2 + 1});
        EXPECT_EQ(merged.indexOfObjectIdenticalTo(stranger.object()), before);
        EXPECT_EQ(merged.lastObject(), halfNew_.back());
    }
}

TEST_F(EqualityReadAheadTest, AForeignObjectIsComparedWithEachBeforeItOnce) {
    for (const int place : places) {
        SCOPED_TRACE(place);
        const AutoreleasePool pool;
        const Stranger stranger;
        // Values are asked themselves whether they equal it.
        tessarin_arrayByMergingWithArray_receiverFirst(arrayOf(present_),
                                                       arrayOf(withStranger(stranger, place)), true);
        EXPECT_EQ(stranger.comparisons(), many + static_cast<int>(newBefore(place)));
    }
}

TEST_F(EqualityReadAheadTest, AForeignObjectIsRemovedFromItsPlace) {
    for (const int place : places) {
        SCOPED_TRACE(place);
        const AutoreleasePool pool;
        const Stranger removed, kept;
        Objects receiver = withStranger(removed, place);
        receiver.insert(receiver.begin() + place + 1, kept.object());
        Objects removedObjects = present_;
        Objects remaining(halfNew_.begin() + fewAdded / 2, halfNew_.end());
        remaining.insert(remaining.begin() + static_cast<std::ptrdiff_t>(newBefore(place)), kept.object());
        removedObjects.push_back(removed.object());
        EXPECT_TRUE(
            objectsOf(tessarin_arrayByRemovingObjectsInArray(arrayOf(receiver), arrayOf(removedObjects)))
            == remaining);
    }
}

TEST_F(EqualityReadAheadTest, AForeignObjectsIndexIsFound) {
    for (const int place : places) {
        SCOPED_TRACE(place);
        const AutoreleasePool pool;
        const Stranger stranger;
        Objects receiver = names(0, many);
        receiver.push_back(stranger.object());
        Objects searched = names(0, fewAdded);
        searched.insert(searched.begin() + place, stranger.object());
        const NSIndexSet found = tessarin_indexesOfObjectsInArray(arrayOf(receiver), arrayOf(searched));
        EXPECT_EQ(found.count(), NSUInteger{fewAdded + 1});
        EXPECT_EQ(found.lastIndex(), NSUInteger{many});
    }
}

// ---- What comparing does meanwhile

TEST_F(EqualityReadAheadTest, WhatAComparisonThrowsFindsWhatWasMergedBefore) {
    for (const int place : places) {
        SCOPED_TRACE(place);
        const AutoreleasePool pool;
        const Stranger stranger([] { raise("Refusal"_ns, "compared"_ns); });
        const NSMutableArray receiver = NSMutableArray::arrayWithArray(arrayOf(present_));
        const NSArray added = arrayOf(withStranger(stranger, place));
        EXPECT_THROWS_NAMED((tessarin_mergeWithArray(receiver, added), 0), "Refusal");
        EXPECT_EQ(receiver.count(), many + newBefore(place));
        EXPECT_EQ(stranger.comparisons(), 1);
    }
}

TEST_F(EqualityReadAheadTest, AComparisonSeesWhatWasMergedBefore) {
    for (const int place : places) {
        SCOPED_TRACE(place);
        const AutoreleasePool pool;
        const NSMutableArray receiver = NSMutableArray::arrayWithArray(arrayOf(present_));
        NSUInteger seen = 0;
        const Stranger stranger([&] { seen = receiver.count(); });
        tessarin_mergeWithArray(receiver, arrayOf(withStranger(stranger, place)));
        EXPECT_EQ(seen, many + newBefore(place));
    }
}

TEST_F(EqualityReadAheadTest, AnArrayThatAComparisonEmptiesIsReadNoFurther) {
    for (const int place : places) {
        SCOPED_TRACE(place);
        const AutoreleasePool pool;
        const NSMutableArray added = NSMutableArray::array();
        const Stranger stranger([&] { added.removeAllObjects(); });
        {
            // The array alone holds them.
            const AutoreleasePool inner;
            for (const NSObject name : names(many - fewAdded / 2, fewAdded)) added.addObject(name);
            added.insertObject_atIndex(stranger.object(), static_cast<NSUInteger>(place));
        }
        const NSMutableArray receiver = NSMutableArray::arrayWithArray(arrayOf(present_));
        EXPECT_THROWS_NAMED((tessarin_mergeWithArray(receiver, added), 0), "NSGenericException");
        EXPECT_EQ(receiver.count(), many + newBefore(place) + 1);
    }
}

TEST_F(EqualityReadAheadTest, ASearchEndsWithTheFirstObjectThatIsNotThere) {
    for (const int place : places) {
        SCOPED_TRACE(place);
        const AutoreleasePool pool;
        const Stranger behind;
        Objects searched = names(0, fewAdded);
        searched.insert(searched.begin() + place, NSString("a name that is not there"));
        searched.insert(searched.begin() + place + 1, behind.object());
        EXPECT_THROWS_NAMED(tessarin_indexesOfObjectsInArray(arrayOf(present_), arrayOf(searched)),
                            "NSInternalInconsistencyException");
        EXPECT_EQ(behind.comparisons(), 0);
    }
}

// ---- Arrays of an application's own classes

// Empties an array when an object is added.
class EmptyingReceiver {
public:
    EmptyingReceiver(const Objects& items, NSMutableArray emptied) : items_(items), emptied_(emptied) {
        static const ClassDefinition definition{
            {.name = "TessarinTestEmptyingReceiver",
             .superclass = "NSMutableArray",
             .instanceVariables = {instanceVariable<EmptyingReceiver*>("record")},
             .methods = {instanceMethod(
                             "init", +[](NSMutableArray self, SEL) { return self; }),
                         instanceMethod("count", count), instanceMethod("objectAtIndex:", objectAtIndex),
                         instanceMethod("addObject:", addObject)}}};
        array_ = adopt(as<NSMutableArray>(definition.classObject().alloc()).init());
        instanceVariableOf<EmptyingReceiver*>(array_, "record") = this;
    }
    EmptyingReceiver(const EmptyingReceiver&) = delete;
    EmptyingReceiver& operator=(const EmptyingReceiver&) = delete;

    NSMutableArray array() const { return array_; }
    int additions() const { return additions_; }

private:
    static EmptyingReceiver& recordOf(NSMutableArray self) {
        return *instanceVariableOf<EmptyingReceiver*>(self, "record");
    }
    static NSUInteger count(NSMutableArray self, SEL) { return recordOf(self).items_.size(); }
    static id objectAtIndex(NSMutableArray self, SEL, NSUInteger index) {
        return recordOf(self).items_.at(index);
    }
    static void addObject(NSMutableArray self, SEL, NSObject) {
        ++recordOf(self).additions_;
        recordOf(self).emptied_.removeAllObjects();
    }

    Objects items_;
    NSMutableArray emptied_;
    int additions_ = 0;
    Retained<NSMutableArray> array_;
};

TEST_F(EqualityReadAheadTest, AReceiverMayEmptyWhatItIsMergedWith) {
    const NSMutableArray added = NSMutableArray::arrayWithArray(arrayOf(halfNew_));
    const EmptyingReceiver receiver(present_, added);
    EXPECT_THROWS_NAMED((tessarin_mergeWithArray(receiver.array(), added), 0), "NSGenericException");
    EXPECT_EQ(receiver.additions(), 1);
}

// An array that says it holds more than any memory does, and walks over three objects.
NSArray boastingArray() {
    static const ClassDefinition definition{
        {.name = "TessarinTestBoastingArray",
         .superclass = "NSArray",
         .methods = {instanceMethod(
                         "count", +[](NSArray, SEL) { return NSUInteger{1} << 50; }),
                     instanceMethod(
                         "countByEnumeratingWithState:objects:count:",
                         +[](NSArray, SEL, NSFastEnumerationState* state, NSObject* buffer, NSUInteger) {
                             static NSUInteger mutations = 0;
                             state->mutationsPtr = &mutations;
                             state->itemsPtr = buffer;
                             if (state->state > 0) return NSUInteger{0};
                             buffer[0] = "name 1"_ns;
                             buffer[1] = "name 2"_ns;
                             buffer[2] = "new"_ns;
                             state->state = 3;
                             return NSUInteger{3};
                         })}}};
    return adopt(send<NSArray>(definition.classObject().alloc(), "init"_sel)).autorelease();
}

TEST_F(EqualityReadAheadTest, MemoryIsTakenForWhatIsThereAlone) {
    const NSArray boasting = boastingArray();
    EXPECT_EQ(tessarin_arrayByMergingWithArray_receiverFirst(arrayOf(present_), boasting, true).count(),
              NSUInteger{many + 1});
    EXPECT_EQ(tessarin_arrayByMergingWithArray_receiverFirst(arrayOf(present_), boasting, false).count(),
              NSUInteger{many + 1});
    EXPECT_EQ(tessarin_arrayByRemovingObjectsInArray(arrayOf(present_), boasting).count(),
              NSUInteger{many - 2});
}

} // namespace
} // namespace tessarin::testing
