#import <Foundation/Foundation.h>
#import <TessarinFoundation/TessarinFoundation.h>

int main(void) {
    NSAutoreleasePool* pool = [[NSAutoreleasePool alloc] init];

    // A stream format (16-bit stereo) as nine numbers, which any property list can hold, and back.
    AudioStreamBasicDescription format = {44100, 'lpcm', 12, 4, 1, 4, 2, 16, 0};
    NSArray* numbers = TSSRArrayFromASBD(format);
    printf("%s\n", [[numbers componentsJoinedByString:@" "] UTF8String]); // 44100 1819304813 12 4 1 4 2 16 0
    printf("%u bits\n", TSSRASBDFromArray(numbers).mBitsPerChannel);      // 16 bits

    // An effect's identity as one line.
    AudioComponentDescription delay = {'aufx', 'dely', 'Acme', 0, 0};
    NSString* line = TSSRIdentifierStringFromAudioComponentDescriptionAndManufacturer(delay, @"Acme");
    printf("%s\n", [line UTF8String]); // Acme: aufx; dely; Acme

    // A path as seen from a folder.
    NSString* path = [@"/Users/x/Music/a.wav" tessarin_pathRelativeToDirectory:@"/Users/x"];
    printf("%s\n", [path UTF8String]); // Music/a.wav

    [pool drain];
    return 0;
}
