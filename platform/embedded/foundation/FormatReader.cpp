#include "platform/embedded/foundation/FormatReader.h"

#include <algorithm>
#include <utility>

namespace tessarin::embedded::format {
namespace {

// Positions beyond this are not taken for positions.
constexpr std::size_t largestPosition = 64;

class Reader {
public:
    explicit Reader(StringView format) : format_(format) {}

    ParsedFormat read() {
        while (place_ < format_.length()) {
            const std::size_t start = place_;
            Piece piece;
            if (format_[place_] == '%' && readConversion(piece)) {
                parsed_.pieces.push_back(piece);
                continue;
            }
            // A percent sign that begins no conversion stands for itself.
            place_ = std::min(findUnit(format_, '%', start + 1), format_.length());
            piece = {};
            piece.start = start;
            piece.length = place_ - start;
            parsed_.pieces.push_back(piece);
        }
        return std::move(parsed_);
    }

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
        std::vector<Argument>& arguments = parsed_.arguments;
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
    ParsedFormat parsed_;
    std::size_t place_ = 0;
    std::size_t next_ = 0;
};

} // namespace

ParsedFormat parse(StringView format) { return Reader(format).read(); }

} // namespace tessarin::embedded::format
