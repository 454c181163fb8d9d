// Arrays: merging, removal and filtering into new arrays, safe access, and searches.
//
// Equality is the platform's isEqual:, identity being the same object; each operation says which of the two
// it goes by. The receiver is never changed. New arrays are immutable and autoreleased. There is no lock: the
// operations are as safe on several threads as reading the arrays is. What the platform raises passes
// through, NSGenericException for an array that is changed while it is walked among it.
//
// A nil receiver answers nil, or NO. What a nil argument means is said at each operation; a nil array is an
// empty one everywhere.
#pragma once

#include "TessarinPlatform/detail/LibraryAnchor.h"

#if defined(__OBJC__)

#    include "TessarinPlatform/ObjectPredicate.h"

#    import <Foundation/NSArray.h>
#    import <Foundation/NSIndexSet.h>
#    import <Foundation/NSString.h>

@interface NSArray (TessarinExtensions)

+ (id)tessarin_arrayWithArray:(NSArray*)array copyItems:(BOOL)copyItems;

- (NSArray*)tessarin_arrayByMergingWithArray:(NSArray*)array receiverFirst:(BOOL)receiverFirst;
- (NSArray*)tessarin_arrayByRemovingObject:(id)object;
- (NSArray*)tessarin_arrayByRemovingObjectIdenticalTo:(id)object;
- (NSArray*)tessarin_arrayWithObjectsPassingTest:(TSSRObjectPredicate)predicate
                                         options:(NSEnumerationOptions)options;
- (NSArray*)tessarin_arrayByRemovingObjectsInArray:(NSArray*)array;

- (id)tessarin_penultimeteObject; // spelled so, which is meant
- (id)tessarin_firstObject;
- (BOOL)tessarin_containsObjectIdenticalTo:(id)object;
- (id)tessarin_objectWithValue:(id)value forKeyPath:(NSString*)keyPath;
- (NSIndexSet*)tessarin_indexesOfObjectsInArray:(NSArray*)array;

@end

#else

#    include "TessarinPlatform/NSArray.h"
#    include "TessarinPlatform/NSIndexSet.h"

// An array of the receiving class (NSArray, unless another is named) of copies of the items, each made by the
// item's copy. They are copied whatever `copyItems` says, which is meant. Empty for a nil array. What the
// platform raises for an item that cannot be copied passes through: NSInvalidArgumentException.
//
//   tessarin_arrayWithArray_copyItems(names, true)
//   tessarin_arrayWithArray_copyItems<NSMutableArray>(names, true)
TESSARIN_EXPORT tessarin::NSArray tessarin_arrayWithArray_copyItems(tessarin::NSArray array, bool copyItems);
TESSARIN_EXPORT tessarin::NSArray tessarin_arrayWithArray_copyItems(tessarin::Class receiver,
                                                                    tessarin::NSArray array, bool copyItems);
template <tessarin::HandleType Receiver>
Receiver tessarin_arrayWithArray_copyItems(tessarin::NSArray array, bool copyItems) {
    return Receiver(static_cast<tessarin::NSObject>(
        tessarin_arrayWithArray_copyItems(Receiver::classObject(), array, copyItems)));
}

// The objects of the one array, all of them, then those of the other that are not among the result yet, by
// equality, each once. The receiver comes first if `receiverFirst`, the argument otherwise. A nil argument is
// empty, so that with `receiverFirst` false the result is the receiver without its later duplicates.
//
//   tessarin_arrayByMergingWithArray_receiverFirst(letters, added, true)    // a b a with b c c d: a b a c d
//   tessarin_arrayByMergingWithArray_receiverFirst(letters, added, false)   // b c c d a
TESSARIN_EXPORT tessarin::NSArray tessarin_arrayByMergingWithArray_receiverFirst(tessarin::NSArray receiver,
                                                                                 tessarin::NSArray array,
                                                                                 bool receiverFirst);

