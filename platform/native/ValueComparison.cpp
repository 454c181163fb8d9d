#include "TessarinPlatform/ValueComparison.h"
#include "TessarinPlatform/ValueHash.h"

#include "TessarinPlatform/NSDate.h"
#include "TessarinPlatform/NSMutableArray.h"
#include "TessarinPlatform/NSMutableString.h"
#include "TessarinPlatform/NSNumber.h"
#include "TessarinPlatform/Retained.h"

#include <algorithm>
#include <vector>

namespace tessarin {
namespace {

struct Comparison {
    Implementation isEqual;
    Implementation hash;
    friend bool operator==(const Comparison&, const Comparison&) = default;
};

Comparison comparisonOf(NSObject object) {
    return {runtime::lookUp(object.object(), "isEqual:"_sel), runtime::lookUp(object.object(), "hash"_sel)};
}

// The platform's own classes are hidden behind public ones; their objects give them away.
std::vector<Comparison> comparisonsOf(std::initializer_list<NSObject> samples) {
    std::vector<Comparison> found;
    for (const NSObject sample : samples) found.push_back(comparisonOf(sample));
    return found;
}

bool isAmong(const std::vector<Comparison>& known, Comparison comparison) {
    return std::find(known.begin(), known.end(), comparison) != known.end();
}

const std::vector<Comparison>& ofStrings() {
    static const std::vector<Comparison> known = [] {
        const NSString latin("a string that is made at run time");
        const NSString greek("\u03b1 string with a Greek letter in front of it");
        return comparisonsOf({"x"_ns, NSString("x"), latin, greek, latin.substringFromIndex(1),
                              greek.substringFromIndex(1), NSMutableString::stringWithString(latin),
                              NSMutableString::stringWithString(greek)});
    }();
    return known;
}

const std::vector<Comparison>& ofOtherValues() {
    static const std::vector<Comparison> known = [] {
        const Retained<NSObject> plain = adopt(NSObject(NSObject::classObject().alloc()));
        const NSString text("bytes");
        return comparisonsOf({plain, NSNumber::numberWithBool(true), NSNumber::numberWithInt(1),
                              NSNumber::numberWithInt(1 << 20), NSNumber::numberWithDouble(0.5),
                              NSNumber::numberWithFloat(0.5F), NSNumber::numberWithLongLong(1LL << 40),
                              NSNumber::numberWithUnsignedLongLong(~0ULL),
                              NSDate::dateWithTimeIntervalSinceReferenceDate(0.5),
                              text.dataUsingEncoding(NSUTF8StringEncoding)});
    }();
    return known;
}

#if defined(__APPLE__)

// Strings are compared unit by unit.
bool hashesAsItCompares(NSString) { return true; }

#else

// GNUstep compares strings by canonical equivalence and hashes them by their units. Below the first letter
// that can be taken apart the two agree.
bool hashesAsItCompares(NSString string) {
    constexpr unichar firstComposed = 0xC0;
    constexpr NSUInteger blockLength = 64;
    unichar block[blockLength];
    const NSUInteger length = string.length();
    for (NSUInteger position = 0; position < length; position += blockLength) {
        const NSUInteger count = std::min(blockLength, length - position);
        string.getCharacters_range(block, {position, count});
        if (!std::all_of(block, block + count, [](unichar unit) { return unit < firstComposed; }))
            return false;
    }
    return true;
}

#endif

// GNUstep compares numbers as reals, which takes integers that only a rounding tells apart for equal, and no
// NaN for itself.
bool comparesExactly(NSObject object) {
    constexpr double largest = 9007199254740992.0; // 2^53
    if (!object.isKindOfClass(NSNumber::classObject())) return true;
    const double value = as<NSNumber>(object).doubleValue();
    return -largest < value && value < largest;
}

} // namespace

bool comparesAsValue(NSObject object) {
    if (!object) return false;
    const Comparison own = comparisonOf(object);
    if (isAmong(ofOtherValues(), own)) return comparesExactly(object);
    return isAmong(ofStrings(), own) && hashesAsItCompares(as<NSString>(object));
}

NSUInteger hashOfValue(NSObject object) {
    return comparesAsValue(object) ? std::max<NSUInteger>(object.hash(), 1) : 0;
}

bool areEqualValues(NSObject left, NSObject right) { return left == right || left.isEqual(right); }

bool searchesByEquality(NSArray array) {
    static const std::vector<Object*> known = [] {
        const NSMutableArray editable = NSMutableArray::array();
        const Retained<NSArray> copied = adopt(NSArray(editable.copy()));
        const Retained<NSArray> two = adopt(NSArray::alloc().initWithArray(NSArray::arrayOf("a"_ns, "b"_ns)));
        std::vector<Object*> classes;
        for (const NSArray sample :
             {NSArray::array(), NSArray::arrayOf("a"_ns), NSArray(editable), NSArray(copied), NSArray(two)})
            classes.push_back(runtime::classOf(sample.object()));
        return classes;
    }();
    return std::find(known.begin(), known.end(), runtime::classOf(array.object())) != known.end();
}

} // namespace tessarin
