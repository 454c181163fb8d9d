// The identity of audio components: display names, identifier strings, equality.
#include "TessarinFoundation/NSString+TessarinExtensions.h"
#include "TessarinFoundation/TSSRAudio.h"

#include "TessarinPlatform/AudioComponent.h"
#include "TessarinPlatform/FourCharacterCodes.h"
#include "TessarinPlatform/NSMutableString.h"
#include "TessarinPlatform/Retained.h"

using namespace tessarin;

namespace {

NSRange firstColon(NSString string) {
    return string.rangeOfCharacterFromSet(NSCharacterSet::characterSetWithCharactersInString(":"_ns));
}

// Stores a string that the caller owns from now on.
void handOver(NSString* destination, NSString string) {
    if (destination) *destination = retain(string).leak();
}

void appendCode(NSMutableString line, NSString format, OSType code) {
    if (const Retained<NSString> characters = adopt(UTCreateStringForOSType(code)))
        line.appendFormat(format, characters);
}

OSType codeFromPiece(NSArray pieces, NSUInteger index) {
    // Leading white space only: a code may end in spaces.
    return UTGetOSTypeFromString(tessarin_stringByTrimmingLeadingCharactersInSet(
        pieces.objectAtIndex(index), NSCharacterSet::whitespaceCharacterSet()));
}

} // namespace

NSString TSSRGetAudioComponentName(AudioComponent component, NSString* manufacturer) {
    NSString copied;
    const OSStatus status = AudioComponentCopyName(component, &copied);
    const Retained<NSString> displayName = adopt(copied);
    if (status != 0 || !displayName) return nil;

    const NSRange colon = firstColon(displayName);
    if (colon.length == 0) {
        if (manufacturer) *manufacturer = nil;
        return NSString::stringWithString(displayName);
    }
    const NSCharacterSet whitespace = NSCharacterSet::whitespaceCharacterSet();
    handOver(manufacturer,
             displayName.substringToIndex(colon.location).stringByTrimmingCharactersInSet(whitespace));
    return displayName.substringFromIndex(colon.location + colon.length)
        .stringByTrimmingCharactersInSet(whitespace);
}

NSString
TSSRIdentifierStringFromAudioComponentDescriptionAndManufacturer(AudioComponentDescription description,
                                                                 NSString manufacturer) {
    const Retained<NSMutableString> line = adopt(NSMutableString::alloc().init());
    if (manufacturer) line.appendFormat("%@: "_ns, manufacturer);
    appendCode(line, "%@; "_ns, description.componentType);
    appendCode(line, "%@; "_ns, description.componentSubType);
    appendCode(line, "%@"_ns, description.componentManufacturer);
    return NSString::stringWithString(line);
}

AudioComponentDescription TSSRAudioComponentDescriptionFromIdentifierString(NSString identifier,
                                                                            NSString* manufacturer) {
    AudioComponentDescription description{};
    if (!identifier) {
        if (manufacturer) *manufacturer = nil;
        return description;
    }
    NSString codes = identifier;
    if (const NSRange colon = firstColon(identifier); colon.length != 0) {
        // As it stands, not trimmed. Without a colon nothing is stored at all, not even nil; both are meant.
        handOver(manufacturer, identifier.substringToIndex(colon.location));
        codes = identifier.substringFromIndex(colon.location + colon.length);
    }
    const NSArray pieces = codes.componentsSeparatedByString(";"_ns);
    if (pieces.count() != 3) return description;
    description.componentType = codeFromPiece(pieces, 0);
    description.componentSubType = codeFromPiece(pieces, 1);
    description.componentManufacturer = codeFromPiece(pieces, 2);
    return description;
}

BOOL TSSREqualAudioComponentDescriptions(AudioComponentDescription left, AudioComponentDescription right) {
    return left.componentType == right.componentType && left.componentSubType == right.componentSubType
           && left.componentManufacturer == right.componentManufacturer;
}
