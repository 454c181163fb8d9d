// NSPropertyListSerialization: property lists to bytes and back.
#pragma once

#include "TessarinPlatform/NSData.h"
#include "TessarinPlatform/NSError.h"

namespace tessarin {

enum NSPropertyListFormat : NSUInteger {
    NSPropertyListOpenStepFormat = 1,
    NSPropertyListXMLFormat_v1_0 = 100,
    NSPropertyListBinaryFormat_v1_0 = 200,
};

using NSPropertyListMutabilityOptions = NSUInteger;
inline constexpr NSPropertyListMutabilityOptions NSPropertyListImmutable = 0;
inline constexpr NSPropertyListMutabilityOptions NSPropertyListMutableContainers = 1;
inline constexpr NSPropertyListMutabilityOptions NSPropertyListMutableContainersAndLeaves = 2;

class NSPropertyListSerialization
    : public Handle<NSPropertyListSerialization, "NSPropertyListSerialization", NSObject> {
public:
    using Handle::Handle;

    // nil and an error for what is no property list.
    static NSData dataWithPropertyList_format_options_error(NSObject propertyList,
                                                            NSPropertyListFormat format, NSUInteger options,
                                                            NSError* error) {
        return send<NSData>(classObject(), "dataWithPropertyList:format:options:error:"_sel, propertyList,
                            format, options, error);
    }
    // nil and an error for damaged data. The format found is stored through `format` unless that is null.
    static id propertyListWithData_options_format_error(NSData data, NSPropertyListMutabilityOptions options,
                                                        NSPropertyListFormat* format, NSError* error) {
        return send<id>(classObject(), "propertyListWithData:options:format:error:"_sel, data, options,
                        format, error);
    }
    // GNUstep answers true to everything.
    static bool propertyList_isValidForFormat(NSObject propertyList, NSPropertyListFormat format) {
        return send<BOOL>(classObject(), "propertyList:isValidForFormat:"_sel, propertyList, format) != NO;
    }
};

} // namespace tessarin