// The receiver without any object that equals the one given, or without every occurrence of that very object.
// The receiver itself, mutable or not, when there is none, and for nil.
//
//   tessarin_arrayByRemovingObject(letters, "x"_ns)   // x y x gives y
TESSARIN_EXPORT tessarin::NSArray tessarin_arrayByRemovingObject(tessarin::NSArray receiver,
                                                                 tessarin::NSObject object);
TESSARIN_EXPORT tessarin::NSArray tessarin_arrayByRemovingObjectIdenticalTo(tessarin::NSArray receiver,
                                                                            tessarin::NSObject object);

// The objects that pass a test, in the order of the receiver whatever the order of the walk. The predicate
// gets an object, its index and a flag that it may set to end the walk. nil for a nil predicate; an empty
// array when nothing passes. The options are the platform's: with NSEnumerationConcurrent the predicate may
// be called on several threads at once. GNUstep 1.28 answers other objects with NSEnumerationReverse, and
// ends the process where the predicate changes the array.
//
//   tessarin_arrayWithObjectsPassingTest_options(
//       names, [](NSString name, NSUInteger, BOOL*) { return name.length() > 3; }, 0)
TESSARIN_EXPORT tessarin::NSArray tessarin_arrayWithObjectsPassingTest_options(
    tessarin::NSArray receiver,
    tessarin::Block<tessarin::BOOL(tessarin::id, tessarin::NSUInteger, tessarin::BOOL*)> predicate,
    tessarin::NSEnumerationOptions options);

// The receiver without the objects that equal any of the array's: another array also when there are none. A
// nil array is empty.
//
//   tessarin_arrayByRemovingObjectsInArray(letters, vowels)   // a b c e a without a e gives b c
TESSARIN_EXPORT tessarin::NSArray tessarin_arrayByRemovingObjectsInArray(tessarin::NSArray receiver,
                                                                         tessarin::NSArray array);

// The last object but one; nil when there are fewer than two. The name is spelled so, which is meant.
//
//   tessarin_penultimeteObject(letters)   // a b c gives b
TESSARIN_EXPORT tessarin::id tessarin_penultimeteObject(tessarin::NSArray receiver);

// The first object; nil for an empty array.
//
//   tessarin_firstObject(letters)   // a b c gives a
TESSARIN_EXPORT tessarin::id tessarin_firstObject(tessarin::NSArray receiver);

// Whether that very object is in the receiver. nil is in none.
//
//   tessarin_containsObjectIdenticalTo(tracks, track)   // an equal track is not enough
TESSARIN_EXPORT bool tessarin_containsObjectIdenticalTo(tessarin::NSArray receiver,
                                                        tessarin::NSObject object);

// The first object whose value at the key path equals the one given, retained and autoreleased; nil when
// there is none. It is the object's value that is asked isEqual:. A value that is nil equals nothing, not
// even nil. A nil key path is the platform's matter. Raises NSUndefinedKeyException, by the objects'
// key-value coding, for a key that one of the objects before the found one does not know.
//
//   tessarin_objectWithValue_forKeyPath(tracks, "drums"_ns, "effect.name"_ns)
TESSARIN_EXPORT tessarin::id tessarin_objectWithValue_forKeyPath(tessarin::NSArray receiver,
                                                                 tessarin::NSObject value,
                                                                 tessarin::NSString keyPath);

// The set of the receiver's lowest indexes of objects that equal the array's: c a on a b c gives 0 2. Objects
// that are equal, or given twice, give one index. Empty for an empty or nil array.
//
// Raises NSInternalInconsistencyException for an object that the receiver does not contain. The reason is the
// text for the key "One or more of passed objects is not contained in receiver." in the bundle of the
// receiver's class, used as a format without arguments; without a translation it is the key.
//
//   tessarin_indexesOfObjectsInArray(tracks, selectedTracks)
TESSARIN_EXPORT tessarin::NSIndexSet tessarin_indexesOfObjectsInArray(tessarin::NSArray receiver,
                                                                      tessarin::NSArray array);

#endif
