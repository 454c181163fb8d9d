#include "platform/embedded/foundation/PropertyListError.h"

namespace tessarin::embedded {

void storePropertyListError(NSError* error, NSInteger code, const std::string& text) {
    if (!error) return;
    const NSDictionary userInfo =
        NSDictionary::dictionaryWithObject_forKey(NSString(text), NSDebugDescriptionErrorKey());
    *error = NSError::errorWithDomain_code_userInfo(NSCocoaErrorDomain(), code, userInfo);
}

} // namespace tessarin::embedded
