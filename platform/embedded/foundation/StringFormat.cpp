#include "platform/embedded/foundation/StringFormat.h"

#include "platform/embedded/foundation/FormatReader.h"
#include "platform/embedded/foundation/FormatWriter.h"

namespace tessarin::embedded {
namespace {

void takeArguments(std::vector<format::Argument>& arguments, std::va_list list) {
    using enum format::Kind;
    for (format::Argument& argument : arguments) {
        switch (argument.kind) {
        case unused: // a position that nothing names; most arguments are as wide as this
            static_cast<void>(va_arg(list, const void*));
            break;
        case integer:
            argument.integer = va_arg(list, int);
            break;
        case longInteger:
            argument.integer = va_arg(list, long);
            break;
        case longLong:
            argument.integer = va_arg(list, long long);
            break;
        case size:
            argument.integer = static_cast<std::intmax_t>(va_arg(list, std::size_t));
            break;
        case difference:
            argument.integer = va_arg(list, std::ptrdiff_t);
            break;
        case maximum:
            argument.integer = va_arg(list, std::intmax_t);
            break;
        case real:
            argument.real = static_cast<long double>(va_arg(list, double));
            break;
        case longReal:
            argument.real = va_arg(list, long double);
            break;
        case pointer:
            argument.pointer = va_arg(list, const void*);
            break;
        }
    }
}

} // namespace

void appendFormat(StringStorage& result, NSString format, std::va_list arguments) {
    // A copy, since the description of an argument may edit a format that can be edited.
    const Retained<NSString> kept = adopt<NSString>(format.copy());
    const Contents contents = contentsOf(kept);
    format::ParsedFormat parsed = format::parse(contents);
    takeArguments(parsed.arguments, arguments);
    for (const format::Piece& piece : parsed.pieces) {
        if (piece.conversion == 0)
            result.append(contents.sub(piece.start, piece.length));
        else
            format::write(result, piece, parsed.arguments);
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
