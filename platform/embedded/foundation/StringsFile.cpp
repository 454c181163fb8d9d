#include "platform/embedded/foundation/StringsFile.h"

#include "platform/embedded/foundation/PropertyListError.h"
#include "platform/embedded/foundation/StringStorage.h"
#include "platform/embedded/foundation/XMLDocumentText.h"

#include "TessarinPlatform/NSMutableDictionary.h"
#include "TessarinPlatform/NSPropertyListSerialization.h"

#include <algorithm>

namespace tessarin::embedded {
namespace {

bool isSpace(char c) { return c == ' ' || (c >= '\t' && c <= '\r'); }

bool isWordCharacter(char c) {
    return (c >= 'a' && c <= 'z') || (c >= 'A' && c <= 'Z') || (c >= '0' && c <= '9')
           || std::string_view("_$./:-").find(c) != std::string_view::npos;
}

// The value of a digit in a base up to 16; -1 for anything else.
int digitValue(char c, int base) {
    int value = -1;
    if (c >= '0' && c <= '9') value = c - '0';
    if (c >= 'a' && c <= 'f') value = c - 'a' + 10;
    if (c >= 'A' && c <= 'F') value = c - 'A' + 10;
    return value < base ? value : -1;
}

// Reads a text that is well-formed UTF-8. Throws PropertyListProblem.
class StringsReader {
public:
    explicit StringsReader(std::string_view text) : text_(text) {}

    void readInto(NSMutableDictionary texts) {
        for (skipSpace(); position_ < text_.size(); skipSpace()) {
            const NSString key = readString();
            skipSpace();
            NSString value = key;
            if (skip('=')) {
                skipSpace();
                value = readString();
                skipSpace();
            }
            if (!skip(';')) fail();
            texts.setObject_forKey(value, key);
        }
    }

private:
    char next() const { return position_ < text_.size() ? text_[position_] : '\0'; }
    bool skip(char wanted) {
        if (position_ == text_.size() || text_[position_] != wanted) return false;
        ++position_;
        return true;
    }
    [[noreturn]] void fail() const {
        throw PropertyListProblem("Unexpected character at line "
                                  + std::to_string(lineOfPosition(text_, position_)));
    }

    // Passes over white space and comments.
    void skipSpace() {
        for (;;) {
            while (position_ < text_.size() && isSpace(text_[position_])) ++position_;
            const std::string_view rest = text_.substr(position_, 2);
            if (rest == "//")
                position_ = std::min(text_.find_first_of("\n\r", position_), text_.size());
            else if (rest == "/*")
                skipComment();
            else
                return;
        }
    }
    void skipComment() {
        const std::size_t end = text_.find("*/", position_ + 2);
        if (end == std::string_view::npos) fail();
        position_ = end + 2;
    }

    NSString readString() {
        const char quote = next();
        if (quote == '"' || quote == '\'') return readQuoted(quote);
        const std::size_t begin = position_;
        while (isWordCharacter(next())) ++position_;
        if (position_ == begin) fail();
        return makeLatin1(text_.substr(begin, position_ - begin));
    }

    NSString readQuoted(char quote) {
        const char ends[] = {quote, '\\'};
        StringStorage read;
        for (++position_;;) {
            const std::size_t end = text_.find_first_of(std::string_view(ends, 2), position_);
            if (end == std::string_view::npos) fail();
            read.appendUtf8(text_.substr(position_, end - position_));
            position_ = end + 1;
            if (text_[end] == quote) return makeString(read.view());
            readEscape(read);
        }
    }

    void readEscape(StringStorage& read) {
        constexpr std::string_view names = "abfnrtv";
        constexpr std::string_view values = "\a\b\f\n\r\t\v";
        const char name = next();
        if (const std::size_t found = names.find(name); found != std::string_view::npos) {
            ++position_;
            read.append(static_cast<char16_t>(values[found]));
        } else if (name == 'U' || name == 'u') {
            ++position_;
            read.append(readUnit(16, 4));
        } else if (digitValue(name, 8) >= 0) {
            // Above ASCII the number would be one of an encoding that is long out of use.
            const char16_t unit = readUnit(8, 3);
            if (unit > 0x7F) fail();
            read.append(unit);
        } else if (name == '"' || name == '\'' || name == '\\' || name == '\n') {
            ++position_;
            read.append(static_cast<char16_t>(name));
        } else {
            fail();
        }
    }
    char16_t readUnit(int base, int mostDigits) {
        int value = 0;
        int digits = 0;
        for (int digit = 0; digits < mostDigits && (digit = digitValue(next(), base)) >= 0; ++digits) {
            value = base * value + digit;
            ++position_;
        }
        if (digits == 0) fail();
        return static_cast<char16_t>(value);
    }

    std::string_view text_;
    std::size_t position_ = 0;
};

NSDictionary textsOfPropertyList(std::string_view bytes) {
    const NSData data = NSData::dataWithBytes_length(bytes.data(), bytes.size());
    return kindOf<NSDictionary>(NSPropertyListSerialization::propertyListWithData_options_format_error(
        data, NSPropertyListImmutable, nullptr, nullptr));
}

} // namespace

NSDictionary textsOfStringsFile(std::string_view bytes) {
    if (bytes.starts_with("bplist")) return textsOfPropertyList(bytes);
    try {
        std::string converted;
        const std::string_view text = textOfXMLDocument(bytes, converted);
        const auto first = std::find_if_not(text.begin(), text.end(), isSpace);
        if (first != text.end() && *first == '<') return textsOfPropertyList(bytes);
        const NSMutableDictionary texts = NSMutableDictionary::dictionary();
        StringsReader(text).readInto(texts);
        return texts;
    } catch (const PropertyListProblem&) {
        return nil;
    }
}

} // namespace tessarin::embedded
