// What the fuzzers of property-list readers hold: any bytes give a property list, or nil and an error; and
// what was read is written and read back as an equal one.
#pragma once

#include "TessarinPlatform/TessarinPlatform.h"

#include <cstddef>
#include <cstdint>
#include <cstdlib>
#include <iostream>

namespace tessarin::fuzzing {

inline void require(bool condition, const char* requirement) {
    if (condition) return;
    std::cerr << "violated: " << requirement << std::endl;
    std::abort();
}

inline id readPropertyList(NSData document, NSPropertyListMutabilityOptions options, NSError* error) {
    return NSPropertyListSerialization::propertyListWithData_options_format_error(document, options, nullptr,
                                                                                  error);
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

    const NSData written = NSPropertyListSerialization::dataWithPropertyList_format_options_error(
        propertyList, format, 0, &error);
    require(bool(written), "what was read can be written");
    for (const NSUInteger options : {NSPropertyListImmutable, NSPropertyListMutableContainers,
                                     NSPropertyListMutableContainersAndLeaves}) {
        const NSObject again = readPropertyList(written, options, &error);
        // Only a list that shares mutable parts beyond all measure is refused.
        if (!again && options != NSPropertyListImmutable) continue;
        require(bool(again), "what was written can be read");
        require(again.isEqual(propertyList), "what was written reads back as an equal property list");
    }
}

} // namespace tessarin::fuzzing
