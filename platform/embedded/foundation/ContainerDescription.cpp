#include "platform/embedded/foundation/ContainerDescription.h"

#include "platform/embedded/foundation/ArrayStorage.h"
#include "platform/embedded/foundation/DictionaryStorage.h"
#include "platform/embedded/foundation/StableSort.h"

#include "TessarinPlatform/NSAttributedString.h"
#include "TessarinPlatform/NSData.h"

#include <algorithm>
#include <string>
#include <unordered_map>
#include <unordered_set>
#include <vector>

namespace tessarin::embedded {
namespace {

enum class ContainerKind { none, array, dictionary };

// Which of the functions of this file an object answers description with.
ContainerKind kindOfDescription(NSObject object) {
    const SEL selector = "description"_sel;
    if (answersWith(object, selector, arrayDescription)) return ContainerKind::array;
    if (answersWith(object, selector, dictionaryDescription)) return ContainerKind::dictionary;
    return ContainerKind::none;
}

bool isPlainUnit(char16_t unit) {
    return (unit >= u'0' && unit <= u'9') || (unit >= u'A' && unit <= u'Z') || (unit >= u'a' && unit <= u'z');
}

void appendEscaped(std::string& text, char16_t unit) {
    switch (unit) {
    case u'"':
        text += "\\\"";
        return;
    case u'\\':
        text += "\\\\";
        return;
    case u'\n':
        text += "\\n";
        return;
    case u'\t':
        text += "\\t";
        return;
    case u'\r':
        text += "\\r";
        return;
    default:
        break;
    }
    if (unit >= u' ' && unit < 0x7F) {
        text += static_cast<char>(unit);
        return;
    }
    text += "\\U";
    for (int shift = 12; shift >= 0; shift -= 4) text += "0123456789abcdef"[(unit >> shift) & 0xF];
}

// A text of letters and digits stands as it is; every other is quoted, numbers with a sign or a point
// included.
void appendQuoted(std::string& text, std::u16string_view units) {
    if (!units.empty() && std::all_of(units.begin(), units.end(), isPlainUnit)) {
        text.append(units.begin(), units.end());
        return;
    }
    text += '"';
    for (const char16_t unit : units) appendEscaped(text, unit);
    text += '"';
}

// A few containers inside each other, each in several places, can stand for a text that no memory holds. From
// that length on, an object with a long text of its own is not shown again.
constexpr std::size_t longestFullDescription = std::size_t{64} << 20;
constexpr std::size_t longText = 64;

// One walk over nested containers. What would be the frames of a recursion is a list.
class DescriptionWalk {
public:
    DescriptionWalk() = default;
    // For attributes of an attributed string, behind a text of that length.
    explicit DescriptionWalk(std::size_t before) : showsAttributes_(false), before_(before) {}

    std::string describe(NSObject container, ContainerKind kind) {
        enter(container, kind);
        while (!frames_.empty()) {
            Frame& frame = frames_.back();
            if (frame.next == frame.parts.size())
                leave();
            else if (frame.kind == ContainerKind::array)
                appendItem(frame);
            else
                appendKeyOrObject(frame);
        }
        return std::move(text_);
    }

private:
    struct Frame {
        NSObject container;
        ContainerKind kind;
        std::vector<Retained<NSObject>> parts; // the items, or keys and objects in turn
        std::size_t begin;                     // in the text
        std::size_t next = 0;
    };

    // Deeper lines begin at the margin: indenting them would make the text as large as the square of the
    // depth.
    static constexpr std::size_t indentedLevels = 32;

    void indent(std::size_t level) {
        if (level <= indentedLevels) text_.append(4 * level, ' ');
    }

    void enter(NSObject container, ContainerKind kind) {
        indent(frames_.size());
        text_ += kind == ContainerKind::array ? "(\n" : "{\n";
        open_.insert(container.object());
        frames_.push_back({container, kind,
                           kind == ContainerKind::array ? itemsOf(as<NSArray>(container))
                                                        : partsOf(as<NSDictionary>(container)),
                           text_.size()});
    }

    void leave() {
        const Frame& frame = frames_.back();
        const bool isArray = frame.kind == ContainerKind::array;
        if (isArray && !frame.parts.empty()) text_ += '\n';
        const NSObject container = frame.container; // held by the frame around it
        const std::size_t begin = frame.begin;
        open_.erase(container.object());
        frames_.pop_back();
        indent(frames_.size());
        text_ += isArray ? ')' : '}';
        noteShown(container, begin);
        if (!frames_.empty() && frames_.back().kind == ContainerKind::dictionary) endPart(frames_.back());
    }

