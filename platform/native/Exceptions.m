// Catching the platform's exceptions, which only Objective-C can: GCC's Objective-C++ catches by the rules of
// C++ types and fails on a class of Objective-C. What C++ throws passes through.
#if __has_include(<Foundation/NSException.h>)
#    import <Foundation/NSException.h>
#else
// As much of it as is needed here, for a compiler that has the runtime's headers and not the Foundation's.
#    import <objc/NSObject.h>
__attribute__((objc_exception))
@interface NSException : NSObject
@end
#endif

__attribute__((visibility("hidden"))) void* tessarin_catching(void (*body)(void*), void* context);

void* tessarin_catching(void (*body)(void*), void* context) {
    @try {
        body(context);
    } @catch (NSException* exception) {
        return [[exception retain] autorelease];
    }
    return 0;
}
