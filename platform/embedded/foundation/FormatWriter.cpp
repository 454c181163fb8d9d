#include "platform/embedded/foundation/FormatWriter.h"

#include <algorithm>
#include <cstdio>
#include <string>
#include <string_view>

namespace tessarin::embedded::format {
namespace {

// Padding and numbers of digits beyond this are cut, so that no format can ask for all the memory there is.
constexpr int largestField = 100000;
class Writer {
public:
    Writer(StringStorage& result, std::span<const Argument> arguments)
        : result_(result), arguments_(arguments) {}

    void write(Piece piece) {
        resolve(piece);
        switch (piece.conversion) {
        case '%':
            result_.append(u'%');
            break;
        case '@':
            writeObject(piece);
            break;
        case 's':
            writeText(piece);
            break;
        case 'S':
            writeUnits(piece, static_cast<const char16_t*>(argumentOf(piece).pointer));
            break;
        case 'c':
        case 'C':
            writeCharacter(piece);
            break;
        case 'd':
        case 'i':
        case 'u':
        case 'x':
        case 'X':
        case 'o':
        case 'p':
            writeInteger(piece);
            break;
        default:
            writeReal(piece);
            break;
        }
    }

private:
    const Argument& argumentOf(const Piece& piece) const { return arguments_[piece.argument]; }

    void resolve(Piece& piece) const {
        if (piece.width.isArgument) {
            const auto width = static_cast<int>(std::clamp<std::intmax_t>(
                arguments_[piece.width.argument].integer, -largestField, largestField));
            if (width < 0) piece.isLeft = true;
            piece.width.value = width < 0 ? -width : width;
        }
        if (piece.precision.isArgument)
            piece.precision.value = static_cast<int>(
                std::clamp<std::intmax_t>(arguments_[piece.precision.argument].integer, -1, INT32_MAX));
        piece.width.value = std::clamp(piece.width.value, 0, largestField);
    }

    // A sign or base, zeros, then digits or text, padded to the width.
    void pad(const Piece& piece, std::string_view prefix, std::size_t zeros, StringView body) {
        const std::size_t length = prefix.size() + zeros + body.length();
        const auto width = static_cast<std::size_t>(piece.width.value);
        const std::size_t padding = width > length ? width - length : 0;
        if (!piece.isLeft) result_.appendRepeated(u' ', padding);
        result_.append(prefix);
        result_.appendRepeated(u'0', zeros);
        result_.append(body);
        if (piece.isLeft) result_.appendRepeated(u' ', padding);
    }
    static std::size_t zerosToWidth(const Piece& piece, std::size_t length) {
        const auto width = static_cast<std::size_t>(piece.width.value);
        return piece.hasZeros && !piece.isLeft && width > length ? width - length : 0;
    }

    void writeString(const Piece& piece, StringView text) {
        const std::size_t length =
            piece.precision.value < 0
                ? text.length()
                : std::min(text.length(), static_cast<std::size_t>(piece.precision.value));
        pad(piece, "", 0, text.sub(0, length));
    }
    void writeObject(const Piece& piece) {
        const NSObject object(static_cast<Object*>(const_cast<void*>(argumentOf(piece).pointer)));
        const NSString description = object.description();
        if (description)
            writeString(piece, contentsOf(description));
        else
            writeString(piece, StringView(std::string_view("(null)")));
    }
    // Of a text with a precision no byte behind it is looked at.
    template <class Unit>
    static std::size_t lengthOf(const Unit* text, int precision) {
        std::size_t length = 0;
        while ((precision < 0 || length < static_cast<std::size_t>(precision)) && text[length] != 0) ++length;
        return length;
    }
    void writeText(const Piece& piece) {
        const void* pointer = argumentOf(piece).pointer;
        StringStorage text;
        if (!pointer) {
            text.append(std::string_view("(null)"));
        } else if (piece.size == Length::l) {
            const auto* characters = static_cast<const wchar_t*>(pointer);
            const std::size_t length = lengthOf(characters, piece.precision.value);
            for (std::size_t index = 0; index < length; ++index)
                text.appendCharacter(static_cast<char32_t>(characters[index]));
        } else {
            const auto* bytes = static_cast<const char*>(pointer);
            text.appendUtf8({bytes, lengthOf(bytes, piece.precision.value)});
        }
        pad(piece, "", 0, text.view());
    }
    void writeUnits(const Piece& piece, const char16_t* units) {
        if (!units) return writeString(piece, StringView(std::string_view("(null)")));
        pad(piece, "", 0, std::u16string_view(units, lengthOf(units, piece.precision.value)));
    }
    void writeCharacter(const Piece& piece) {
        const std::intmax_t value = argumentOf(piece).integer;
        StringStorage text;
        if (piece.conversion == 'C')
            text.append(static_cast<char16_t>(value));
        else if (piece.size == Length::l)
            text.appendCharacter(static_cast<char32_t>(value));
        else
            text.append(char16_t{static_cast<unsigned char>(value)});
        pad(piece, "", 0, text.view());
    }

