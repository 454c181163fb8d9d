// The window that shows a session and lets its user change it.
#import "Session.h"

@interface SessionWindow : NSObject {
    Session *session;
    NSString *file;
    NSArray *effects;
    NSWindow *window;
    NSTableView *table;
    NSColorWell *colorWell;
    NSMenu *meters;
}

// Every change is kept in the file at once.
- (id)initWithSession:(Session *)aSession file:(NSString *)path;

// The application's menu, with the menu of meters in it.
- (NSMenu *)mainMenu;

- (void)open;

@end
