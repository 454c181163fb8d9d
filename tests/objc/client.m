// An application in plain Objective-C: sends every operation and calls every function of the public headers.
#import "Checks.h"

#import "TessarinFoundation/TessarinFoundation.h"
#import "TessarinPlatform/AudioComponent.h"
#import "TessarinPlatform/FourCharacterCodes.h"
#import "TessarinPlatform/PercentEscapes.h"

#import <AppKit/NSApplication.h>
#import <AppKit/NSCell.h>
#import <AppKit/NSMenuItem.h>
#import <AppKit/NSScroller.h>

#include <string.h>

static void checkPaths(void) {
    CHECK_TEXT([@"/Users/x/Music/a.wav" tessarin_pathRelativeToDirectory:@"/Users/x"], @"Music/a.wav");
    CHECK_TEXT([@"/x/y" tessarin_pathRelativeToDirectory:@"/a/b"], @"../../x/y");
    NSString *relative = @"relative";
    CHECK([relative tessarin_pathRelativeToDirectory:@"/a"] == relative);
    CHECK([relative tessarin_pathRelativeToDirectory:nil] == relative);
    CHECK_RAISES(NSRangeException, [@"/A/b/c" tessarin_pathRelativeToDirectory:@"/a/b"]);

    NSArray *paths = [NSArray arrayWithObjects:@"/a/b/x", @"/a/c/y", nil];
    CHECK_TEXT([NSString tessarin_parentDirectoryForPaths:paths], @"/a");
    NSMutableString *editable = (NSMutableString *)[NSMutableString tessarin_parentDirectoryForPaths:paths];
    [editable appendString:@"/d"];
    CHECK_TEXT(editable, @"/a/d");
    CHECK([NSString tessarin_parentDirectoryForPaths:nil] == nil);
    CHECK([NSString tessarin_parentDirectoryForPaths:[NSArray arrayWithObject:[NSNumber numberWithInt:1]]]
          == nil);
}

static void checkKeyPathsAndTrimming(void) {
    NSString *gain = @"gain";
    CHECK_TEXT(([NSString tessarin_keyPathWithComponents:@"track", @"effect", gain, nil]),
               @"track.effect.gain");
    CHECK_TEXT(([NSString tessarin_keyPathWithComponents:@"a", nil]), @"a");
    CHECK_TEXT(([NSString tessarin_keyPathWithComponents:@"a", @"", @"b", nil]), @"a..b");
    CHECK(([NSString tessarin_keyPathWithComponents:nil, nil] == nil));

    NSCharacterSet *slashes = [NSCharacterSet characterSetWithCharactersInString:@"/"];
    CHECK_TEXT([@"///a/b" tessarin_stringByTrimmingLeadingCharactersInSet:slashes], @"a/b");
    CHECK_TEXT([@"///" tessarin_stringByTrimmingLeadingCharactersInSet:slashes], @"");
}

static NSString *sizeString(Class receiver, unsigned long long size, UInt16 unit, BOOL longUnit) {
    return [receiver tessarin_stringWithFileSize:[NSNumber numberWithUnsignedLongLong:size]
                                          ofUnit:unit
                                    forPrecision:1
                                        longUnit:longUnit
                                  separateSuffix:YES];
}

static void checkQuantities(void) {
    CHECK_TEXT(sizeString([NSString class], 1536, 65535, NO), @"1.5 kB");
    CHECK_TEXT(sizeString([NSString class], 1536, 65535, YES), @"1.5 kilobyte");
    CHECK_TEXT(sizeString([NSString class], 1, 10, NO), @"0 kiloB");
    CHECK_RAISES(NSRangeException, sizeString([NSString class], 1, 18, NO));
    NSMutableString *editable = (NSMutableString *)sizeString([NSMutableString class], 1, 0, NO);
    [editable appendString:@"!"];
    CHECK_TEXT(editable, @"1 B!");

    CHECK_TEXT([NSString tessarin_timeStringWithSeconds:61], @"1 : 01");
    CHECK_TEXT([NSMutableString tessarin_timeStringWithSeconds:3660], @"1 : 01 : 00");
    CHECK_TEXT([NSString tessarin_timeStringWithSeconds:3600000], @"999:59:59");
}

