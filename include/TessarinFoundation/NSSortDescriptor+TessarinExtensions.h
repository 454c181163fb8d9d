// Sort descriptors: as configurations, dictionaries that can be kept wherever property lists can.
//
//   keypath     the key, a string
//   ascending   1 or 0, a number; whatever answers boolValue is read, so that the string YES will do
//   selector    the name of the comparison, a string such as compare:; it may be missing
//
// A nil receiver, a descriptor or a class, answers nil.
#pragma once

#include "TessarinPlatform/detail/LibraryAnchor.h"
#include "TessarinPlatform/detail/ObjectiveCOwnership.h"

#if defined(__OBJC__)

#    import <Foundation/NSDictionary.h>
#    import <Foundation/NSSortDescriptor.h>

@interface NSSortDescriptor (TessarinExtensions)

+ (id)tessarin_sortDescriptorWithConfiguration:(NSDictionary*)configuration;
- (id)tessarin_initWithConfiguration:(NSDictionary*)configuration TESSARIN_INITIALISER;

- (NSDictionary*)tessarin_configuration;

@end

#else

#    include "TessarinPlatform/NSDictionary.h"
#    include "TessarinPlatform/NSSortDescriptor.h"

// The configuration that describes the receiver: immutable, autoreleased. It has no selector where the
// receiver has none. What the platform's dictionary raises for a receiver without a key passes through:
// NSInvalidArgumentException.
//
//   tessarin_configuration(byName)   // {keypath: name, ascending: 1, selector: compare:}
TESSARIN_EXPORT tessarin::NSDictionary tessarin_configuration(tessarin::NSSortDescriptor receiver);

// Initialises a newly allocated descriptor as a configuration describes it. Without a selector, or with one
// that is no string or an empty one, it compares by compare:; a name that no object answers is kept, and
// sorting raises NSInvalidArgumentException by it. Like any init, it takes over the caller's reference and
// hands one to the result.
//
// A configuration that is nil, has no string of at least one character as its keypath, or nothing that
// answers boolValue as ascending, gives the receiver itself, owned by the caller as before and not
// initialised, which is meant: not nil, but a descriptor without key and selector that is not ascending.
// Sorting by it leaves the order as it is; on GNUstep it raises.
//
//   Retained<NSSortDescriptor> order =
//       adopt(tessarin_initWithConfiguration(NSSortDescriptor::alloc(), configuration));
[[nodiscard]] TESSARIN_EXPORT tessarin::NSSortDescriptor
tessarin_initWithConfiguration(tessarin::NSSortDescriptor allocated, tessarin::NSDictionary configuration);

// The same as a new descriptor of the receiving class (NSSortDescriptor, unless another is named),
// autoreleased.
//
//   tessarin_sortDescriptorWithConfiguration(preferences.objectForKey("order"_ns))
TESSARIN_EXPORT tessarin::NSSortDescriptor
tessarin_sortDescriptorWithConfiguration(tessarin::NSDictionary configuration);
TESSARIN_EXPORT tessarin::NSSortDescriptor
tessarin_sortDescriptorWithConfiguration(tessarin::Class receiver, tessarin::NSDictionary configuration);
template <tessarin::HandleType Receiver>
Receiver tessarin_sortDescriptorWithConfiguration(tessarin::NSDictionary configuration) {
    return Receiver(static_cast<tessarin::NSObject>(
        tessarin_sortDescriptorWithConfiguration(Receiver::classObject(), configuration)));
}

#endif
