#import "Session.h"

#import "Effects.h"

#import <TessarinFoundation/TessarinFoundation.h>

// Keys of the property list.
static NSString *const EffectKey = @"effect";
static NSString *const StreamFormatKey = @"streamFormat";
static NSString *const ColorKey = @"color";
static NSString *const OrderKey = @"order";
static NSString *const MetersKey = @"meters";
static NSString *const WindowKey = @"windowTopLeftPoint";

static const AudioStreamBasicDescription stereo = {48000, 0x6C70636D /* lpcm */, 12, 6, 1, 6, 2, 24, 0};

// The dictionary that a file holds, all of whose containers may be changed; an empty one where there is no
// file, nil for a file that cannot be read or holds something else.
static NSMutableDictionary *dictionaryOfFile(NSString *path) {
    NSData *data = [NSData dataWithContentsOfFile:path];
    if (!data)
        return [[NSFileManager defaultManager] fileExistsAtPath:path] ? nil
                                                                      : [NSMutableDictionary dictionary];
    id contents = [NSPropertyListSerialization propertyListWithData:data options:0 format:NULL error:NULL];
    if (![contents isKindOfClass:[NSDictionary class]]) return nil;
    return [NSPropertyListSerialization tessarin_propertyListWithMutableContainers:contents error:NULL];
}

static id kept(NSDictionary *contents, NSString *key, Class expected) {
    const id value = [contents objectForKey:key];
    return [value isKindOfClass:expected] ? value : nil;
}

static BOOL areNumbers(NSArray *values) {
    NSEnumerator *enumerator = [values objectEnumerator];
    id value;
    while ((value = [enumerator nextObject]))
        if (![value isKindOfClass:[NSNumber class]]) return NO;
    return YES;
}

static NSArray *keptNumbers(NSDictionary *contents, NSString *key, NSUInteger count) {
    NSArray *numbers = kept(contents, key, [NSArray class]);
    return [numbers count] == count && areNumbers(numbers) ? numbers : nil;
}

// Whether it is what the list of effects sorts by: a column, in the order of the strings themselves. Any
// other selector out of a file might be one that strings do not answer, or that does something else.
static BOOL sortsEffects(NSSortDescriptor *descriptor) {
    NSString *key = [descriptor key]; // nil when it was made of a configuration that is none
    return ([key isEqual:EffectName] || [key isEqual:EffectManufacturer]) &&
           [NSStringFromSelector([descriptor selector]) isEqual:@"compare:"];
}

@implementation Session

- (id)init {
    if ((self = [super init])) {
        streamFormat = [TSSRArrayFromASBD(stereo) retain];
        color = [[NSColor colorWithCalibratedHue:0.58 saturation:0.75 brightness:0.8 alpha:1] retain];
        order = [[NSSortDescriptor alloc] initWithKey:EffectName ascending:YES];
        meterState = NSOnState;
        topLeftPoint = NSMakePoint(200, 700);
    }
    return self;
}

- (void)dealloc {
    [effect release];
    [streamFormat release];
    [color release];
    [order release];
    [super dealloc];
}

// What is damaged stays as it is in a new session.
- (void)takeContents:(NSDictionary *)contents {
    NSDictionary *part;
    NSArray *numbers;
    [self setEffect:kept(contents, EffectKey, [NSString class])];
    if ((numbers = keptNumbers(contents, StreamFormatKey, 9))) {
        [streamFormat release];
        streamFormat = [numbers copy];
    }
    if ((part = kept(contents, ColorKey, [NSDictionary class])) && areNumbers([part allValues]))
        [self setColor:[NSColor tessarin_colorWithConfiguration:part]];
    if ((part = kept(contents, OrderKey, [NSDictionary class]))) {
        NSSortDescriptor *descriptor = [NSSortDescriptor tessarin_sortDescriptorWithConfiguration:part];
        if (sortsEffects(descriptor)) [self setOrder:descriptor];
    }
    if (kept(contents, MetersKey, [NSNumber class]))
        meterState = [[contents objectForKey:MetersKey] integerValue];
    if ((numbers = keptNumbers(contents, WindowKey, 2)))
        topLeftPoint =
            NSMakePoint([[numbers objectAtIndex:0] doubleValue], [[numbers lastObject] doubleValue]);
}

