#import "Client.h"

#import "Checks.h"

int main(void) {
    NSAutoreleasePool *pool = [[NSAutoreleasePool alloc] init];
    checkStrings();
    checkAudio();
    checkValues();
    checkCollections();
    checkConfigurations();
    checkInterface();
    const int exitCode = closeChecks();
    [pool release];
    return exitCode;
}
