// Stream formats as arrays of nine numbers.
#include "TessarinFoundation/TSSRAudio.h"

#include "audio/ElementReading.h"

using namespace tessarin;
using audio::numberAt;
using audio::unsigned32At;

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
    return {numberAt(array, 0).doubleValue(), unsigned32At(array, 1), unsigned32At(array, 2),
            unsigned32At(array, 3),           unsigned32At(array, 4), unsigned32At(array, 5),
            unsigned32At(array, 6),           unsigned32At(array, 7), unsigned32At(array, 8)};
}
