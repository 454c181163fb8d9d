#include <TessarinFoundation/TessarinFoundation.h>
#include <TessarinPlatform/TessarinPlatform.h>

#include <iostream>
#include <string_view>

using namespace tessarin;

int main() {
    const AutoreleasePool pool;
    const AudioStreamBasicDescription format{44100, 0x6C70636D, 12, 4, 1, 4, 2, 16, 0}; // 'lpcm'
    AudioUnitParameterInfo gain{};
    gain.unitName = "dB"_ns;
    gain.cfNameString = "Gain"_ns;
    gain.unit = 13; // decibels
    gain.minValue = -60;
    gain.maxValue = 12;
    gain.flags = 1u << 31;
    const AudioComponentDescription delay{0x61756678, 0x64656C79, 0x41636D65, 0, 0}; // 'aufx' 'dely' 'Acme'
    const NSColor orange = NSColor::colorWithCalibratedRed_green_blue_alpha(1, 0.5, 0, 1);
    const NSSortDescriptor byName = NSSortDescriptor::sortDescriptorWithKey_ascending("name"_ns, true);

    const Retained<NSMutableDictionary> preferences = adopt(NSMutableDictionary::alloc().init());
    const auto keep = [&](NSString key, NSObject value) {
        preferences.setObject_forKey(tessarin_propertyListForValue(value), key);
    };
    keep("1 stream format"_ns, TSSRArrayFromASBD(format));
    keep("2 parameter"_ns, TSSRArrayFromAudioUnitParameterInfo(gain));
    keep("3 component"_ns,
         TSSRIdentifierStringFromAudioComponentDescriptionAndManufacturer(delay, "Acme"_ns));
    keep("4 colour"_ns, orange);
    keep("5 colour"_ns, tessarin_hexadecimalRGBStringWithAlpha(orange, true));
    keep("6 sort order"_ns, byName);

    const NSData document = NSPropertyListSerialization::dataWithPropertyList_format_options_error(
        preferences, NSPropertyListXMLFormat_v1_0, 0, nullptr);
    std::cout << std::string_view(static_cast<const char*>(document.bytes()), document.length());
}
