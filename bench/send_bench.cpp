// A message against a virtual call: what late binding costs.
#include "TessarinPlatform/Definition.h"

#include <benchmark/benchmark.h>

#include <algorithm>
#include <array>
#include <memory>
#include <random>
#include <string>
#include <vector>

using namespace tessarin;

namespace {

// Several classes in an order that no branch predictor learns by heart.
constexpr std::size_t receiverCount = 4096;

std::vector<std::size_t> shuffledClasses() {
    std::vector<std::size_t> classes(receiverCount);
    for (std::size_t index = 0; index < classes.size(); ++index) classes[index] = index % 4;
    std::shuffle(classes.begin(), classes.end(), std::mt19937(1));
    return classes;
}

// ---- Messages

template <int Number>
int number(NSObject, SEL) {
    return Number;
}

template <int Number>
Retained<NSObject> newReceiver() {
    static const std::string name = "BenchmarkReceiver" + std::to_string(Number);
    static const ClassDefinition definition(
        {.name = name.c_str(), .methods = {instanceMethod("number", number<Number>)}});
    return adopt(send<NSObject>(definition.classObject().alloc(), "init"_sel));
}

void sendMessage(benchmark::State& state) {
    const Retained<NSObject> owner = newReceiver<1>();
    NSObject receiver = owner;
    for (auto _ : state) {
        benchmark::DoNotOptimize(receiver);
        benchmark::DoNotOptimize(send<int>(receiver, "number"_sel));
    }
}
BENCHMARK(sendMessage)->Name("Send/Message");

void sendToNil(benchmark::State& state) {
    NSObject receiver;
    for (auto _ : state) {
        benchmark::DoNotOptimize(receiver);
        benchmark::DoNotOptimize(send<int>(receiver, "number"_sel));
    }
}
BENCHMARK(sendToNil)->Name("Send/MessageToNil");

void sendToSeveralClasses(benchmark::State& state) {
    const std::array owners{newReceiver<0>(), newReceiver<1>(), newReceiver<2>(), newReceiver<3>()};
    std::vector<NSObject> receivers;
    for (const std::size_t index : shuffledClasses()) receivers.push_back(owners[index]);
    for (auto _ : state)
        for (const NSObject receiver : receivers) benchmark::DoNotOptimize(send<int>(receiver, "number"_sel));
    state.SetItemsProcessed(state.iterations() * static_cast<std::int64_t>(receiverCount));
}
BENCHMARK(sendToSeveralClasses)->Name("Send/MessageToSeveralClasses");

// ---- Virtual calls

struct Receiver {
    virtual ~Receiver() = default;
    virtual int number() const = 0;
};

template <int Number>
struct NumberedReceiver : Receiver {
    int number() const override { return Number; }
};

void callVirtually(benchmark::State& state) {
    const std::unique_ptr<Receiver> owner = std::make_unique<NumberedReceiver<1>>();
    const Receiver* receiver = owner.get();
    for (auto _ : state) {
        // From here on the compiler does not know which class the receiver is of.
        benchmark::DoNotOptimize(receiver);
        benchmark::DoNotOptimize(receiver->number());
    }
}
BENCHMARK(callVirtually)->Name("Send/VirtualCall");

void callSeveralClassesVirtually(benchmark::State& state) {
    const std::array<std::unique_ptr<Receiver>, 4> owners{
        std::make_unique<NumberedReceiver<0>>(), std::make_unique<NumberedReceiver<1>>(),
        std::make_unique<NumberedReceiver<2>>(), std::make_unique<NumberedReceiver<3>>()};
    std::vector<const Receiver*> receivers;
    for (const std::size_t index : shuffledClasses()) receivers.push_back(owners[index].get());
    for (auto _ : state)
        for (const Receiver* receiver : receivers) benchmark::DoNotOptimize(receiver->number());
    state.SetItemsProcessed(state.iterations() * static_cast<std::int64_t>(receiverCount));
}
BENCHMARK(callSeveralClassesVirtually)->Name("Send/VirtualCallToSeveralClasses");

} // namespace
