#include "platform/embedded/foundation/BinaryPropertyListReader.h"

#include "TessarinPlatform/AutoreleasePool.h"
#include "platform/embedded/foundation/ArrayStorage.h"
#include "platform/embedded/foundation/BinaryPropertyListDocument.h"
#include "platform/embedded/foundation/BinaryPropertyListLeaves.h"
#include "platform/embedded/foundation/BinaryPropertyListTrial.h"
#include "platform/embedded/foundation/DictionaryStorage.h"
#include "platform/embedded/foundation/PropertyListObjects.h"
#include "platform/embedded/runtime/ReferenceCounting.h"
#include "platform/services/PropertyListKinds.h"

#include <array>
#include <cstdint>
#include <string_view>
#include <utility>
#include <vector>

namespace tessarin::embedded {
namespace {

using Header = BinaryPropertyListDocument::Header;

// A document whose containers have so many references more than it has bytes is tried before it is read on,
// where each place gets containers of its own.
constexpr std::size_t referencesOfAny = 4096;

// Containers are made when they are met and put into their places at once, so that the outermost one holds
// what was read, save what equal keys may leave out; their contents are put into their storage one by one.
class Reader {
public:
    Reader(std::string_view document, NSPropertyListMutabilityOptions mutability)
        : document_(document),
          mutability_(mutability),
          objects_(mutability),
          leaves_(document_, objects_),
          known_(document_.objectCount()),
          mostUntried_(objects_.hasMutableContainers() ? document.size() + referencesOfAny
                                                       : mostReferences(document_)) {}

    Retained<NSObject> read();

private:
    // A container whose items or values are being read.
    struct Container {
        std::uint64_t number;
        Object* object;
        std::size_t position; // of the next reference
        std::size_t end;      // of the references
        // The next place: this entry's, or this where there is none, in an array or for values of equal keys.
        DictionaryEntry* entry;
        NSObject* item;
    };
    // A dictionary without equal keys, and the numbers of its keys as they stand in the document.
    struct Model {
        std::string_view keys;
        NSDictionary dictionary;
    };
    // A dictionary with equal keys. It is filled when everything has been read: until then only its keys are
    // looked at, as those of any other container are.
    struct EqualKeys {
        NSDictionary dictionary;
        std::vector<std::size_t> entries; // of its values, in the order of the document
        Retained<NSArray> values;

        void fillDictionary();
    };

    Object* knownObject(std::uint64_t number) const;
    void open(std::uint64_t number, const Header& header, NSObject& place);
    Retained<NSDictionary> newDictionary(std::uint64_t number, std::size_t keysBegin, std::size_t keysEnd);
    void readKeys(std::uint64_t number, std::size_t position, std::size_t end);
    void openEqualKeys(Container& container);
    bool readContents();
    void close();
    void checkSharing();
    Model& modelFor(std::string_view keys);
    bool isString(const Object* object) const { return object->isa == stringClass_; }

    // Stands for a container that is open, in the place of an object.
    static inline Object* const openMark = reinterpret_cast<Object*>(alignof(Object));

