// Linear PCM stream formats.
#pragma once

#include <TessarinPlatform/AudioTypes.h>

#include <iosfwd>

// Interleaved, packed, little-endian samples: floating-point numbers for 32 bits, otherwise signed integers.
// `bitsPerChannel` is a multiple of 8.
tessarin::AudioStreamBasicDescription linearPCM(double sampleRate, tessarin::UInt32 channels,
                                                tessarin::UInt32 bitsPerChannel);

// Prints every field, one kind a line.
void printStreamFormat(std::ostream& stream, const tessarin::AudioStreamBasicDescription& format);
