#include "platform/embedded/runtime/BuiltInClass.h"

#include "TessarinPlatform/NSError.h"
#include "TessarinPlatform/NSException.h"
#include "TessarinPlatform/Retained.h"

#include <string>

namespace tessarin::embedded {
namespace {

struct ErrorStorage {
    Retained<NSString> domain;
    NSInteger code = 0;
    Retained<NSDictionary> userInfo;
};

NSError initWithDomain_code_userInfo(NSError self, SEL selector, NSString domain, NSInteger code,
                                     NSDictionary userInfo) {
    Retained<NSError> owned = adopt(self);
    if (!domain) raiseFrom(NSInvalidArgumentException(), self, selector, "domain cannot be nil");
    auto& storage = storageOf<ErrorStorage>(self);
    storage.domain = adopt(as<NSString>(domain.copy()));
    storage.code = code;
    // None given is an empty one.
    storage.userInfo = adopt(as<NSDictionary>((userInfo ? userInfo : NSDictionary::dictionary()).copy()));
    return owned.leak();
}

id errorWithDomain_code_userInfo(Class self, SEL, NSString domain, NSInteger code, NSDictionary userInfo) {
    return adopt(send<NSError>(self.alloc(), "initWithDomain:code:userInfo:"_sel, domain, code, userInfo))
        .autorelease();
}

NSString domain(NSError self, SEL) { return storageOf<ErrorStorage>(self).domain; }
NSInteger code(NSError self, SEL) { return storageOf<ErrorStorage>(self).code; }
NSDictionary userInfo(NSError self, SEL) { return storageOf<ErrorStorage>(self).userInfo; }

std::string domainAndCode(NSError error) {
    return static_cast<std::string>(error.domain()) + " error " + std::to_string(error.code()) + ".";
}

NSString localizedDescription(NSError self, SEL) {
    if (const NSString text = self.userInfo().objectForKey(NSLocalizedDescriptionKey())) return text;
    return NSString("The operation couldn\u2019t be completed. (" + domainAndCode(self) + ")");
}

NSString description(NSError self, SEL) {
    return NSString("Error Domain=" + static_cast<std::string>(self.domain())
                    + " Code=" + std::to_string(self.code()) + " \""
                    + static_cast<std::string>(self.localizedDescription()) + "\"");
}

BOOL isEqual(NSError self, SEL, NSObject other) {
    if (self == other) return YES;
    const auto error = kindOf<NSError>(other);
    return error && self.code() == error.code() && self.domain().isEqual(error.domain())
                   && self.userInfo().isEqual(error.userInfo())
               ? YES
               : NO;
}
NSUInteger hash(NSError self, SEL) { return self.domain().hash() + static_cast<NSUInteger>(self.code()); }

NSError copyWithZone(NSError self, SEL, void*) { return retain(self).leak(); }

} // namespace

ClassDescription describeNSError() {
    return {
        .name = "NSError",
        .superclass = "NSObject",
        .protocols = {"NSCopying"},
        .storage = storageLayout<ErrorStorage>(),
        .methods = {classMethod("errorWithDomain:code:userInfo:", errorWithDomain_code_userInfo),
                    instanceMethod("initWithDomain:code:userInfo:", initWithDomain_code_userInfo),
                    instanceMethod("domain", domain), instanceMethod("code", code),
                    instanceMethod("userInfo", userInfo),
                    instanceMethod("localizedDescription", localizedDescription),
                    instanceMethod("description", description), instanceMethod("isEqual:", isEqual),
                    instanceMethod("hash", hash), instanceMethod("copyWithZone:", copyWithZone)},
    };
}

} // namespace tessarin::embedded
