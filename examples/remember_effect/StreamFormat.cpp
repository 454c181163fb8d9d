#include "StreamFormat.h"

#include "Text.h"

#include <TessarinPlatform/FourCharacterCodes.h>
#include <TessarinPlatform/Retained.h>

#include <charconv>
#include <ostream>

using namespace tessarin;

namespace {

constexpr AudioFormatID linearPCMFormat = 0x6C70636D; // 'lpcm'

// The flags of linear PCM, as the platform's audio headers number them.
constexpr AudioFormatFlags isFloat = 1;
constexpr AudioFormatFlags isSignedInteger = 4;
constexpr AudioFormatFlags isPacked = 8;

// The shortest decimal number that reads back as the same double.
std::string shortest(double number) {
    char digits[32];
    return {digits, std::to_chars(std::begin(digits), std::end(digits), number).ptr};
}

} // namespace

AudioStreamBasicDescription linearPCM(double sampleRate, UInt32 channels, UInt32 bitsPerChannel) {
    const UInt32 bytesPerFrame = channels * (bitsPerChannel / 8);
    return {.mSampleRate = sampleRate,
            .mFormatID = linearPCMFormat,
            .mFormatFlags = isPacked | (bitsPerChannel == 32 ? isFloat : isSignedInteger),
            .mBytesPerPacket = bytesPerFrame,
            .mFramesPerPacket = 1,
            .mBytesPerFrame = bytesPerFrame,
            .mChannelsPerFrame = channels,
            .mBitsPerChannel = bitsPerChannel,
            .mReserved = 0};
}

void printStreamFormat(std::ostream& stream, const AudioStreamBasicDescription& format) {
    const Retained<NSString> formatID = adopt(UTCreateStringForOSType(format.mFormatID));
    stream << "sample rate   " << shortest(format.mSampleRate) << " frames per second\n"
           << "format        " << text(formatID) << ", flags " << format.mFormatFlags << '\n'
           << "packet        " << format.mBytesPerPacket << " bytes, frames: " << format.mFramesPerPacket
           << '\n'
           << "frame         " << format.mBytesPerFrame << " bytes, channels: " << format.mChannelsPerFrame
           << '\n'
           << "channel       " << format.mBitsPerChannel << " bits\n"
           << "reserved      " << format.mReserved << '\n';
}
