// Arrays inside each other, taken apart one by one in the end: not every platform can release a million of
// them from the outside.
#pragma once

#include "TessarinPlatform/NSMutableArray.h"
#include "TessarinPlatform/Retained.h"

#include <vector>

namespace tessarin::testing {

class NestedArrays {
public:
    // At least one level; the innermost array holds nothing but that object, nil for nothing at all.
    explicit NestedArrays(std::size_t levels, NSObject innermost = nil) {
        for (std::size_t level = 0; level < levels; ++level) {
            arrays_.push_back(adopt(NSMutableArray::alloc().init()));
            if (level > 0)
                arrays_.back().addObject(arrays_[level - 1]);
            else if (innermost)
                arrays_.back().addObject(innermost);
        }
    }
    ~NestedArrays() {
        for (const NSMutableArray array : arrays_) array.removeAllObjects();
    }
    NestedArrays(const NestedArrays&) = delete;
    NestedArrays& operator=(const NestedArrays&) = delete;

    NSMutableArray outermost() const { return arrays_.back(); }
    NSMutableArray innermost() const { return arrays_.front(); }

private:
    std::vector<Retained<NSMutableArray>> arrays_;
};

} // namespace tessarin::testing
