// Audio descriptions as arrays and one-line strings, so that they can be kept wherever property lists can.
//
// Eight plain functions and one constant. They are C symbols; the two faces declare the same ones. No
// function reports an error of its own: bad input shows as nil, as zeros or as an untouched out-pointer where
// that is said, and the platform's exceptions pass through. Every function may be called on any thread.
#pragma once

#include "TessarinPlatform/AudioTypes.h"
#include "TessarinPlatform/detail/LibraryAnchor.h"
#include "TessarinPlatform/detail/ObjectiveCOwnership.h"

#if defined(__OBJC__)
#    import <Foundation/NSArray.h>
#    import <Foundation/NSString.h>
#    define TESSARIN_FACE(HandleType) HandleType*
#    define TESSARIN_PLATFORM_TYPE(Type) Type
#    define TESSARIN_CONSTANT(HandleType) HandleType* const
#    define TESSARIN_BOOL BOOL
#else
#    include "TessarinPlatform/NSArray.h"
#    define TESSARIN_FACE(HandleType) tessarin::HandleType
#    define TESSARIN_PLATFORM_TYPE(Type) tessarin::Type
#    define TESSARIN_CONSTANT(HandleType) const tessarin::HandleType
#    define TESSARIN_BOOL tessarin::BOOL
#endif

TESSARIN_C_DECLARATIONS_BEGIN

// The domain "Tessarin Error Domain", for the errors of applications. The library itself makes none in it.
TESSARIN_EXPORT extern TESSARIN_CONSTANT(NSString) TSSRErrorDomain;

// ---- Stream formats

// A stream format as an immutable array of nine numbers, autoreleased, in the order of the structure's
// fields:
//
//   0 mSampleRate        a double             5 mBytesPerFrame      an unsigned long
//   1 mFormatID          an unsigned long     6 mChannelsPerFrame   an unsigned long
//   2 mFormatFlags       an unsigned long     7 mBitsPerChannel     an unsigned long
//   3 mBytesPerPacket    an unsigned long     8 mReserved           an unsigned long
//   4 mFramesPerPacket   an unsigned long
//
// This is a stored format: applications keep such arrays. Every field survives the way there and back.
//
//   preferences.setObject_forKey(TSSRArrayFromASBD(format), "format"_ns);
TESSARIN_EXPORT TESSARIN_FACE(NSArray)
    TSSRArrayFromASBD(TESSARIN_PLATFORM_TYPE(AudioStreamBasicDescription) format);

// The stream format that such an array holds. Position 0 is read with doubleValue, the others with
// unsignedLongValue, of which the low 32 bits are kept. Elements past the ninth are ignored. A nil array
// gives all zeros. Raises NSRangeException when the array is shorter than nine, and the unrecognised-selector
// exception (NSInvalidArgumentException) for an element that does not answer the reading: a string has a
// doubleValue but no unsignedLongValue.
//
//   AudioStreamBasicDescription format = TSSRASBDFromArray(preferences.objectForKey("format"_ns));
TESSARIN_EXPORT TESSARIN_PLATFORM_TYPE(AudioStreamBasicDescription)
    TSSRASBDFromArray(TESSARIN_FACE(NSArray) array);

// ---- Parameter descriptions

// A parameter description as an immutable array of eight elements, autoreleased:
//
//   0 unitName      the string itself            4 minValue      a double, the float widened
//   1 cfNameString  the string itself            5 maxValue      a double, the float widened
//   2 clumpID       an unsigned integer          6 defaultValue  a double, the float widened
//   3 unit          an unsigned integer          7 flags         an unsigned integer
//
// `name` is not stored. Raises NSInvalidArgumentException when unitName or cfNameString is nil, which an
// array cannot hold. This is a stored format, and not the one that TSSRAudioUnitParameterInfoFromArray reads:
// that function expects positions 1 and 2 the other way round. Both layouts are meant.
//
//   NSArray kept = TSSRArrayFromAudioUnitParameterInfo(information);
TESSARIN_EXPORT TESSARIN_FACE(NSArray)
    TSSRArrayFromAudioUnitParameterInfo(TESSARIN_PLATFORM_TYPE(AudioUnitParameterInfo) information);

