#include "platform/embedded/foundation/XMLPropertyListWriter.h"

#include "TessarinPlatform/NSArray.h"
#include "TessarinPlatform/NSData.h"
#include "TessarinPlatform/NSDate.h"
#include "TessarinPlatform/NSDictionary.h"
#include "TessarinPlatform/NSNumber.h"
#include "platform/embedded/foundation/KeyedArchiverUID.h"
#include "platform/embedded/foundation/NumberValue.h"
#include "platform/embedded/foundation/PropertyLists.h"
#include "platform/embedded/foundation/StringStorage.h"
#include "platform/embedded/foundation/XMLPropertyListValues.h"
#include "platform/services/PropertyListError.h"

#include <algorithm>
#include <charconv>
#include <utility>
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

constexpr std::size_t mostBytesOfCopies = std::size_t{64} << 20;

class Writer {
public:
    explicit Writer(std::size_t objectCount) : mostObjects_(16 * objectCount) {}

    std::string write(NSObject propertyList);

private:
    enum class Part { value, key, arrayEnd, dictionaryEnd };
    struct Pending {
        Part part;
        NSObject object;
    };
    struct Entry {
        NSObject key;
        NSObject object;
        Contents text; // the key's
    };

    void appendValue(NSObject object);
    void appendArray(NSObject array);
    void appendDictionary(NSObject dictionary);
    void hold(NSObject object);
    void holdAll(NSObject current);
    void appendNumber(NSNumber number);
    void appendDateElement(NSDate date);
    void appendDataElement(NSData data);
    void appendUID(std::uint32_t value);
    void appendTextElement(std::string_view startTag, StringView text, std::string_view endTag);
    void appendEscaped(std::string_view text);
    // A line that has nothing else ends with the text, whose last character then is a line feed.
    void beginLine(std::string_view text);

    std::string document_;
    std::vector<Pending> pending_; // what is still to be written, the next last
    std::vector<Entry> entries_;   // of the dictionary whose turn it is
    std::vector<Retained<NSObject>> held_;
    bool holds_ = false;
    PropertyListKinds<PropertyListStorage> kinds_;
    std::size_t depth_ = 0;
    std::size_t objectCount_ = 0; // written so far
    const std::size_t mostObjects_;
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
            appendTextElement("<key>", contentsOf(as<NSString>(object)), "</key>\n");
            break;
        case Part::arrayEnd:
            --depth_;
            beginLine("</array>\n");
            break;
        case Part::dictionaryEnd:
            --depth_;
            beginLine("</dict>\n");
            break;
        }
    }
    document_ += documentEnd;
    return std::move(document_);
}

void Writer::appendValue(NSObject object) {
    if (++objectCount_ > mostObjects_ && document_.size() > mostBytesOfCopies)
        throw PropertyListProblem("XML would hold too many copies of shared containers");
    const PropertyListKind kind = kinds_.of(object, [&] { holdAll(object); });
    if (PropertyListStorage::isForeign(object, kind)) holdAll(object);
    switch (kind) {
    case PropertyListKind::string:
        return appendTextElement("<string>", contentsOf(as<NSString>(object)), "</string>\n");
    case PropertyListKind::number:
        return appendNumber(as<NSNumber>(object));
    case PropertyListKind::array:
        return appendArray(object);
    case PropertyListKind::dictionary:
        return appendDictionary(object);
    case PropertyListKind::date:
        return appendDateElement(as<NSDate>(object));
    case PropertyListKind::data:
        return appendDataElement(as<NSData>(object));
    case PropertyListKind::uid:
        if (const auto reference = keyedArchiverUID(object)) return appendUID(*reference);
        break;
    case PropertyListKind::other:
        break;
    }
    throw PropertyListProblem("An object changed while it was written");
}

// Other code that is asked for what an object holds, or for its class, may empty the containers that it
// stands in, and may keep what it answers no longer than the next question. From then on everything is held
// until it is written.
void Writer::holdAll(NSObject current) {
    if (std::exchange(holds_, true)) return;
    hold(current);
    for (const Pending& pending : pending_) hold(pending.object);
}

void Writer::hold(NSObject object) {
    if (holds_) held_.push_back(retain(object));
}

void Writer::appendArray(NSObject array) {
    const std::size_t begin = pending_.size();
    pending_.push_back({Part::arrayEnd, nil});
    PropertyListStorage::Contents contents(array, PropertyListKind::array);
    NSObject none, item;
    while (contents.next(none, item)) {
        hold(item);
        pending_.push_back({Part::value, item});
    }
    if (pending_.size() == begin + 1) {
        pending_.pop_back();
        return beginLine("<array/>\n");
    }
    beginLine("<array>\n");
    ++depth_;
    std::reverse(pending_.begin() + static_cast<std::ptrdiff_t>(begin) + 1, pending_.end());
}

