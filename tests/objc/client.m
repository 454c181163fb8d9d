// An application in plain Objective-C: sends every operation and calls every function of the public headers.
#import "Checks.h"

#import "TessarinFoundation/TessarinFoundation.h"
#import "TessarinPlatform/AudioComponent.h"
#import "TessarinPlatform/FourCharacterCodes.h"

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

int main(void) {
    NSAutoreleasePool *pool = [[NSAutoreleasePool alloc] init];
    checkPaths();
    checkKeyPathsAndTrimming();
    checkQuantities();
    checkURLsAndFileManagers();
    checkStreamFormats();
    checkParameterDescriptions();
    checkComponentIdentity();
    checkTransformedValues();
    const int exitCode = closeChecks();
    [pool release];
    return exitCode;
}
