// Attributed strings: made in one call, appended to each other, and walked run by run.
#include "TessarinFoundation/NSAttributedString+TessarinExtensions.h"

#include "TessarinPlatform/AutoreleasePool.h"
#include "TessarinPlatform/NSMutableAttributedString.h"
#include "TessarinPlatform/Retained.h"

#include <benchmark/benchmark.h>

#include <map>
#include <memory>
#include <string>

using namespace tessarin;

namespace {

Retained<NSDictionary> newAttributes(NSString weight) {
    const AutoreleasePool pool;
    return retain(NSDictionary::dictionaryWithObject_forKey(weight, "weight"_ns));
}

void makeAttributedString(benchmark::State& state) {
    const AutoreleasePool outer;
    const Retained<NSDictionary> bold = newAttributes("bold"_ns);
    const Retained<NSString> title = retain(NSString(std::string("the title of a track")));
    for (auto _ : state) {
        const AutoreleasePool pool;
        benchmark::DoNotOptimize(tessarin_attributedStringWithString_attributes(title, bold).object());
    }
}
BENCHMARK(makeAttributedString)->Name("AttributedString/Make");

struct ByHand {
    std::u16string characters;
    std::shared_ptr<const std::map<std::string, std::string>> attributes;
};

void makeByHand(benchmark::State& state) {
    const auto bold = std::make_shared<const std::map<std::string, std::string>>(
        std::map<std::string, std::string>{{"weight", "bold"}});
    const std::u16string title = u"the title of a track";
    for (auto _ : state) benchmark::DoNotOptimize(std::make_shared<const ByHand>(ByHand{title, bold}));
}
BENCHMARK(makeByHand)->Name("AttributedString/MakeByHand");

// So many runs, each of attributes unlike its neighbours'.
Retained<NSMutableAttributedString> newText(std::int64_t runs) {
    const AutoreleasePool outer;
    const Retained<NSDictionary> weights[] = {newAttributes("bold"_ns), newAttributes("light"_ns)};
    Retained<NSMutableAttributedString> text =
        adopt(NSMutableAttributedString::alloc().initWithString(""_ns));
    for (std::int64_t run = 0; run < runs; ++run) {
        const AutoreleasePool pool;
        text.appendAttributedString(
            tessarin_attributedStringWithString_attributes("ten signs "_ns, weights[run % 2]));
    }
    return text;
}

void append(benchmark::State& state) {
    for (auto _ : state) benchmark::DoNotOptimize(newText(state.range(0)).object());
    state.SetItemsProcessed(state.iterations() * state.range(0));
}
BENCHMARK(append)->Name("AttributedString/Append")->Arg(1000)->Arg(10'000);

void walkRuns(benchmark::State& state) {
    const Retained<NSMutableAttributedString> text = newText(state.range(0));
    const NSUInteger length = text.length();
    for (auto _ : state) {
        const AutoreleasePool pool;
        NSRange range{};
        for (NSUInteger index = 0; index < length; index = range.location + range.length)
            benchmark::DoNotOptimize(text.attributesAtIndex_effectiveRange(index, &range).object());
    }
    state.SetItemsProcessed(state.iterations() * state.range(0));
}
BENCHMARK(walkRuns)->Name("AttributedString/Walk")->Arg(1000);

} // namespace
