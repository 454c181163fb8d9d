#include "platform/embedded/foundation/OpenStepPropertyListReader.h"

#include "TessarinPlatform/AutoreleasePool.h"
#include "platform/embedded/foundation/DocumentText.h"
#include "platform/embedded/foundation/PropertyListObjects.h"
#include "platform/embedded/foundation/StringStorage.h"
#include "platform/services/HexadecimalDigits.h"
#include "platform/services/PropertyListError.h"

#include <algorithm>
#include <vector>

namespace tessarin::embedded {
namespace {

constexpr std::string_view lineSeparator = "\u2028";
constexpr std::string_view paragraphSeparator = "\u2029";

bool isSpace(char c) { return c == ' ' || (c >= '\t' && c <= '\r'); }

bool isWordCharacter(char c) {
    return (c >= 'a' && c <= 'z') || (c >= 'A' && c <= 'Z') || (c >= '0' && c <= '9')
           || std::string_view("_$./:-").find(c) != std::string_view::npos;
}

// The value of a digit in a base up to 16; -1 for anything else.
int digitValue(char c, int base) {
    const int value = hexadecimalValue(c);
    return value < base ? value : -1;
}

// The character that a byte is in the encoding of the systems that this form comes from.
char16_t characterOfNextStep(unsigned char byte) {
    if (byte < 0x80) return byte;
    const Retained<NSString> decoded =
        adopt(NSString::alloc().initWithBytes_length_encoding(&byte, 1, NSNEXTSTEPStringEncoding));
    return decoded.length() == 1 ? decoded.characterAtIndex(0) : u'\uFFFD';
}

class Reader {
public:
    Reader(std::string_view text, NSPropertyListMutabilityOptions mutability)
        : text_(text), objects_(mutability) {}

    Retained<NSObject> read();

private:
    struct OpenContainer {
        enum class Kind { array, dictionary, bareDictionary } kind;
        std::size_t begin;     // in the text
        std::size_t firstItem; // of its own
    };
    using Kind = OpenContainer::Kind;

    Retained<NSObject> readObject();
    Retained<NSObject> readContents(Retained<NSObject> object);
    Retained<NSObject> readItem();
    Retained<NSObject> readEntry();
    Retained<NSObject> openContainer(Kind kind);
    Retained<NSObject> closeContainer();

    Retained<NSObject> readData();
    Retained<NSObject> readString(bool isKey);
    Retained<NSObject> readQuoted(char quote, bool isKey);
    void readEscape(StringStorage& read);
    char16_t readDigits(int base, int mostDigits);
    void skipSpace();
    void refuseEnd() const;

    bool atEnd() const { return position_ == text_.size(); }
    char next() const { return atEnd() ? '\0' : text_[position_]; }
    bool skip(char wanted);
    [[noreturn]] void fail(const char* problem) const { failAt(position_, problem); }
    [[noreturn]] void failAt(std::size_t position, const std::string& problem) const;
    [[noreturn]] void failAtCharacter() const;

