#include "TessarinPlatform/ValueComparison.h"

#include <algorithm>
#include <array>

namespace tessarin {
namespace {

struct Comparison {
    Implementation isEqual;
    Implementation hash;
    friend bool operator==(const Comparison&, const Comparison&) = default;
};

Comparison comparisonOf(NSObject classObject) {
    return {runtime::lookUpInClass(classObject.object(), "isEqual:"_sel),
            runtime::lookUpInClass(classObject.object(), "hash"_sel)};
}

} // namespace

bool comparesAsValue(NSObject object) {
    static const std::array<Comparison, 5> known = {
        comparisonOf("NSString"_class), comparisonOf("NSNumber"_class), comparisonOf("NSObject"_class),
        comparisonOf("NSDate"_class), comparisonOf("NSData"_class)};
    const Comparison own{runtime::lookUp(object.object(), "isEqual:"_sel),
                         runtime::lookUp(object.object(), "hash"_sel)};
    return std::find(known.begin(), known.end(), own) != known.end();
}

bool searchesByEquality(NSArray array) {
    const Object* const classObject = runtime::classOf(array.object());
    return classObject == NSArray::classObject().object() || classObject == "NSMutableArray"_class.object();
}

} // namespace tessarin
