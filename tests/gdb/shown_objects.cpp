// Objects for gdb to show: it stops in `stop`, and prints the variables of main.
#include "TessarinPlatform/TessarinPlatform.h"

using namespace tessarin;

namespace {

[[gnu::noinline]] void stop(const void* kept) { asm volatile("" : : "g"(kept) : "memory"); }

} // namespace

int main() {
    const AutoreleasePool pool;
    const NSString missing;
    const NSString narrow("a \"quoted\" line");
    const NSString wide(u"Größe: ∞");
    const NSNumber yes = NSNumber::numberWithBool(true);
    const NSNumber negative = NSNumber::numberWithInt(-5);
    const NSNumber largest = NSNumber::numberWithUnsignedLongLong(~0ull);
    const NSNumber half = NSNumber::numberWithDouble(0.5);
    const NSArray effects = NSArray::arrayOf("Delay"_ns, negative, NSArray::array());
    const Retained<NSMutableDictionary> settings = adopt(NSMutableDictionary::alloc().init());
    settings.setObject_forKey(narrow, "removed"_ns);
    settings.setObject_forKey(half, "gain"_ns);
    settings.removeObjectForKey("removed"_ns);
    const Retained<NSMutableIndexSet> indexes = adopt(NSMutableIndexSet::alloc().init());
    indexes.addIndexesInRange({2, 5});
    indexes.addIndex(1'000'000);
    indexes.addIndexesInRange({4096, 8192});
    const NSColor orange = NSColor::colorWithCalibratedRed_green_blue_alpha(1, 0.5, 0, 0.25);
    const NSColor gray = NSColor::colorWithDeviceWhite_alpha(0.5, 1);
    const NSColor named = NSColor::colorWithCatalogName_colorName("System"_ns, "labelColor"_ns);
    const NSObject other = NSNull::null();
    const void* const kept[] = {&missing, &narrow,   &wide,    &yes,    &negative, &largest, &half,
                                &effects, &settings, &indexes, &orange, &gray,     &named,   &other};
    stop(kept);
}
