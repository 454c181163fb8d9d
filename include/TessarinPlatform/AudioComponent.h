// The registry of audio components: what effects, instruments and other plug-ins there are, and what they are
// called. Where the platform has a registry of its own, that one is used.
#pragma once

#include "TessarinPlatform/AudioTypes.h"

#if defined(__OBJC__)
#    import <Foundation/NSError.h>
#else
#    include "TessarinPlatform/NSError.h"
#endif

#if !(defined(__APPLE__) && defined(__OBJC__))

#    if defined(__OBJC__)
#        define TESSARIN_STRING NSString*
#        define TESSARIN_STRING_OUT NSString**
#        define TESSARIN_ERROR_OUT NSError**
#    else
namespace tessarin {
#        define TESSARIN_STRING NSString
#        define TESSARIN_STRING_OUT NSString*
#        define TESSARIN_ERROR_OUT NSError*
#    endif

// What makes an instance of a component; the registry keeps it and never calls it.
typedef void* (*AudioComponentFactoryFunction)(const AudioComponentDescription* description);

TESSARIN_SYSTEM_DECLARATIONS_BEGIN

// Adds a component for the life of the process and answers it. The name is by convention «Manufacturer:
// Name», and is copied. A second registration of the same type, subtype and manufacturer is a component of
// its own. Searches find the higher version first, and of equal versions the one registered first, whatever
// components they are of. Null without a description or a name.
TESSARIN_EXPORT AudioComponent AudioComponentRegister(const AudioComponentDescription* description,
                                                      TESSARIN_STRING name, UInt32 version,
                                                      AudioComponentFactoryFunction factory)
    TESSARIN_SYSTEM_SYMBOL("_AudioComponentRegister");

// How many components fit a description. A type, subtype or manufacturer of 0 fits any; the flags of a
// component must agree in the bits of componentFlagsMask. A null description fits none.
TESSARIN_EXPORT UInt32 AudioComponentCount(const AudioComponentDescription* description)
    TESSARIN_SYSTEM_SYMBOL("_AudioComponentCount");

// The first fitting component after `component`, or the first of all when that is null; null when there is
// none.
//
//   while ((component = AudioComponentFindNext(component, &wanted))) ...
TESSARIN_EXPORT AudioComponent AudioComponentFindNext(AudioComponent component,
                                                      const AudioComponentDescription* description)
    TESSARIN_SYSTEM_SYMBOL("_AudioComponentFindNext");

// Stores a component's description. 0 for success, -50 for a null argument.
TESSARIN_EXPORT OSStatus AudioComponentGetDescription(AudioComponent component,
                                                      AudioComponentDescription* description)
    TESSARIN_SYSTEM_SYMBOL("_AudioComponentGetDescription");

// Stores a component's name, which the caller owns; nil when the name that it was registered with has no
// copy, which only a string of an application's class may have. 0 for success, -50 for a null argument; then
// nothing is stored.
TESSARIN_EXPORT OSStatus AudioComponentCopyName(AudioComponent component, TESSARIN_STRING_OUT name)
    TESSARIN_SYSTEM_SYMBOL("_AudioComponentCopyName");

// Stores a component's version. 0 for success, -50 for a null argument.
TESSARIN_EXPORT OSStatus AudioComponentGetVersion(AudioComponent component, UInt32* version)
    TESSARIN_SYSTEM_SYMBOL("_AudioComponentGetVersion");

#    if !(defined(__APPLE__) && TESSARIN_PLATFORM_NATIVE)
// Registers what an audio-component bundle declares: the dictionaries of the array `AudioComponents` in its
// Info.plist (`type`, `subtype`, `manufacturer`: strings of four characters; `name`: a string; `version`: a
// number, 0 when it is missing). `path` is the bundle, which holds Contents/Info.plist or Info.plist, or the
// Info.plist itself. Answers how many were registered, 0 for an empty array. When the file cannot be
// read, is no property list, has no such array, or any of its dictionaries is not as it should be, nothing is
// registered, the answer is -1, and an error that says which is stored unless `error` is null:
// NSCocoaErrorDomain, with NSLocalizedDescription.
TESSARIN_EXPORT long TessarinRegisterAudioComponentsOfBundle(TESSARIN_STRING path, TESSARIN_ERROR_OUT error);
#    endif

TESSARIN_SYSTEM_DECLARATIONS_END

#    if !defined(__OBJC__)
} // namespace tessarin
#    endif
#    undef TESSARIN_STRING
#    undef TESSARIN_STRING_OUT
#    undef TESSARIN_ERROR_OUT

#endif
