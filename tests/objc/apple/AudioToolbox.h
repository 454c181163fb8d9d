// Stands in for the system's audio types: see Foundation.h.
#pragma once

#import "Foundation.h"

typedef uint16_t UInt16;
typedef uint32_t UInt32;
typedef struct AudioStreamBasicDescription {
    double mSampleRate;
    UInt32 mFormatID, mFormatFlags, mBytesPerPacket, mFramesPerPacket, mBytesPerFrame, mChannelsPerFrame,
        mBitsPerChannel, mReserved;
} AudioStreamBasicDescription;
typedef struct AudioUnitParameterInfo {
    char name[52];
    CFStringRef unitName;
    UInt32 clumpID;
    CFStringRef cfNameString;
    UInt32 unit;
    float minValue, maxValue, defaultValue;
    UInt32 flags;
} AudioUnitParameterInfo;
typedef struct AudioComponentDescription {
    UInt32 componentType, componentSubType, componentManufacturer, componentFlags, componentFlagsMask;
} AudioComponentDescription;
typedef struct OpaqueAudioComponent *AudioComponent;
