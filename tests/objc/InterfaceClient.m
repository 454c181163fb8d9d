// Sends what there is for windows, views, menus and attributed strings.
#import "Checks.h"
#import "Client.h"

#import "TessarinFoundation/TessarinFoundation.h"

#import <AppKit/NSApplication.h>
#import <AppKit/NSCell.h>
#import <AppKit/NSMenuItem.h>
#import <AppKit/NSScroller.h>

// The display that the program is started on. No window manager runs there, so GNUstep draws title bars
// itself.
static void openDisplay(void) {
    NSDictionary *settings = [NSDictionary dictionaryWithObject:@"NO"
                                                         forKey:@"GSX11HandlesWindowDecorations"];
    [[NSUserDefaults standardUserDefaults] registerDefaults:settings];
    [NSApplication sharedApplication];
}

static NSWindow *newWindow(NSRect content, NSUInteger style) {
    return [[NSWindow alloc] initWithContentRect:content
                                       styleMask:style
                                         backing:NSBackingStoreBuffered
                                           defer:NO];
}

static void checkWindows(void) {
    NSWindow *window = newWindow(NSMakeRect(100, 500, 400, 300), NSBorderlessWindowMask);
    NSView *view = [[NSView alloc] initWithFrame:NSMakeRect(0, 0, 400, 500)];
    [window orderFront:nil];
    CHECK(NSEqualPoints([window tessarin_topLeftPoint], NSMakePoint(100, 800)));
    CHECK(NSEqualPoints([window tessarin_convertBaseToScreen:NSMakePoint(5, 5)], NSMakePoint(105, 505)));
    CHECK(NSEqualRects([window tessarin_frameRectForContentView:view], NSMakeRect(100, 300, 400, 500)));
    CHECK(NSEqualRects([window tessarin_frameRectForContentView:nil], NSMakeRect(100, 800, 0, 0)));
    [window setFrame:NSMakeRect(100, 100, 400, 300) display:YES];
    CHECK(NSEqualRects([window tessarin_frameRectForContentView:view], NSMakeRect(100, 0, 400, 500)));
    [view setFrameSize:NSMakeSize(400, 1000)]; // the screen is 900 points high
    CHECK(NSEqualRects([window tessarin_frameRectForContentView:view], NSMakeRect(100, -100, 400, 1000)));
    [window orderOut:nil];
    [view release];
    [window release];
}

static void checkViews(void) {
    NSWindow *window = newWindow(NSMakeRect(100, 100, 300, 200), NSTitledWindowMask);
    NSView *view = [[NSView alloc] initWithFrame:NSMakeRect(0, 0, 50, 40)];
    [[window contentView] addSubview:view];
    [window orderFront:nil];
    [view tessarin_setFrameTopLeftPoint:NSMakePoint(0, 100)];
    CHECK(NSEqualRects([view frame], NSMakeRect(0, 60, 50, 40)));
    [view tessarin_setFrameWithOriginAtTopLeft:NSMakeRect(10, 190, 80, 24)];
    CHECK(NSEqualRects([view frame], NSMakeRect(10, 166, 80, 24)));
    [window orderOut:nil];
    [view release];
    [window release];
}

static void checkScrollViews(void) {
    NSScrollView *view = [[NSScrollView alloc] initWithFrame:NSMakeRect(0, 0, 200, 100)];
    CHECK(![view tessarin_isHorizontalScrollerVisible]);
    [view setHasVerticalScroller:YES];
    CHECK([view tessarin_isVerticalScrollerVisible]);
    CHECK(![view tessarin_isHorizontalScrollerVisible]);
    [view setHasHorizontalScroller:YES];
    CHECK([view tessarin_isHorizontalScrollerVisible]);
    [[view verticalScroller] setHidden:YES];
    CHECK(![view tessarin_isVerticalScrollerVisible]);
    [view setHidden:YES];
    CHECK(![view tessarin_isHorizontalScrollerVisible]);
    [view release];
}

static void checkMenus(void) {
    NSMenu *menu = [[[NSMenu alloc] initWithTitle:@"menu"] autorelease];
    NSMenu *submenu = [[[NSMenu alloc] initWithTitle:@"submenu"] autorelease];
    CHECK([menu tessarin_indexOfSeparatorItem] == -1);
    [menu addItemWithTitle:@"A" action:NULL keyEquivalent:@""];
    [menu addItem:[NSMenuItem separatorItem]];
    [menu addItemWithTitle:@"B" action:NULL keyEquivalent:@""];
    [submenu addItemWithTitle:@"C" action:NULL keyEquivalent:@""];
    [menu setSubmenu:submenu forItem:[menu itemAtIndex:2]];
    CHECK([menu tessarin_indexOfSeparatorItem] == 1);
    [menu tessarin_setStateOfAllItems:NSOnState];
    CHECK([[menu itemAtIndex:0] state] == NSOnState && [[menu itemAtIndex:1] state] == NSOnState);
    CHECK([[menu itemAtIndex:2] state] == NSOffState && [[submenu itemAtIndex:0] state] == NSOnState);
}

static void checkAttributedStrings(void) {
    NSDictionary *bold = [NSDictionary dictionaryWithObject:@"bold" forKey:@"weight"];
    NSAttributedString *gain = [NSAttributedString tessarin_attributedStringWithString:@"Gain"
                                                                            attributes:bold];
    CHECK_TEXT([gain string], @"Gain");
    CHECK([[gain attributesAtIndex:3 effectiveRange:NULL] isEqual:bold]);
    NSAttributedString *immutable = [NSMutableAttributedString tessarin_attributedStringWithString:@"Gain"
                                                                                        attributes:nil];
    CHECK(![immutable isKindOfClass:[NSMutableAttributedString class]]);
    CHECK_RAISES(NSInvalidArgumentException, [NSAttributedString tessarin_attributedStringWithString:nil
                                                                                          attributes:bold]);
}

void checkInterface(void) {
    openDisplay();
    checkWindows();
    checkViews();
    checkScrollViews();
    checkMenus();
    checkAttributedStrings();
}
