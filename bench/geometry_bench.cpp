// Placing views by their top-left corner, against setting the frame that was worked out by hand.
#include "TessarinFoundation/NSView+TessarinExtensions.h"

#include "TessarinPlatform/AutoreleasePool.h"
#include "TessarinPlatform/Retained.h"

#include <benchmark/benchmark.h>

using namespace tessarin;

namespace {

constexpr NSRect frame = NSMakeRect(0, 0, 50, 40);

// Another place every time: a platform may do nothing where a frame stays.
class Places {
public:
    NSPoint next() { return {x_ = 100 - x_, 100}; }

private:
    CGFloat x_ = 0;
};

Retained<NSView> newView() { return adopt(NSView::alloc().initWithFrame(frame)); }

void setFrame(benchmark::State& state) {
    const AutoreleasePool pool;
    const Retained<NSView> view = newView();
    Places places;
    for (auto _ : state) {
        const NSPoint place = places.next();
        view.setFrame({{place.x, place.y - frame.size.height}, frame.size});
    }
    benchmark::DoNotOptimize(view.frame());
}
BENCHMARK(setFrame)->Name("Placing/SetFrame");

void setFrameWithOriginAtTopLeft(benchmark::State& state) {
    const AutoreleasePool pool;
    const Retained<NSView> view = newView();
    Places places;
    for (auto _ : state) tessarin_setFrameWithOriginAtTopLeft(view, {places.next(), frame.size});
    benchmark::DoNotOptimize(view.frame());
}
BENCHMARK(setFrameWithOriginAtTopLeft)->Name("Placing/SetFrameWithOriginAtTopLeft");

void setFrameTopLeftPoint(benchmark::State& state) {
    const AutoreleasePool pool;
    const Retained<NSView> view = newView();
    Places places;
    for (auto _ : state) tessarin_setFrameTopLeftPoint(view, places.next());
    benchmark::DoNotOptimize(view.frame());
}
BENCHMARK(setFrameTopLeftPoint)->Name("Placing/SetFrameTopLeftPoint");

} // namespace
