#include "platform/embedded/foundation/StringFormat.h"

#include "platform/services/Utf8.h"

#include <algorithm>
#include <cstdio>
#include <cwchar>
#include <limits>

namespace tessarin::embedded {
namespace {

// Padding and numbers of digits beyond this are cut, so that no format can ask for all the memory there is.
constexpr int largestField = 100000;
// Positions beyond this are not taken for positions.
constexpr std::size_t largestPosition = 64;

constexpr std::size_t none = std::numeric_limits<std::size_t>::max();

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

// ---- Reading the format
// --------------------------------------------------------------------------------------------

class FormatReader {
public:
    explicit FormatReader(StringView format) : format_(format) {}

    std::vector<Piece> pieces() {
        std::vector<Piece> result;
        while (place_ < format_.length()) {
            const std::size_t start = place_;
            Piece piece;
            if (format_[place_] == '%' && readConversion(piece)) {
                result.push_back(piece);
                continue;
            }
            // A percent sign that begins no conversion stands for itself.
            place_ = std::min(findUnit(format_, '%', start + 1), format_.length());
            piece = {};
            piece.start = start;
            piece.length = place_ - start;
            result.push_back(piece);
        }
        return result;
    }

    // The kinds of the arguments, in their order.
    std::vector<Argument> arguments;

private:
    char16_t unit() const { return place_ < format_.length() ? format_[place_] : char16_t{0}; }
    bool skip(char16_t wanted) {
        if (unit() != wanted) return false;
        ++place_;
        return true;
    }
    int readNumber() {
        long long value = 0;
        for (; unit() >= '0' && unit() <= '9'; ++place_)
            value = std::min<long long>(value * 10 + (unit() - '0'), std::numeric_limits<int>::max());
        return static_cast<int>(value);
    }
    // A position such as 2$, from 0; none where there is none.
    std::size_t readPosition() {
        const std::size_t start = place_;
        const auto position = static_cast<std::size_t>(readNumber());
        if (place_ > start && position > 0 && position <= largestPosition && skip('$')) return position - 1;
        place_ = start;
        return none;
    }
    std::size_t take(std::size_t position, Kind kind) {
        if (position == none) position = next_++;
        if (position >= arguments.size()) arguments.resize(position + 1);
        // Of two conversions that name the same argument the first says how it is taken.
        if (arguments[position].kind == Kind::unused) arguments[position].kind = kind;
        return position;
    }
    Quantity readQuantity() {
        if (skip('*')) return {-1, true, readPosition()};
        return {unit() >= '0' && unit() <= '9' ? readNumber() : -1};
    }

    bool readConversion(Piece& piece) {
        const std::size_t start = place_++;
        const std::size_t position = readPosition();
        readFlags(piece);
        piece.width = readQuantity();
        if (skip('.')) {
            piece.precision = readQuantity();
            piece.precision.value = std::max(piece.precision.value, 0);
        }
        readLength(piece);
        const Kind kind = readKind(piece);
        if (piece.conversion == 0) {
            place_ = start;
            return false;
        }
        if (piece.width.isArgument) piece.width.argument = take(piece.width.argument, Kind::integer);
        if (piece.precision.isArgument)
            piece.precision.argument = take(piece.precision.argument, Kind::integer);
        if (kind != Kind::unused) piece.argument = take(position, kind);
        return true;
    }
    void readFlags(Piece& piece) {
        for (;; ++place_) {
            switch (unit()) {
            case '-':
                piece.isLeft = true;
                break;
            case '+':
                piece.hasPlus = true;
                break;
            case ' ':
                piece.hasSpace = true;
                break;
            case '#':
                piece.isAlternate = true;
                break;
            case '0':
                piece.hasZeros = true;
                break;
            case '\'': // digits are not grouped without a locale
                break;
            default:
                return;
            }
        }
    }
    void readLength(Piece& piece) {
        if (skip('h'))
            piece.size = skip('h') ? Length::hh : Length::h;
        else if (skip('l'))
            piece.size = skip('l') ? Length::ll : Length::l;
        else if (skip('q'))
            piece.size = Length::ll;
        else if (skip('z'))
            piece.size = Length::z;
        else if (skip('t'))
            piece.size = Length::t;
        else if (skip('j'))
            piece.size = Length::j;
        else if (skip('L'))
            piece.size = Length::L;
    }
    static Kind integerKind(Length size) {
        switch (size) {
        case Length::l:
            return Kind::longInteger;
        case Length::ll:
        case Length::L:
            return Kind::longLong;
        case Length::z:
            return Kind::size;
        case Length::t:
            return Kind::difference;
        case Length::j:
            return Kind::maximum;
        default:
            return Kind::integer;
        }
    }
    Kind readKind(Piece& piece) {
        const char16_t letter = unit();
        ++place_;
        if (letter > 0x7F) return Kind::unused;
        piece.conversion = static_cast<char>(letter);
        switch (letter) {
        case '%':
            return Kind::unused;
        case 'D':
        case 'U':
        case 'O':
            piece.size = Length::l;
            piece.conversion = static_cast<char>(letter + ('a' - 'A'));
            return Kind::longInteger;
        case 'd':
        case 'i':
        case 'u':
        case 'x':
        case 'X':
        case 'o':
            return integerKind(piece.size);
        case 'c':
        case 'C':
            return Kind::integer;
        case '@':
        case 's':
        case 'S':
        case 'p':
            return Kind::pointer;
        case 'a':
        case 'A':
        case 'e':
        case 'E':
        case 'f':
        case 'F':
        case 'g':
        case 'G':
            return piece.size == Length::L ? Kind::longReal : Kind::real;
        default:
            piece.conversion = 0;
            return Kind::unused;
        }
    }

