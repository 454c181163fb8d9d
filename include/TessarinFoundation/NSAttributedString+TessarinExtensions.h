// Attributed strings: made in one call.
#pragma once

#include "TessarinPlatform/detail/LibraryAnchor.h"

#if defined(__OBJC__)

#    import <Foundation/NSAttributedString.h>
#    import <Foundation/NSDictionary.h>
#    import <Foundation/NSString.h>

@interface NSAttributedString (TessarinExtensions)

+ (NSAttributedString*)tessarin_attributedStringWithString:(NSString*)string
                                                attributes:(NSDictionary*)attributes;

@end

#else

#    include "TessarinPlatform/NSAttributedString.h"

// An attributed string whose characters all have the same attributes; autoreleased. nil attributes are none.
// What the platform raises for a nil string passes through: NSInvalidArgumentException.
//
// It is an NSAttributedString, which cannot be changed, whatever class receives the message, which is meant:
// NSMutableAttributedString makes no mutable one. A nil class answers nil.
//
//   tessarin_attributedStringWithString_attributes("Gain"_ns, bold)
TESSARIN_EXPORT tessarin::NSAttributedString
tessarin_attributedStringWithString_attributes(tessarin::NSString string, tessarin::NSDictionary attributes);
TESSARIN_EXPORT tessarin::NSAttributedString
tessarin_attributedStringWithString_attributes(tessarin::Class receiver, tessarin::NSString string,
                                               tessarin::NSDictionary attributes);
template <tessarin::HandleType Receiver>
tessarin::NSAttributedString
tessarin_attributedStringWithString_attributes(tessarin::NSString string, tessarin::NSDictionary attributes) {
    return tessarin_attributedStringWithString_attributes(Receiver::classObject(), string, attributes);
}

#endif
