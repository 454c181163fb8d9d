#include "platform/embedded/foundation/ContainerEquality.h"

#include "platform/embedded/foundation/ArrayStorage.h"
#include "platform/embedded/foundation/AttributedStringStorage.h"
#include "platform/embedded/foundation/DictionaryStorage.h"

#include <algorithm>
#include <unordered_set>
#include <utility>
#include <vector>

namespace tessarin::embedded {
namespace {

enum class ContainerKind { none, array, dictionary, attributedString };

// Which of the functions of this file an object answers isEqual: with.
ContainerKind kindOfEquality(NSObject object) {
    const Implementation found = runtime::lookUp(object.object(), "isEqual:"_sel);
    const auto isFound = [&](auto* function) { return found == reinterpret_cast<Implementation>(function); };
    if (isFound(arrayIsEqual)) return ContainerKind::array;
    if (isFound(dictionaryIsEqual)) return ContainerKind::dictionary;
    if (isFound(attributedStringIsEqual)
        && answersWith(object, "isEqualToAttributedString:"_sel, isEqualToAttributedString))
        return ContainerKind::attributedString;
    return ContainerKind::none;
}

Class classOf(ContainerKind kind) {
    if (kind == ContainerKind::array) return "NSArray"_class;
    return kind == ContainerKind::dictionary ? "NSDictionary"_class : "NSAttributedString"_class;
}

struct Pair {
    Object* left;
    Object* right;
    friend bool operator==(const Pair&, const Pair&) = default;
};

struct PairHash {
    std::size_t operator()(const Pair& pair) const {
        return (reinterpret_cast<std::uintptr_t>(pair.left) * 0x9E3779B97F4A7C15u)
               ^ (reinterpret_cast<std::uintptr_t>(pair.right) >> 4);
    }
};

// The pairs that have been met. A pair that is met again is taken for equal: either it was found to be, or it
// is being compared, further out or further on, and its own verdict counts. This makes the walk end on
// containers that contain themselves, and keeps it from passing through shared parts once for every way that
// leads there.
class MetPairs {
public:
    // Whether the pair is new.
    bool add(const Pair& pair) {
        if (!pairs_.insert(pair).second) return false;
        order_.push_back(pair);
        return true;
    }
    std::size_t size() const { return order_.size(); }
    // Forgets what was taken for equal within a comparison that has failed.
    void forgetBeyond(std::size_t size) {
        for (; order_.size() > size; order_.pop_back()) pairs_.erase(order_.back());
    }

private:
    std::unordered_set<Pair, PairHash> pairs_;
    std::vector<Pair> order_;
};

// One walk over two containers in step. What would be the frames of a recursion is a list.
class EqualityWalk {
public:
    bool areEqual(NSObject left, NSObject right, ContainerKind kind) {
        Verdict verdict = enter(left, right, kind);
        while (!frames_.empty()) {
            verdict = proceed(frames_.back().kind, std::exchange(verdict, Verdict::pending));
            if (verdict != Verdict::pending) frames_.pop_back();
        }
        return verdict == Verdict::equal;
    }

private:
    // Pending: a frame was entered, whose verdict is to come.
    enum class Verdict { equal, different, pending };
    enum class Awaited { nothing, key, object };
    using AttributesPair = std::pair<Retained<NSDictionary>, Retained<NSDictionary>>;

    struct Frame {
        Retained<NSObject> left;
        Retained<NSObject> right;
        NSUInteger leftMutations;
        NSUInteger rightMutations;
        ContainerKind kind;
        Awaited awaited = Awaited::nothing;
        std::size_t position = 0; // of the next item or attributes, or of the left dictionary's entry
        // Of dictionaries: the right one's entries whose keys may equal the left entry's.
        DictionaryStorage::Candidates candidates = {};
        std::size_t candidate = 0;
        std::size_t met = 0; // the number of pairs met before the candidate
        std::size_t end = 0; // of attributed strings: behind the last of their attributes
    };

    // ---- Beginning

    Verdict compare(NSObject left, NSObject right) {
        if (left == right) return Verdict::equal;
        const ContainerKind kind = kindOfEquality(left);
        if (kind == ContainerKind::none) return verdictOf(left.isEqual(right));
        if (!right.isKindOfClass(classOf(kind))) return Verdict::different;
        // Where each has a single owner, two ways can lead to the pair only by way of the pair of their
        // owners.
        if ((isShared(left) || isShared(right)) && !met_.add({left.object(), right.object()}))
            return Verdict::equal;
        return enter(left, right, kind);
    }

