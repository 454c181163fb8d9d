// Sends what there is for stream formats, parameter descriptions and component identities.
#import "Checks.h"
#import "Client.h"

#import "TessarinFoundation/TessarinFoundation.h"
#import "TessarinPlatform/AudioComponent.h"
#import "TessarinPlatform/FourCharacterCodes.h"

#include <string.h>

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

void checkAudio(void) {
    checkStreamFormats();
    checkParameterDescriptions();
    checkComponentIdentity();
}
