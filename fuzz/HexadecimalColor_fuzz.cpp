// The scanner of hexadecimal numbers and the reader of colours: any text gives a colour, the one that the
// digits say, and what is written of it reads back as the same.
//
// The input is UTF-16, the less significant byte first, or where its first byte is odd, Latin-1.
#include "Require.h"

#include "TessarinFoundation/NSColor+TessarinExtensions.h"
#include "TessarinPlatform/TessarinPlatform.h"

#include <string>

using namespace tessarin;
using fuzzing::require;

namespace {

std::u16string unitsOf(const std::uint8_t* data, std::size_t size) {
    std::u16string units;
    if (data[0] & 1) {
        units.assign(data + 1, data + size);
    } else {
        for (std::size_t index = 1; index + 1 < size; index += 2)
            units += static_cast<unichar>(data[index] | data[index + 1] << 8);
    }
    return units;
}

int digitOf(char16_t unit) {
    const std::u16string digits = u"0123456789abcdef0123456789ABCDEF";
    const std::size_t place = digits.find(unit);
    return place == digits.npos ? -1 : static_cast<int>(place % 16);
}

struct Scan {
    bool isFound;
    unsigned value;
    std::size_t end;
};

// What a scan comes to, step by step and in another way than the platform's.
Scan expectedScan(const std::u16string& units) {
    const NSCharacterSet space = NSCharacterSet::whitespaceAndNewlineCharacterSet();
    std::size_t place = 0;
    while (place < units.size() && space.characterIsMember(units[place])) ++place;
    if (units.substr(place, 2) == u"0x" || units.substr(place, 2) == u"0X")
        if (place + 2 < units.size() && digitOf(units[place + 2]) >= 0) place += 2;
    const std::size_t first = place;
    while (place < units.size() && digitOf(units[place]) >= 0) ++place;
    if (place == first) return {false, 0, 0};
    std::size_t start = first;
    while (start < place && units[start] == u'0') ++start;
    if (place - start > 8) return {true, 0xFFFFFFFF, place};
    unsigned value = 0;
    for (; start < place; ++start) value = value * 16 + static_cast<unsigned>(digitOf(units[start]));
    return {true, value, place};
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    if (size == 0) return 0;
    const AutoreleasePool pool;
    const std::u16string units = unitsOf(data, size);
    const NSString string(units);

    const Scan expected = expectedScan(units);
    const NSScanner scanner = NSScanner::scannerWithString(string);
    unsigned value = 0;
    require(scanner.scanHexInt(&value) == expected.isFound, "a number is found where there is one");
    require(value == expected.value, "the number is what its digits say");
    require(scanner.scanLocation() == expected.end, "all digits are scanned, and nothing else");

    const NSColor color = tessarin_colorWithHexadecimalRGBAString(string);
    require(bool(color), "any text gives a colour");
    const NSString written = tessarin_hexadecimalRGBStringWithAlpha(color, true);
    require(written.isEqualToString(NSString::stringWithFormat("%08X"_ns, value)),
            "the colour is the one that the number says");
    const NSColor back = tessarin_colorWithHexadecimalRGBAString(written);
    require(back.isEqual(color), "what is written reads back as the same colour");

    // All other scans come to an end, and move on where they find something.
    for (int scans = 0; !scanner.isAtEnd(); ++scans) {
        require(scans <= static_cast<int>(units.size()), "a scan that finds something moves on");
        const NSUInteger before = scanner.scanLocation();
        double real = 0;
        long long integer = 0;
        const bool isFound = scanner.scanLongLong(&integer) || scanner.scanDouble(&real)
                             || scanner.scanHexInt(&value) || scanner.scanString_intoString("ab"_ns, nullptr)
                             || scanner.scanUpToString_intoString("AB"_ns, nullptr);
        require(isFound && scanner.scanLocation() > before, "some scan finds what is left");
    }
    return 0;
}
