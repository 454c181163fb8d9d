// The generic syntax of URLs as RFC 3986 has it, on plain text.
#pragma once

#include <optional>
#include <string>
#include <string_view>

namespace tessarin::embedded {

// What a URL consists of. An absent part differs from an empty one: file:///a has an empty authority,
// mailto:a none.
struct URLParts {
    std::optional<std::string_view> scheme;
    std::optional<std::string_view> authority;
    std::string_view path;
    std::optional<std::string_view> query;
    std::optional<std::string_view> fragment;
};

// Whether a text is a URL or a reference relative to one.
bool isURLText(std::string_view text);

URLParts partsOfURL(std::string_view text);

// The absolute URL that a reference means within a base.
std::string resolvedURL(std::string_view reference, std::string_view base);

// A path of the file system, in UTF-8, as the path of a URL.
std::string escapedPath(std::string_view path);

// A text with its percent escapes replaced by the bytes they stand for.
std::string withoutEscapes(std::string_view text);

} // namespace tessarin::embedded
