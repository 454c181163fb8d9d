#include "platform/embedded/foundation/DataStorage.h"

namespace tessarin::embedded {
namespace {

DataStorage& storageOf(NSData data) { return embedded::storageOf<DataStorage>(data); }

void* mutableBytes(NSData self, SEL) { return storageOf(self).bytes; }
void setLength(NSData self, SEL, NSUInteger length) { storageOf(self).resize(length); }

void appendBytes_length(NSData self, SEL, const void* bytes, NSUInteger length) {
    storageOf(self).append({static_cast<const std::byte*>(bytes), length});
}

void appendData(NSData self, SEL, NSData other) { storageOf(self).append(bytesOf(other)); }

NSData initWithLength(NSData self, SEL, NSUInteger length) {
    Retained<NSData> owned = adopt(self);
    storageOf(self).resize(length);
    return owned.leak();
}
id dataWithLength(Class self, SEL, NSUInteger length) {
    return adopt(send<id>(self.alloc(), "initWithLength:"_sel, length)).autorelease();
}

// The capacity is a hint that is not needed: the buffer grows by halves.
NSData initWithCapacity(NSData self, SEL, NSUInteger) { return send<NSData>(self, "init"_sel); }
id dataWithCapacity(Class self, SEL, NSUInteger capacity) {
    return adopt(send<id>(self.alloc(), "initWithCapacity:"_sel, capacity)).autorelease();
}

NSData copyWithZone(NSData self, SEL, void*) { return newData(bytesOf(self)).leak(); }

} // namespace

ClassDescription describeNSMutableData() {
    return {
        .name = "NSMutableData",
        .superclass = "NSData",
        .methods = {classMethod("dataWithLength:", dataWithLength),
                    classMethod("dataWithCapacity:", dataWithCapacity),
                    instanceMethod("initWithLength:", initWithLength),
                    instanceMethod("initWithCapacity:", initWithCapacity),
                    instanceMethod("copyWithZone:", copyWithZone),
                    instanceMethod("mutableBytes", mutableBytes), instanceMethod("setLength:", setLength),
                    instanceMethod("appendBytes:length:", appendBytes_length),
                    instanceMethod("appendData:", appendData)},
    };
}

} // namespace tessarin::embedded
