// Names to escape and to unescape, of a size in characters: without anything to escape, with an escape in
// every sixteenth character, and with little else.
#pragma once

#include <cstdint>
#include <string>

namespace bench {

// In UTF-8.
inline std::string repeated(const std::u8string& pattern, std::int64_t characters) {
    std::string name;
    for (std::int64_t count = 0; count < characters;)
        for (const char8_t byte : pattern) {
            if ((byte & 0xC0) != 0x80 && count++ == characters) break;
            name += static_cast<char>(byte);
        }
    return name;
}

inline std::string cleanName(std::int64_t characters) { return repeated(u8"Take_12-Overdubs.", characters); }
inline std::string ordinaryName(std::int64_t characters) {
    return repeated(u8"Vocals-Take_012 ", characters);
}
inline std::string denseName(std::int64_t characters) { return repeated(u8"あé /ワ中", characters); }

// What of ASCII stays as it is, letters and digits apart.
inline constexpr char unescaped[] = "!'()*-._~";

} // namespace bench
