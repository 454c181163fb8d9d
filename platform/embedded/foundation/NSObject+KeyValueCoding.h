// Key-value coding: operations and instance variables by name.
//
//   get<Key>, <key>, is<Key>                 are the operations that read a value, in this order;
//   set<Key>:                                is the one that writes it;
//   _<key>, _is<Key>, <key>, is<Key>         are the instance variables that both turn to next, unless the
//                                            class answers NO to accessInstanceVariablesDirectly.
//
// Operations that begin or end an object's life read no value: retain, release, autorelease, dealloc, alloc,
// new, copy, mutableCopy and initialisers.
//
// A value that is no object goes in and out as a number. Values that are neither (structures, pointers)
// cannot be reached, nor can what a class of the platform keeps in C++.
#pragma once

#include "TessarinPlatform/NSMutableDictionary.h"
#include "platform/embedded/runtime/BuiltInClass.h"

#include <vector>

namespace tessarin::embedded {

class EnteredItems;

// The rows of NSObject's table.
std::vector<MethodRow> keyValueCodingMethods();

// The operation that answers an object's value for a key, where reading the value is no more than sending it:
// null for a path of keys, for values that are no objects, and where a class reads keys in its own way.
SEL directAccessor(NSObject object, NSString key);

// The value of an object at a path of keys: its own, where its class reads paths in its own way. `entered`
// counts what the operators of a path that led here have gone through.
id valueAtKeyPath(NSObject object, NSString path, EnteredItems* entered);

// What containers do instead. A key that begins with "@" is the container's own: @count is its count. The
// operators that go on with a path are in KeyPathOperators.h.
//
// An array answers the values of its items, NSNull for nil, and passes on what it is given; so do the arrays
// in it, to any depth. One that contains itself raises NSInvalidArgumentException.
id valueForKeyOfItems(NSArray self, SEL, NSString key);
void setValueForKeyOfItems(NSArray self, SEL, NSObject value, NSString key);
// A dictionary answers the object of the key; nil, as a value, removes it.
id valueForKeyOfDictionary(NSDictionary self, SEL, NSString key);
void setValueForKeyOfDictionary(NSMutableDictionary self, SEL, NSObject value, NSString key);

} // namespace tessarin::embedded
