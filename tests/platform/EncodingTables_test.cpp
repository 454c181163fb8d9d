// Every unit and every byte sequence of every encoding with a table, against the C library's iconv.
#include "PlatformTest.h"

#include "TessarinPlatform/PercentEscapes.h"

#if __has_include(<iconv.h>)
#    include <iconv.h>

#    include <algorithm>
#    include <ostream>

namespace tessarin::testing {
namespace {

class Conversion {
public:
    Conversion(const char* to, const char* from) : descriptor_(iconv_open(to, from)) {}
    Conversion(const Conversion&) = delete;
    Conversion& operator=(const Conversion&) = delete;
    ~Conversion() {
        if (isThere()) iconv_close(descriptor_);
    }
    bool isThere() const { return descriptor_ != reinterpret_cast<iconv_t>(-1); }

    // The whole input converted, with what leads back to the first state; empty where that cannot be done.
    std::string operator()(std::string input) {
        char output[16];
        char* next = output;
        std::size_t left = sizeof output;
        iconv(descriptor_, nullptr, nullptr, nullptr, nullptr);
        char* from = input.data();
        std::size_t fromLeft = input.size();
        if (iconv(descriptor_, &from, &fromLeft, &next, &left) != 0 || fromLeft > 0) return {};
        if (iconv(descriptor_, nullptr, nullptr, &next, &left) != 0) return {};
        return std::string(output, next);
    }

private:
    iconv_t descriptor_;
};

struct UnitRange {
    unichar first, last;
};

struct Encoding {
    CFStringEncoding number;
    const char* name;
    bool hasLongCharacters = false; // of more bytes than one
    // Units of which this machine's iconv thinks otherwise.
    std::vector<UnitRange> disputed = {};

    bool isDisputed(unichar unit) const {
        for (const UnitRange& range : disputed)
            if (unit >= range.first && unit <= range.last) return true;
        return false;
    }
    friend std::ostream& operator<<(std::ostream& stream, const Encoding& encoding) {
        return stream << encoding.name;
    }
};

class EncodingTablesTest : public ::testing::TestWithParam<Encoding> {
protected:
    void SetUp() override {
        if (!toBytes.isThere() || !toUnits.isThere()) GTEST_SKIP() << "iconv does not have it";
    }

    // Of one unit, by way of its escapes.
    static std::string bytesOf(unichar unit) {
        const AutoreleasePool pool;
        const Retained<NSString> escaped = adopt(CFURLCreateStringByAddingPercentEscapes(
            kCFAllocatorDefault, NSString(std::u16string_view(&unit, 1)), nil, nil, GetParam().number));
        const std::string escapes(escaped);
        std::string bytes;
        for (std::size_t index = 0; index < escapes.size(); index += 3)
            bytes += static_cast<char>(std::stoi(escapes.substr(index + 1, 2), nullptr, 16));
        return bytes;
    }
    // Of escapes of bytes.
    static std::u16string unitsOf(const std::string& bytes) {
        const AutoreleasePool pool;
        std::string escapes;
        for (const char byte : bytes) {
            char escape[4];
            std::snprintf(escape, sizeof escape, "%%%02x", unsigned{static_cast<unsigned char>(byte)});
            escapes += escape;
        }
        return static_cast<std::u16string>(adopt(CFURLCreateStringByReplacingPercentEscapesUsingEncoding(
            kCFAllocatorDefault, NSString(escapes), ""_ns, GetParam().number)));
    }

    // UTF-16 in its big-endian form.
    static std::string bigEndian(unichar unit) {
        return {static_cast<char>(unit >> 8), static_cast<char>(unit & 0xFF)};
    }
    static std::u16string units(const std::string& bigEndian) {
        std::u16string result;
        for (std::size_t index = 0; index + 1 < bigEndian.size(); index += 2)
            result += static_cast<unichar>(static_cast<unsigned char>(bigEndian[index]) << 8
                                           | static_cast<unsigned char>(bigEndian[index + 1]));
        return result;
    }

