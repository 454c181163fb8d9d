// An application that sends messages and names no symbol of the library. It is linked so that libraries which
// seem unused are left out, and must work all the same.
#import "Checks.h"

#import "TessarinFoundation/NSString+TessarinExtensions.h"

int main(void) {
    NSAutoreleasePool *pool = [[NSAutoreleasePool alloc] init];
    CHECK_TEXT([@"/a/b" tessarin_pathRelativeToDirectory:@"/a"], @"b");
    const int exitCode = closeChecks();
    [pool release];
    return exitCode;
}
