#import "SessionWindow.h"

#import "Effects.h"

#import <TessarinFoundation/TessarinFoundation.h>

// The content, measured from its top-left corner.
static const CGFloat width = 600;
static const CGFloat height = 320;
static const CGFloat margin = 20;

@implementation SessionWindow

- (id)initWithSession:(Session *)aSession file:(NSString *)path {
    if ((self = [super init])) {
        session = [aSession retain];
        file = [path copy];
        effects = [[registeredEffects() sortedArrayUsingDescriptors:[NSArray arrayWithObject:[session order]]]
            retain];
    }
    return self;
}

- (void)dealloc {
    [session release];
    [file release];
    [effects release];
    [window release];
    [table release];
    [colorWell release];
    [meters release];
    [super dealloc];
}

- (void)keep {
    [session setTopLeftPoint:[window tessarin_topLeftPoint]];
    [session keepInFile:file];
}

// ---- The menu

// The commands keep their own states: the submenu alone is asked.
- (void)showMeters {
    [[[meters itemWithTitle:@"Meters"] submenu] tessarin_setStateOfAllItems:[session meterState]];
}

- (void)addCommand:(NSString *)title forState:(NSInteger)state {
    NSMenuItem *command = [[[NSMenuItem alloc] initWithTitle:title
                                                      action:@selector(switchMeters:)
                                               keyEquivalent:@""] autorelease];
    [command setTag:state];
    [command setTarget:self];
    [meters addItem:command];
}

- (void)switchMeters:(id)sender {
    [session setMeterState:[sender tag]];
    [self showMeters];
    [self keep];
}

- (NSMenu *)mainMenu {
    NSMenu *main = [[[NSMenu alloc] initWithTitle:@"Session"] autorelease];
    NSMenu *shown = [[[NSMenu alloc] initWithTitle:@"Meters"] autorelease];
    [shown addItemWithTitle:@"Input" action:NULL keyEquivalent:@""];
    [shown addItemWithTitle:@"Output" action:NULL keyEquivalent:@""];
    [shown addItemWithTitle:@"Gain Reduction" action:NULL keyEquivalent:@""];

    meters = [[NSMenu alloc] initWithTitle:@"View"];
    [meters addItem:[NSMenuItem separatorItem]];
    [self addCommand:@"Show All Meters" forState:NSOnState];
    [self addCommand:@"Hide All Meters" forState:NSOffState];
    NSMenuItem *item = [[[NSMenuItem alloc] initWithTitle:@"Meters" action:NULL
                                            keyEquivalent:@""] autorelease];
    [item setSubmenu:shown];
    [meters insertItem:item atIndex:[meters tessarin_indexOfSeparatorItem]]; // above the commands
    [self showMeters];

    [main setSubmenu:meters forItem:[main addItemWithTitle:@"View" action:NULL keyEquivalent:@""]];
    [main addItemWithTitle:@"Quit" action:@selector(terminate:) keyEquivalent:@"q"];
    return main;
}

// ---- The table

- (void)selectEffect {
    NSDictionary *chosen = [session effect] ? [effects tessarin_objectWithValue:[session effect]
                                                                     forKeyPath:EffectIdentifier]
                                            : nil;
    const NSUInteger row = chosen ? [effects indexOfObjectIdenticalTo:chosen] : NSNotFound;
    if (row == NSNotFound) return;
    [table selectRowIndexes:[NSIndexSet indexSetWithIndex:row] byExtendingSelection:NO];
}

- (NSInteger)numberOfRowsInTableView:(NSTableView *)aTable {
    (void)aTable;
    return [effects count];
}

- (id)tableView:(NSTableView *)aTable objectValueForTableColumn:(NSTableColumn *)column row:(NSInteger)row {
    (void)aTable;
    return [[effects objectAtIndex:row] objectForKey:[column identifier]];
}

- (void)tableView:(NSTableView *)aTable sortDescriptorsDidChange:(NSArray *)previous {
    (void)previous;
    if ([[aTable sortDescriptors] count] == 0) return;
    [session setOrder:[[aTable sortDescriptors] objectAtIndex:0]];
    NSArray *sorted = [effects sortedArrayUsingDescriptors:[aTable sortDescriptors]];
    [effects release];
    effects = [sorted retain];
    [aTable reloadData];
    [self selectEffect];
    [self keep];
}

