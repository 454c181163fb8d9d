// Reference counts against an intrusive atomic count with the same memory orders.
#include "Rivals.h"

#include "TessarinPlatform/Retained.h"

#include <benchmark/benchmark.h>

using namespace tessarin;

namespace {

Retained<NSObject> newObject() { return adopt(send<NSObject>(NSObject::classObject().alloc(), "init"_sel)); }

void copyRetained(benchmark::State& state) {
    Retained<NSObject> object = newObject();
    for (auto _ : state) {
        const Retained<NSObject> copy = object;
        benchmark::DoNotOptimize(copy.object());
    }
}
BENCHMARK(copyRetained)->Name("ReferenceCounting/Retained");

void copyIntrusive(benchmark::State& state) {
    const bench::IntrusivePointer object(new bench::CountedObject);
    for (auto _ : state) {
        const bench::IntrusivePointer copy = object;
        benchmark::DoNotOptimize(copy.get());
    }
}
BENCHMARK(copyIntrusive)->Name("ReferenceCounting/IntrusivePointer");

void makeObject(benchmark::State& state) {
    for (auto _ : state) benchmark::DoNotOptimize(newObject().object());
}
BENCHMARK(makeObject)->Name("Making/Object");

void makeIntrusive(benchmark::State& state) {
    for (auto _ : state) benchmark::DoNotOptimize(bench::IntrusivePointer(new bench::CountedObject).get());
}
BENCHMARK(makeIntrusive)->Name("Making/IntrusiveObject");

} // namespace
