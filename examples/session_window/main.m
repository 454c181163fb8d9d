// An application with a window: a list of effects, a stream format, a colour, a menu. What its user chose is
// kept in a property list and found again at the next start.
//
//   session_window -SessionFile FILE -Components FOLDER [-Effect IDENTIFIER]   opens the window
//   session_window -SessionFile FILE -Print YES                                prints what the file keeps
//
// The words are user defaults, as those of any application of this platform.
#import "SessionWindow.h"

#import "Effects.h"

static void openWindow(Session *session, NSString *file) {
    [NSApplication sharedApplication];
    SessionWindow *window = [[SessionWindow alloc] initWithSession:session file:file];
    [NSApp setMainMenu:[window mainMenu]];
    [window open];
    [NSApp run];
    [window release];
}

int main(void) {
    NSAutoreleasePool *pool = [[NSAutoreleasePool alloc] init];
    NSUserDefaults *words = [NSUserDefaults standardUserDefaults];
    NSString *file = [words stringForKey:@"SessionFile"];
    NSString *components = [words stringForKey:@"Components"];
    if (!file || (!components && ![words boolForKey:@"Print"])) {
        fprintf(stderr, "usage: session_window -SessionFile FILE -Components FOLDER [-Effect IDENTIFIER]\n"
                        "       session_window -SessionFile FILE -Print YES\n");
        return 2;
    }
    Session *session = [Session sessionOfFile:file];
    if (!session) return 1;
    if ([words boolForKey:@"Print"]) {
        [session print];
    } else {
        if (!registerComponentsInFolder(components)) return 1;
        if ([words stringForKey:@"Effect"]) [session setEffect:[words stringForKey:@"Effect"]];
        openWindow(session, file);
    }
    [pool drain];
    return 0;
}
