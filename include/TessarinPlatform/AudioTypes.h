// The platform's audio structures, field by field as its own headers declare them, in both faces. Where the
// platform has headers for them, those are used.
#pragma once

#include "TessarinPlatform/detail/Configuration.h"

#if defined(__APPLE__) && defined(__OBJC__)
#    import <AudioToolbox/AudioToolbox.h>
#    define TESSARIN_HAS_AUDIO_TYPES 1
#elif defined(__OBJC__)
#    import <Foundation/NSString.h>
#    include <stdint.h>
#    define TESSARIN_STRING_REFERENCE NSString*
#else
#    include "TessarinPlatform/NSString.h"
#    define TESSARIN_STRING_REFERENCE NSString
#endif

#if !defined(TESSARIN_HAS_AUDIO_TYPES)
#    if !defined(__OBJC__)
namespace tessarin {
#    endif

typedef uint16_t UInt16;
typedef uint32_t UInt32;
typedef int32_t OSStatus; // 0 is success
typedef uint32_t OSType;  // four 8-bit characters, the first in the most significant byte
typedef uint32_t AudioFormatID;
typedef uint32_t AudioFormatFlags;
typedef uint32_t AudioUnitParameterUnit;
typedef uint32_t AudioUnitParameterOptions;
typedef float AudioUnitParameterValue;

// How a stream of audio is laid out.
struct AudioStreamBasicDescription {
    double mSampleRate;            // frames per second
    AudioFormatID mFormatID;       // a four-character code such as 'lpcm'
    AudioFormatFlags mFormatFlags; // bits whose meaning depends on the format
    UInt32 mBytesPerPacket;
    UInt32 mFramesPerPacket;
    UInt32 mBytesPerFrame;
    UInt32 mChannelsPerFrame;
    UInt32 mBitsPerChannel;
    UInt32 mReserved;
};
typedef struct AudioStreamBasicDescription AudioStreamBasicDescription;

// What an effect says of one of its parameters.
struct AudioUnitParameterInfo {
    char name[52];                          // unused by the library
    TESSARIN_STRING_REFERENCE unitName;     // what the unit is called when `unit` is a custom one
    UInt32 clumpID;                         // the group that the parameter belongs to
    TESSARIN_STRING_REFERENCE cfNameString; // the parameter's name
    AudioUnitParameterUnit unit;
    AudioUnitParameterValue minValue;
    AudioUnitParameterValue maxValue;
    AudioUnitParameterValue defaultValue;
    AudioUnitParameterOptions flags;
};
typedef struct AudioUnitParameterInfo AudioUnitParameterInfo;

// The identity of an audio component.
struct AudioComponentDescription {
    OSType componentType;         // 'aufx' an effect, 'aumu' an instrument, ...
    OSType componentSubType;      // the manufacturer's own code for it
    OSType componentManufacturer; // the manufacturer's code
    UInt32 componentFlags;
    UInt32 componentFlagsMask;
};
typedef struct AudioComponentDescription AudioComponentDescription;

// A registered component; only ever pointed to.
typedef struct OpaqueAudioComponent* AudioComponent;

#    if !defined(__OBJC__)
} // namespace tessarin
#    endif
#endif

#undef TESSARIN_STRING_REFERENCE