static void checkFileNames(void) {
    CHECK([[NSString tessarin_fileNameIllegalCharacters] characterIsMember:'.']);
    CHECK(![[NSString tessarin_fileNameReservedCharacters] characterIsMember:'.']);
    CHECK([[NSString tessarin_fileNameReservedCharacters] characterIsMember:' ']);
    CHECK_TEXT([NSString tessarin_escapingFileNameCharacter], @"-");
    CHECK([@"a/b" tesarin_containsFileNameIllegalCharacters]);
    CHECK(![@"a b" tesarin_containsFileNameIllegalCharacters]);
    CHECK([@"a b" tessarin_containsFileNameReservedCharacters]);
    CHECK(![@"a.b" tessarin_containsFileNameReservedCharacters]);
    CHECK_TEXT([@"a/b:c.wav" tessarin_fileNameByReplacingIllegalCharacters], @"a-b-c-wav");

    NSString *clean = @"clean";
    CHECK([clean tessarin_fileNameByReplacingIllegalCharacters] == clean);
    CHECK([clean tessarin_fileNameByAddingPercentEscapesUsingEncoding:0] == clean);
    CHECK_TEXT([@"a b" tessarin_fileNameByAddingPercentEscapesUsingEncoding:NSUTF8StringEncoding], @"a%20b");
    CHECK([@"a b" tessarin_fileNameByAddingPercentEscapesUsingEncoding:0] == nil);
    CHECK_TEXT([@"a%20b" tessarin_fileNameByReplacingPercentEscapesUsingEncoding:NSUTF8StringEncoding],
               @"a b");
    CHECK([@"100%" tessarin_fileNameByReplacingPercentEscapesUsingEncoding:NSUTF8StringEncoding] == nil);

    CHECK(CFStringConvertNSStringEncodingToEncoding(NSUTF8StringEncoding) == kCFStringEncodingUTF8);
    CHECK(CFStringConvertNSStringEncodingToEncoding(0) == kCFStringEncodingInvalidId);
    NSString *dash = CFStringCreateWithCString(kCFAllocatorDefault, "-", kCFStringEncodingUTF8);
    CHECK_TEXT(dash, @"-");
    [dash release];
    NSString *escaped = CFURLCreateStringByAddingPercentEscapes(kCFAllocatorDefault, @"a b/c", nil, @"/",
                                                                kCFStringEncodingUTF8);
    CHECK_TEXT(escaped, @"a%20b%2Fc");
    NSString *replaced = CFURLCreateStringByReplacingPercentEscapesUsingEncoding(kCFAllocatorDefault, escaped,
                                                                                 @"", kCFStringEncodingUTF8);
    CHECK_TEXT(replaced, @"a b/c");
    [escaped release];
    [replaced release];
}

static void checkURLsAndFileManagers(void) {
    NSURL *file = [NSURL fileURLWithPath:@"/a/b/c"];
    NSURL *relative = [file tessarin_fileURLRelativeToFileURL:[NSURL fileURLWithPath:@"/a/b"]];
    CHECK([relative isFileURL]);
    CHECK_TEXT([[relative path] lastPathComponent], @"c");
    CHECK([file tessarin_fileURLRelativeToFileURL:nil] == nil);
    CHECK([file tessarin_fileURLRelativeToFileURL:[NSURL URLWithString:@"http://x/a"]] == nil);

    NSFileManager *first = [NSFileManager tessarin_fileManager];
    CHECK(first != nil && first != [NSFileManager tessarin_fileManager]);
    CHECK(first != [NSFileManager defaultManager]);
}

static void checkStreamFormats(void) {
    AudioStreamBasicDescription format = {44100.0, 0x6c70636d, 12, 4, 1, 4, 2, 16, 7};
    NSArray *array = TSSRArrayFromASBD(format);
    CHECK([array count] == 9);
    CHECK([[array objectAtIndex:0] doubleValue] == 44100.0);
    CHECK([[array objectAtIndex:1] unsignedLongValue] == 1819304813UL);
    AudioStreamBasicDescription back = TSSRASBDFromArray(array);
    CHECK(memcmp(&format, &back, sizeof format) == 0);
    CHECK_RAISES(NSRangeException, TSSRASBDFromArray([NSArray array]));
    CHECK(TSSRASBDFromArray(nil).mSampleRate == 0.0);
}

