// Stream formats as arrays of nine numbers.
#include "TessarinFoundation/TSSRAudio.h"

#include "TessarinPlatform/NSNumber.h"

using namespace tessarin;

namespace {

// The low 32 bits of what the element answers, whatever object it is.
UInt32 unsigned32At(NSArray array, NSUInteger index) {
    return static_cast<UInt32>(as<NSNumber>(array.objectAtIndex(index)).unsignedLongValue());
}

} // namespace

NSArray TSSRArrayFromASBD(AudioStreamBasicDescription format) {
    return NSArray::arrayOf(NSNumber::numberWithDouble(format.mSampleRate),
                            NSNumber::numberWithUnsignedLong(format.mFormatID),
                            NSNumber::numberWithUnsignedLong(format.mFormatFlags),
                            NSNumber::numberWithUnsignedLong(format.mBytesPerPacket),
                            NSNumber::numberWithUnsignedLong(format.mFramesPerPacket),
                            NSNumber::numberWithUnsignedLong(format.mBytesPerFrame),
                            NSNumber::numberWithUnsignedLong(format.mChannelsPerFrame),
                            NSNumber::numberWithUnsignedLong(format.mBitsPerChannel),
                            NSNumber::numberWithUnsignedLong(format.mReserved));
}

AudioStreamBasicDescription TSSRASBDFromArray(NSArray array) {
    // A braced list is evaluated from left to right: the elements are fetched in order.
    return {as<NSNumber>(array.objectAtIndex(0)).doubleValue(),
            unsigned32At(array, 1),
            unsigned32At(array, 2),
            unsigned32At(array, 3),
            unsigned32At(array, 4),
            unsigned32At(array, 5),
            unsigned32At(array, 6),
            unsigned32At(array, 7),
            unsigned32At(array, 8)};
}
