// A format taken apart: its conversions and the text between them, and what is taken from the arguments.
#pragma once

#include <cstddef>
#include <cstdint>
#include <limits>

namespace tessarin::embedded::format {

// The position of an argument that there is not, or that is the next in order.
inline constexpr std::size_t none = std::numeric_limits<std::size_t>::max();

enum class Length { plain, hh, h, l, ll, z, t, j, L };

// How an argument is taken from the list.
enum class Kind {
    unused,
    integer,
    longInteger,
    longLong,
    size,
    difference,
    maximum,
    real,
    longReal,
    pointer
};

struct Argument {
    Kind kind = Kind::unused;
    std::intmax_t integer = 0;
    long double real = 0;
    const void* pointer = nullptr;
};

// A number that stands in the format or is an argument.
struct Quantity {
    int value = -1; // negative where it is not given
    bool isArgument = false;
    std::size_t argument = none; // its position, where the format says one
};

// One conversion, or a stretch of text where `conversion` is 0.
struct Piece {
    std::size_t start = 0; // in the format
    std::size_t length = 0;
    char conversion = 0;
    bool isLeft = false, hasPlus = false, hasSpace = false, isAlternate = false, hasZeros = false;
    Quantity width, precision;
    Length size = Length::plain;
    std::size_t argument = none;
};

} // namespace tessarin::embedded::format