static void checkParameterDescriptions(void) {
    AudioUnitParameterInfo information;
    memset(&information, 0, sizeof information);
    information.unitName = @"dB";
    information.cfNameString = @"Gain";
    information.clumpID = 3;
    information.minValue = -96.0F;
    information.maxValue = 12.0F;
    NSArray *written = TSSRArrayFromAudioUnitParameterInfo(information);
    CHECK([written count] == 8);
    CHECK([written objectAtIndex:1] == information.cfNameString);
    CHECK_RAISES(NSInvalidArgumentException, TSSRAudioUnitParameterInfoFromArray(written));

    NSNumber *one = [NSNumber numberWithInt:1];
    NSArray *readable = [NSArray arrayWithObjects:@"dB", one, @"Gain", one, one, one, one, one, nil];
    AudioUnitParameterInfo read = TSSRAudioUnitParameterInfoFromArray(readable);
    CHECK_TEXT(read.unitName, @"dB");
    CHECK_TEXT(read.cfNameString, @"Gain");
    CHECK(read.clumpID == 1 && read.unit == 1 && read.flags == 1 && read.maxValue == 1.0F);
    [read.unitName release];
    [read.cfNameString release];
}

static void checkComponentIdentity(void) {
    AudioComponentDescription delay = {0x61756678, 0x64656c79, 0x41636d65, 0, 0};
    NSString *line = TSSRIdentifierStringFromAudioComponentDescriptionAndManufacturer(delay, @"Acme");
    CHECK_TEXT(line, @"Acme: aufx; dely; Acme");

    NSString *manufacturer = nil;
    AudioComponentDescription read = TSSRAudioComponentDescriptionFromIdentifierString(line, &manufacturer);
    CHECK_TEXT(manufacturer, @"Acme");
    [manufacturer release];
    CHECK(TSSREqualAudioComponentDescriptions(delay, read));
    read.componentSubType = 0;
    CHECK(!TSSREqualAudioComponentDescriptions(delay, read));

    AudioComponent component = AudioComponentRegister(&delay, @"  Acme :  Delay  ", 0x10000, NULL);
    CHECK(AudioComponentCount(&delay) == 1);
    CHECK(AudioComponentFindNext(NULL, &delay) == component);
    CHECK_TEXT(TSSRGetAudioComponentName(component, &manufacturer), @"Delay");
    CHECK_TEXT(manufacturer, @"Acme");
    [manufacturer release];
    CHECK(TSSRGetAudioComponentName(NULL, NULL) == nil);

    NSString *type = UTCreateStringForOSType(delay.componentType);
    CHECK_TEXT(type, @"aufx");
    CHECK(UTGetOSTypeFromString(type) == delay.componentType);
    [type release];

    CHECK_TEXT(TSSRErrorDomain, @"Tessarin Error Domain");
}

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

// The display that the program is started on. No window manager runs there, so GNUstep draws title bars
// itself.
static void openDisplay(void) {
    NSDictionary *settings = [NSDictionary dictionaryWithObject:@"NO"
                                                         forKey:@"GSX11HandlesWindowDecorations"];
    [[NSUserDefaults standardUserDefaults] registerDefaults:settings];
    [NSApplication sharedApplication];
}

static NSWindow *newWindow(NSRect content, NSUInteger style) {
    return [[NSWindow alloc] initWithContentRect:content
                                       styleMask:style
                                         backing:NSBackingStoreBuffered
                                           defer:NO];
}

static void checkWindows(void) {
    NSWindow *window = newWindow(NSMakeRect(100, 500, 400, 300), NSBorderlessWindowMask);
    NSView *view = [[NSView alloc] initWithFrame:NSMakeRect(0, 0, 400, 500)];
    [window orderFront:nil];
    CHECK(NSEqualPoints([window tessarin_topLeftPoint], NSMakePoint(100, 800)));
    CHECK(NSEqualPoints([window tessarin_convertBaseToScreen:NSMakePoint(5, 5)], NSMakePoint(105, 505)));
    CHECK(NSEqualRects([window tessarin_frameRectForContentView:view], NSMakeRect(100, 300, 400, 500)));
    CHECK(NSEqualRects([window tessarin_frameRectForContentView:nil], NSMakeRect(100, 800, 0, 0)));
    [window setFrame:NSMakeRect(100, 100, 400, 300) display:YES];
    CHECK(NSEqualRects([window tessarin_frameRectForContentView:view], NSMakeRect(100, 0, 400, 500)));
    [view setFrameSize:NSMakeSize(400, 1000)]; // the screen is 900 points high
    CHECK(NSEqualRects([window tessarin_frameRectForContentView:view], NSMakeRect(100, -100, 400, 1000)));
    [window orderOut:nil];
    [view release];
    [window release];
}

