// Sends what there is for sort descriptors, colours and property lists.
#import "Checks.h"
#import "Client.h"

#import "TessarinFoundation/TessarinFoundation.h"

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

void checkConfigurations(void) {
    checkSortDescriptors();
    checkColors();
    checkPropertyLists();
}
