#include "TessarinPlatform/ValueComparison.h"
#include "TessarinPlatform/ValueHash.h"

#include "platform/embedded/foundation/StringStorage.h"

#include <algorithm>
#include <array>

namespace tessarin {

using namespace embedded;

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
    if (!object) return false;
    // An application's subclass of these may have code of its own below the two, for its length and
    // characters for instance.
    static const std::array<const Object*, 6> values = {
        "NSString"_class.object(), "NSNumber"_class.object(), "NSMutableString"_class.object(),
        "NSDate"_class.object(),   "NSData"_class.object(),   "NSMutableData"_class.object()};
    if (std::find(values.begin(), values.end(), object.object()->isa) != values.end()) return true;
    static const Comparison byIdentity = comparisonOf("NSObject"_class);
    return byIdentity
           == Comparison{runtime::lookUp(object.object(), "isEqual:"_sel),
                         runtime::lookUp(object.object(), "hash"_sel)};
}

// Most values are strings, which are asked without a message.

NSUInteger hashOfValue(NSObject object) {
    if (object && isPlainString(object)) return storageOf<StringStorage>(object).hash();
    return comparesAsValue(object) ? std::max<NSUInteger>(object.hash(), 1) : 0;
}

bool areEqualValues(NSObject left, NSObject right) {
    if (left == right) return true;
    if (left && right && isPlainString(left) && isPlainString(right))
        return equalUnits(storageOf<StringStorage>(left).view(), storageOf<StringStorage>(right).view());
    return left.isEqual(right);
}

bool searchesByEquality(NSArray array) {
    const Object* const classObject = runtime::classOf(array.object());
    return classObject == NSArray::classObject().object() || classObject == "NSMutableArray"_class.object();
}

} // namespace tessarin