- (void)tableViewSelectionDidChange:(NSNotification *)notification {
    (void)notification;
    const NSInteger row = [table selectedRow];
    if (row < 0) return;
    [session setEffect:[[effects objectAtIndex:row] objectForKey:EffectIdentifier]];
    [self keep];
}

// ---- The content

- (NSScrollView *)list {
    NSScrollView *list = [[[NSScrollView alloc] initWithFrame:NSZeroRect] autorelease];
    [list tessarin_setFrameWithOriginAtTopLeft:NSMakeRect(margin, height - margin, 380, height - 2 * margin)];
    [list setHasVerticalScroller:YES];
    [list setBorderType:NSBezelBorder];

    table = [[NSTableView alloc] initWithFrame:NSMakeRect(0, 0, 360, 100)];
    // Room for the scroller where it is seen.
    const CGFloat room = [list tessarin_isVerticalScrollerVisible] ? 350 : 370;
    NSArray *keys = [NSArray arrayWithObjects:EffectName, EffectManufacturer, nil];
    NSEnumerator *enumerator = [keys objectEnumerator];
    NSString *key;
    while ((key = [enumerator nextObject])) {
        NSTableColumn *column = [[[NSTableColumn alloc] initWithIdentifier:key] autorelease];
        [[column headerCell] setStringValue:[key capitalizedString]];
        [column setWidth:room / [keys count]];
        [column setEditable:NO];
        [column setSortDescriptorPrototype:[[[NSSortDescriptor alloc] initWithKey:key
                                                                        ascending:YES] autorelease]];
        [table addTableColumn:column];
    }
    [table setSortDescriptors:[NSArray arrayWithObject:[session order]]];
    [table setDataSource:self];
    [table setDelegate:self];
    [list setDocumentView:table];
    return list;
}

- (NSTextField *)label:(NSString *)text at:(NSPoint)topLeft {
    NSTextField *label = [[[NSTextField alloc] initWithFrame:NSMakeRect(0, 0, 160, 20)] autorelease];
    [label setStringValue:text];
    [label setEditable:NO];
    [label setBezeled:NO];
    [label setDrawsBackground:NO];
    [label tessarin_setFrameTopLeftPoint:topLeft];
    return label;
}

- (NSView *)content {
    NSView *content = [[[NSView alloc] initWithFrame:NSMakeRect(0, 0, width, height)] autorelease];
    const AudioStreamBasicDescription format = TSSRASBDFromArray([session streamFormat]);
    const CGFloat right = 420;
    CGFloat top = height - margin;
    [content addSubview:[self list]];

    [content addSubview:[self label:[NSString stringWithFormat:@"%g Hz", format.mSampleRate]
                                 at:NSMakePoint(right, top)]];
    top -= 24;
    [content addSubview:[self label:[NSString stringWithFormat:@"%u channels, %u bits",
                                                               (unsigned)format.mChannelsPerFrame,
                                                               (unsigned)format.mBitsPerChannel]
                                 at:NSMakePoint(right, top)]];
    top -= 24;
    [content addSubview:[self label:@"Colour of the track" at:NSMakePoint(right, top)]];
    top -= 24;
    colorWell = [[NSColorWell alloc] initWithFrame:NSMakeRect(0, 0, 80, 40)];
    [colorWell tessarin_setFrameTopLeftPoint:NSMakePoint(right, top)];
    [colorWell setColor:[session color]];
    [colorWell setTarget:self];
    [colorWell setAction:@selector(takeColor:)];
    [content addSubview:colorWell];
    return content;
}

- (void)open {
    window = [[NSWindow alloc] initWithContentRect:NSMakeRect(0, 0, 100, 100)
                                         styleMask:NSTitledWindowMask | NSClosableWindowMask
                                           backing:NSBackingStoreBuffered
                                             defer:NO];
    NSView *content = [self content];
    [window setTitle:@"Session"];
    [window setReleasedWhenClosed:NO];
    [window setFrameTopLeftPoint:[session topLeftPoint]];
    [window setFrame:[window tessarin_frameRectForContentView:content] display:NO];
    [window setContentView:content];
    [window setDelegate:(id)self];
    [self selectEffect];
    [window makeKeyAndOrderFront:nil];
    [self keep];
}

- (void)windowDidMove:(NSNotification *)notification {
    (void)notification;
    [self keep];
}

- (void)windowWillClose:(NSNotification *)notification {
    (void)notification;
    [NSApp terminate:self];
}

- (void)takeColor:(id)sender {
    [session setColor:[sender color]];
    [self keep];
}

@end
