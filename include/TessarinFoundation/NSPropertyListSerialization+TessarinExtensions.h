// Property lists: of any value that can describe itself as one, and copied with containers that can be
// edited. A nil class answers nil, without an error.
#pragma once

#include "TessarinPlatform/detail/LibraryAnchor.h"

#if defined(__OBJC__)

#    import <Foundation/NSError.h>
#    import <Foundation/NSPropertyList.h>

@interface NSPropertyListSerialization (TessarinExtensions)

+ (id)tessarin_propertyListForValue:(id)value;
+ (id)tessarin_propertyListWithMutableContainers:(id)propertyList error:(NSError**)error;

@end

#else

#    include "TessarinPlatform/NSPropertyListSerialization.h"

// A property list that stands for a value. The value itself, unchanged and not copied, when it is a property
// list that XML can hold: a string, number, date or data object, or an array or dictionary of such, a
// dictionary with strings for its keys. Otherwise
// what the value answers to the first of these that it responds to: configuration, propertyList,
// tessarin_configuration; as it is when that is a property list, and nil when it is not. nil for nil, and for
// a value that responds to none of the three.
//
// A configuration is not looked through for values to convert: one that holds a colour is no property list.
// The result is not the caller's to release; it lives as long as the value keeps it, or until the innermost
// autorelease pool ends.
//
// Callers on the same class run one at a time, under the recursive lock of the class object; a value may come
// back to this operation on the same thread while it is asked. Callers on another class, a derived one
// included, do not wait. Raises nothing itself; what the value raises passes through, and the lock is free
// again.
//
//   tessarin_propertyListForValue("text"_ns)   // the same string
//   tessarin_propertyListForValue(color)       // its configuration, a dictionary
TESSARIN_EXPORT tessarin::id tessarin_propertyListForValue(tessarin::NSObject value);
TESSARIN_EXPORT tessarin::id tessarin_propertyListForValue(tessarin::Class receiver,
                                                           tessarin::NSObject value);
template <tessarin::HandleType Receiver>
tessarin::id tessarin_propertyListForValue(tessarin::NSObject value) {
    return tessarin_propertyListForValue(Receiver::classObject(), value);
}

// A new property list, autoreleased, that is equal to the first argument and whose arrays and dictionaries,
// at every depth, are mutable. Strings and data in it are immutable, also where they were not; integers are
// 64 bits wide (GNUstep keeps an int where they fit); everything else is as it was. An array or dictionary
// that stands in several places of the original is another one in each place of the copy.
//
// nil, and an autoreleased error of NSCocoaErrorDomain through `error` unless that is null, for what is no
// property list: nil, other objects, keys that are no strings, containers inside themselves (code 3851; 3852
// for nil); and for containers nested more than 512 deep (3840, as the platform's reader gives). Where the
// platform does not refuse by itself a list whose shared containers would make the copy more than 2^20
// objects larger than 16 times the original, such a list gives 3840 too.
//
//   NSMutableDictionary settings = tessarin_propertyListWithMutableContainers_error(defaults, &error);
TESSARIN_EXPORT tessarin::id tessarin_propertyListWithMutableContainers_error(tessarin::NSObject propertyList,
                                                                              tessarin::NSError* error);
TESSARIN_EXPORT tessarin::id tessarin_propertyListWithMutableContainers_error(tessarin::Class receiver,
                                                                              tessarin::NSObject propertyList,
                                                                              tessarin::NSError* error);
template <tessarin::HandleType Receiver>
tessarin::id tessarin_propertyListWithMutableContainers_error(tessarin::NSObject propertyList,
                                                              tessarin::NSError* error) {
    return tessarin_propertyListWithMutableContainers_error(Receiver::classObject(), propertyList, error);
}

#endif