+ (Session *)sessionOfFile:(NSString *)path {
    NSDictionary *contents = dictionaryOfFile(path);
    if (!contents) {
        fprintf(stderr, "session_window: %s cannot be read as a property list of a dictionary\n",
                [path UTF8String]);
        return nil;
    }
    Session *session = [[[Session alloc] init] autorelease];
    [session takeContents:contents];
    return session;
}

- (NSDictionary *)configuration {
    const Class lists = [NSPropertyListSerialization class];
    NSMutableDictionary *contents = [NSMutableDictionary dictionary];
    if (effect) [contents setObject:effect forKey:EffectKey];
    [contents setObject:streamFormat forKey:StreamFormatKey];
    [contents setObject:[lists tessarin_propertyListForValue:color] forKey:ColorKey];
    [contents setObject:[lists tessarin_propertyListForValue:order] forKey:OrderKey];
    [contents setObject:[NSNumber numberWithInteger:meterState] forKey:MetersKey];
    [contents setObject:[NSArray arrayWithObjects:[NSNumber numberWithDouble:topLeftPoint.x],
                                                  [NSNumber numberWithDouble:topLeftPoint.y], nil]
                 forKey:WindowKey];
    return contents;
}

- (BOOL)keepInFile:(NSString *)path {
    NSMutableDictionary *contents = dictionaryOfFile(path);
    [contents addEntriesFromDictionary:[NSPropertyListSerialization tessarin_propertyListForValue:self]];
    NSData *data = contents ? [NSPropertyListSerialization dataWithPropertyList:contents
                                                                         format:NSPropertyListXMLFormat_v1_0
                                                                        options:0
                                                                          error:NULL]
                            : nil;
    if ([data writeToFile:path atomically:YES]) return YES;
    fprintf(stderr, "session_window: %s cannot be written\n", [path UTF8String]);
    return NO;
}

- (void)print {
    const AudioStreamBasicDescription format = TSSRASBDFromArray(streamFormat);
    NSDictionary *shown = [color tessarin_configuration];
    printf("effect         %s\n", effect ? [effect UTF8String] : "(none)");
    printf("stream format  %g frames per second, %u channels, %u bits\n", format.mSampleRate,
           (unsigned)format.mChannelsPerFrame, (unsigned)format.mBitsPerChannel);
    printf("color          hue %.0f, saturation %.0f, brightness %.0f, alpha %.0f\n",
           [[shown objectForKey:@"Hue"] doubleValue], [[shown objectForKey:@"Saturation"] doubleValue],
           [[shown objectForKey:@"Brightness"] doubleValue], [[shown objectForKey:@"Alpha"] doubleValue]);
    printf("sorted by      %s, %s\n", [[order key] UTF8String],
           [order ascending] ? "ascending" : "descending");
    printf("meters         %s\n", meterState == NSOnState ? "on" : "off");
    printf("window         top left at %g, %g\n", topLeftPoint.x, topLeftPoint.y);
}

- (NSString *)effect {
    return effect;
}

- (void)setEffect:(NSString *)identifier {
    [effect autorelease];
    effect = [identifier copy];
}

- (NSArray *)streamFormat {
    return streamFormat;
}

- (NSColor *)color {
    return color;
}

- (void)setColor:(NSColor *)aColor {
    [color autorelease];
    color = [aColor retain];
}

- (NSSortDescriptor *)order {
    return order;
}

- (void)setOrder:(NSSortDescriptor *)aDescriptor {
    [order autorelease];
    order = [aDescriptor retain];
}

- (NSInteger)meterState {
    return meterState;
}

- (void)setMeterState:(NSInteger)state {
    meterState = state;
}

- (NSPoint)topLeftPoint {
    return topLeftPoint;
}

- (void)setTopLeftPoint:(NSPoint)point {
    topLeftPoint = point;
}

@end
