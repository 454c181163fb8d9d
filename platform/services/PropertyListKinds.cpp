#include "platform/services/PropertyListKinds.h"

#include "TessarinPlatform/NSData.h"
#include "TessarinPlatform/NSDate.h"
#include "TessarinPlatform/NSDictionary.h"
#include "TessarinPlatform/NSNumber.h"
#include "platform/services/BooleanNumbers.h"

namespace tessarin {

PropertyListKind askForPropertyListKind(NSObject object) {
    using enum PropertyListKind;
    if (object.isKindOfClass(NSString::classObject())) return string;
    if (object.isKindOfClass(NSNumber::classObject())) return number;
    if (object.isKindOfClass(NSDictionary::classObject())) return dictionary;
    if (object.isKindOfClass(NSArray::classObject())) return array;
    if (object.isKindOfClass(NSDate::classObject())) return date;
    if (object.isKindOfClass(NSData::classObject())) return data;
    if (const Class uidClass = "CFKeyedArchiverUID"_class; uidClass && object.isKindOfClass(uidClass))
        return uid;
    return other;
}

// A stand-in for other objects answers for them.
bool isKindOfItsClass(NSObject object) {
    return runtime::lookUp(object.object(), "isKindOfClass:"_sel)
           == runtime::lookUpInClass(NSObject::classObject().object(), "isKindOfClass:"_sel);
}

// Other objects count as of no particular type.
std::string propertyListTypeName(NSObject asked) {
    const Retained<NSObject> object = retain(asked); // to be asked is other code
    const auto isOf = [&](Class classObject) { return classObject && object.isKindOfClass(classObject); };
    if (const auto number = kindOf<NSNumber>(object)) return isBoolean(number) ? "CFBoolean" : "CFNumber";
    if (isOf("NSNull"_class)) return "CFNull";
    if (isOf("NSDate"_class)) return "CFDate";
    if (isOf("NSData"_class)) return "CFData";
    if (isOf("NSArray"_class)) return "CFArray";
    if (isOf("NSDictionary"_class)) return "CFDictionary";
    if (isOf("NSURL"_class)) return "CFURL";
    if (isOf("NSSet"_class)) return "CFSet";
    if (isOf("NSCharacterSet"_class)) return "CFCharacterSet";
    return "CFType";
}

FetchedContents::FetchedContents(NSObject container, PropertyListKind kind) {
    if (kind == PropertyListKind::array) {
        const auto array = as<NSArray>(container);
        const NSUInteger count = array.count();
        for (NSUInteger index = 0; index < count; ++index)
            objects.push_back(retain<NSObject>(array.objectAtIndex(index)));
        return;
    }
    const auto dictionary = as<NSDictionary>(container);
    for (const NSObject key : dictionary) keys.push_back(retain(key));
    for (const NSObject key : keys) objects.push_back(retain<NSObject>(dictionary.objectForKey(key)));
}

} // namespace tessarin