    StringView format_;
    std::size_t place_ = 0;
    std::size_t next_ = 0;
};

void takeArguments(std::vector<Argument>& arguments, std::va_list list) {
    for (Argument& argument : arguments) {
        switch (argument.kind) {
        case Kind::unused: // a position that nothing names; most arguments are as wide as this
            static_cast<void>(va_arg(list, const void*));
            break;
        case Kind::integer:
            argument.integer = va_arg(list, int);
            break;
        case Kind::longInteger:
            argument.integer = va_arg(list, long);
            break;
        case Kind::longLong:
            argument.integer = va_arg(list, long long);
            break;
        case Kind::size:
            argument.integer = static_cast<std::intmax_t>(va_arg(list, std::size_t));
            break;
        case Kind::difference:
            argument.integer = va_arg(list, std::ptrdiff_t);
            break;
        case Kind::maximum:
            argument.integer = va_arg(list, std::intmax_t);
            break;
        case Kind::real:
            argument.real = static_cast<long double>(va_arg(list, double));
            break;
        case Kind::longReal:
            argument.real = va_arg(list, long double);
            break;
        case Kind::pointer:
            argument.pointer = va_arg(list, const void*);
            break;
        }
    }
}

// ---- Writing
// -------------------------------------------------------------------------------------------------------

class FormatWriter {
public:
    FormatWriter(StringStorage& result, const std::vector<Argument>& arguments)
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
            const std::intmax_t width = arguments_[piece.width.argument].integer;
            if (width < 0) piece.isLeft = true;
            piece.width.value =
                static_cast<int>(std::min<std::intmax_t>(width < 0 ? -width : width, largestField));
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
    const std::vector<Argument>& arguments_;
};

} // namespace

void appendFormat(StringStorage& result, NSString format, std::va_list arguments) {
    // A copy, since the description of an argument may edit a format that can be edited.
    const Retained<NSString> kept = adopt<NSString>(format.copy());
    const Contents contents = contentsOf(kept);
    FormatReader reader(contents);
    const std::vector<Piece> pieces = reader.pieces();
    takeArguments(reader.arguments, arguments);
    FormatWriter writer(result, reader.arguments);
    for (const Piece& piece : pieces) {
        if (piece.conversion == 0)
            result.append(contents.sub(piece.start, piece.length));
        else
            writer.write(piece);
    }
}

NSString formatted(const char* format, ...) {
    StringStorage text;
    std::va_list arguments;
    va_start(arguments, format);
    appendFormat(text, NSString(format), arguments);
    va_end(arguments);
    return makeString(text.view());
}

} // namespace tessarin::embedded
