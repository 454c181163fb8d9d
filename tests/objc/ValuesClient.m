// Sends what there is for unique indexes and transformed values.
#import "Checks.h"
#import "Client.h"

#import "TessarinFoundation/TessarinFoundation.h"

// A class of the application, compiled against the library's.
@interface ChannelNumbers : TSSRUniqueIndexer {
    NSUInteger lockCount;
}
- (NSUInteger)lockCount;
- (BOOL)keepsItsVariables;
@end

@implementation ChannelNumbers
- (void)lock {
    ++lockCount;
    [super lock];
}
- (NSUInteger)lockCount {
    return lockCount;
}
- (BOOL)keepsItsVariables {
    return tsrpriv_usedIndexes == [self usedIndexes] && tsrpriv_freedIndexes == [self freedIndexes] &&
           [tsrpriv_lock isKindOfClass:[NSLock class]] && tsrpriv_shouldLock == [self shouldLock];
}
@end

static void checkUniqueIndexer(void) {
    TSSRUniqueIndexer *indexer = [[TSSRUniqueIndexer alloc] init];
    CHECK([indexer firstAvailableIndex] == NSNotFound);
    CHECK([indexer availableIndexesOfCount:3] == nil);
    CHECK([indexer registerIndex:4] == 4);
    CHECK([indexer registerIndex:4] == 5);
    CHECK([indexer registerIndex:-1] == 6);
    CHECK([indexer freeIndex:5] == YES);
    CHECK([indexer freeIndex:5] == NO);
    CHECK([indexer firstUsedIndex] == 4);
    CHECK([indexer lastUsedIndex] == 6);
    CHECK([indexer firstAvailableIndex] == 5);
    CHECK([[indexer availableIndexesOfCount:9] isEqual:[NSIndexSet indexSetWithIndex:5]]);
    CHECK([[indexer freedIndexes] containsIndex:5]);
    CHECK([[indexer usedIndexes] count] == 2);
    CHECK([indexer shouldLock] == YES);
    [indexer lock];
    [indexer unlock];
    [indexer freeAllIndexes];
    [indexer setShouldLock:NO];
    CHECK([indexer shouldLock] == NO);
    CHECK_RAISES(NSInvalidArgumentException, [indexer registerIndex:NSNotFound]);
    [indexer release];

    ChannelNumbers *numbers = [[ChannelNumbers alloc] init];
    CHECK([numbers keepsItsVariables]);
    CHECK([numbers lockCount] == 0);
    CHECK([numbers registerIndex:0] == 0);
    CHECK([numbers registerIndex:0] == 1);
    CHECK([numbers lockCount] == 3);
    [numbers setShouldLock:NO];
    CHECK([numbers keepsItsVariables]);
    [numbers release];
}

@interface GainValue : TSSRTransformedValue {
    int reads;
}
- (int)reads;
@end

@implementation GainValue
- (id)transformedValue {
    ++reads;
    return [super transformedValue];
}
- (int)reads {
    return reads;
}
@end

static void checkTransformedValues(void) {
    NSNumber *five = [NSNumber numberWithInt:5];
    TSSRTransformedValue *value = [TSSRTransformedValue transformedValueWithClass:[NSNumber class]
                                                                            value:five];
    CHECK([value valueClass] == [NSNumber class] && [value transformedValue] == five);
    CHECK_TEXT([value description], @"5");
    CHECK_TEXT([value completeDescription], @"Transformed value '5' of class 'NSNumber'.");
    CHECK([value boolValue] && [value integerValue] == 5 && [value intValue] == 5);
    CHECK([value longLongValue] == 5 && [value floatValue] == 5.0F && [value doubleValue] == 5.0);
    CHECK([value objectValue] == five);
    CHECK([value conformsToProtocol:@protocol(NSCoding)] && [value conformsToProtocol:@protocol(NSCopying)]);

    NSData *archive = [NSKeyedArchiver archivedDataWithRootObject:value];
    TSSRTransformedValue *decoded = [NSKeyedUnarchiver unarchiveObjectWithData:archive];
    CHECK_TEXT((NSString *)[decoded valueClass], @"NSNumber");
    CHECK([decoded transformedValue] == nil);

    GainValue *gain = [[GainValue alloc] initWithClass:Nil value:five];
    CHECK([gain intValue] == 5);
    CHECK([gain reads] == 2);
    GainValue *copy = [gain copy];
    CHECK([copy isKindOfClass:[GainValue class]]);
    CHECK([copy valueClass] == [GainValue class]);
    CHECK([[copy transformedValue] isEqual:five]);
    [copy release];
    [gain release];
}

void checkValues(void) {
    checkUniqueIndexer();
    checkTransformedValues();
}