    BinaryPropertyListDocument document_;
    const NSPropertyListMutabilityOptions mutability_;
    const PropertyListObjects objects_;
    BinaryPropertyListLeaves leaves_;
    // Of the strings that are made, those at the place of a key are never mutable.
    const Object* const stringClass_ = NSString::classObject().object();
    // What was read before, by number; null for what each place has its own of.
    std::vector<Object*> known_;
    std::vector<Container> open_;
    std::vector<Retained<NSObject>> keys_; // of the dictionary that is being opened
    std::array<Model, 16> models_{};
    std::vector<EqualKeys> equalKeys_;
    std::vector<Retained<NSObject>> leftOutKeys_; // equal ones, held since other places may refer to them
    std::size_t references_ = 0;                  // of the containers that were opened
    std::size_t mostUntried_;                     // of them without a trial
};

Retained<NSObject> Reader::read() {
    const Header header = document_.headerOf(document_.topObject());
    if (!header.isContainer()) return leaves_.make(header, false);
    Retained<NSObject> top;
    open(document_.topObject(), header, top);
    while (!open_.empty())
        if (readContents()) close();
    for (EqualKeys& equalKeys : equalKeys_) equalKeys.fillDictionary();
    return top;
}

// What was read before under a number that a container refers to; null where it is still to be read.
Object* Reader::knownObject(std::uint64_t number) const {
    Object* const known = known_[number];
    if (known == openMark) [[unlikely]]
        document_.fail("Container inside itself");
    return known;
}

// Reads on in the innermost container; false where another one has been opened inside it.
bool Reader::readContents() {
    Container& container = open_.back();
    NSObject* item = container.item;
    DictionaryEntry* entry = container.entry;
    const std::size_t end = container.end;
    const std::size_t size = document_.referenceSize();
    for (std::size_t position = container.position; position != end; position += size) {
        NSObject& place = entry ? (entry++)->object : *item++;
        const std::uint64_t number = document_.referenceAt(position, container.number);
        if (Object* const known = knownObject(number)) {
            addUnsharedReference(known);
            place = NSObject(known);
            continue;
        }
        const Header header = document_.headerOf(number);
        if (header.isContainer()) {
            container.position = position + size;
            container.item = item;
            container.entry = entry;
            open(number, header, place);
            return false;
        }
        place = leaves_.make(header, false).leak();
        if (!objects_.hasMutableLeaves()) known_[number] = place.object();
    }
    return true;
}

void Reader::open(std::uint64_t number, const Header& header, NSObject& place) {
    if (open_.size() == deepestPropertyList) document_.fail("Containers nested more than 512 deep");
    known_[number] = openMark;
    const auto [count, keys, values, end] = document_.contentsOf(header);
    const bool isDictionary = header.marker == binaryPropertyList::dictionary;
    // All of them, before room is made for what they refer to.
    references_ += isDictionary ? 2 * count : count;
    if (references_ > mostUntried_) [[unlikely]]
        checkSharing();
    if (!isDictionary) {
        place = objects_.arrayToFill(count).leak();
        open_.push_back({number, place.object(), values, end, nullptr, storageOf<ArrayStorage>(place).items});
        return;
    }
    place = newDictionary(number, keys, values).leak();
    DictionaryStorage& storage = storageOf<DictionaryStorage>(place);
    open_.push_back({number, place.object(), values, end, storage.entriesToFill(), nullptr});
    if (storage.count() < count) [[unlikely]]
        openEqualKeys(open_.back());
}

// A dictionary of the keys whose references are in that part of the document.
Retained<NSDictionary> Reader::newDictionary(std::uint64_t number, std::size_t keysBegin,
                                             std::size_t keysEnd) {
    const std::string_view keys = document_.bytes(keysBegin, keysEnd - keysBegin);
    // Most dictionaries have the keys of another one. Mutable leaves are each place's own.
    Model* const model = keys.empty() || objects_.hasMutableLeaves() ? nullptr : &modelFor(keys);
    if (model && model->keys == keys) return objects_.dictionaryToFill(model->dictionary);
    readKeys(number, keysBegin, keysEnd);
    Retained<NSDictionary> made = objects_.dictionaryToFill(keys_);
    if (model && made.count() == keys_.size()) *model = {keys, made};
    return made;
}

// Where a dictionary with such keys is remembered, by the numbers of the first and the last.
Reader::Model& Reader::modelFor(std::string_view keys) {
    const auto last = static_cast<unsigned char>(keys.back());
    const auto first = static_cast<unsigned char>(keys[document_.referenceSize() - 1]);
    return models_[(first + 5U * last) % models_.size()];
}

void Reader::readKeys(std::uint64_t number, std::size_t position, std::size_t end) {
    keys_.clear();
    for (; position != end; position += document_.referenceSize()) {
        const std::uint64_t keyNumber = document_.referenceAt(position, number);
        if (Object* const known = knownObject(keyNumber)) {
            if (!isString(known)) document_.fail("Key that is no string");
            addUnsharedReference(known);
            keys_.push_back(adopt(NSObject(known)));
            continue;
        }
        const Header header = document_.headerOf(keyNumber);
        if (header.isContainer()) document_.fail("Key that is no string");
        Object* const made = keys_.emplace_back(leaves_.make(header, true)).object();
        if (!isString(made)) document_.fail("Key that is no string");
        if (!objects_.hasMutableLeaves()) known_[keyNumber] = made;
    }
}

// The values of a dictionary that was made of keys_ with some left out are read into an array of their own.
void Reader::openEqualKeys(Container& container) {
    EqualKeys& equalKeys = equalKeys_.emplace_back();
    equalKeys.dictionary = NSDictionary(container.object);
    std::size_t entryCount = 0;
    for (Retained<NSObject>& key : keys_) {
        equalKeys.entries.push_back(key ? findEntry(equalKeys.dictionary, key, key.hash()) : entryCount++);
        if (key) leftOutKeys_.push_back(std::move(key));
    }
    equalKeys.values = objects_.arrayToFill(keys_.size());
    container.item = storageOf<ArrayStorage>(equalKeys.values).items;
    container.entry = nullptr;
}

// Of equal keys the last counts. What is not used is left with the values, since other places may refer to
// it.
void Reader::EqualKeys::fillDictionary() {
    NSObject* value = storageOf<ArrayStorage>(values).items;
    DictionaryEntry* const places = storageOf<DictionaryStorage>(dictionary).entriesToFill();
    for (const std::size_t entry : entries) std::swap(places[entry].object, *value++);
}

void Reader::close() {
    const Container& container = open_.back();
    known_[container.number] = objects_.hasMutableContainers() ? nullptr : container.object;
    open_.pop_back();
}

// A few bytes may stand for a million containers. Before so many are made, only to be refused, what they
// would be is counted, each object's contents once.
void Reader::checkSharing() {
    if (mostUntried_ == mostReferences(document_)) document_.fail("Too many references to shared objects");
    mostUntried_ = mostReferences(document_);
    tryBinaryPropertyList(document_, mutability_);
}

} // namespace

Retained<NSObject> readBinaryPropertyList(std::string_view document,
                                          NSPropertyListMutabilityOptions mutability) {
    const AutoreleasePool pool; // for mutable data, whose makers autorelease them
    return Reader(document, mutability).read();
}

} // namespace tessarin::embedded
