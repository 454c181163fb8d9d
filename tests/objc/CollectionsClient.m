// Sends what there is for arrays and dictionaries.
#import "Checks.h"
#import "Client.h"

#import "TessarinFoundation/TessarinFoundation.h"

// A compiler without blocks takes one for a pointer to its structure, which is written out here as such a
// compiler's caller would do it.
#if !__has_feature(blocks)
struct LongerThan {
    void *isa;
    int flags;
    int reserved;
    BOOL (*invoke)(void *, id, NSUInteger, BOOL *);
    const void *descriptor;
    NSUInteger length; // captured
};

static BOOL isLongerThan(void *block, id object, NSUInteger index, BOOL *stop) {
    (void)index;
    *stop = NO;
    return [object length] > ((struct LongerThan *)block) -> length;
}
#endif

static void checkArrays(void) {
    NSArray *abc = [NSArray arrayWithObjects:@"a", @"b", @"c", nil];
    NSArray *xyx = [NSArray arrayWithObjects:@"x", @"y", @"x", nil];

    NSMutableString *editable = [NSMutableString stringWithString:@"a"];
    NSMutableArray *copied = [NSMutableArray tessarin_arrayWithArray:[NSArray arrayWithObject:editable]
                                                           copyItems:NO];
    [editable appendString:@"x"];
    [copied addObject:@"b"];
    CHECK_TEXT([copied componentsJoinedByString:@""], @"ab");

    CHECK_TEXT([[xyx tessarin_arrayByMergingWithArray:abc receiverFirst:YES] componentsJoinedByString:@""],
               @"xyxabc");
    CHECK_TEXT([[xyx tessarin_arrayByMergingWithArray:abc receiverFirst:NO] componentsJoinedByString:@""],
               @"abcxy");
    CHECK_TEXT([[xyx tessarin_arrayByMergingWithArray:nil receiverFirst:NO] componentsJoinedByString:@""],
               @"xy");
    CHECK_TEXT([[xyx tessarin_arrayByRemovingObject:@"x"] componentsJoinedByString:@""], @"y");
    CHECK([xyx tessarin_arrayByRemovingObject:@"z"] == xyx);
    CHECK([xyx tessarin_arrayByRemovingObject:nil] == xyx);
    CHECK([xyx tessarin_arrayByRemovingObjectIdenticalTo:[NSMutableString stringWithString:@"x"]] == xyx);
    CHECK([[xyx tessarin_arrayByRemovingObjectIdenticalTo:[xyx objectAtIndex:0]] count] < 3);
    CHECK_TEXT([[abc tessarin_arrayByRemovingObjectsInArray:xyx] componentsJoinedByString:@""], @"abc");
    CHECK([abc tessarin_arrayByRemovingObjectsInArray:xyx] != abc);

    CHECK([abc tessarin_penultimeteObject] == [abc objectAtIndex:1]);
    CHECK([[NSArray arrayWithObject:@"a"] tessarin_penultimeteObject] == nil);
    CHECK([abc tessarin_firstObject] == [abc objectAtIndex:0]);
    CHECK([[NSArray array] tessarin_firstObject] == nil);
    CHECK([abc tessarin_containsObjectIdenticalTo:[abc objectAtIndex:2]]);
    CHECK(![abc tessarin_containsObjectIdenticalTo:[NSMutableString stringWithString:@"c"]]);
}

static void checkSearchesInArrays(void) {
    NSArray *words = [NSArray arrayWithObjects:@"one", @"three", @"two", @"four", nil];
    CHECK([words tessarin_arrayWithObjectsPassingTest:NULL options:0] == nil);
#if __has_feature(blocks)
    TSSRObjectPredicate isLong = ^BOOL(id object, NSUInteger index, BOOL *stop) {
      (void)index;
      *stop = NO;
      return [object length] > 3;
    };
#else
    struct LongerThan longerThan = {NULL, 0, 0, isLongerThan, NULL, 3};
    TSSRObjectPredicate isLong = (TSSRObjectPredicate)(void *)&longerThan;
#endif
    CHECK_TEXT([[words tessarin_arrayWithObjectsPassingTest:isLong options:0] componentsJoinedByString:@" "],
               @"three four");

    NSNumber *four = [NSNumber numberWithInt:4];
    CHECK_TEXT([words tessarin_objectWithValue:four forKeyPath:@"length"], @"four");
    CHECK([words tessarin_objectWithValue:nil forKeyPath:@"length"] == nil);
    CHECK_RAISES(NSUndefinedKeyException, [words tessarin_objectWithValue:four forKeyPath:@"nope"]);

    NSArray *chosen = [NSArray arrayWithObjects:@"two", @"one", @"two", nil];
    NSIndexSet *indexes = [words tessarin_indexesOfObjectsInArray:chosen];
    CHECK([indexes count] == 2 && [indexes firstIndex] == 0 && [indexes lastIndex] == 2);
    CHECK_RAISES(NSInternalInconsistencyException,
                 [words tessarin_indexesOfObjectsInArray:[NSArray arrayWithObject:@"five"]]);
}

static void checkMutableArraysAndDictionaries(void) {
    NSMutableArray *letters = [NSMutableArray arrayWithObjects:@"a", @"b", @"c", @"d", nil];
    [letters tessarin_moveObjectFromIndex:0 toIndex:2];
    CHECK_TEXT([letters componentsJoinedByString:@""], @"bcad");
    [letters tessarin_moveObjectFromIndex:0 toIndex:9];
    [letters tessarin_removeFirstObject];
    [letters tessarin_removeLastObject];
    CHECK_TEXT([letters componentsJoinedByString:@""], @"ca");
    [letters tessarin_mergeWithArray:[NSArray arrayWithObjects:@"a", @"b", @"b", nil]];
    CHECK_TEXT([letters componentsJoinedByString:@""], @"cab");
    [letters tessarin_shuffle];
    CHECK_TEXT([[letters sortedArrayUsingSelector:@selector(compare:)] componentsJoinedByString:@""], @"abc");
    NSMutableString *editable = [NSMutableString stringWithString:@"a"];
    [letters tessarin_setArray:[NSArray arrayWithObject:editable] copyItems:NO];
    [editable appendString:@"x"];
    CHECK_TEXT([letters componentsJoinedByString:@""], @"a");
    [letters tessarin_setArray:nil copyItems:YES];
    [letters tessarin_removeFirstObject];
    [letters tessarin_removeLastObject];
    CHECK([letters count] == 0);

    NSDictionary *numbers = [NSDictionary dictionaryWithObjectsAndKeys:@"2", @"b", @"1", @"a", nil];
    CHECK_TEXT([[numbers tessarin_allValuesSortedByKeys] componentsJoinedByString:@""], @"12");
    CHECK([[numbers tessarin_dictionaryByRemovingObjectForKey:@"a"] count] == 1);
    CHECK([numbers count] == 2);
}

void checkCollections(void) {
    checkArrays();
    checkSearchesInArrays();
    checkMutableArraysAndDictionaries();
}
