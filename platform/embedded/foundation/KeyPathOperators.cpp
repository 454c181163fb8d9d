#include "platform/embedded/foundation/KeyPathOperators.h"

#include "platform/embedded/foundation/ArrayStorage.h"
#include "platform/embedded/foundation/NSObject+KeyValueCoding.h"
#include "platform/embedded/foundation/StringStorage.h"

#include "TessarinPlatform/NSException.h"
#include "TessarinPlatform/NSNumber.h"

namespace tessarin::embedded {
namespace {

std::vector<Retained<NSObject>> valuesOfItems(NSArray array, NSString path, EnteredItems& entered) {
    // The items' own code might change the array.
    const Retained<NSArray> items = adopt(as<NSArray>(array.copy()));
    entered.add(array, items.count() + path.length()); // the path is read again in each array
    std::vector<Retained<NSObject>> values;
    for (const NSObject item : ArrayItems(items))
        values.push_back(retain(NSObject(valueAtKeyPath(item, path, &entered))));
    return values;
}

// Each operator of a path calls for the next.
constexpr std::size_t mostOperators = 64;

void checkOperatorCount(NSArray array, NSString path) {
    const Contents units = contentsOf(path);
    std::size_t count = 0;
    for (std::size_t place = findUnit(units, u'@'); place < units.length();
         place = findUnit(units, u'@', place + 1))
        if (++count > mostOperators)
            raiseFrom(NSInvalidArgumentException(), array, "valueForKeyPath:"_sel,
                      "the path has too many operators");
}

double sumOf(const std::vector<Retained<NSObject>>& values) {
    double sum = 0;
    for (const NSObject value : values) sum += send<double>(value, "doubleValue"_sel);
    return sum;
}

// The first of those that come first, or last on request, by the sign of their own compare:.
NSObject extremeOf(const std::vector<Retained<NSObject>>& values, bool isLast) {
    const auto isBeyond = [&](NSObject value, NSObject extreme) {
        const auto order = send<NSComparisonResult>(value, "compare:"_sel, extreme);
        return isLast ? order > NSOrderedSame : order < NSOrderedSame;
    };
    NSObject extreme;
    for (const NSObject value : values)
        if (value && (!extreme || isBeyond(value, extreme))) extreme = value;
    return retain(extreme).autorelease();
}

} // namespace

std::optional<id> valueOfOperator(NSArray array, NSString path, EnteredItems* entered) {
    checkOperatorCount(array, path);
    EnteredItems ofThisPath(array, "valueForKeyPath:"_sel);
    for (const NSString name : {"@sum."_ns, "@avg."_ns, "@min."_ns, "@max."_ns}) {
        if (!path.hasPrefix(name)) continue;
        const auto values =
            valuesOfItems(array, path.substringFromIndex(name.length()), entered ? *entered : ofThisPath);
        if (name == "@sum."_ns) return id(NSNumber::numberWithDouble(sumOf(values)));
        if (name == "@avg."_ns) {
            const auto count = static_cast<double>(values.size());
            return id(NSNumber::numberWithDouble(values.empty() ? 0 : sumOf(values) / count));
        }
        return id(extremeOf(values, name == "@max."_ns));
    }
    return std::nullopt;
}

} // namespace tessarin::embedded
