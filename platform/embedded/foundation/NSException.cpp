#include "platform/embedded/runtime/BuiltInClass.h"
#include "platform/embedded/runtime/Exceptions.h"

#include "TessarinPlatform/NSException.h"
#include "platform/embedded/foundation/StringFormat.h"

#include <cstdarg>

namespace tessarin::embedded {
namespace {

struct ExceptionStorage {
    Retained<NSString> name;
    Retained<NSString> reason;
    Retained<NSDictionary> userInfo;
};

NSException initWithName_reason_userInfo(NSException self, SEL, NSString name, NSString reason,
                                         NSDictionary userInfo) {
    Retained<NSException> owned = adopt(self);
    auto& storage = storageOf<ExceptionStorage>(self);
    storage.name = adopt(as<NSString>(name.copy()));
    storage.reason = adopt(as<NSString>(reason.copy()));
    storage.userInfo = retain(userInfo);
    return owned.leak();
}

NSException makeException(Class self, NSString name, NSString reason, NSDictionary userInfo) {
    return adopt(send<NSException>(self.alloc(), "initWithName:reason:userInfo:"_sel, name, reason, userInfo))
        .autorelease();
}

id exceptionWithName_reason_userInfo(Class self, SEL, NSString name, NSString reason, NSDictionary userInfo) {
    return makeException(self, name, reason, userInfo);
}

void raise_format(Class self, SEL, NSString name, NSString format, ...) {
    std::va_list arguments;
    va_start(arguments, format);
    struct End {
        std::va_list& list;
        ~End() { va_end(list); }
    };
    const End end{arguments};
    StringStorage reason;
    appendFormat(reason, format, arguments);
    makeException(self, name, makeString(reason.view()), nil).raise();
}

void raise(NSException self, SEL) { throwException(self); }

NSString name(NSException self, SEL) { return storageOf<ExceptionStorage>(self).name; }
NSString reason(NSException self, SEL) { return storageOf<ExceptionStorage>(self).reason; }
NSDictionary userInfo(NSException self, SEL) { return storageOf<ExceptionStorage>(self).userInfo; }

NSString description(NSException self, SEL) {
    const NSString reason = self.reason();
    return reason ? reason : self.name();
}

bool areEqual(NSObject left, NSObject right) { return left == right || left.isEqual(right); }

BOOL isEqual(NSException self, SEL, NSObject other) {
    if (self == other) return YES;
    const auto exception = kindOf<NSException>(other);
    return exception && areEqual(self.name(), exception.name()) && areEqual(self.reason(), exception.reason())
                   && areEqual(self.userInfo(), exception.userInfo())
               ? YES
               : NO;
}
NSUInteger hash(NSException self, SEL) { return self.name().hash() ^ self.reason().hash() * 31; }

NSException copyWithZone(NSException self, SEL, void*) { return retain(self).leak(); }

} // namespace

ClassDescription describeNSException() {
    // instanceMethod and classMethod know lists of arguments behind one argument only.
    const MethodRow raising{"raise:format:", reinterpret_cast<Implementation>(raise_format),
                            tessarin::detail::methodEncoding<void, Class, NSString, NSString>.c_str(), true};
    return {
        .name = "NSException",
        .superclass = "NSObject",
        .protocols = {"NSCopying"},
        .storage = storageLayout<ExceptionStorage>(),
        .methods = {classMethod("exceptionWithName:reason:userInfo:", exceptionWithName_reason_userInfo),
                    raising, instanceMethod("initWithName:reason:userInfo:", initWithName_reason_userInfo),
                    instanceMethod("raise", raise), instanceMethod("name", name),
                    instanceMethod("reason", reason), instanceMethod("userInfo", userInfo),
                    instanceMethod("description", description), instanceMethod("isEqual:", isEqual),
                    instanceMethod("hash", hash), instanceMethod("copyWithZone:", copyWithZone)},
    };
}

} // namespace tessarin::embedded
