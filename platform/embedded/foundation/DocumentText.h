// The text of a property list in XML or old text form, whatever its bytes are encoded in.
#pragma once

#include <string>
#include <string_view>

namespace tessarin::embedded {

// A document's text in well-formed UTF-8, without a byte-order mark. UTF-16 is recognised by its byte-order
// mark, and XML in it by its first character; everything else has to be UTF-8. The view is of `bytes`, or of
// `converted` where they had to be converted. Throws PropertyListProblem for bytes that are ill-formed.
std::string_view textOfDocument(std::string_view bytes, std::string& converted);

// The number, from 1, of the line that a position in a text is on.
std::size_t lineOfPosition(std::string_view text, std::size_t position);

// The beginning of a well-formed text, short enough to be shown in an error text.
std::string shortened(std::string_view text);

// The character at a position in a well-formed text, as an error text shows it.
std::string shownCharacter(std::string_view text, std::size_t position);

// Appends a Unicode scalar value in UTF-8.
void appendUTF8(std::string& text, char32_t character);

} // namespace tessarin::embedded
