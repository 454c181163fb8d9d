// An application in C++ on macOS, which finds the framework with -F alone and includes headers of the system
// as well, before the library's and after them. It is compiled and linked, not run.
#include <MacTypes.h>
#include <objc/objc.h>

// As the system's headers declare them, with types of their own.
extern "C" {
typedef const struct __CFString* CFStringRef;
CFStringRef UTCreateStringForOSType(OSType code);
OSStatus AudioComponentCopyName(struct OpaqueAudioComponent* component, CFStringRef* name);
}

#include <TessarinFoundation/TessarinFoundation.h>
#include <TessarinFoundation/TessarinPlatform/TessarinPlatform.h>

#include <objc/runtime.h>

extern "C" unsigned CFStringConvertNSStringEncodingToEncoding(unsigned long encoding);

int main() {
    const tessarin::AutoreleasePool pool;
    const tessarin::NSString path("/Users/x/Music/a.wav");
    const tessarin::NSString shown = tessarin_pathRelativeToDirectory(path, tessarin::NSString("/Users/x"));
    const tessarin::NSArray numbers = TSSRArrayFromASBD({});
    const tessarin::Retained<tessarin::NSString> code =
        tessarin::adopt(tessarin::UTCreateStringForOSType(0x61756678));
    // A structure that the caller provides the place for, by way of the runtime's own look-up for these.
    const tessarin::NSRect frame =
        tessarin::send<tessarin::NSRect>(numbers, tessarin::runtime::registerSelector("frame"));
    const CFStringRef theirs = UTCreateStringForOSType(0x61756678);
    return shown && numbers && code && theirs && frame == tessarin::NSZeroRect
                   && tessarin::CFStringConvertNSStringEncodingToEncoding(tessarin::NSUTF8StringEncoding)
                          == CFStringConvertNSStringEncodingToEncoding(tessarin::NSUTF8StringEncoding)
               ? 0
               : 1;
}
