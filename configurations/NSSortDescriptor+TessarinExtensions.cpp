// Sort descriptors: as configurations.
#include "TessarinFoundation/NSSortDescriptor+TessarinExtensions.h"

#include "TessarinPlatform/Definition.h"
#include "TessarinPlatform/NSMutableDictionary.h"
#include "TessarinPlatform/NSNumber.h"

using namespace tessarin;

namespace {

NSString keyPathKey() { return "keypath"_ns; }
NSString ascendingKey() { return "ascending"_ns; }
NSString selectorKey() { return "selector"_ns; }

NSDictionary configuration(NSSortDescriptor self, SEL) {
    const Retained<NSMutableDictionary> configuration =
        adopt(NSMutableDictionary::alloc().initWithCapacity(3));
    // The dictionary itself refuses a key that is nil.
    configuration.setObject_forKey(self.key(), keyPathKey());
    // A number that is no boolean one, in every form that it is kept in.
    const NSInteger ascending = send<BOOL>(self, "ascending"_sel);
    configuration.setObject_forKey(NSNumber::numberWithInteger(ascending), ascendingKey());
    if (const NSString name = NSStringFromSelector(self.selector()))
        configuration.setObject_forKey(name, selectorKey());
    return NSDictionary::dictionaryWithDictionary(configuration);
}

// The object as a string of at least one character, nil when it is none.
NSString textOf(NSObject object) {
    const auto text = kindOf<NSString>(object);
    return text.length() > 0 ? text : NSString();
}

// Answers the receiver as it stands for what is no configuration: not nil, and not released, which is meant.
NSSortDescriptor initWithConfiguration(NSSortDescriptor self, SEL, NSDictionary configuration) {
    const id keyPathValue = configuration.objectForKey(keyPathKey());
    const id ascending = configuration.objectForKey(ascendingKey());
    const NSString keyPath = textOf(keyPathValue);
    if (!keyPath || !ascending.respondsToSelector("boolValue"_sel)) return self;
    const bool isAscending = send<BOOL>(ascending, "boolValue"_sel) != NO;
    if (const SEL selector = NSSelectorFromString(textOf(configuration.objectForKey(selectorKey()))))
        return self.initWithKey_ascending_selector(keyPath, isAscending, selector);
    return self.initWithKey_ascending(keyPath, isAscending);
}

id sortDescriptorWithConfiguration(Class self, SEL, NSDictionary configuration) {
    return adopt(tessarin_initWithConfiguration(as<NSSortDescriptor>(self.alloc()), configuration))
        .autorelease();
}

const ExtensionGroup group{
    "NSSortDescriptor",
    "TessarinExtensions",
    {classMethod("tessarin_sortDescriptorWithConfiguration:", sortDescriptorWithConfiguration),
     instanceMethod("tessarin_initWithConfiguration:", initWithConfiguration),
     instanceMethod("tessarin_configuration", configuration)}};

} // namespace

NSDictionary tessarin_configuration(NSSortDescriptor receiver) {
    return send<NSDictionary>(receiver, "tessarin_configuration"_sel);
}

NSSortDescriptor tessarin_initWithConfiguration(NSSortDescriptor allocated, NSDictionary configuration) {
    return send<NSSortDescriptor>(allocated, "tessarin_initWithConfiguration:"_sel, configuration);
}

NSSortDescriptor tessarin_sortDescriptorWithConfiguration(NSDictionary configuration) {
    return tessarin_sortDescriptorWithConfiguration(NSSortDescriptor::classObject(), configuration);
}

NSSortDescriptor tessarin_sortDescriptorWithConfiguration(Class receiver, NSDictionary configuration) {
    return send<NSSortDescriptor>(receiver, "tessarin_sortDescriptorWithConfiguration:"_sel, configuration);
}