    // The argument cut to the width that its length modifier names.
    static std::intmax_t signedValue(const Piece& piece, std::intmax_t value) {
        switch (piece.size) {
        case Length::hh:
            return static_cast<signed char>(value);
        case Length::h:
            return static_cast<short>(value);
        default:
            return value;
        }
    }
    static std::uintmax_t unsignedValue(const Piece& piece, std::intmax_t value) {
        switch (piece.size) {
        case Length::hh:
            return static_cast<unsigned char>(value);
        case Length::h:
            return static_cast<unsigned short>(value);
        case Length::plain:
            return static_cast<unsigned>(value);
        case Length::l:
            return static_cast<unsigned long>(value);
        default:
            return static_cast<std::uintmax_t>(value);
        }
    }
    void writeInteger(const Piece& piece) {
        const bool isSigned = piece.conversion == 'd' || piece.conversion == 'i';
        const bool isPointer = piece.conversion == 'p';
        const unsigned base = piece.conversion == 'o'                                           ? 8
                              : piece.conversion == 'x' || piece.conversion == 'X' || isPointer ? 16
                                                                                                : 10;
        std::string_view prefix;
        std::uintmax_t magnitude;
        if (isSigned) {
            const std::intmax_t value = signedValue(piece, argumentOf(piece).integer);
            magnitude = static_cast<std::uintmax_t>(value);
            if (value < 0) magnitude = 0 - magnitude;
            prefix = value < 0 ? "-" : piece.hasPlus ? "+" : piece.hasSpace ? " " : "";
        } else {
            magnitude = isPointer ? reinterpret_cast<std::uintptr_t>(argumentOf(piece).pointer)
                                  : unsignedValue(piece, argumentOf(piece).integer);
            if (base == 16 && (isPointer || (piece.isAlternate && magnitude != 0)))
                prefix = piece.conversion == 'X' ? "0X" : "0x";
        }

        char digits[3 * sizeof magnitude];
        char* const end = digits + sizeof digits;
        char* begin = end;
        const char* const figures = piece.conversion == 'X' ? "0123456789ABCDEF" : "0123456789abcdef";
        for (; magnitude != 0; magnitude /= base) *--begin = figures[magnitude % base];
        const auto count = static_cast<std::size_t>(end - begin);

        // A precision says the least number of digits; then the flag 0 does nothing.
        std::size_t least = 1;
        if (piece.precision.value >= 0)
            least = static_cast<std::size_t>(std::min(piece.precision.value, largestField));
        if (base == 8 && piece.isAlternate) least = std::max(least, count + 1);
        std::size_t zeros = least > count ? least - count : 0;
        if (piece.precision.value < 0) zeros += zerosToWidth(piece, prefix.size() + zeros + count);
        pad(piece, prefix, zeros, StringView(std::string_view(begin, count)));
    }

    void writeReal(const Piece& piece) {
        char specification[8] = "%";
        std::size_t length = 1;
        if (piece.isAlternate) specification[length++] = '#';
        if (piece.precision.value >= 0) {
            specification[length++] = '.';
            specification[length++] = '*';
        }
        const bool isLong = piece.size == Length::L;
        if (isLong) specification[length++] = 'L';
        specification[length++] = piece.conversion;
        specification[length] = 0;
        const int precision = std::min(piece.precision.value, largestField);
        const Argument& argument = argumentOf(piece);
        const auto print = [&](char* buffer, std::size_t size) {
            const auto printed = [&](auto value) {
                return precision >= 0 ? std::snprintf(buffer, size, specification, precision, value)
                                      : std::snprintf(buffer, size, specification, value);
            };
            // Not as one type: in hexadecimal the wider one has other digits.
            return isLong ? printed(argument.real) : printed(static_cast<double>(argument.real));
        };
        char shortBuffer[128];
        std::string text;
        const int needed = print(shortBuffer, sizeof shortBuffer);
        if (needed < static_cast<int>(sizeof shortBuffer)) {
            text.assign(shortBuffer, static_cast<std::size_t>(std::max(needed, 0)));
        } else {
            text.resize(static_cast<std::size_t>(needed) + 1);
            print(text.data(), text.size());
            text.pop_back();
        }
        restorePoint(text);

        std::string_view digits = text;
        std::string_view prefix = piece.hasPlus ? "+" : piece.hasSpace ? " " : "";
        if (digits.starts_with('-')) {
            prefix = "-";
            digits.remove_prefix(1);
        }
        const bool isFinite = digits.find_first_of("nN") == std::string_view::npos;
        std::string signAndBase(prefix);
        if (isFinite && (piece.conversion == 'a' || piece.conversion == 'A')) {
            signAndBase += digits.substr(0, 2);
            digits.remove_prefix(2);
        }
        const std::size_t zeros = isFinite ? zerosToWidth(piece, signAndBase.size() + digits.size()) : 0;
        pad(piece, signAndBase, zeros, StringView(digits));
    }
    // C's library writes the point of the process's locale. Whatever is neither a letter, a digit nor a sign
    // is it.
    static void restorePoint(std::string& text) {
        const auto isPoint = [](char character) {
            return !((character >= '0' && character <= '9') || (character >= 'a' && character <= 'z')
                     || (character >= 'A' && character <= 'Z') || character == '+' || character == '-');
        };
        const auto begin = std::find_if(text.begin(), text.end(), isPoint);
        if (begin == text.end()) return;
        const auto end = std::find_if_not(begin, text.end(), isPoint);
        text.replace(begin, end, ".");
    }

    StringStorage& result_;
    const std::span<const Argument> arguments_;
};

} // namespace

void write(StringStorage& result, const Piece& conversion, std::span<const Argument> arguments) {
    Writer(result, arguments).write(conversion);
}

} // namespace tessarin::embedded::format
