// Colours as configurations and as hexadecimal strings, and back.
//
// A configuration is a dictionary of four numbers that hold single-precision floats, for preference files and
// documents:
//
//   Hue          the hue component, 0 to 1, times 359: a full turn is 359 and not 360, which is meant and
//                holds in both directions
//   Saturation   the saturation component, 0 to 1, times 100
//   Brightness   the brightness component, 0 to 1, times 100
//   Alpha        the alpha component, 0 to 1, times 100
//
// Both operations that describe a colour read the receiver itself where its colour space equals the
// platform's generic RGB space, and otherwise what colorUsingColorSpaceName: makes of it in the calibrated
// RGB space. A colour that cannot be converted is described as all zeros. What the platform raises for a
// colour without a colour space, a named one or a picture, passes through; GNUstep raises nothing for a named
// one, whose description is then all zeros. A nil colour or class answers nil.
//
// The operations keep no state and may run on any thread on which the platform's colours may be used. Results
// are autoreleased.
#pragma once

#include "TessarinPlatform/detail/LibraryAnchor.h"

#if defined(__OBJC__)

#    import <AppKit/NSColor.h>
#    import <Foundation/NSDictionary.h>
#    import <Foundation/NSString.h>

@interface NSColor (TessarinExtensions)

- (NSDictionary*)tessarin_configuration;
+ (NSColor*)tessarin_colorWithConfiguration:(NSDictionary*)configuration;
- (NSString*)tessarin_hexadecimalRGBStringWithAlpha:(BOOL)alpha;
+ (NSColor*)tessarin_colorWithHexadecimalRGBAString:(NSString*)string;

@end

#else

#    include "TessarinPlatform/NSColor.h"
#    include "TessarinPlatform/NSDictionary.h"

// The colour's configuration, an immutable dictionary.
//
//   tessarin_configuration(NSColor::colorWithCalibratedRed_green_blue_alpha(0, 1, 0, 1))
//       // Hue 119.666664, Saturation 100, Brightness 100, Alpha 100
TESSARIN_EXPORT tessarin::NSDictionary tessarin_configuration(tessarin::NSColor color);

// The calibrated colour that a configuration describes, made by the receiving class's
// colorWithCalibratedHue:saturation:brightness:alpha: (NSColor's, unless another is named). Each value is
// read by floatValue, so that a number and the text of one serve alike; a missing key is 0, and a nil
// configuration gives transparent black. Values outside their scales are handed on as they are. What the
// platform raises for a value that does not answer floatValue passes through: NSInvalidArgumentException.
//
//   tessarin_colorWithConfiguration(configuration)
TESSARIN_EXPORT tessarin::NSColor tessarin_colorWithConfiguration(tessarin::NSDictionary configuration);
TESSARIN_EXPORT tessarin::NSColor tessarin_colorWithConfiguration(tessarin::Class receiver,
                                                                  tessarin::NSDictionary configuration);
template <tessarin::HandleType Receiver>
Receiver tessarin_colorWithConfiguration(tessarin::NSDictionary configuration) {
    return Receiver(static_cast<tessarin::NSObject>(
        tessarin_colorWithConfiguration(Receiver::classObject(), configuration)));
}

// Red, green, blue and, where it is wanted, alpha: two upper-case hexadecimal digits each, without a prefix.
// A component times 255 is cut to an integer, not rounded: 0.999 gives FE, 0.5 gives 7F.
//
// Nothing is brought back into the range from 0 to 1, which is meant: where the colour hands out 1.2 the
// string has 132, and FFFFFFE7, the 32 bits of -25, for -0.1. What no signed 32-bit integer holds becomes the
// nearest that there is, and what is no number 0.
//
//   tessarin_hexadecimalRGBStringWithAlpha(color, true)   // FF8000FF
TESSARIN_EXPORT tessarin::NSString tessarin_hexadecimalRGBStringWithAlpha(tessarin::NSColor color,
                                                                          bool alpha);

// The calibrated colour of a hexadecimal string, made by the receiving class's
// colorWithCalibratedRed:green:blue:alpha:. nil for nil.
//
// The string is read as one unsigned 32-bit number, 0xRRGGBBAA, as the platform's NSScanner reads it: white
// space and then 0x or 0X may come first, the number ends where the hexadecimal digits end, one that is too
// large counts as FFFFFFFF, and a string that does not begin with one, #FF0000FF or the empty string, as 0,
// transparent black.
//
// The last byte is always alpha, so that the six digits that the writer gives without alpha do not read back
// as the same colour: FF0000 is a fully transparent green. This is meant.
//
//   tessarin_colorWithHexadecimalRGBAString("FF0000FF"_ns)   // opaque red
TESSARIN_EXPORT tessarin::NSColor tessarin_colorWithHexadecimalRGBAString(tessarin::NSString string);
TESSARIN_EXPORT tessarin::NSColor tessarin_colorWithHexadecimalRGBAString(tessarin::Class receiver,
                                                                          tessarin::NSString string);
template <tessarin::HandleType Receiver>
Receiver tessarin_colorWithHexadecimalRGBAString(tessarin::NSString string) {
    return Receiver(static_cast<tessarin::NSObject>(
        tessarin_colorWithHexadecimalRGBAString(Receiver::classObject(), string)));
}

#endif
