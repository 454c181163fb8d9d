// What the fuzzers of property-list readers hold: any bytes give a property list, or nil and an error; and
// what was read is written and read back as an equal one.
#pragma once

#include "Require.h"

#include "TessarinPlatform/TessarinPlatform.h"

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <map>
#include <set>

namespace tessarin::fuzzing {

inline id readPropertyList(NSData document, NSPropertyListMutabilityOptions options, NSError* error) {
    return NSPropertyListSerialization::propertyListWithData_options_format_error(document, options, nullptr,
                                                                                  error);
}

// How many objects a property list would hold if nothing in it were shared; of a sum beyond all measure, some
// large number.
class UnsharedSize {
public:
    std::size_t of(NSObject object) {
        const auto array = kindOf<NSArray>(object);
        const auto dictionary = kindOf<NSDictionary>(object);
        if (!array && !dictionary) return 1;
        if (const auto known = sizes_.find(object.object()); known != sizes_.end()) return known->second;
        std::size_t size = 1;
        for (const NSObject each : array ? array : dictionary.allValues())
            size = std::min(size + of(each), largest);
        return sizes_[object.object()] = size;
    }

private:
    static constexpr std::size_t largest = std::size_t{1} << 32;
    std::map<Object*, std::size_t> sizes_; // of the containers
};

// Few bytes may stand for a million objects where each place has its own. Making them over and over, under
// the sanitizers, would take nearly all of a fuzzer's time.
inline bool standsForMany(NSObject propertyList) { return UnsharedSize().of(propertyList) > 10'000; }

// Whether a string in a property list has an unpaired surrogate, for which XML has no form: U+FFFD is
// written, and what was different may then be equal.
class UnpairedSurrogates {
public:
    bool areIn(NSObject object) {
        if (const auto string = kindOf<NSString>(object)) return areInString(string);
        const auto array = kindOf<NSArray>(object);
        const auto dictionary = kindOf<NSDictionary>(object);
        if ((!array && !dictionary) || !seen_.insert(object.object()).second) return false;
        for (const NSObject each : array ? array : dictionary.allValues())
            if (areIn(each)) return true;
        for (const NSObject key : dictionary.allKeys())
            if (areIn(key)) return true;
        return false;
    }

private:
    static bool areInString(NSString string) {
        const NSUInteger length = string.length();
        const auto isAt = [&](NSUInteger index, unichar first) { // one of 1024 surrogates
            return index < length && (string.characterAtIndex(index) & 0xFC00) == first;
        };
        for (NSUInteger index = 0; index < length; ++index) {
            const bool isHigh = isAt(index, 0xD800);
            if (!isHigh && isAt(index, 0xDC00)) return true;
            if (isHigh && !isAt(++index, 0xDC00)) return true;
        }
        return false;
    }

    std::set<Object*> seen_; // containers without any
};

inline NSData written(NSObject propertyList, NSPropertyListFormat format) {
    return NSPropertyListSerialization::dataWithPropertyList_format_options_error(propertyList, format, 0,
                                                                                  nullptr);
}

// Whether a property list equals another that is read from the same bytes: not where it holds a date that is
// not a number, which equals none.
inline bool equalsItsLike(NSObject propertyList, NSData document) {
    return propertyList.isEqual(readPropertyList(document, NSPropertyListImmutable, nullptr));
}

// Reads the bytes, writes what they hold in a format, and reads that.
inline void checkPropertyList(const std::uint8_t* data, std::size_t size, NSPropertyListFormat format) {
    const AutoreleasePool pool;
    const NSData document = NSData::dataWithBytes_length(data, size);
    NSError error;
    const NSObject propertyList = readPropertyList(document, NSPropertyListImmutable, &error);
    if (!propertyList) {
        require(error && error.code() == 3840, "what cannot be read gives an error");
        require(error.userInfo().objectForKey(NSDebugDescriptionErrorKey()) != NSObject(),
                "an error has a text");
        return;
    }
    require(!error, "what can be read gives no error");
    const bool isBinary = format == NSPropertyListBinaryFormat_v1_0;
    const bool isHuge = standsForMany(propertyList);
    if (isHuge && !isBinary) return;

    const bool isComparable =
        equalsItsLike(propertyList, document) && (isBinary || !UnpairedSurrogates().areIn(propertyList));
    const NSData secondDocument = written(propertyList, format);
    require(bool(secondDocument), "what was read can be written");
    for (const NSUInteger options : {NSPropertyListImmutable, NSPropertyListMutableContainers,
                                     NSPropertyListMutableContainersAndLeaves}) {
        if (isHuge && options != NSPropertyListImmutable) continue;
        const NSObject read = readPropertyList(secondDocument, options, &error);
        // Only a list that shares mutable parts beyond all measure is refused.
        if (!read && options != NSPropertyListImmutable) continue;
        require(bool(read), "what was written can be read");
        require(!isComparable || read.isEqual(propertyList),
                "what was written reads back as an equal property list");
    }
}

} // namespace tessarin::fuzzing
