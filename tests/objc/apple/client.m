// An application in Objective-C or Objective-C++ on macOS, with automatic reference counting or without. It
// is compiled, not linked.
#import <TessarinFoundation/TessarinFoundation.h>

#if __has_feature(objc_arc) != EXPECTED_ARC
#    error "Not compiled as it was asked for"
#endif

NSSortDescriptor *initialisedDescriptor(NSDictionary *configuration);
NSSortDescriptor *initialisedDescriptor(NSDictionary *configuration) {
    return [[NSSortDescriptor alloc] tessarin_initWithConfiguration:configuration];
}

NSString *storedManufacturer(AudioComponent component);
NSString *storedManufacturer(AudioComponent component) {
    NSString *manufacturer = nil;
    NSString *const name = TSSRGetAudioComponentName(component, &manufacturer);
    return name ? manufacturer : nil;
}

NSArray *everything(NSArray *array, NSMutableArray *editable, NSString *path, NSView *view, NSWindow *window);
NSArray *everything(NSArray *array, NSMutableArray *editable, NSString *path, NSView *view,
                    NSWindow *window) {
    TSSRUniqueIndexer *const indexer = [[TSSRUniqueIndexer alloc] init];
    indexer.shouldLock = YES;
    [editable tessarin_mergeWithArray:array];
    [editable tessarin_moveObjectFromIndex:0 toIndex:1];
    [view tessarin_setFrameWithOriginAtTopLeft:[window tessarin_frameRectForContentView:view]];

    const AudioStreamBasicDescription format = TSSRASBDFromArray(TSSRArrayFromASBD(TSSRASBDFromArray(array)));
    const AudioUnitParameterInfo information = TSSRAudioUnitParameterInfoFromArray(array);
    const CFStringRef owned = information.cfNameString;
    NSError *error = nil;
    const id value = [NSPropertyListSerialization tessarin_propertyListWithMutableContainers:path
                                                                                       error:&error];
    TSSRTransformedValue *const transformed = [TSSRTransformedValue transformedValueWithClass:[NSString class]
                                                                                        value:value];
    NSString *const key = [NSString tessarin_keyPathWithComponents:@"selection", @"gain", nil];
    const NSUInteger wanted = (NSUInteger)[indexer registerIndex:transformed.integerValue];
    return owned && key && format.mSampleRate > 0 && error == nil
               ? [array
                   tessarin_arrayWithObjectsPassingTest:^BOOL(id object, NSUInteger index, BOOL *stop) {
                     *stop = object == nil;
                     return index == wanted;
                   }
                                                options:0]
               : [array tessarin_arrayByRemovingObject:TSSRErrorDomain];
}
