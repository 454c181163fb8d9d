#include "platform/embedded/foundation/XMLPropertyListReader.h"

#include "TessarinPlatform/AutoreleasePool.h"
#include "platform/embedded/foundation/DocumentText.h"
#include "platform/embedded/foundation/PropertyListObjects.h"
#include "platform/embedded/foundation/XMLPropertyListValues.h"
#include "platform/embedded/foundation/XMLScanner.h"
#include "platform/services/PropertyListError.h"

#include <vector>

namespace tessarin::embedded {
namespace {

class Reader {
public:
    Reader(std::string_view text, NSPropertyListMutabilityOptions mutability)
        : scanner_(text), objects_(mutability) {}

    Retained<NSObject> read();

private:
    struct OpenContainer {
        bool isDictionary;
        std::size_t firstItem;
    };

    Retained<NSObject> readElement(const XMLTag& tag);
    Retained<NSObject> readLeaf(const XMLTag& tag);
    Retained<NSObject> closeContainer(const XMLTag& tag);
    void checkPlace(const XMLTag& tag) const;

    Retained<NSObject> makeInteger(std::string_view text) const;
    Retained<NSObject> makeReal(std::string_view text) const;
    Retained<NSObject> makeDate(std::string_view text) const;
    Retained<NSObject> makeData(std::string_view text) const;

    XMLScanner scanner_;
    PropertyListObjects objects_;
    std::vector<OpenContainer> open_;
    std::vector<Retained<NSObject>> items_; // of all open containers; of a dictionary key, value, key, ...
    std::string buffer_;
};

Retained<NSObject> Reader::read() {
    scanner_.skipProlog();
    XMLTag tag = scanner_.readTag();
    const bool hasPropertyListTag = tag.name == "plist";
    if (hasPropertyListTag) {
        const bool isOpening = !tag.isClosing && !tag.isEmpty;
        if (isOpening) tag = scanner_.readTag();
        if (!isOpening || (tag.isClosing && tag.name == "plist"))
            scanner_.fail("Property list without an object");
    }
    Retained<NSObject> object = readElement(tag);
    while (!object || !open_.empty()) {
        if (object) items_.push_back(std::move(object));
        object = readElement(scanner_.readTag());
    }
    if (hasPropertyListTag) {
        tag = scanner_.readTag();
        if (!tag.isClosing) scanner_.fail("Property list with a second object");
        if (tag.name != "plist")
            scanner_.fail("Closing tag </" + shortened(tag.name) + "> of an open <plist>");
    }
    return object;
}

// The object that the tag begins or ends; nil where the tag opens a container.
Retained<NSObject> Reader::readElement(const XMLTag& tag) {
    if (tag.isClosing) return closeContainer(tag);
    checkPlace(tag);
    const bool isDictionary = tag.name == "dict";
    if (!isDictionary && tag.name != "array") return readLeaf(tag);
    if (open_.size() == deepestPropertyList) scanner_.fail("Containers nested more than 512 deep");
    if (tag.isEmpty) return isDictionary ? objects_.dictionary({}) : objects_.array({});
    open_.push_back({isDictionary, items_.size()});
    return {};
}

// In a dictionary, keys and values take turns; nowhere else are there keys.
void Reader::checkPlace(const XMLTag& tag) const {
    const bool isKey = tag.name == "key";
    const bool wantsKey =
        !open_.empty() && open_.back().isDictionary && (items_.size() - open_.back().firstItem) % 2 == 0;
    if (isKey && !wantsKey) scanner_.fail("Key that stands for a value or outside of a dictionary");
    if (wantsKey && !isKey) scanner_.fail("Value without a key in a dictionary");
}

Retained<NSObject> Reader::closeContainer(const XMLTag& tag) {
    if (open_.empty()) scanner_.fail("Closing tag </" + shortened(tag.name) + "> of nothing open");
    const auto [isDictionary, firstItem] = open_.back();
    const char* const expected = isDictionary ? "dict" : "array";
    if (tag.name != expected)
        scanner_.fail("Closing tag </" + shortened(tag.name) + "> of an open <" + expected + ">");
    if (isDictionary && (items_.size() - firstItem) % 2 != 0)
        scanner_.fail("Key without a value in a dictionary");
    const auto contents = std::span(items_).subspan(firstItem);
    Retained<NSObject> container = isDictionary ? objects_.dictionary(contents) : objects_.array(contents);
    items_.resize(firstItem);
    open_.pop_back();
    return container;
}

Retained<NSObject> Reader::readLeaf(const XMLTag& tag) {
    const std::string_view name = tag.name;
    const bool isBoolean = name == "true" || name == "false";
    const bool mayBeEmpty = name == "string" || name == "key" || name == "data" || isBoolean;
    if (!mayBeEmpty && name != "integer" && name != "real" && name != "date")
        scanner_.fail("Unknown tag <" + shortened(name) + ">");
    if (tag.isEmpty && !mayBeEmpty) scanner_.fail("Empty <" + std::string(name) + ">");
    const std::string_view text = tag.isEmpty ? std::string_view() : scanner_.readText(name, buffer_);
    if (isBoolean) {
        if (text.find_first_not_of(" \t\n\r") != std::string_view::npos)
            scanner_.fail("Text inside <" + std::string(name) + ">");
        return PropertyListObjects::boolean(name == "true");
    }
    if (name == "integer") return makeInteger(text);
    if (name == "real") return makeReal(text);
    if (name == "date") return makeDate(text);
    if (name == "data") return makeData(text);
    return objects_.string(text, name == "key");
}

Retained<NSObject> Reader::makeInteger(std::string_view text) const {
    const auto integer = integerFromText(text);
    if (!integer) scanner_.fail("Integer that is malformed or out of range");
    const auto [magnitude, isNegative] = *integer;
    if (!isNegative) return PropertyListObjects::unsignedInteger(magnitude);
    return PropertyListObjects::integer(static_cast<std::int64_t>(0 - magnitude));
}

Retained<NSObject> Reader::makeReal(std::string_view text) const {
    const auto real = realFromText(text);
    if (!real) scanner_.fail("Real that is malformed or out of range");
    return PropertyListObjects::real(*real);
}

Retained<NSObject> Reader::makeDate(std::string_view text) const {
    const auto instant = dateFromText(text);
    if (!instant) scanner_.fail("Date that is malformed or out of range");
    return PropertyListObjects::date(*instant);
}

Retained<NSObject> Reader::makeData(std::string_view text) const {
    const auto bytes = dataFromText(text);
    if (!bytes) scanner_.fail("Data that is no base64");
    return objects_.data(*bytes);
}

} // namespace

Retained<NSObject> readXMLPropertyList(std::string_view text, NSPropertyListMutabilityOptions mutability) {
    const AutoreleasePool pool; // for mutable data, whose makers autorelease them
    return Reader(text, mutability).read();
}

} // namespace tessarin::embedded