static void checkViews(void) {
    NSWindow *window = newWindow(NSMakeRect(100, 100, 300, 200), NSTitledWindowMask);
    NSView *view = [[NSView alloc] initWithFrame:NSMakeRect(0, 0, 50, 40)];
    [[window contentView] addSubview:view];
    [window orderFront:nil];
    [view tessarin_setFrameTopLeftPoint:NSMakePoint(0, 100)];
    CHECK(NSEqualRects([view frame], NSMakeRect(0, 60, 50, 40)));
    [view tessarin_setFrameWithOriginAtTopLeft:NSMakeRect(10, 190, 80, 24)];
    CHECK(NSEqualRects([view frame], NSMakeRect(10, 166, 80, 24)));
    [window orderOut:nil];
    [view release];
    [window release];
}

static void checkScrollViews(void) {
    NSScrollView *view = [[NSScrollView alloc] initWithFrame:NSMakeRect(0, 0, 200, 100)];
    CHECK(![view tessarin_isHorizontalScrollerVisible]);
    [view setHasVerticalScroller:YES];
    CHECK([view tessarin_isVerticalScrollerVisible]);
    CHECK(![view tessarin_isHorizontalScrollerVisible]);
    [view setHasHorizontalScroller:YES];
    CHECK([view tessarin_isHorizontalScrollerVisible]);
    [[view verticalScroller] setHidden:YES];
    CHECK(![view tessarin_isVerticalScrollerVisible]);
    [view setHidden:YES];
    CHECK(![view tessarin_isHorizontalScrollerVisible]);
    [view release];
}

static void checkSortDescriptors(void) {
    NSSortDescriptor *byName =
        [[[NSSortDescriptor alloc] initWithKey:@"name"
                                     ascending:NO
                                      selector:@selector(caseInsensitiveCompare:)] autorelease];
    NSDictionary *configuration = [byName tessarin_configuration];
    CHECK([configuration count] == 3);
    CHECK_TEXT([configuration objectForKey:@"keypath"], @"name");
    CHECK([[configuration objectForKey:@"ascending"] integerValue] == 0);
    CHECK_TEXT([configuration objectForKey:@"selector"], @"caseInsensitiveCompare:");
    CHECK([[NSSortDescriptor tessarin_sortDescriptorWithConfiguration:configuration] isEqual:byName]);

    NSSortDescriptor *allocated = [NSSortDescriptor alloc];
    NSSortDescriptor *refused = [allocated tessarin_initWithConfiguration:nil];
    CHECK(refused == allocated && [refused key] == nil && [refused selector] == NULL);
    NSSortDescriptor *made = [refused
        tessarin_initWithConfiguration:[NSDictionary dictionaryWithObjectsAndKeys:@"name", @"keypath", @"YES",
                                                                                  @"ascending", nil]];
    CHECK_TEXT([made key], @"name");
    CHECK([made ascending]);
    CHECK_TEXT(NSStringFromSelector([made selector]), @"compare:");
    [made release];
}

static void checkMenus(void) {
    NSMenu *menu = [[[NSMenu alloc] initWithTitle:@"menu"] autorelease];
    NSMenu *submenu = [[[NSMenu alloc] initWithTitle:@"submenu"] autorelease];
    CHECK([menu tessarin_indexOfSeparatorItem] == -1);
    [menu addItemWithTitle:@"A" action:NULL keyEquivalent:@""];
    [menu addItem:[NSMenuItem separatorItem]];
    [menu addItemWithTitle:@"B" action:NULL keyEquivalent:@""];
    [submenu addItemWithTitle:@"C" action:NULL keyEquivalent:@""];
    [menu setSubmenu:submenu forItem:[menu itemAtIndex:2]];
    CHECK([menu tessarin_indexOfSeparatorItem] == 1);
    [menu tessarin_setStateOfAllItems:NSOnState];
    CHECK([[menu itemAtIndex:0] state] == NSOnState && [[menu itemAtIndex:1] state] == NSOnState);
    CHECK([[menu itemAtIndex:2] state] == NSOffState && [[submenu itemAtIndex:0] state] == NSOnState);
}

static void checkAttributedStrings(void) {
    NSDictionary *bold = [NSDictionary dictionaryWithObject:@"bold" forKey:@"weight"];
    NSAttributedString *gain = [NSAttributedString tessarin_attributedStringWithString:@"Gain"
                                                                            attributes:bold];
    CHECK_TEXT([gain string], @"Gain");
    CHECK([[gain attributesAtIndex:3 effectiveRange:NULL] isEqual:bold]);
    NSAttributedString *immutable = [NSMutableAttributedString tessarin_attributedStringWithString:@"Gain"
                                                                                        attributes:nil];
    CHECK(![immutable isKindOfClass:[NSMutableAttributedString class]]);
    CHECK_RAISES(NSInvalidArgumentException, [NSAttributedString tessarin_attributedStringWithString:nil
                                                                                          attributes:bold]);
}

