// NSDate: a point in time, in seconds since 2001-01-01 00:00:00 UTC.
#pragma once

#include "TessarinPlatform/NSString.h"

namespace tessarin {

class NSDate : public Handle<NSDate, "NSDate", NSObject> {
public:
    using Handle::Handle;

    static NSDate date() { return send<NSDate>(classObject(), "date"_sel); }
    static NSDate dateWithTimeIntervalSinceReferenceDate(NSTimeInterval seconds) {
        return send<NSDate>(classObject(), "dateWithTimeIntervalSinceReferenceDate:"_sel, seconds);
    }
    static NSDate dateWithTimeIntervalSince1970(NSTimeInterval seconds) {
        return send<NSDate>(classObject(), "dateWithTimeIntervalSince1970:"_sel, seconds);
    }

    NSTimeInterval timeIntervalSinceReferenceDate() const {
        return send<NSTimeInterval>(*this, "timeIntervalSinceReferenceDate"_sel);
    }
    NSTimeInterval timeIntervalSince1970() const {
        return send<NSTimeInterval>(*this, "timeIntervalSince1970"_sel);
    }
    bool isEqualToDate(NSDate other) const { return send<BOOL>(*this, "isEqualToDate:"_sel, other) != NO; }
    NSComparisonResult compare(NSDate other) const {
        return send<NSComparisonResult>(*this, "compare:"_sel, other);
    }
};

} // namespace tessarin
