// An application outside the project, in Objective-C. It prints what consumer.cpp prints.
#import <Foundation/Foundation.h>
#import <TessarinFoundation/TessarinFoundation.h>

static void print(NSString* line) { printf("%s\n", [line UTF8String]); }

int main(void) {
    NSAutoreleasePool* pool = [[NSAutoreleasePool alloc] init];

    AudioStreamBasicDescription format = {44100, 'lpcm', 12, 4, 1, 4, 2, 16, 0};
    print([TSSRArrayFromASBD(format) componentsJoinedByString:@" "]);
    AudioComponentDescription delay = {'aufx', 'dely', 'Acme', 0, 0};
    print(TSSRIdentifierStringFromAudioComponentDescriptionAndManufacturer(delay, @"Acme"));

    print([@"/Users/x/Music/a.wav" tessarin_pathRelativeToDirectory:@"/Users/x"]);
    NSArray* letters = [NSArray arrayWithObjects:@"a", @"b", @"a", nil];
    NSArray* others = [NSArray arrayWithObjects:@"b", @"c", nil];
    print([[letters tessarin_arrayByMergingWithArray:others
                                       receiverFirst:YES] componentsJoinedByString:@" "]);

    TSSRUniqueIndexer* indexer = [[TSSRUniqueIndexer alloc] init];
    const NSInteger first = [indexer registerIndex:0];
    print([NSString stringWithFormat:@"%ld %ld", (long)first, (long)[indexer registerIndex:NSNotFound]]);
    [indexer release];

    @try {
        print([letters objectAtIndex:3]);
    } @catch (NSException* exception) {
        print([exception name]);
    }

    print([@"Music/My Song"
        performSelector:NSSelectorFromString(@"tessarin_fileNameByReplacingIllegalCharacters")]);
    print(NSStringFromClass(NSClassFromString(@"TSSRTransformedValue")));

    [pool drain];
    return 0;
}