    std::string_view text_;
    std::size_t position_ = 0;
    PropertyListObjects objects_;
    std::vector<OpenContainer> open_;
    std::vector<Retained<NSObject>> items_; // of all open containers; of a dictionary key, value, key, ...
};

void Reader::failAt(std::size_t position, const std::string& problem) const {
    throw PropertyListProblem(problem + " at line " + std::to_string(lineOfPosition(text_, position)));
}

void Reader::failAtCharacter() const {
    if (atEnd()) fail("Unexpected end of the document");
    failAt(position_, "Unexpected character " + shownCharacter(text_, position_));
}

// Where the innermost container has to be closed before the end of the text.
void Reader::refuseEnd() const {
    const OpenContainer& container = open_.back();
    if (!atEnd() || container.kind == Kind::bareDictionary) return;
    failAt(container.begin, container.kind == Kind::array ? "Array that is not closed, begun"
                                                          : "Dictionary that is not closed, begun");
}

bool Reader::skip(char wanted) {
    if (atEnd() || text_[position_] != wanted) return false;
    ++position_;
    return true;
}

Retained<NSObject> Reader::read() {
    skipSpace();
    if (atEnd()) return objects_.dictionary({});
    const std::size_t begin = position_;
    const bool isString = next() != '{' && next() != '(' && next() != '<';
    Retained<NSObject> object = readContents(readObject());
    skipSpace();
    if (atEnd()) return object;
    if (!isString) failAtCharacter();
    // What looked like a string is the first key of a dictionary without brackets.
    position_ = begin;
    return readContents(openContainer(Kind::bareDictionary));
}

// An object, or nil where that is a container which begins.
Retained<NSObject> Reader::readObject() {
    switch (next()) {
    case '{':
        return openContainer(Kind::dictionary);
    case '(':
        return openContainer(Kind::array);
    case '<':
        return readData();
    default:
        return readString(false);
    }
}

// An object as it is, or, for nil, the container that has begun, with everything in it.
Retained<NSObject> Reader::readContents(Retained<NSObject> object) {
    while (!open_.empty()) {
        if (object) items_.push_back(std::move(object));
        skipSpace();
        refuseEnd();
        object = open_.back().kind == Kind::array ? readItem() : readEntry();
    }
    return object;
}

// What comes next in an array: an item, nil for one that begins, or the array itself when it ends.
Retained<NSObject> Reader::readItem() {
    const bool isFirst = items_.size() == open_.back().firstItem;
    const bool hasComma = !isFirst && skip(',');
    if (hasComma) {
        skipSpace();
        refuseEnd();
    }
    if (skip(')')) return closeContainer();
    if (!isFirst && !hasComma) failAtCharacter();
    return readObject();
}

// What comes next in a dictionary: a value, whose key is noted down, nil for one that begins, or the
// dictionary itself when it ends.
Retained<NSObject> Reader::readEntry() {
    const OpenContainer& container = open_.back();
    if (items_.size() > container.firstItem) {
        if (!skip(';')) fail("Missing semicolon");
        skipSpace();
        refuseEnd();
    }
    if (container.kind == Kind::bareDictionary ? atEnd() : skip('}')) return closeContainer();
    const std::size_t begin = position_;
    items_.push_back(readString(true));
    skipSpace();
    if (next() == ';') {
        const std::size_t end = position_;
        position_ = begin;
        Retained<NSObject> value = readString(false);
        position_ = end;
        return value;
    }
    if (!skip('=')) fail("Key without a value");
    skipSpace();
    return readObject();
}

Retained<NSObject> Reader::openContainer(Kind kind) {
    if (open_.size() == deepestPropertyList) fail("Containers nested more than 512 deep");
    open_.push_back({kind, position_, items_.size()});
    if (kind != Kind::bareDictionary) ++position_;
    return {};
}

Retained<NSObject> Reader::closeContainer() {
    const OpenContainer container = open_.back();
    const auto contents = std::span(items_).subspan(container.firstItem);
    Retained<NSObject> closed =
        container.kind == Kind::array ? objects_.array(contents) : objects_.dictionary(contents);
    items_.resize(container.firstItem);
    open_.pop_back();
    return closed;
}

// Passes over white space and comments.
void Reader::skipSpace() {
    for (;;) {
        while (!atEnd() && isSpace(text_[position_])) ++position_;
        const std::string_view rest = text_.substr(position_);
        if (rest.starts_with(lineSeparator) || rest.starts_with(paragraphSeparator)) {
            position_ += lineSeparator.size();
        } else if (rest.starts_with("//")) {
            position_ = std::min(text_.find_first_of("\n\r", position_), text_.size());
        } else if (rest.starts_with("/*")) {
            const std::size_t end = text_.find("*/", position_ + 2);
            if (end == std::string_view::npos) fail("Comment that is not closed, begun");
            position_ = end + 2;
        } else {
            return;
        }
    }
}

Retained<NSObject> Reader::readData() {
    const std::size_t begin = position_++;
    std::string bytes;
    int high = -1; // the first digit of a byte, when it has been read
    for (; !skip('>'); ++position_) {
        if (atEnd()) failAt(begin, "Data that is not closed, begun");
        if (isSpace(next())) continue;
        const int digit = digitValue(next(), 16);
        if (digit < 0) failAtCharacter();
        if (high < 0) {
            high = digit;
        } else {
            bytes += static_cast<char>(static_cast<unsigned char>(16 * high + digit));
            high = -1;
        }
    }
    if (high >= 0) failAt(begin, "Data with half a byte, begun");
    return objects_.data(bytes);
}

Retained<NSObject> Reader::readString(bool isKey) {
    const char quote = next();
    if (quote == '"' || quote == '\'') return readQuoted(quote, isKey);
    const std::size_t begin = position_;
    while (isWordCharacter(next())) ++position_;
    if (position_ == begin) failAtCharacter();
    return objects_.string(text_.substr(begin, position_ - begin), isKey);
}

Retained<NSObject> Reader::readQuoted(char quote, bool isKey) {
    const char ends[] = {quote, '\\'};
    const std::size_t begin = position_++;
    StringStorage read;
    for (bool isPlain = true;; isPlain = false) {
        const std::size_t end = text_.find_first_of(std::string_view(ends, 2), position_);
        if (end == std::string_view::npos) failAt(begin, "String that is not closed, begun");
        const std::string_view plain = text_.substr(position_, end - position_);
        position_ = end + 1;
        const bool isLast = text_[end] == quote;
        if (isLast && isPlain) return objects_.string(plain, isKey);
        read.appendUtf8(plain);
        if (isLast) break;
        if (atEnd()) failAt(begin, "String that is not closed, begun");
        readEscape(read);
    }
    std::u16string units(read.length(), u'\0');
    read.view().copyTo(units.data());
    return objects_.string(units, isKey);
}

// What follows a backslash.
void Reader::readEscape(StringStorage& read) {
    constexpr std::string_view names = "abfnrtv";
    constexpr std::string_view values = "\a\b\f\n\r\t\v";
    const char name = next();
    if (const std::size_t found = names.find(name); found != std::string_view::npos) {
        ++position_;
        read.append(static_cast<char16_t>(values[found]));
    } else if (name == 'U' || name == 'u') {
        ++position_;
        read.append(readDigits(16, 4));
    } else if (digitValue(name, 8) >= 0) {
        read.append(characterOfNextStep(static_cast<unsigned char>(readDigits(8, 3))));
    } else {
        // A character of several bytes is plain text from here on.
        const bool isPlain = (static_cast<unsigned char>(name) & 0x80) != 0;
        if (isPlain) return;
        ++position_;
        read.append(static_cast<char16_t>(name));
    }
}

char16_t Reader::readDigits(int base, int mostDigits) {
    int value = 0;
    int digits = 0;
    for (int digit = 0; digits < mostDigits && (digit = digitValue(next(), base)) >= 0; ++digits) {
        value = base * value + digit;
        ++position_;
    }
    if (digits == 0) fail("Escape without digits");
    return static_cast<char16_t>(value);
}

} // namespace

Retained<NSObject> readOpenStepPropertyList(std::string_view text,
                                            NSPropertyListMutabilityOptions mutability) {
    const AutoreleasePool pool; // for what is made on the way, which would otherwise wait for the caller's
    return Reader(text, mutability).read();
}

} // namespace tessarin::embedded
