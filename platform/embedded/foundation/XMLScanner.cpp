#include "platform/embedded/foundation/XMLScanner.h"

#include "platform/embedded/foundation/DocumentText.h"
#include "platform/embedded/foundation/XMLWhiteSpace.h"
#include "platform/services/PropertyListError.h"

#include <charconv>
#include <cstdint>

namespace tessarin::embedded {
namespace {

// Whether a text has the spelling of a name in lower-case letters, case aside.
bool isSpelled(std::string_view text, std::string_view lowerCase) {
    if (text.size() != lowerCase.size()) return false;
    for (std::size_t index = 0; index < text.size(); ++index) {
        const char character = text[index];
        const bool isUpperCase = character >= 'A' && character <= 'Z';
        if ((isUpperCase ? static_cast<char>(character - 'A' + 'a') : character) != lowerCase[index])
            return false;
    }
    return true;
}

// The encoding that the inside of an XML declaration names, empty where it names none.
std::string_view declaredEncoding(std::string_view declaration) {
    const std::size_t name = declaration.find("encoding");
    if (name == std::string_view::npos) return {};
    const std::size_t opening = declaration.find_first_of("\"'", name);
    if (opening == std::string_view::npos) return {};
    const std::size_t closing = declaration.find(declaration[opening], opening + 1);
    if (closing == std::string_view::npos) return {};
    return declaration.substr(opening + 1, closing - opening - 1);
}

} // namespace

void XMLScanner::skipProlog() {
    skipWhiteSpace();
    if (isAt("<?xml")) skipDeclaration();
    skipInsignificant();
    if (isAt("<!DOCTYPE")) skipDocumentType();
}

XMLTag XMLScanner::readTag() {
    skipInsignificant();
    start_ = position_;
    if (atEnd()) fail("Unexpected end of the document");
    if (text_[position_] != '<') fail("Unexpected character " + shownCharacter(text_, position_));
    ++position_;
    XMLTag tag{{}, isAt("/"), false};
    if (tag.isClosing) ++position_;

    const std::size_t nameEnd = text_.find_first_of(" \t\n\r/><\"'=&", position_);
    if (nameEnd == std::string_view::npos) fail("Tag that is not closed");
    tag.name = text_.substr(position_, nameEnd - position_);
    if (tag.name.empty()) fail("Tag without a name");
    position_ = nameEnd;

    for (; !atEnd(); ++position_) {
        switch (text_[position_]) {
        case '>':
            ++position_;
            return tag;
        case '/':
            tag.isEmpty = true;
            ++position_;
            if (tag.isClosing || !isAt(">")) fail("Malformed tag");
            ++position_;
            return tag;
        case '<':
            fail("Malformed tag");
        case '"':
        case '\'':
            skipQuoted();
            break;
        default:
            if (tag.isClosing && !isXMLWhiteSpace(text_[position_])) fail("Malformed closing tag");
        }
    }
    fail("Tag that is not closed");
}

std::string_view XMLScanner::readText(std::string_view elementName, std::string& buffer) {
    const std::size_t start = position_;
    const auto failAsUnclosed = [&] {
        failAt(start, "No closing tag of <" + std::string(elementName) + ">, begun");
    };
    buffer.clear();
    bool isPlain = true;
    std::string_view plain;
    for (;;) {
        const std::size_t end = text_.find('<', position_);
        if (end == std::string_view::npos) failAsUnclosed();
        plain = text_.substr(position_, end - position_);
        const bool isLast = text_.substr(end, 2) == "</";
        if (!isPlain || !isLast || plain.find('&') != std::string_view::npos) {
            isPlain = false;
            appendUnescaped(buffer, end);
        }
        position_ = end;
        if (isLast) break;
        if (isAt("<![CDATA[")) {
            const std::size_t content = position_ + 9;
            skipPast(9, "]]>", "CDATA section that is not closed, begun");
            buffer += text_.substr(content, position_ - 3 - content);
        } else if (!skipCommentOrInstruction()) {
            failAt(position_, "Unexpected tag inside <" + std::string(elementName) + ">");
        }
    }
    const XMLTag closing = readTag();
    if (closing.name != elementName)
        fail("Closing tag </" + shortened(closing.name) + "> of an open <" + std::string(elementName) + ">");
    start_ = start;
    // Line ends stay as they are, unlike in general XML: the platform reads what it wrote, a carriage return
    // included.
    return isPlain ? plain : std::string_view(buffer);
}

void XMLScanner::skipWhiteSpace() {
    while (!atEnd() && isXMLWhiteSpace(text_[position_])) ++position_;
}

void XMLScanner::skipInsignificant() {
    do skipWhiteSpace();
    while (skipCommentOrInstruction());
}

bool XMLScanner::skipCommentOrInstruction() {
    if (isAt("<!--"))
        skipPast(4, "-->", "Comment that is not closed, begun");
    else if (isAt("<?"))
        skipPast(2, "?>", "Processing instruction that is not closed, begun");
    else
        return false;
    return true;
}

void XMLScanner::skipPast(std::size_t openingLength, std::string_view end, const char* problem) {
    const std::size_t found = text_.find(end, position_ + openingLength);
    if (found == std::string_view::npos) failAt(position_, problem);
    position_ = found + end.size();
}

// From an opening quotation mark to the closing one.
void XMLScanner::skipQuoted() {
    const std::size_t closing = text_.find(text_[position_], position_ + 1);
    if (closing == std::string_view::npos) failAt(position_, "Quotation that is not closed, begun");
    position_ = closing;
}

void XMLScanner::skipDeclaration() {
    const std::size_t begin = position_;
    skipPast(2, "?>", "XML declaration that is not closed, begun");
    const std::string_view encoding = declaredEncoding(text_.substr(begin, position_ - begin));
    // The text is UTF-8 by now; a document that says otherwise would be misread. UTF-16 was converted.
    for (const char* known : {"", "utf-8", "utf8", "us-ascii", "ascii", "utf-16"})
        if (isSpelled(encoding, known)) return;
    failAt(begin, "Encoding " + shortened(encoding) + ", which is not supported,");
}

void XMLScanner::skipDocumentType() {
    const std::size_t begin = position_;
    position_ += 9;
    bool isInInternalSubset = false;
    while (!atEnd()) {
        if (skipCommentOrInstruction()) continue;
        switch (text_[position_]) {
        case '"':
        case '\'':
            skipQuoted();
            break;
        case '[':
            isInInternalSubset = true;
            break;
        case ']':
            isInInternalSubset = false;
            break;
        case '>':
            if (isInInternalSubset) break;
            ++position_;
            return;
        default:
            break;
        }
        ++position_;
    }
    failAt(begin, "Document type that is not closed, begun");
}

// Appends the text from the position on, its references replaced by what they stand for.
void XMLScanner::appendUnescaped(std::string& buffer, std::size_t end) {
    while (position_ < end) {
        const std::string_view rest = text_.substr(position_, end - position_);
        const std::size_t ampersand = rest.find('&');
        buffer += rest.substr(0, ampersand);
        if (ampersand == std::string_view::npos) return;
        position_ += ampersand;
        const std::string_view reference = rest.substr(ampersand + 1);
        const std::size_t semicolon = reference.find(';');
        if (semicolon == std::string_view::npos) failAt(position_, "Ampersand that begins no reference");
        appendReference(buffer, reference.substr(0, semicolon));
        position_ += semicolon + 2;
    }
}

void XMLScanner::appendReference(std::string& buffer, std::string_view name) {
    struct Entity {
        std::string_view name;
        char character;
    };
    for (const Entity entity : {Entity{"lt", '<'}, Entity{"gt", '>'}, Entity{"amp", '&'},
                                Entity{"apos", '\''}, Entity{"quot", '"'}}) {
        if (name != entity.name) continue;
        buffer += entity.character;
        return;
    }
    if (!name.starts_with('#')) failAt(position_, "Reference to an unknown entity");
    const bool isHexadecimal = name.starts_with("#x");
    const std::string_view digits = name.substr(isHexadecimal ? 2 : 1);
    std::uint32_t character = 0;
    const auto [stop, problem] =
        std::from_chars(digits.data(), digits.data() + digits.size(), character, isHexadecimal ? 16 : 10);
    const bool isSurrogate = character >= 0xD800 && character <= 0xDFFF;
    if (problem != std::errc() || stop != digits.data() + digits.size() || character > 0x10FFFF
        || isSurrogate)
        failAt(position_, "Reference to no character");
    appendUTF8(buffer, character);
}

void XMLScanner::failAt(std::size_t position, const std::string& problem) const {
    throw PropertyListProblem(problem + " at line " + std::to_string(lineOfPosition(text_, position)));
}

} // namespace tessarin::embedded
