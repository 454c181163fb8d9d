// NSColorSpace: the notion of what the components of a colour mean.
#pragma once

#include "TessarinPlatform/NSString.h"

namespace tessarin {

// Equality of colour spaces is isEqual's. Each class operation answers the same object every time.
class NSColorSpace : public Handle<NSColorSpace, "NSColorSpace", NSObject> {
public:
    using Handle::Handle;

    static NSColorSpace genericRGBColorSpace() {
        return send<NSColorSpace>(classObject(), "genericRGBColorSpace"_sel);
    }
    static NSColorSpace genericGrayColorSpace() {
        return send<NSColorSpace>(classObject(), "genericGrayColorSpace"_sel);
    }
    static NSColorSpace genericCMYKColorSpace() {
        return send<NSColorSpace>(classObject(), "genericCMYKColorSpace"_sel);
    }
    static NSColorSpace deviceRGBColorSpace() {
        return send<NSColorSpace>(classObject(), "deviceRGBColorSpace"_sel);
    }
    static NSColorSpace deviceGrayColorSpace() {
        return send<NSColorSpace>(classObject(), "deviceGrayColorSpace"_sel);
    }
    static NSColorSpace deviceCMYKColorSpace() {
        return send<NSColorSpace>(classObject(), "deviceCMYKColorSpace"_sel);
    }

    // 4 for CMYK, 3 for RGB, 1 for grey: alpha does not count.
    NSInteger numberOfColorComponents() const {
#if TESSARIN_PLATFORM_EMBEDDED || defined(__APPLE__)
        return send<NSInteger>(*this, "numberOfColorComponents"_sel);
#else
        return send<int>(*this, "numberOfColorComponents"_sel); // as GNUstep's code has it
#endif
    }
};

} // namespace tessarin
