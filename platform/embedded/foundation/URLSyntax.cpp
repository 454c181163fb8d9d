#include "platform/embedded/foundation/URLSyntax.h"

#include "platform/services/HexadecimalDigits.h"

#include <algorithm>

namespace tessarin::embedded {
namespace {

bool isLetter(char character) {
    return (character >= 'a' && character <= 'z') || (character >= 'A' && character <= 'Z');
}
bool isLetterOrDigit(char character) { return isLetter(character) || (character >= '0' && character <= '9'); }

bool isOneOf(std::string_view set, char character) { return set.find(character) != std::string_view::npos; }

bool isEscape(std::string_view text, std::size_t position) {
    return text.size() - position >= 3 && text[position] == '%' && hexadecimalValue(text[position + 1]) >= 0
           && hexadecimalValue(text[position + 2]) >= 0;
}

bool consistsOf(std::string_view text, std::string_view furtherCharacters) {
    for (std::size_t position = 0; position < text.size(); ++position) {
        const char character = text[position];
        if (isEscape(text, position))
            position += 2;
        else if (!isLetterOrDigit(character) && !isOneOf(furtherCharacters, character))
            return false;
    }
    return true;
}

bool isScheme(std::string_view text) {
    return !text.empty() && isLetter(text.front()) && consistsOf(text, "+-.") && !isOneOf(text, '%');
}

// A path without its "." and ".." segments; what leads above the root is dropped.
std::string withoutDotSegments(std::string_view path) {
    std::string result;
    std::size_t begin = 0;
    while (begin <= path.size()) {
        const std::size_t slash = std::min(path.find('/', begin), path.size());
        const std::string_view segment = path.substr(begin, slash - begin);
        const bool isLast = slash == path.size();
        if (segment == "..") {
            // The result ends with the slash after the segment to drop, or is the root.
            if (result.size() > 1) {
                const std::size_t parent = result.rfind('/', result.size() - 2);
                result.resize(parent == std::string::npos ? 0 : parent + 1);
            }
        } else if (segment != ".") {
            result += segment;
            if (!isLast) result += '/';
        }
        begin = slash + 1;
    }
    return result;
}

std::string mergedPath(const URLParts& base, std::string_view path) {
    if (base.authority && base.path.empty()) return "/" + std::string(path);
    const std::size_t lastSlash = base.path.rfind('/');
    const std::string_view directory =
        lastSlash == std::string_view::npos ? std::string_view() : base.path.substr(0, lastSlash + 1);
    return std::string(directory) + std::string(path);
}

} // namespace

bool isURLText(std::string_view text) {
    const URLParts parts = partsOfURL(text);
    constexpr std::string_view pathCharacters = "-._~!$&'()*+,;=:@/";
    constexpr std::string_view queryCharacters = "-._~!$&'()*+,;=:@/?";
    // A colon in the first segment ends a scheme.
    const std::string_view firstSegment = parts.path.substr(0, parts.path.find('/'));
    const bool hasBadScheme = !parts.scheme && isOneOf(firstSegment, ':');
    return !hasBadScheme && consistsOf(parts.authority.value_or(""), "-._~!$&'()*+,;=:@[]")
           && consistsOf(parts.path, pathCharacters) && consistsOf(parts.query.value_or(""), queryCharacters)
           && consistsOf(parts.fragment.value_or(""), queryCharacters);
}

URLParts partsOfURL(std::string_view text) {
    URLParts parts;
    const std::size_t colon = text.find_first_of(":/?#");
    if (colon != std::string_view::npos && text[colon] == ':' && isScheme(text.substr(0, colon))) {
        parts.scheme = text.substr(0, colon);
        text.remove_prefix(colon + 1);
    }
    if (const std::size_t hash = text.find('#'); hash != std::string_view::npos) {
        parts.fragment = text.substr(hash + 1);
        text = text.substr(0, hash);
    }
    if (const std::size_t mark = text.find('?'); mark != std::string_view::npos) {
        parts.query = text.substr(mark + 1);
        text = text.substr(0, mark);
    }
    if (text.starts_with("//")) {
        text.remove_prefix(2);
        const std::size_t slash = std::min(text.find('/'), text.size());
        parts.authority = text.substr(0, slash);
        text.remove_prefix(slash);
    }
    parts.path = text;
    return parts;
}

std::string resolvedURL(std::string_view reference, std::string_view base) {
    const URLParts relative = partsOfURL(reference);
    if (relative.scheme) return std::string(reference);
    const URLParts context = partsOfURL(base);
    std::string path;
    std::optional<std::string_view> authority = context.authority;
    std::optional<std::string_view> query = relative.query;
    if (relative.authority) {
        authority = relative.authority;
        path = withoutDotSegments(relative.path);
    } else if (relative.path.empty()) {
        path = context.path;
        if (!query) query = context.query;
    } else if (relative.path.starts_with('/')) {
        path = withoutDotSegments(relative.path);
    } else {
        path = withoutDotSegments(mergedPath(context, relative.path));
    }
    std::string result;
    if (context.scheme) result.append(*context.scheme).append(":");
    if (authority) result.append("//").append(*authority);
    result += path;
    if (query) result.append("?").append(*query);
    if (relative.fragment) result.append("#").append(*relative.fragment);
    return result;
}

std::string escapedPath(std::string_view path) {
    constexpr char hexadecimalDigits[] = "0123456789ABCDEF";
    std::string result;
    result.reserve(path.size());
    for (const char character : path) {
        if (isLetterOrDigit(character) || isOneOf("!$&'()*+,-./:=@_~", character)) {
            result += character;
        } else {
            const auto byte = static_cast<unsigned char>(character);
            result += '%';
            result += hexadecimalDigits[byte >> 4];
            result += hexadecimalDigits[byte & 15];
        }
    }
    return result;
}

std::string withoutEscapes(std::string_view text) {
    std::string result;
    result.reserve(text.size());
    for (std::size_t position = 0; position < text.size(); ++position) {
        if (isEscape(text, position)) {
            result += static_cast<char>(hexadecimalValue(text[position + 1]) * 16
                                        + hexadecimalValue(text[position + 2]));
            position += 2;
        } else {
            result += text[position];
        }
    }
    return result;
}

} // namespace tessarin::embedded
