#include "platform/embedded/foundation/DateStorage.h"
#include "platform/embedded/foundation/KeyedCoding.h"

#include <bit>
#include <chrono>
#include <cmath>
#include <cstdio>
#include <limits>

namespace tessarin::embedded {
namespace {

constexpr NSTimeInterval referenceSince1970 = 978307200;

NSTimeInterval now() {
    const std::chrono::duration<double> since1970 = std::chrono::system_clock::now().time_since_epoch();
    return since1970.count() - referenceSince1970;
}

// ---- Making

NSDate initWithTimeIntervalSinceReferenceDate(NSDate self, SEL, NSTimeInterval seconds) {
    storageOf<DateStorage>(self).sinceReferenceDate = seconds;
    return self;
}

NSDate initialize(NSObject date, NSTimeInterval seconds) {
    return send<NSDate>(date, "initWithTimeIntervalSinceReferenceDate:"_sel, seconds);
}

NSDate initWithTimeIntervalSince1970(NSDate self, SEL, NSTimeInterval seconds) {
    return initialize(self, seconds - referenceSince1970);
}
NSDate init(NSDate self, SEL) { return initialize(self, now()); }

id makeDate(Class self, NSTimeInterval seconds) {
    return adopt(initialize(self.alloc(), seconds)).autorelease();
}

id date(Class self, SEL) { return makeDate(self, now()); }
id dateWithTimeIntervalSinceReferenceDate(Class self, SEL, NSTimeInterval seconds) {
    return makeDate(self, seconds);
}
id dateWithTimeIntervalSince1970(Class self, SEL, NSTimeInterval seconds) {
    return makeDate(self, seconds - referenceSince1970);
}
id dateWithTimeIntervalSinceNow(Class self, SEL, NSTimeInterval seconds) {
    return makeDate(self, now() + seconds);
}

NSDate copyWithZone(NSDate self, SEL, void*) { return retain(self).leak(); }

// ---- Archiving

void encodeWithCoder(NSDate self, SEL, NSCoder coder) {
    coder.encodeDouble_forKey(self.timeIntervalSinceReferenceDate(), "NS.time"_ns);
}

NSDate initWithCoder(NSDate self, SEL, NSCoder coder) {
    Retained<NSDate> owned = adopt(self);
    const NSTimeInterval seconds = coder.decodeDoubleForKey("NS.time"_ns);
    return initialize(owned.leak(), seconds);
}

// ---- Reading

NSTimeInterval timeIntervalSinceReferenceDate(NSDate self, SEL) {
    return storageOf<DateStorage>(self).sinceReferenceDate;
}
NSTimeInterval timeIntervalSince1970(NSDate self, SEL) {
    return self.timeIntervalSinceReferenceDate() + referenceSince1970;
}
NSTimeInterval timeIntervalSinceDate(NSDate self, SEL, NSDate other) {
    return self.timeIntervalSinceReferenceDate() - other.timeIntervalSinceReferenceDate();
}
NSTimeInterval timeIntervalSinceNow(NSDate self, SEL) {
    return self.timeIntervalSinceReferenceDate() - now();
}

NSDate dateByAddingTimeInterval(NSDate self, SEL, NSTimeInterval seconds) {
    return NSDate::dateWithTimeIntervalSinceReferenceDate(self.timeIntervalSinceReferenceDate() + seconds);
}

// ---- Comparing

NSComparisonResult compare(NSDate self, SEL selector, NSDate other) {
    rejectNil(other, self, selector);
    const NSTimeInterval difference =
        self.timeIntervalSinceReferenceDate() - other.timeIntervalSinceReferenceDate();
    if (difference < 0) return NSOrderedAscending;
    return difference > 0 ? NSOrderedDescending : NSOrderedSame;
}

NSDate earlierDate(NSDate self, SEL, NSDate other) {
    return other && other.timeIntervalSinceReferenceDate() < self.timeIntervalSinceReferenceDate() ? other
                                                                                                   : self;
}
NSDate laterDate(NSDate self, SEL, NSDate other) {
    return other && other.timeIntervalSinceReferenceDate() > self.timeIntervalSinceReferenceDate() ? other
                                                                                                   : self;
}

BOOL isEqualToDate(NSDate self, SEL, NSDate other) {
    if (self == other) return YES;
    return other && self.timeIntervalSinceReferenceDate() == other.timeIntervalSinceReferenceDate() ? YES
                                                                                                    : NO;
}
BOOL isEqual(NSDate self, SEL selector, NSObject other) {
    return isEqualToDate(self, selector, kindOf<NSDate>(other));
}

NSUInteger hash(NSDate self, SEL) {
    // Zero of either sign is the same date.
    const double seconds = self.timeIntervalSinceReferenceDate() + 0.0;
    return static_cast<NSUInteger>(std::bit_cast<std::uint64_t>(seconds) * 0x9E3779B97F4A7C15u);
}

// In universal time: 2001-01-01 00:00:00 +0000.
NSString description(NSDate self, SEL) {
    const double seconds = std::floor(self.timeIntervalSince1970());
    // Beyond these years the calendar below has no names for days.
    constexpr double furthest = 9.2e11;
    if (!(std::abs(seconds) < furthest)) {
        char text[std::numeric_limits<double>::max_exponent10 + 64]; // for all the digits of the largest
        std::snprintf(text, sizeof text, "%.0f seconds since 1970-01-01", seconds);
        return NSString(text);
    }
    using namespace std::chrono;
    const sys_seconds time{std::chrono::seconds(static_cast<std::int64_t>(seconds))};
    const auto day = floor<days>(time);
    const year_month_day calendar(day);
    const hh_mm_ss clock(time - day);
    char text[64];
    std::snprintf(text, sizeof text, "%04d-%02u-%02u %02d:%02d:%02d +0000", static_cast<int>(calendar.year()),
                  static_cast<unsigned>(calendar.month()), static_cast<unsigned>(calendar.day()),
                  static_cast<int>(clock.hours().count()), static_cast<int>(clock.minutes().count()),
                  static_cast<int>(clock.seconds().count()));
    return NSString(text);
}

} // namespace

Retained<NSDate> newDate(NSTimeInterval sinceReferenceDate) {
    const auto [date, storage, _] = createInstanceWith<DateStorage>("NSDate"_class);
    storage.sinceReferenceDate = sinceReferenceDate;
    return adopt(NSDate(date));
}

ClassDescription describeNSDate() {
    return {
        .name = "NSDate",
        .superclass = "NSObject",
        .protocols = {"NSCoding", "NSCopying"},
        .storage = storageLayout<DateStorage>(),
        .methods = {classMethod("date", date),
                    classMethod("dateWithTimeIntervalSinceReferenceDate:",
                                dateWithTimeIntervalSinceReferenceDate),
                    classMethod("dateWithTimeIntervalSince1970:", dateWithTimeIntervalSince1970),
                    classMethod("dateWithTimeIntervalSinceNow:", dateWithTimeIntervalSinceNow),
                    instanceMethod("init", init),
                    instanceMethod("initWithTimeIntervalSinceReferenceDate:",
                                   initWithTimeIntervalSinceReferenceDate),
                    instanceMethod("initWithTimeIntervalSince1970:", initWithTimeIntervalSince1970),
                    instanceMethod("copyWithZone:", copyWithZone),
                    instanceMethod("classForCoder", classForCoderOf<NSDate>),
                    instanceMethod("encodeWithCoder:", encodeWithCoder),
                    instanceMethod("initWithCoder:", initWithCoder),
                    instanceMethod("timeIntervalSinceReferenceDate", timeIntervalSinceReferenceDate),
                    instanceMethod("timeIntervalSince1970", timeIntervalSince1970),
                    instanceMethod("timeIntervalSinceDate:", timeIntervalSinceDate),
                    instanceMethod("timeIntervalSinceNow", timeIntervalSinceNow),
                    instanceMethod("dateByAddingTimeInterval:", dateByAddingTimeInterval),
                    instanceMethod("compare:", compare),
                    instanceMethod("earlierDate:", earlierDate),
                    instanceMethod("laterDate:", laterDate),
                    instanceMethod("isEqualToDate:", isEqualToDate),
                    instanceMethod("isEqual:", isEqual),
                    instanceMethod("hash", hash),
                    instanceMethod("description", description)},
    };
}

} // namespace tessarin::embedded
