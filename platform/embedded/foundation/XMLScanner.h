// A scanner for the part of XML that property lists use: tags, text, character references, CDATA sections;
// comments, processing instructions and the document type are passed over. Entities that a document declares
// are never expanded and nothing outside the document is ever fetched.
#pragma once

#include <string>
#include <string_view>

namespace tessarin::embedded {

struct XMLTag {
    std::string_view name;
    bool isClosing; // </name>
    bool isEmpty;   // <name/>
};

// Every member function throws PropertyListProblem, with the line, where the document is not what it expects.
class XMLScanner {
public:
    // The text is well-formed UTF-8 and outlives the scanner.
    explicit XMLScanner(std::string_view text) : text_(text) {}

    // Passes over everything that may stand before the first element.
    void skipProlog();

    // The next tag, attributes skipped. Only white space, comments and processing instructions may stand
    // before it.
    XMLTag readTag();

    // The text of the element whose opening tag was read last, up to and with its closing tag. The view is of
    // the document or, where that holds anything but plain text, of `buffer`.
    std::string_view readText(std::string_view elementName, std::string& buffer);

    // Throws the problem with the line of the tag or text that was read last.
    [[noreturn]] void fail(const std::string& problem) const { failAt(start_, problem); }

private:
    bool atEnd() const { return position_ == text_.size(); }
    bool isAt(std::string_view expected) const { return text_.substr(position_).starts_with(expected); }
    void skipWhiteSpace();
    void skipInsignificant();
    bool skipCommentOrInstruction();
    void skipPast(std::size_t openingLength, std::string_view end, const char* problem);
    void skipQuoted();
    void skipDeclaration();
    void skipDocumentType();
    void appendUnescaped(std::string& buffer, std::size_t end);
    void appendReference(std::string& buffer, std::string_view name);
    [[noreturn]] void failAt(std::size_t position, const std::string& problem) const;

    std::string_view text_;
    std::size_t position_ = 0;
    std::size_t start_ = 0; // of the tag or text read last
};

} // namespace tessarin::embedded
