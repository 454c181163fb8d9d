// An array of an application's own class, which notes what it is asked.
#pragma once

#include "PlatformTest.h"

#include <vector>

namespace tessarin::testing {

class RecordingArray {
public:
    explicit RecordingArray(NSArray elements) : elements_(retain(elements)) {
        array_ = adopt(as<NSArray>(classObject().alloc()).init());
        instanceVariableOf<RecordingArray*>(array_, "record") = this;
    }
    RecordingArray(const RecordingArray&) = delete;
    RecordingArray& operator=(const RecordingArray&) = delete;

    operator NSArray() const { return array_; }
    // The positions asked for, in order, those beyond the end included.
    const std::vector<NSUInteger>& positions() const { return positions_; }
    // How often the number of elements was asked for.
    int countings() const { return countings_; }

private:
    static Class classObject() {
        static const ClassDefinition definition{
            {.name = "TessarinRecordingArray",
             .superclass = "NSArray",
             .instanceVariables = {instanceVariable<RecordingArray*>("record")},
             .methods = {instanceMethod("init", init), instanceMethod("count", count),
                         instanceMethod("objectAtIndex:", objectAtIndex)}}};
        return definition.classObject();
    }
    static RecordingArray& recordOf(NSArray self) {
        return *instanceVariableOf<RecordingArray*>(self, "record");
    }

    static NSArray init(NSArray self, SEL) { return self; }
    static NSUInteger count(NSArray self, SEL) {
        ++recordOf(self).countings_;
        return recordOf(self).elements_.count();
    }
    static id objectAtIndex(NSArray self, SEL, NSUInteger index) {
        recordOf(self).positions_.push_back(index);
        return recordOf(self).elements_.objectAtIndex(index);
    }

    Retained<NSArray> elements_;
    Retained<NSArray> array_;
    std::vector<NSUInteger> positions_;
    int countings_ = 0;
};

} // namespace tessarin::testing
