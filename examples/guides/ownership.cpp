#include <TessarinFoundation/TessarinFoundation.h>
#include <TessarinPlatform/TessarinPlatform.h>

#include <iostream>

using namespace tessarin;

int main() {
    const AutoreleasePool pool;

    // A result is autoreleased: it lives until the innermost pool closes.
    const NSArray effects = NSArray::arrayOf("Delay"_ns, "Reverb"_ns, "Chorus"_ns);

    // An operation of the families alloc, new, init, copy and mutableCopy hands over a reference.
    const Retained<NSMutableArray> order = adopt(NSMutableArray(effects.mutableCopy()));
    tessarin_moveObjectFromIndex_toIndex(order, 2, 0);
    std::cout << order.componentsJoinedByString(", "_ns) << '\n'; // Chorus, Delay, Reverb

    // What is to outlive a pool is retained.
    Retained<NSString> duration;
    {
        const AutoreleasePool inner;
        duration = retain(tessarin_timeStringWithSeconds(61));
    }
    std::cout << duration << '\n'; // 1 : 01

    // A message to nil is defined: it answers nil, NO, zero, 0.0 or all zeros.
    const NSArray missing = nil;
    std::cout << missing.count() << '\n';                                       // 0
    std::cout << (tessarin_firstObject(missing) ? "an object" : "nil") << '\n'; // nil

    // An exception of the platform runs the destructors on its way, and is caught by attempt.
    attempt([&] { order.objectAtIndex(9); },
            [](NSException exception) { std::cout << exception.name() << '\n'; }); // NSRangeException
}
