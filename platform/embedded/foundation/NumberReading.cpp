#include "platform/embedded/foundation/NumberReading.h"

#include <algorithm>
#include <charconv>
#include <cmath>
#include <string>

namespace tessarin::embedded {

std::optional<double> readReal(StringView text, std::size_t& place) {
    TextReader reader(text, place);
    const bool isNegative = reader.skipSign();
    std::string number;
    const auto readDigits = [&] {
        for (; isDecimalDigit(reader.unit()); reader.advance()) number += static_cast<char>(reader.unit());
    };
    readDigits();
    const std::size_t wholeDigits = number.size();
    if (reader.skip('.')) {
        number += '.';
        readDigits();
        if (number.size() == 1) return {};
    }
    if (number.empty()) return {};

    // The exponent is held where every number has long become zero or infinity.
    constexpr long long farthest = std::numeric_limits<int>::max();
    long long exponent = 0;
    if (reader.unit() == 'e' || reader.unit() == 'E') {
        const bool hasSign = reader.unit(1) == '+' || reader.unit(1) == '-';
        if (isDecimalDigit(reader.unit(hasSign ? 2 : 1))) {
            reader.advance();
            const bool isSmall = reader.skipSign();
            for (; isDecimalDigit(reader.unit()); reader.advance())
                exponent = std::min(exponent * 10 + (reader.unit() - '0'), farthest);
            if (isSmall) exponent = -exponent;
            number += 'e' + std::to_string(exponent);
        }
    }
    place = reader.place();

    double value = 0;
    const auto result = std::from_chars(number.data(), number.data() + number.size(), value);
    if (result.ec == std::errc::result_out_of_range) {
        // Of which kind, the place of the first digit that counts tells.
        const std::size_t first = number.find_first_of("123456789");
        const long long magnitude =
            static_cast<long long>(wholeDigits) - static_cast<long long>(first) + exponent;
        value = magnitude > 0 ? HUGE_VAL : 0;
    }
    return isNegative ? -value : value;
}

} // namespace tessarin::embedded
