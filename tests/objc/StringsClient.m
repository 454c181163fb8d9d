// Sends what there is for paths, key paths, quantities, file names and URLs.
#import "Checks.h"
#import "Client.h"

#import "TessarinFoundation/TessarinFoundation.h"
#import "TessarinPlatform/PercentEscapes.h"

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

void checkStrings(void) {
    checkPaths();
    checkKeyPathsAndTrimming();
    checkQuantities();
    checkFileNames();
    checkURLsAndFileManagers();
}
