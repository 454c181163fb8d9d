// Effect-parameter descriptions as arrays of eight elements.
//
// The writer's array and the reader's differ in positions 1 and 2. That is meant: each layout is fixed.
#include "TessarinFoundation/TSSRAudio.h"

#include "TessarinPlatform/NSMutableArray.h"
#include "TessarinPlatform/Retained.h"
#include "audio/ElementReading.h"

using namespace tessarin;
using audio::numberAt;
using audio::unsigned32At;

NSArray TSSRArrayFromAudioUnitParameterInfo(AudioUnitParameterInfo information) {
    const Retained<NSMutableArray> elements = adopt(NSMutableArray::alloc().initWithCapacity(8));
    elements.addObject(information.unitName);
    elements.addObject(information.cfNameString);
    elements.addObject(NSNumber::numberWithUnsignedInteger(information.clumpID));
    elements.addObject(NSNumber::numberWithUnsignedInteger(information.unit));
    elements.addObject(NSNumber::numberWithDouble(static_cast<double>(information.minValue)));
    elements.addObject(NSNumber::numberWithDouble(static_cast<double>(information.maxValue)));
    elements.addObject(NSNumber::numberWithDouble(static_cast<double>(information.defaultValue)));
    elements.addObject(NSNumber::numberWithUnsignedInteger(information.flags));
    return NSArray::arrayWithArray(elements);
}

AudioUnitParameterInfo TSSRAudioUnitParameterInfoFromArray(NSArray array) {
    AudioUnitParameterInfo information; // `name` stays unset: no array carries it
    // The two strings come first, before anything is converted, and in this order: 0, 2, 1, 3, ... What is
    // retained here stays retained when a later element raises.
    information.unitName = retain(as<NSString>(array.objectAtIndex(0))).leak();
    information.cfNameString = retain(as<NSString>(array.objectAtIndex(2))).leak();
    information.clumpID = unsigned32At(array, 1);
    information.unit = unsigned32At(array, 3);
    information.minValue = numberAt(array, 4).floatValue();
    information.maxValue = numberAt(array, 5).floatValue();
    information.defaultValue = numberAt(array, 6).floatValue();
    information.flags = unsigned32At(array, 7);
    return information;
}
