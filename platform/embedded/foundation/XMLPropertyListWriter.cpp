#include "platform/embedded/foundation/XMLPropertyListWriter.h"

#include "TessarinPlatform/NSArray.h"
#include "TessarinPlatform/NSData.h"
#include "TessarinPlatform/NSDate.h"
#include "TessarinPlatform/NSDictionary.h"
#include "TessarinPlatform/NSNumber.h"
#include "platform/embedded/foundation/KeyedArchiverUID.h"
#include "platform/embedded/foundation/XMLPropertyListValues.h"
#include "platform/services/PropertyListError.h"

#include <algorithm>
#include <charconv>
#include <vector>

namespace tessarin::embedded {
namespace {

constexpr std::string_view documentBegin = "<?xml version=\"1.0\" encoding=\"UTF-8\"?>\n"
                                           "<!DOCTYPE plist PUBLIC \"-//Apple//DTD PLIST 1.0//EN\" "
                                           "\"http://www.apple.com/DTDs/PropertyList-1.0.dtd\">\n"
                                           "<plist version=\"1.0\">\n";
constexpr std::string_view documentEnd = "</plist>\n";

// Deeper lists cannot be read back, and unlimited tabs would make a deep list's size quadratic.
constexpr std::size_t maximumIndentation = 512;

class Writer {
public:
    std::string write(NSObject propertyList);

private:
    enum class Part { value, key, arrayEnd, dictionaryEnd };
    struct Pending {
        Part part;
        NSObject object;
    };

    void appendValue(NSObject object);
    void appendArray(NSArray array);
    void appendDictionary(NSDictionary dictionary);
    void appendNumber(NSNumber number);
    void appendDateElement(NSDate date);
    void appendDataElement(NSData data);
    void appendUID(std::uint32_t value);
    void appendTextElement(const char* name, NSString string);
    void appendIndentation() { document_.append(std::min(depth_, maximumIndentation), '\t'); }
    void appendLine(std::string_view line);

    std::string document_;
    std::vector<Pending> pending_; // what is still to be written, the next last
    std::size_t depth_ = 0;
};

std::string Writer::write(NSObject propertyList) {
    document_ = documentBegin;
    pending_.push_back({Part::value, propertyList});
    while (!pending_.empty()) {
        const auto [part, object] = pending_.back();
        pending_.pop_back();
        switch (part) {
        case Part::value:
            appendValue(object);
            break;
        case Part::key:
            appendTextElement("key", as<NSString>(object));
            break;
        case Part::arrayEnd:
            --depth_;
            appendLine("</array>");
            break;
        case Part::dictionaryEnd:
            --depth_;
            appendLine("</dict>");
            break;
        }
    }
    document_ += documentEnd;
    return std::move(document_);
}

void Writer::appendValue(NSObject object) {
    if (const auto string = kindOf<NSString>(object))
        appendTextElement("string", string);
    else if (const auto number = kindOf<NSNumber>(object))
        appendNumber(number);
    else if (const auto array = kindOf<NSArray>(object))
        appendArray(array);
    else if (const auto dictionary = kindOf<NSDictionary>(object))
        appendDictionary(dictionary);
    else if (const auto date = kindOf<NSDate>(object))
        appendDateElement(date);
    else if (const auto data = kindOf<NSData>(object))
        appendDataElement(data);
    else if (const auto uid = keyedArchiverUID(object))
        appendUID(*uid);
    else
        throw PropertyListProblem("An object changed while it was written");
}

void Writer::appendArray(NSArray array) {
    if (array.count() == 0) return appendLine("<array/>");
    appendLine("<array>");
    ++depth_;
    pending_.push_back({Part::arrayEnd, nil});
    const std::size_t first = pending_.size();
    for (const NSObject item : array) pending_.push_back({Part::value, item});
    std::reverse(pending_.begin() + static_cast<std::ptrdiff_t>(first), pending_.end());
}

void Writer::appendDictionary(NSDictionary dictionary) {
    if (dictionary.count() == 0) return appendLine("<dict/>");
    struct Entry {
        std::u16string sortKey;
        NSObject key;
    };
    std::vector<Entry> entries;
    for (const NSObject key : dictionary)
        entries.push_back({static_cast<std::u16string>(as<NSString>(key)), key});
    // By 16-bit units, and from the last to the first since what is pushed last is written first.
    std::sort(entries.begin(), entries.end(),
              [](const Entry& left, const Entry& right) { return left.sortKey > right.sortKey; });
    appendLine("<dict>");
    ++depth_;
    pending_.push_back({Part::dictionaryEnd, nil});
    for (const Entry& entry : entries) {
        pending_.push_back({Part::value, dictionary.objectForKey(entry.key)});
        pending_.push_back({Part::key, entry.key});
    }
}

void Writer::appendNumber(NSNumber number) {
    const char kind = number.objCType()[0];
    const bool isBoolean = kind == 'c' || kind == 'C' || kind == 'B';
    if (isBoolean) return appendLine(number.boolValue() ? "<true/>" : "<false/>");
    appendIndentation();
    if (kind == 'f' || kind == 'd') {
        document_ += "<real>";
        appendReal(document_, number.doubleValue());
        document_ += "</real>\n";
        return;
    }
    const bool isUnsigned = kind == 'Q' || kind == 'L';
    char digits[24];
    const auto [end, problem] =
        isUnsigned ? std::to_chars(digits, digits + sizeof digits, number.unsignedLongLongValue())
                   : std::to_chars(digits, digits + sizeof digits, number.longLongValue());
    document_ += "<integer>";
    document_.append(digits, end);
    document_ += "</integer>\n";
}

void Writer::appendDateElement(NSDate date) {
    appendIndentation();
    document_ += "<date>";
    if (!appendDate(document_, date.timeIntervalSinceReferenceDate()))
        throw PropertyListProblem("dates in XML must be finite and not more than 2^53 seconds away");
    document_ += "</date>\n";
}

// The platform's layout: lines of 76 columns, of which each tab takes eight, and no more than eight tabs.
void Writer::appendDataElement(NSData data) {
    const std::size_t tabs = std::min<std::size_t>(depth_, 8);
    const auto* const bytes = static_cast<const char*>(data.bytes());
    appendLine("<data>");
    appendData(document_, std::string_view(bytes, data.length()), std::string(tabs, '\t'), 76 - 8 * tabs);
    appendLine("</data>");
}

// XML has no form of its own for them: the platform writes a dictionary of one key.
void Writer::appendUID(std::uint32_t value) {
    appendLine("<dict>");
    ++depth_;
    appendLine("<key>CF$UID</key>");
    appendLine("<integer>" + std::to_string(value) + "</integer>");
    --depth_;
    appendLine("</dict>");
}

void Writer::appendTextElement(const char* name, NSString string) {
    const std::string text(string);
    appendIndentation();
    document_.append("<").append(name).append(">");
    std::string_view rest = text;
    for (;;) {
        const std::size_t special = rest.find_first_of("<>&");
        document_ += rest.substr(0, special);
        if (special == std::string_view::npos) break;
        document_ += rest[special] == '<' ? "&lt;" : rest[special] == '>' ? "&gt;" : "&amp;";
        rest.remove_prefix(special + 1);
    }
    document_.append("</").append(name).append(">\n");
}

void Writer::appendLine(std::string_view line) {
    appendIndentation();
    document_ += line;
    document_ += '\n';
}

} // namespace

std::string writeXMLPropertyList(NSObject propertyList) { return Writer().write(propertyList); }

} // namespace tessarin::embedded
