// A mutable array of an application's own class, which notes how it is changed.
#pragma once

#include "PlatformTest.h"

#include <algorithm>
#include <vector>

namespace tessarin::testing {

class OwnMutableArray {
public:
    explicit OwnMutableArray(const Texts& items = {}) {
        array_ = adopt(as<NSMutableArray>(classObject().alloc()).init());
        instanceVariableOf<OwnMutableArray*>(array_, "record") = this;
        for (const std::string& item : items) items_.push_back(retain<NSObject>(NSString(item)));
    }
    OwnMutableArray(const OwnMutableArray&) = delete;
    OwnMutableArray& operator=(const OwnMutableArray&) = delete;

    operator NSMutableArray() const { return array_; }
    // What was asked of it, in order: "insert 3", "remove 0", "exchange 0 1", "replace 2".
    const Texts& changes() const { return changes_; }
    Texts texts() const {
        Texts result;
        for (const Retained<NSObject>& item : items_) result.push_back(text(item.description()));
        return result;
    }

private:
    using Row = std::vector<Retained<NSObject>>;

    static Class classObject() {
        static const ClassDefinition definition{
            {.name = "TessarinOwnMutableArray",
             .superclass = "NSMutableArray",
             .instanceVariables = {instanceVariable<OwnMutableArray*>("record")},
             .methods = {instanceMethod("init", init), instanceMethod("count", count),
                         instanceMethod("objectAtIndex:", objectAtIndex),
                         instanceMethod("insertObject:atIndex:", insertObject_atIndex),
                         instanceMethod("addObject:", addObject),
                         instanceMethod("removeObjectAtIndex:", removeObjectAtIndex),
                         instanceMethod("removeLastObject", removeLastObject),
                         instanceMethod("replaceObjectAtIndex:withObject:", replaceObjectAtIndex_withObject),
                         instanceMethod("exchangeObjectAtIndex:withObjectAtIndex:",
                                        exchangeObjectAtIndex_withObjectAtIndex)}}};
        return definition.classObject();
    }
    static OwnMutableArray& recordOf(NSMutableArray self) {
        return *instanceVariableOf<OwnMutableArray*>(self, "record");
    }
    static Row& itemsOf(NSMutableArray self) { return recordOf(self).items_; }
    static Row::iterator place(NSMutableArray self, NSUInteger index) {
        return itemsOf(self).begin() + static_cast<std::ptrdiff_t>(index);
    }
    static void note(NSMutableArray self, const std::string& change) {
        recordOf(self).changes_.push_back(change);
    }

    static NSMutableArray init(NSMutableArray self, SEL) { return self; }
    static NSUInteger count(NSMutableArray self, SEL) { return itemsOf(self).size(); }
    static id objectAtIndex(NSMutableArray self, SEL, NSUInteger index) {
        return static_cast<NSObject>(itemsOf(self).at(index));
    }
    static void insertObject_atIndex(NSMutableArray self, SEL, NSObject object, NSUInteger index) {
        note(self, "insert " + std::to_string(index));
        itemsOf(self).insert(place(self, index), retain(object));
    }
    static void addObject(NSMutableArray self, SEL selector, NSObject object) {
        insertObject_atIndex(self, selector, object, itemsOf(self).size());
    }
    static void removeObjectAtIndex(NSMutableArray self, SEL, NSUInteger index) {
        note(self, "remove " + std::to_string(index));
        itemsOf(self).erase(place(self, index));
    }
    static void removeLastObject(NSMutableArray self, SEL selector) {
        removeObjectAtIndex(self, selector, itemsOf(self).size() - 1);
    }
    static void replaceObjectAtIndex_withObject(NSMutableArray self, SEL, NSUInteger index, NSObject object) {
        note(self, "replace " + std::to_string(index));
        *place(self, index) = retain(object);
    }
    static void exchangeObjectAtIndex_withObjectAtIndex(NSMutableArray self, SEL, NSUInteger first,
                                                        NSUInteger second) {
        note(self, "exchange " + std::to_string(first) + " " + std::to_string(second));
        std::iter_swap(place(self, first), place(self, second));
    }

    Row items_;
    Texts changes_;
    Retained<NSMutableArray> array_;
};

} // namespace tessarin::testing
