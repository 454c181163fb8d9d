// What a sort descriptor does with two objects: it fetches their values for its key and compares those.
#pragma once

#include "TessarinPlatform/NSSortDescriptor.h"
#include "TessarinPlatform/Retained.h"

namespace tessarin::embedded {

class KeyComparison {
public:
    // By what the descriptor answers now. One that is not initialised has no comparison, and all objects are
    // the same to it.
    explicit KeyComparison(NSSortDescriptor descriptor);

    // The object's value for the key, the object itself where there is no key. The object's own code.
    NSObject valueOf(NSObject object);
    // Two values, in the descriptor's direction. nil stands before everything else. Raises
    // NSInvalidArgumentException where the selector names a method that cannot be a comparison: names come
    // out of files, and a call with the wrong arguments would not come back.
    NSComparisonResult compare(NSObject left, NSObject right);

    // The ascending result as the descriptor's direction has it.
    NSComparisonResult directed(NSComparisonResult ascending) const;
    bool isAscending() const { return isAscending_; }
    SEL selector() const { return selector_; }

private:
    void requireComparison(NSObject object);

    Retained<NSString> key_;
    SEL selector_;
    bool isAscending_;
    const Object* soundClass_ = nullptr; // whose comparison was found to be one, last
    // How the objects of one class were asked for their values, last: most often all are of that class.
    const Object* accessedClass_ = nullptr;
    SEL accessor_ = nullptr; // null where they are asked by key-value coding
};

// NSSortDescriptor's own compareObject:toObject:.
NSComparisonResult compareObject_toObject(NSSortDescriptor self, SEL, NSObject left, NSObject right);

} // namespace tessarin::embedded
