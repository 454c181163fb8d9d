// What every object answers. The class of the handle, and how handles behave, stand in
// detail/NSObject-class.h.
#pragma once

#include "TessarinPlatform/Send.h"

namespace tessarin {

inline bool NSObject::isEqual(NSObject other) const { return send<BOOL>(*this, "isEqual:"_sel, other) != NO; }
inline NSUInteger NSObject::hash() const { return send<NSUInteger>(*this, "hash"_sel); }
inline Class NSObject::class_() const { return send<Class>(*this, "class"_sel); }
inline bool NSObject::isKindOfClass(Class other) const {
    return send<BOOL>(*this, "isKindOfClass:"_sel, other) != NO;
}
inline bool NSObject::isMemberOfClass(Class other) const {
    return send<BOOL>(*this, "isMemberOfClass:"_sel, other) != NO;
}
inline bool NSObject::respondsToSelector(SEL selector) const {
    return send<BOOL>(*this, "respondsToSelector:"_sel, selector) != NO;
}
inline bool NSObject::respondsToSelector(const char* name) const {
    return respondsToSelector(runtime::registerSelector(name));
}
inline bool NSObject::conformsToProtocol(Protocol protocol) const {
    return send<BOOL>(*this, "conformsToProtocol:"_sel, protocol) != NO;
}
inline id NSObject::copy() const { return send<id>(*this, "copy"_sel); }
inline id NSObject::mutableCopy() const { return send<id>(*this, "mutableCopy"_sel); }
inline NSUInteger NSObject::retainCount() const { return send<NSUInteger>(*this, "retainCount"_sel); }
inline Class NSObject::classObject() { return "NSObject"_class; }

inline id Class::alloc() const { return send<id>(*this, "alloc"_sel); }
inline Class Class::superclass() const { return send<Class>(*this, "superclass"_sel); }
inline bool Class::instancesRespondToSelector(SEL selector) const {
    return send<BOOL>(*this, "instancesRespondToSelector:"_sel, selector) != NO;
}
inline bool Class::isSubclassOfClass(Class other) const {
    return send<BOOL>(*this, "isSubclassOfClass:"_sel, other) != NO;
}

} // namespace tessarin
