#import "ByHand.h"

#import <Foundation/Foundation.h>

#include <stdlib.h>

void* mergedByHand(void* present, void* other) {
    NSMutableArray* merged = [NSMutableArray arrayWithArray:(NSArray*)present];
    NSMutableSet* contained = [NSMutableSet setWithArray:(NSArray*)present];
    for (id object in (NSArray*)other) {
        if ([contained containsObject:object]) continue;
        [contained addObject:object];
        [merged addObject:object];
    }
    return [[merged copy] autorelease];
}

void* remainingByHand(void* present, void* other) {
    NSSet* removed = [NSSet setWithArray:(NSArray*)other];
    NSMutableArray* remaining = [NSMutableArray array];
    for (id object in (NSArray*)present)
        if (![removed containsObject:object]) [remaining addObject:object];
    return [[remaining copy] autorelease];
}

static NSDictionary* firstPositions(NSArray* array) {
    NSMutableDictionary* positions = [NSMutableDictionary dictionaryWithCapacity:[array count]];
    NSUInteger position = 0;
    for (id object in array) {
        if (![positions objectForKey:object])
            [positions setObject:[NSNumber numberWithUnsignedInteger:position] forKey:object];
        ++position;
    }
    return positions;
}

void* indexesByHand(void* present, void* searched) {
    const NSUInteger count = [(NSArray*)present count];
    NSDictionary* positions = firstPositions((NSArray*)present);
    // An index set takes long for indexes that do not ascend.
    BOOL* isFound = calloc(count, sizeof(BOOL));
    for (id object in (NSArray*)searched)
        isFound[[[positions objectForKey:object] unsignedIntegerValue]] = YES;
    NSMutableIndexSet* indexes = [NSMutableIndexSet indexSet];
    NSUInteger index;
    for (index = 0; index < count; ++index)
        if (isFound[index]) [indexes addIndex:index];
    free(isFound);
    return [[indexes copy] autorelease];
}