static void checkColors(void) {
    NSColor *red = [NSColor colorWithCalibratedRed:1 green:0 blue:0 alpha:1];
    CHECK_TEXT([red tessarin_hexadecimalRGBStringWithAlpha:NO], @"FF0000");
    CHECK_TEXT([red tessarin_hexadecimalRGBStringWithAlpha:YES], @"FF0000FF");
    NSColor *read = [NSColor tessarin_colorWithHexadecimalRGBAString:@"FF0000"];
    CHECK([read redComponent] == 0 && [read greenComponent] == 1 && [read alphaComponent] == 0);
    CHECK([[NSColor tessarin_colorWithHexadecimalRGBAString:@"0xFF0000FF"] isEqual:red]);
    CHECK([NSColor tessarin_colorWithHexadecimalRGBAString:nil] == nil);
    CHECK_TEXT([[NSColor colorWithDeviceWhite:1 alpha:1] tessarin_hexadecimalRGBStringWithAlpha:NO],
               @"FFFFFF");

    NSColor *green = [NSColor colorWithCalibratedRed:0 green:1 blue:0 alpha:0.5];
    NSDictionary *configuration = [green tessarin_configuration];
    CHECK([configuration count] == 4);
    CHECK([[configuration objectForKey:@"Hue"] floatValue] == 119.666664F);
    CHECK([[configuration objectForKey:@"Alpha"] floatValue] == 50.0F);
    CHECK([[NSColor tessarin_colorWithConfiguration:configuration] alphaComponent] == 0.5);
    NSColor *hue = [NSColor tessarin_colorWithConfiguration:[NSDictionary dictionaryWithObject:@"180"
                                                                                        forKey:@"Hue"]];
    CHECK([hue hueComponent] == 180.0 / 359.0 && [hue brightnessComponent] == 0);
    CHECK([[NSColor tessarin_colorWithConfiguration:nil] alphaComponent] == 0);
}

@interface DescribedValue : NSObject
- (id)configuration;
@end
@implementation DescribedValue
- (id)configuration {
    return [NSDictionary dictionaryWithObject:@"value" forKey:@"key"];
}
@end

static void checkPropertyLists(void) {
    Class serialization = [NSPropertyListSerialization class];
    NSArray *list = [NSArray arrayWithObject:[NSDictionary dictionary]];
    CHECK([serialization tessarin_propertyListForValue:list] == list);
    CHECK([serialization tessarin_propertyListForValue:nil] == nil);
    CHECK([serialization tessarin_propertyListForValue:[NSNull null]] == nil);
    DescribedValue *value = [[[DescribedValue alloc] init] autorelease];
    CHECK_TEXT([[serialization tessarin_propertyListForValue:value] objectForKey:@"key"], @"value");

    NSError *error = nil;
    NSMutableArray *copy = [serialization tessarin_propertyListWithMutableContainers:list error:&error];
    [[copy objectAtIndex:0] setObject:@"value" forKey:@"key"];
    [copy addObject:@"more"];
    CHECK([copy count] == 2 && [list count] == 1 && error == nil);
    copy = [serialization tessarin_propertyListWithMutableContainers:[NSNull null] error:&error];
    CHECK(copy == nil && [error code] == 3851);
    CHECK([serialization tessarin_propertyListWithMutableContainers:nil error:NULL] == nil);
}

int main(void) {
    NSAutoreleasePool *pool = [[NSAutoreleasePool alloc] init];
    openDisplay();
    checkPaths();
    checkKeyPathsAndTrimming();
    checkQuantities();
    checkFileNames();
    checkURLsAndFileManagers();
    checkStreamFormats();
    checkParameterDescriptions();
    checkComponentIdentity();
    checkUniqueIndexer();
    checkArrays();
    checkSearchesInArrays();
    checkMutableArraysAndDictionaries();
    checkPropertyLists();
    checkTransformedValues();
    checkWindows();
    checkViews();
    checkScrollViews();
    checkSortDescriptors();
    checkMenus();
    checkAttributedStrings();
    checkColors();
    const int exitCode = closeChecks();
    [pool release];
    return exitCode;
}
