// The type in which Objective-C passes a test of objects, such as that of
// tessarin_arrayWithObjectsPassingTest:options:. In C++ it is a Block (Block.h).
#pragma once

#if defined(__OBJC__)

#    import <Foundation/NSArray.h>

// The platform's own type. Where the compiler has no blocks, GNUstep's is a pointer to the block's structure.
#    if defined(GNUSTEP)
typedef GSPredicateBlock TSSRObjectPredicate;
#    else
typedef BOOL (^TSSRObjectPredicate)(id object, NSUInteger index, BOOL* stop);
#    endif

#endif
