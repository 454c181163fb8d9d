// Mutable arrays: edits in place.
//
// No operation raises on its own; what the platform raises passes through, for instance when an argument is
// changed while it is walked. There is no lock: nothing else may use the receiver during an edit.
// Nothing is done for a nil receiver.
#pragma once

#include "TessarinPlatform/detail/LibraryAnchor.h"

#if defined(__OBJC__)

#    import <Foundation/NSArray.h>

@interface NSMutableArray (TessarinExtensions)

- (void)tessarin_setArray:(NSArray*)array copyItems:(BOOL)copyItems;
- (void)tessarin_removeFirstObject;
- (void)tessarin_removeLastObject;
- (void)tessarin_moveObjectFromIndex:(NSUInteger)from toIndex:(NSUInteger)to;
- (void)tessarin_mergeWithArray:(NSArray*)array;
- (void)tessarin_shuffle;

@end

#else

#    include "TessarinPlatform/NSMutableArray.h"

// Replaces the items by copies of the array's. They are copied whatever `copyItems` says, which is meant. A
// nil array leaves the receiver empty, and so does the receiver itself. What the platform raises for an item
// that cannot be copied passes through, NSInvalidArgumentException; the receiver then holds the copies made
// before it.
//
//   tessarin_setArray_copyItems(names, chosen, true)
TESSARIN_EXPORT void tessarin_setArray_copyItems(tessarin::NSMutableArray receiver, tessarin::NSArray array,
                                                 bool copyItems);

// Removes the object at the one end or the other. An empty receiver stays empty; nothing is raised.
//
//   tessarin_removeFirstObject(queue)
TESSARIN_EXPORT void tessarin_removeFirstObject(tessarin::NSMutableArray receiver);
TESSARIN_EXPORT void tessarin_removeLastObject(tessarin::NSMutableArray receiver);

// Moves an object, so that it ends at the index `to` and the others keep their order. Nothing is done, and
// nothing raised, when an index is not one of the receiver's.
//
//   tessarin_moveObjectFromIndex_toIndex(letters, 0, 2)   // a b c d becomes b c a d
TESSARIN_EXPORT void tessarin_moveObjectFromIndex_toIndex(tessarin::NSMutableArray receiver,
                                                          tessarin::NSUInteger from, tessarin::NSUInteger to);

// Appends, in order, each object of the array that the receiver does not contain yet, by equality. Of equal
// objects in the array the first is taken; those that the receiver has already are left alone. A nil array
// adds nothing, and nor does the receiver itself.
//
//   tessarin_mergeWithArray(letters, added)   // a a with b a b becomes a a b
TESSARIN_EXPORT void tessarin_mergeWithArray(tessarin::NSMutableArray receiver, tessarin::NSArray array);

// Puts the objects in a random order, by exactly as many exchanges as there are objects. The draws of 32 bits
// are taken modulo what is left, without rejecting any, which is meant.
//
//   tessarin_shuffle(playlist)
TESSARIN_EXPORT void tessarin_shuffle(tessarin::NSMutableArray receiver);

#endif
