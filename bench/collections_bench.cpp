// Arrays and dictionaries against the standard library's, with objects that count their references in both.
#include "Rivals.h"

#include "TessarinPlatform/AutoreleasePool.h"
#include "TessarinPlatform/NSMutableArray.h"
#include "TessarinPlatform/NSMutableDictionary.h"
#include "TessarinPlatform/Retained.h"

#include <benchmark/benchmark.h>

#include <algorithm>
#include <random>
#include <string>
#include <unordered_map>
#include <vector>

using namespace tessarin;

namespace {

constexpr std::size_t itemCount = 1000;

std::vector<Retained<NSObject>> newObjects() {
    std::vector<Retained<NSObject>> objects;
    for (std::size_t index = 0; index < itemCount; ++index)
        objects.push_back(adopt(send<NSObject>(NSObject::classObject().alloc(), "init"_sel)));
    return objects;
}

std::vector<bench::IntrusivePointer> newRivals() {
    std::vector<bench::IntrusivePointer> objects;
    for (std::size_t index = 0; index < itemCount; ++index) objects.emplace_back(new bench::CountedObject);
    return objects;
}

void countItems(benchmark::State& state) {
    state.SetItemsProcessed(state.iterations() * static_cast<std::int64_t>(itemCount));
}

// ---- Growing one by one, and going

void addObjects(benchmark::State& state) {
    const auto objects = newObjects();
    for (auto _ : state) {
        const Retained<NSMutableArray> array = adopt(NSMutableArray::alloc().init());
        for (const auto& object : objects) array.addObject(object);
        benchmark::DoNotOptimize(array.object());
    }
    countItems(state);
}
BENCHMARK(addObjects)->Name("Array/AddObject");

void pushBack(benchmark::State& state) {
    const auto objects = newRivals();
    for (auto _ : state) {
        std::vector<bench::IntrusivePointer> vector;
        for (const auto& object : objects) vector.push_back(object);
        benchmark::DoNotOptimize(vector.data());
    }
    countItems(state);
}
BENCHMARK(pushBack)->Name("Array/VectorPushBack");

// ---- Reading by index

void readByIndex(benchmark::State& state) {
    const auto objects = newObjects();
    const Retained<NSMutableArray> array = adopt(NSMutableArray::alloc().init());
    for (const auto& object : objects) array.addObject(object);
    for (auto _ : state)
        for (NSUInteger index = 0; index < itemCount; ++index)
            benchmark::DoNotOptimize(array.objectAtIndex(index).object());
    countItems(state);
}
BENCHMARK(readByIndex)->Name("Array/ObjectAtIndex");

void readVectorByIndex(benchmark::State& state) {
    const auto vector = newRivals();
    for (auto _ : state)
        for (std::size_t index = 0; index < itemCount; ++index)
            benchmark::DoNotOptimize(vector.at(index).get());
    countItems(state);
}
BENCHMARK(readVectorByIndex)->Name("Array/VectorAt");

// ---- Walking

void walk(benchmark::State& state) {
    const auto objects = newObjects();
    const Retained<NSMutableArray> array = adopt(NSMutableArray::alloc().init());
    for (const auto& object : objects) array.addObject(object);
    for (auto _ : state)
        for (const NSObject object : array) benchmark::DoNotOptimize(object.object());
    countItems(state);
}
BENCHMARK(walk)->Name("Array/FastEnumeration");

void walkVector(benchmark::State& state) {
    const auto vector = newRivals();
    for (auto _ : state)
        for (const auto& object : vector) benchmark::DoNotOptimize(object.get());
    countItems(state);
}
BENCHMARK(walkVector)->Name("Array/VectorRangeFor");

// ---- Dictionaries

std::vector<std::string> keyTexts() {
    std::vector<std::string> texts;
    for (std::size_t index = 0; index < itemCount; ++index)
        texts.push_back("preferences.track " + std::to_string(index) + ".gain");
    return texts;
}

std::vector<Retained<NSString>> newKeys() {
    const AutoreleasePool pool;
    std::vector<Retained<NSString>> keys;
    for (const std::string& text : keyTexts()) keys.push_back(retain(NSString(text)));
    return keys;
}

// Equal keys in another order, and other objects than those that the map holds.
template <class Keys>
Keys shuffled(Keys keys) {
    std::shuffle(keys.begin(), keys.end(), std::mt19937(1));
    return keys;
}

void setObjects(benchmark::State& state) {
    const auto objects = newObjects();
    const auto keys = newKeys();
    for (auto _ : state) {
        const Retained<NSMutableDictionary> dictionary = adopt(NSMutableDictionary::alloc().init());
        for (std::size_t index = 0; index < itemCount; ++index)
            dictionary.setObject_forKey(objects[index], keys[index]);
        benchmark::DoNotOptimize(dictionary.object());
    }
    countItems(state);
}
BENCHMARK(setObjects)->Name("Dictionary/SetObject");

using Map = std::unordered_map<std::string, bench::IntrusivePointer>;

void insertInMap(benchmark::State& state) {
    const auto objects = newRivals();
    const auto keys = keyTexts();
    for (auto _ : state) {
        Map map;
        for (std::size_t index = 0; index < itemCount; ++index)
            map.insert_or_assign(keys[index], objects[index]);
        benchmark::DoNotOptimize(map.size());
    }
    countItems(state);
}
BENCHMARK(insertInMap)->Name("Dictionary/UnorderedMapInsert");

void objectsForKeys(benchmark::State& state) {
    const auto objects = newObjects();
    const auto keys = newKeys();
    const Retained<NSMutableDictionary> dictionary = adopt(NSMutableDictionary::alloc().init());
    for (std::size_t index = 0; index < itemCount; ++index)
        dictionary.setObject_forKey(objects[index], keys[index]);
    const auto askedKeys = shuffled(newKeys());
    for (auto _ : state)
        for (const auto& key : askedKeys) benchmark::DoNotOptimize(dictionary.objectForKey(key).object());
    countItems(state);
}
BENCHMARK(objectsForKeys)->Name("Dictionary/ObjectForKey");

void findInMap(benchmark::State& state) {
    const auto objects = newRivals();
    const auto keys = keyTexts();
    Map map;
    for (std::size_t index = 0; index < itemCount; ++index) map.insert_or_assign(keys[index], objects[index]);
    const auto askedKeys = shuffled(keys);
    for (auto _ : state)
        for (const auto& key : askedKeys) benchmark::DoNotOptimize(map.find(key)->second.get());
    countItems(state);
}
BENCHMARK(findInMap)->Name("Dictionary/UnorderedMapFind");

} // namespace
