// The stream format that the benchmarks carry, CD audio in packed 16-bit samples, and what it looks like as
// plain numbers.
#pragma once

#include "TessarinPlatform/AudioTypes.h"

namespace bench {

inline constexpr tessarin::AudioStreamBasicDescription streamFormat{
    .mSampleRate = 44100,
    .mFormatID = 0x6C70636D, // 'lpcm'
    .mFormatFlags = 12,
    .mBytesPerPacket = 4,
    .mFramesPerPacket = 1,
    .mBytesPerFrame = 4,
    .mChannelsPerFrame = 2,
    .mBitsPerChannel = 16,
    .mReserved = 0,
};

} // namespace bench