void Writer::appendDictionary(NSObject dictionary) {
    entries_.clear();
    PropertyListStorage::Contents contents(dictionary, PropertyListKind::dictionary);
    NSObject key, object;
    bool hasForeignKey = false;
    while (contents.next(key, object)) {
        hold(key);
        hold(object);
        if (!holds_ && PropertyListStorage::isForeign(key, PropertyListKind::string)) hasForeignKey = true;
        entries_.push_back({key, object, Contents(StringView())});
    }
    if (entries_.empty()) return beginLine("<dict/>\n");
    if (hasForeignKey) {
        holdAll(dictionary);
        for (const Entry& entry : entries_) {
            hold(entry.key);
            hold(entry.object);
        }
    }
    for (Entry& entry : entries_) entry.text = steadyContentsOf(as<NSString>(entry.key));
    // By 16-bit units, and from the last to the first since what is pushed last is written first.
    std::ranges::sort(entries_, [](const Entry& left, const Entry& right) {
        return compareUnits(left.text, right.text) == NSOrderedDescending;
    });
    beginLine("<dict>\n");
    ++depth_;
    pending_.push_back({Part::dictionaryEnd, nil});
    for (const Entry& entry : entries_) {
        pending_.push_back({Part::value, entry.object});
        pending_.push_back({Part::key, entry.key});
    }
}

void Writer::appendNumber(NSNumber number) {
    const NumberValue value = valueInPropertyList(number);
    if (value.kind == NumberKind::boolean) return beginLine(value.integer != 0 ? "<true/>\n" : "<false/>\n");
    if (value.isReal()) {
        beginLine("<real>");
        appendReal(document_, value.real);
        document_ += "</real>\n";
        return;
    }
    char digits[24];
    const auto [end, problem] =
        value.kind == NumberKind::uint64
            ? std::to_chars(digits, digits + sizeof digits, static_cast<std::uint64_t>(value.integer))
            : std::to_chars(digits, digits + sizeof digits, value.integer);
    beginLine("<integer>");
    document_.append(digits, end);
    document_ += "</integer>\n";
}

void Writer::appendDateElement(NSDate date) {
    beginLine("<date>");
    if (!appendDate(document_, date.timeIntervalSinceReferenceDate()))
        throw PropertyListProblem("dates in XML must be finite and not more than 2^53 seconds away");
    document_ += "</date>\n";
}

// The platform's layout: lines of 76 columns, of which each tab takes eight, and no more than eight tabs.
void Writer::appendDataElement(NSData data) {
    const std::size_t tabs = std::min<std::size_t>(depth_, 8);
    const auto* const bytes = static_cast<const char*>(data.bytes());
    beginLine("<data>\n");
    appendData(document_, std::string_view(bytes, data.length()), std::string(tabs, '\t'), 76 - 8 * tabs);
    beginLine("</data>\n");
}

// XML has no form of its own for them: the platform writes a dictionary of one key.
void Writer::appendUID(std::uint32_t value) {
    beginLine("<dict>\n");
    ++depth_;
    beginLine("<key>CF$UID</key>\n");
    beginLine("<integer>" + std::to_string(value) + "</integer>\n");
    --depth_;
    beginLine("</dict>\n");
}

void Writer::appendTextElement(std::string_view startTag, StringView text, std::string_view endTag) {
    beginLine(startTag);
    if (isAscii(text))
        appendEscaped({reinterpret_cast<const char*>(text.narrow()), text.length()});
    else
        appendEscaped(utf8Of(text));
    document_ += endTag;
}

void Writer::appendEscaped(std::string_view text) {
    std::size_t begin = 0;
    for (std::size_t position = 0; position < text.size(); ++position) {
        const char character = text[position];
        if (character != '<' && character != '>' && character != '&') continue;
        document_ += text.substr(begin, position - begin);
        document_ += character == '<' ? "&lt;" : character == '>' ? "&gt;" : "&amp;";
        begin = position + 1;
    }
    document_ += text.substr(begin);
}

void Writer::beginLine(std::string_view text) {
    document_.append(std::min(depth_, maximumIndentation), '\t');
    document_ += text;
}

} // namespace

std::string writeXMLPropertyList(NSObject propertyList, std::size_t objectCount) {
    return Writer(objectCount).write(propertyList);
}

} // namespace tessarin::embedded
