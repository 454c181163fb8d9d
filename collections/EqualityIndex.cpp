#include "collections/EqualityIndex.h"

#include "TessarinPlatform/ValueComparison.h"

namespace tessarin::collections {
namespace {

constexpr auto notFound = static_cast<NSUInteger>(NSNotFound);

// As many objects are compared sooner than hashed.
constexpr NSUInteger fewObjects = 16;

} // namespace

void EqualityIndex::append(NSObject object) {
    objects_.push_back(object);
    if (objects_.size() > fewObjects) indexAppended();
}

void EqualityIndex::indexAppended() {
    for (; indexedCount_ < objects_.size(); ++indexedCount_) {
        const NSObject object = objects_[indexedCount_];
        if (comparesAsValue(object))
            values_.try_emplace(object, indexedCount_);
        else
            others_.push_back(indexedCount_);
    }
}

bool EqualityIndex::areEqual(NSObject searched, NSObject appended) const {
    if (searched == appended) return true;
    return asked_ == Asked::searched ? searched.isEqual(appended) : appended.isEqual(searched);
}

NSUInteger EqualityIndex::firstEqual(NSObject searched, const std::vector<NSUInteger>& positions,
                                     NSUInteger limit) const {
    for (const NSUInteger position : positions) {
        if (position >= limit) break;
        if (areEqual(searched, objects_[position])) return position;
    }
    return limit;
}

NSUInteger EqualityIndex::positionOf(NSObject searched) const {
    if (indexedCount_ > 0 && comparesAsValue(searched)) {
        const auto value = values_.find(searched);
        return firstEqual(searched, others_, value == values_.end() ? notFound : value->second);
    }
    for (NSUInteger position = 0; position < objects_.size(); ++position)
        if (areEqual(searched, objects_[position])) return position;
    return notFound;
}

} // namespace tessarin::collections
