// A property list of many small records, each a dictionary with an array in it.
#pragma once

#include "PlatformTest.h"

namespace tessarin::testing {

inline Retained<NSObject> newRecords(int count) {
    const AutoreleasePool pool;
    const NSMutableArray list = NSMutableArray::array();
    for (int index = 0; index < count; ++index) {
        const NSMutableDictionary record = NSMutableDictionary::dictionary();
        record.setObject_forKey(NSNumber::numberWithLongLong(index), "number"_ns);
        record.setObject_forKey(NSArray::arrayOf("a"_ns, "b"_ns), "tags"_ns);
        list.addObject(record);
    }
    return retain<NSObject>(list);
}

} // namespace tessarin::testing
