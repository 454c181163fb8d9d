#import "Effects.h"

#import <TessarinFoundation/TessarinFoundation.h>
#import <TessarinPlatform/AudioComponent.h>

NSString *const EffectName = @"name";
NSString *const EffectManufacturer = @"manufacturer";
NSString *const EffectIdentifier = @"identifier";

BOOL registerComponentsInFolder(NSString *folder) {
    NSArray *names = [[NSFileManager defaultManager] contentsOfDirectoryAtPath:folder error:NULL];
    NSEnumerator *enumerator = [[names sortedArrayUsingSelector:@selector(compare:)] objectEnumerator];
    NSString *name;
    while ((name = [enumerator nextObject])) {
        NSError *error = nil;
        if (![[name pathExtension] isEqualToString:@"component"]) continue;
        if (TessarinRegisterAudioComponentsOfBundle([folder stringByAppendingPathComponent:name], &error)
            < 0) {
            fprintf(stderr, "session_window: %s\n", [[error localizedDescription] UTF8String]);
            return NO;
        }
    }
    return YES;
}

static NSDictionary *rowOfComponent(AudioComponent component) {
    AudioComponentDescription description;
    NSString *manufacturer = nil;
    NSString *name = TSSRGetAudioComponentName(component, &manufacturer);
    [manufacturer autorelease]; // the caller owns it
    AudioComponentGetDescription(component, &description);
    NSString *identifier =
        TSSRIdentifierStringFromAudioComponentDescriptionAndManufacturer(description, manufacturer);
    return [NSDictionary dictionaryWithObjectsAndKeys:name, EffectName, identifier, EffectIdentifier,
                                                      manufacturer ? manufacturer : @"", EffectManufacturer,
                                                      nil];
}

NSArray *registeredEffects(void) {
    const AudioComponentDescription any = {0, 0, 0, 0, 0};
    NSMutableArray *effects = [NSMutableArray array];
    AudioComponent component = NULL;
    while ((component = AudioComponentFindNext(component, &any)))
        [effects addObject:rowOfComponent(component)];
    return effects;
}