    void appendItem(Frame& frame) {
        if (frame.next > 0) text_ += ",\n";
        indent(frames_.size());
        append(frame.parts[frame.next++]);
    }

    void appendKeyOrObject(Frame& frame) {
        const bool isKey = frame.next % 2 == 0;
        if (isKey) indent(frames_.size());
        if (append(frame.parts[frame.next++])) endPart(frames_.back());
    }

    void endPart(const Frame& frame) { text_ += frame.next % 2 == 1 ? " = " : ";\n"; }

    // Whether that is all; otherwise a frame was entered. The frames may have moved.
    bool append(NSObject object) {
        const ContainerKind kind = kindOfDescription(object);
        if (kind != ContainerKind::none && open_.count(object.object()) != 0) {
            text_ += "\"<itself>\""; // a container that contains itself has no end
        } else if (shown_.count(object.object()) != 0) {
            text_ += "...";
        } else if (kind != ContainerKind::none) {
            enter(object, kind);
            return false;
        } else {
            const std::size_t begin = text_.size();
            appendLeaf(object);
            noteShown(object, begin);
        }
        return true;
    }

    void noteShown(NSObject object, std::size_t begin) {
        if (before_ + text_.size() > longestFullDescription && text_.size() - begin > longText) [[unlikely]]
            shown_.emplace(object.object(), retain(object));
    }

    void appendLeaf(NSObject object) {
        if (object.isKindOfClass(NSData::classObject())) {
            text_ += static_cast<std::string>(object.description());
        } else if (const auto attributed = kindOf<NSAttributedString>(object);
                   attributed && !showsAttributes_) {
            appendQuoted(text_, static_cast<std::u16string>(attributed.string()));
        } else {
            appendQuoted(text_, static_cast<std::u16string>(object.description()));
        }
    }

    // Kept by the frame, since describing is the objects' own code, which might change the container.

    static std::vector<Retained<NSObject>> itemsOf(NSArray array) {
        std::vector<Retained<NSObject>> parts;
        const ArrayItems items(array);
        parts.reserve(items.size());
        for (const NSObject item : items) parts.push_back(retain(item));
        return parts;
    }

    static std::vector<Retained<NSObject>> partsOf(NSDictionary dictionary) {
        const DictionaryEntries entries(dictionary);
        std::vector<DictionaryEntries::Entry> sorted(entries.begin(), entries.end());
        const auto isString = [](const DictionaryEntries::Entry& entry) {
            return entry.key.isKindOfClass(NSString::classObject());
        };
        if (std::all_of(sorted.begin(), sorted.end(), isString)) sortByKey(sorted);
        std::vector<Retained<NSObject>> parts;
        parts.reserve(2 * sorted.size());
        for (const DictionaryEntries::Entry& entry : sorted) {
            parts.push_back(entry.key);
            parts.push_back(entry.object);
        }
        return parts;
    }

    static void sortByKey(std::vector<DictionaryEntries::Entry>& entries) {
        stableSort(entries, [](const DictionaryEntries::Entry& left, const DictionaryEntries::Entry& right) {
            return as<NSString>(left.key).compare(as<NSString>(right.key)) == NSOrderedDescending;
        });
    }

    const bool showsAttributes_ = true; // of attributed strings
    const std::size_t before_ = 0;
    std::string text_; // ASCII
    std::vector<Frame> frames_;
    std::unordered_set<Object*> open_; // the containers of the frames
    // Long ones since the description has become too long; held, so that nothing else takes their place in
    // memory.
    std::unordered_map<Object*, Retained<NSObject>> shown_;
};

} // namespace

NSString arrayDescription(NSArray self, SEL) {
    return NSString(DescriptionWalk().describe(self, ContainerKind::array));
}

NSString dictionaryDescription(NSDictionary self, SEL) {
    return NSString(DescriptionWalk().describe(self, ContainerKind::dictionary));
}

NSString attributesDescription(NSDictionary attributes, std::size_t before) {
    if (kindOfDescription(attributes) != ContainerKind::dictionary) return attributes.description();
    return NSString(DescriptionWalk(before).describe(attributes, ContainerKind::dictionary));
}

} // namespace tessarin::embedded