    Verdict enter(NSObject left, NSObject right, ContainerKind kind) {
        if (kind == ContainerKind::array) {
            if (!hasArrayStorage(left) || !hasArrayStorage(right))
                return compareForeign(as<NSArray>(left), as<NSArray>(right));
            return enterStored<ArrayStorage>(left, right, kind);
        }
        if (kind == ContainerKind::attributedString)
            return enterAttributed(as<NSAttributedString>(left), as<NSAttributedString>(right));
        if (!hasDictionaryStorage(left) || !hasDictionaryStorage(right))
            return compareForeign(as<NSDictionary>(left), as<NSDictionary>(right));
        return enterStored<DictionaryStorage>(left, right, kind);
    }

    template <class Storage>
    Verdict enterStored(NSObject left, NSObject right, ContainerKind kind) {
        const auto& leftStorage = storageOf<Storage>(left);
        const auto& rightStorage = storageOf<Storage>(right);
        if (countOf(leftStorage) != countOf(rightStorage)) return Verdict::different;
        frames_.push_back({.left = retain(left),
                           .right = retain(right),
                           .leftMutations = leftStorage.mutations,
                           .rightMutations = rightStorage.mutations,
                           .kind = kind});
        return Verdict::pending;
    }

    Verdict enterAttributed(NSAttributedString left, NSAttributedString right) {
        const Retained<NSString> text = keptText(left.string());
        const NSRange all{0, text.length()};
        // Fetched together with the text, since a subclass that is asked next may edit the other string.
        std::vector<AttributeRun> leftRuns = runsOf(left, all);
        if (!text.isEqual(keptText(right.string()))) return Verdict::different;
        std::vector<AttributeRun> rightRuns = runsOf(right, all);
        const std::size_t begin = attributes_.size();
        auto one = leftRuns.begin();
        auto other = rightRuns.begin();
        while (one != leftRuns.end() && other != rightRuns.end()) {
            if (one->attributes != other->attributes)
                attributes_.emplace_back(one->attributes, other->attributes);
            const NSUInteger common = std::min(one->length, other->length);
            if ((one->length -= common) == 0) ++one;
            if ((other->length -= common) == 0) ++other;
        }
        frames_.push_back({.left = retain<NSObject>(left),
                           .right = retain<NSObject>(right),
                           .leftMutations = 0,
                           .rightMutations = 0,
                           .kind = ContainerKind::attributedString,
                           .position = begin,
                           .end = attributes_.size()});
        return Verdict::pending;
    }

    static NSUInteger countOf(const ArrayStorage& storage) { return storage.count; }
    static NSUInteger countOf(const DictionaryStorage& storage) { return storage.count(); }
    static Verdict verdictOf(bool isEqual) { return isEqual ? Verdict::equal : Verdict::different; }
    static bool isShared(NSObject object) {
        return object.object()->references.load(std::memory_order_relaxed) != 1;
    }

    // Containers with a storage of their own making are asked by message, and so are their objects, as the
    // platform does: only they know how they nest. What one answers is kept, since asking the other, or the
    // object, may make it go.
    static Verdict compareForeign(NSArray left, NSArray right) {
        const NSUInteger count = left.count();
        if (count != right.count()) return Verdict::different;
        for (NSUInteger index = 0; index < count; ++index) {
            const Retained<NSObject> item = retain(NSObject(left.objectAtIndex(index)));
            const Retained<NSObject> other = retain(NSObject(right.objectAtIndex(index)));
            if (item != other && !item.isEqual(other)) return Verdict::different;
        }
        return Verdict::equal;
    }
    static Verdict compareForeign(NSDictionary left, NSDictionary right) {
        if (left.count() != right.count()) return Verdict::different;
        for (const DictionaryEntries::Entry& entry : DictionaryEntries(left)) {
            const Retained<NSObject> other = retain(NSObject(right.objectForKey(entry.key)));
            if (entry.object != other && !entry.object.isEqual(other)) return Verdict::different;
        }
        return Verdict::equal;
    }

