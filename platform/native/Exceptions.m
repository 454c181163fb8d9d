// Catching the platform's exceptions, which only Objective-C can: GCC's Objective-C++ catches by the rules of
// C++ types and fails on a class of Objective-C. What C++ throws passes through.
#import <Foundation/NSException.h>

__attribute__((visibility("hidden"))) void* tessarin_catching(void (*body)(void*), void* context);

void* tessarin_catching(void (*body)(void*), void* context) {
    @try {
        body(context);
    } @catch (NSException* exception) {
        return [[exception retain] autorelease];
    }
    return 0;
}
