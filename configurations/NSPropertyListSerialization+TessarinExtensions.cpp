// Property lists: of any value that can describe itself as one, and copied with containers that can be
// edited.
#include "TessarinFoundation/NSPropertyListSerialization+TessarinExtensions.h"

#include "TessarinPlatform/Definition.h"
#include "TessarinPlatform/PropertyLists.h"
#include "TessarinPlatform/Synchronized.h"

using namespace tessarin;

namespace {

bool isStorable(NSObject object) { return isPropertyList(object, NSPropertyListXMLFormat_v1_0); }

// What a value answers when it is asked to describe itself.
id descriptionOf(NSObject value) {
    for (const SEL operation : {"configuration"_sel, "propertyList"_sel, "tessarin_configuration"_sel})
        if (value.respondsToSelector(operation)) return send<id>(value, operation);
    return nil;
}

id propertyListForValue(Class self, SEL, NSObject value) {
    const Synchronized lock{self};
    if (isStorable(value)) return value;
    const id description = descriptionOf(value);
    return isStorable(description) ? description : id();
}

id withMutableContainers(Class, SEL, NSObject propertyList, NSError* error) {
    return propertyListWithMutableContainers(propertyList, error);
}

const ExtensionGroup group{
    "NSPropertyListSerialization",
    "TessarinExtensions",
    {classMethod("tessarin_propertyListForValue:", propertyListForValue),
     classMethod("tessarin_propertyListWithMutableContainers:error:", withMutableContainers)}};

} // namespace

id tessarin_propertyListForValue(NSObject value) {
    return tessarin_propertyListForValue(NSPropertyListSerialization::classObject(), value);
}

id tessarin_propertyListForValue(Class receiver, NSObject value) {
    return send<id>(receiver, "tessarin_propertyListForValue:"_sel, value);
}

id tessarin_propertyListWithMutableContainers_error(NSObject propertyList, NSError* error) {
    return tessarin_propertyListWithMutableContainers_error(NSPropertyListSerialization::classObject(),
                                                            propertyList, error);
}

id tessarin_propertyListWithMutableContainers_error(Class receiver, NSObject propertyList, NSError* error) {
    return send<id>(receiver, "tessarin_propertyListWithMutableContainers:error:"_sel, propertyList, error);
}
