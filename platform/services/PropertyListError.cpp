#include "platform/services/PropertyListError.h"

namespace tessarin {

void storePropertyListError(NSError* error, NSInteger code, const std::string& text) {
    if (!error) return;
    const NSDictionary userInfo =
        NSDictionary::dictionaryWithObject_forKey(NSString(text), NSDebugDescriptionErrorKey());
    *error = NSError::errorWithDomain_code_userInfo(NSCocoaErrorDomain(), code, userInfo);
}

void storeNilPropertyListError(NSError* error) {
    storePropertyListError(error, NSPropertyListWriteInvalidError, "Cannot write nil as a property list");
}

void storeInvalidPropertyListError(NSError* error, NSPropertyListFormat format, const std::string& defect) {
    storePropertyListError(error, NSPropertyListWriteStreamError,
                           "Property list invalid for format: " + std::to_string(format) + " (" + defect
                               + ")");
}

} // namespace tessarin