    // ---- Going on, with the verdict of the frame that was entered before, if there was one

    Verdict proceed(ContainerKind kind, Verdict verdict) {
        if (kind == ContainerKind::array) return proceedInArrays(verdict);
        return kind == ContainerKind::dictionary ? proceedInDictionaries(verdict)
                                                 : proceedInAttributes(verdict);
    }

    // Comparing may send any message; one that changes what is being compared is refused.
    template <class Storage>
    const Storage& unchanged(NSObject container, NSUInteger mutations) const {
        const auto& storage = storageOf<Storage>(container);
        if (storage.mutations != mutations) runtime::raiseMutation(container.object());
        return storage;
    }

    Verdict proceedInArrays(Verdict verdict) {
        while (verdict != Verdict::different) {
            Frame& frame = frames_.back();
            const auto& left = unchanged<ArrayStorage>(frame.left, frame.leftMutations);
            const auto& right = unchanged<ArrayStorage>(frame.right, frame.rightMutations);
            if (frame.position == left.count) return Verdict::equal;
            const std::size_t index = frame.position++;
            verdict = compare(left.items[index], right.items[index]);
            if (verdict == Verdict::pending) return verdict;
        }
        return verdict;
    }

    Verdict proceedInAttributes(Verdict verdict) {
        while (verdict != Verdict::different) {
            Frame& frame = frames_.back();
            if (frame.position == frame.end) return Verdict::equal;
            const auto& [left, right] = attributes_[frame.position++];
            verdict = compare(left, right);
            if (verdict == Verdict::pending) return verdict;
        }
        return verdict;
    }

    Verdict proceedInDictionaries(Verdict verdict) {
        for (;;) {
            Frame& frame = frames_.back();
            const auto& left = unchanged<DictionaryStorage>(frame.left, frame.leftMutations);
            const auto& right = unchanged<DictionaryStorage>(frame.right, frame.rightMutations);
            if (frame.awaited == Awaited::object) {
                if (verdict == Verdict::different) return verdict;
                ++frame.position;
                frame.awaited = Awaited::nothing;
            }
            if (frame.awaited == Awaited::nothing) {
                frame.position = left.nextEntry(frame.position);
                if (frame.position == DictionaryStorage::notFound) return Verdict::equal;
                frame.candidates = DictionaryStorage::Candidates(right, left.entry(frame.position).hash);
                frame.awaited = Awaited::key;
                frame.met = met_.size();
                verdict = Verdict::different;
            }
            const DictionaryEntry& entry = left.entry(frame.position);
            if (verdict == Verdict::equal) {
                frame.awaited = Awaited::object;
                verdict = compare(entry.object, right.entry(frame.candidate).object);
            } else {
                // Another key may be the equal one; what was taken for equal within this key no longer holds.
                met_.forgetBeyond(frame.met);
                frame.candidate = frame.candidates.next(right);
                if (frame.candidate == DictionaryStorage::notFound) return Verdict::different;
                verdict = compare(entry.key, right.entry(frame.candidate).key);
            }
            if (verdict == Verdict::pending) return verdict;
        }
    }

    std::vector<Frame> frames_;
    // Of the attributed strings. Kept to the end, so that no pair that was met stands for newer objects.
    std::vector<AttributesPair> attributes_;
    MetPairs met_;
};

BOOL containerIsEqual(NSObject self, NSObject other, ContainerKind kind) {
    if (self == other) return YES;
    if (!other || !other.isKindOfClass(classOf(kind))) return NO;
    return EqualityWalk().areEqual(self, other, kind) ? YES : NO;
}

} // namespace

BOOL arrayIsEqual(NSArray self, SEL, NSObject other) {
    return containerIsEqual(self, other, ContainerKind::array);
}

BOOL dictionaryIsEqual(NSDictionary self, SEL, NSObject other) {
    return containerIsEqual(self, other, ContainerKind::dictionary);
}

BOOL attributedStringIsEqual(NSAttributedString self, SEL, NSObject other) {
    const auto string = kindOf<NSAttributedString>(other);
    return string && self.isEqualToAttributedString(string) ? YES : NO;
}

BOOL isEqualToAttributedString(NSAttributedString self, SEL, NSAttributedString other) {
    return containerIsEqual(self, other, ContainerKind::attributedString);
}

} // namespace tessarin::embedded