// The parameter description that an array holds in the reader's own layout: unitName, clumpID, cfNameString,
// unit, minValue, maxValue, defaultValue, flags. The two strings are the elements themselves, each retained
// for the caller, who releases them. The numbers are read with unsignedLongValue, of which the low 32 bits
// are kept, and floatValue. `name` is left unset: do not read it. Elements past the eighth are ignored; a nil
// array gives zeros and nil strings.
//
// Elements are fetched in the order 0, 2, 1, 3, 4, 5, 6, 7. Raises NSRangeException when the array is shorter
// than eight, and the unrecognised-selector exception for an element that does not answer the reading, an
// array that TSSRArrayFromAudioUnitParameterInfo made among them. What was retained before the exception
// stays retained, since no structure reaches the caller through which it could be released: check arrays of
// doubtful origin first.
//
//   AudioUnitParameterInfo information = TSSRAudioUnitParameterInfoFromArray(array);
//   Retained<NSString> unitName = adopt(information.unitName), name = adopt(information.cfNameString);
TESSARIN_EXPORT TESSARIN_PLATFORM_TYPE(AudioUnitParameterInfo)
    TSSRAudioUnitParameterInfoFromArray(TESSARIN_FACE(NSArray) array);

// ---- The identity of audio components

// The name part of a component's display name, which by convention reads «Manufacturer: Name», autoreleased.
// The name is split at its first colon: the part after it is the result, the part before it the manufacturer,
// both without spaces and tabs at their ends. Without a colon the whole name, as it stands, is the result,
// and nil is stored for the manufacturer. nil when the platform gives no name for the component, and for a
// null component; then nothing is stored.
//
// `manufacturer` may be null. A string stored through it is retained for the caller, who releases it; with
// automatic reference counting it is stored in a strong variable, which is nil before.
//
//   NSString manufacturer;
//   NSString name = TSSRGetAudioComponentName(component, &manufacturer); // «Delay», and «Acme»
//   Retained<NSString> owned = adopt(manufacturer);
TESSARIN_EXPORT TESSARIN_FACE(NSString)
    TSSRGetAudioComponentName(TESSARIN_PLATFORM_TYPE(AudioComponent) component,
                              TESSARIN_FACE(NSString) TESSARIN_STORED_RETAINED* manufacturer);

// A component's identity as one line, autoreleased: the manufacturer name and ": " unless the name is nil,
// then the type, subtype and manufacturer codes as four characters each, separated by "; ". An empty
// manufacturer name still gives ": ". The flags are not part of it. This is a stored format.
//
// What does not survive being read back: a manufacturer name with a colon, a code with a semicolon, a code
// with a colon where no name is written, and a code that begins with a space, a tab or a no-break space. A
// code that the platform has no string for is left out together with its separator.
//
//   NSString line = TSSRIdentifierStringFromAudioComponentDescriptionAndManufacturer(description, "Acme"_ns);
//   // Acme: aufx; dely; Acme
TESSARIN_EXPORT TESSARIN_FACE(NSString) TSSRIdentifierStringFromAudioComponentDescriptionAndManufacturer(
    TESSARIN_PLATFORM_TYPE(AudioComponentDescription) description, TESSARIN_FACE(NSString) manufacturer);

// The description that such a line holds; its flags are 0. What stands before the first colon is the
// manufacturer name, as it stands. What follows must be exactly three pieces separated by ";"; leading spaces
// and tabs of each are left out. With another number of pieces all codes are 0; a piece that is no
// four-character code gives 0 for that code.
//
// `manufacturer` may be null. Without a colon nothing is stored through it; otherwise a string retained for
// the caller, who releases it. A nil identifier gives zeros, and nil is stored.
//
//   NSString maker;
//   const auto description = TSSRAudioComponentDescriptionFromIdentifierString(line, &maker);
//   const Retained<NSString> owned = adopt(maker);
TESSARIN_EXPORT TESSARIN_PLATFORM_TYPE(AudioComponentDescription)
    TSSRAudioComponentDescriptionFromIdentifierString(TESSARIN_FACE(NSString) identifier,
                                                      TESSARIN_FACE(NSString)
                                                          TESSARIN_STORED_RETAINED* manufacturer);

// Whether two descriptions are of the same component: equal type, subtype and manufacturer. The flags do not
// count.
//
//   TSSREqualAudioComponentDescriptions(found, remembered)   // YES also where only the flags differ
TESSARIN_EXPORT
TESSARIN_BOOL TSSREqualAudioComponentDescriptions(TESSARIN_PLATFORM_TYPE(AudioComponentDescription) left,
                                                  TESSARIN_PLATFORM_TYPE(AudioComponentDescription) right);

TESSARIN_C_DECLARATIONS_END

#undef TESSARIN_FACE
#undef TESSARIN_PLATFORM_TYPE
#undef TESSARIN_CONSTANT
#undef TESSARIN_BOOL