    void expectSame(const std::string& bytes) {
        const std::u16string expected = units(toUnits(bytes)), found = unitsOf(bytes);
        const bool isDisputed =
            std::ranges::any_of(expected + found, [](unichar unit) { return GetParam().isDisputed(unit); });
        if (!isDisputed) {
            EXPECT_EQ(found, expected) << ::testing::PrintToString(bytes);
        }
    }

    Conversion toBytes{GetParam().name, "UTF-16BE"}, toUnits{"UTF-16BE", GetParam().name};
};

TEST_P(EncodingTablesTest, EveryUnitHasTheBytesThatSayItAgain) {
    for (unsigned number = 0x80; number < 0x10000; ++number) {
        const auto unit = static_cast<unichar>(number);
        if ((unit & 0xF800) == 0xD800 || GetParam().isDisputed(unit)) continue;
        std::string expected = toBytes(bigEndian(unit));
        if (toUnits(expected) != bigEndian(unit)) expected.clear();
        // iconv takes composed letters apart.
        if (expected.size() > 1 && !GetParam().hasLongCharacters) expected.clear();
        EXPECT_EQ(bytesOf(unit), expected) << std::hex << number;
    }
}

TEST_P(EncodingTablesTest, EveryByteSequenceHasItsUnits) {
    for (unsigned first = 0x80; first < 0x100; ++first) {
        const std::string lead(1, static_cast<char>(first));
        expectSame(lead);
        if (!toUnits(lead).empty()) continue;
        for (unsigned second = 0x00; second < 0x100; ++second) {
            expectSame(lead + static_cast<char>(second));
            if (first == 0x8F)
                for (unsigned third = 0x00; third < 0x100; ++third)
                    expectSame(lead + static_cast<char>(second) + static_cast<char>(third));
        }
    }
}

INSTANTIATE_TEST_SUITE_P(
    , EncodingTablesTest,
    ::testing::Values(
        // The increment and the maker's mark are Apple's own mapping.
        Encoding{0x0000,
                 "MACINTOSH",
                 false,
                 {{0x0394, 0x0394}, {0x2206, 0x2206}, {0xE01E, 0xE01E}, {0xF8FF, 0xF8FF}}},
        Encoding{0x0201, "ISO-8859-1"}, Encoding{0x0202, "ISO-8859-2"}, Encoding{0x0203, "ISO-8859-3"},
        Encoding{0x0204, "ISO-8859-4"}, Encoding{0x0205, "ISO-8859-5"}, Encoding{0x0206, "ISO-8859-6"},
        Encoding{0x0207, "ISO-8859-7"}, Encoding{0x0208, "ISO-8859-8"}, Encoding{0x0209, "ISO-8859-9"},
        Encoding{0x020A, "ISO-8859-10"}, Encoding{0x020B, "ISO-8859-11"}, Encoding{0x020D, "ISO-8859-13"},
        Encoding{0x020E, "ISO-8859-14"}, Encoding{0x020F, "ISO-8859-15"}, Encoding{0x0210, "ISO-8859-16"},
        // Single bytes that Microsoft's converters take too.
        Encoding{0x0420, "CP932", true, {{0x0080, 0x0080}, {0xF8F0, 0xF8F3}}}, Encoding{0x0500, "CP1252"},
        Encoding{0x0501, "CP1250"}, Encoding{0x0502, "CP1251"}, Encoding{0x0503, "CP1253"},
        Encoding{0x0504, "CP1254"}, Encoding{0x0505, "CP1255"}, Encoding{0x0506, "CP1256"},
        Encoding{0x0507, "CP1257"}, Encoding{0x0508, "CP1258"}, Encoding{0x0820, "ISO-2022-JP", true},
        // The upper control characters, which few take.
        Encoding{0x0920, "EUC-JP", true, {{0x0080, 0x009F}}},
        // The backslash and the tilde, which file names need, stand in the places of these.
        Encoding{0x0A01, "SJIS", true, {{0x00A5, 0x00A5}, {0x203E, 0x203E}}}, Encoding{0x0A02, "KOI8-R"}),
    [](const auto& instance) {
        std::string name = instance.param.name;
        std::erase(name, '-');
        return name;
    });

} // namespace
} // namespace tessarin::testing

#endif
