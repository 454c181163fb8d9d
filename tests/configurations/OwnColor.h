// A colour class of an application's own, which hands out what it is told to and says what it was asked for.
#pragma once

#include "PlatformTest.h"

#include <limits>

namespace tessarin::testing {

// What every instance hands out; nothing is retained.
struct ColorAnswers {
    NSColorSpace space = {};
    NSColor converted = {}; // what it is converted to, whatever is asked for
    bool raises = false;    // when it is asked for its space
    CGFloat red = 0, green = 0, blue = 0, hue = 0, saturation = 0, brightness = 0, alpha = 0;
};

class OwnColor : public Handle<OwnColor, "TessarinTestColor", NSColor> {
public:
    using Handle::Handle;

    using Answers = ColorAnswers;
    static inline Answers answers;
    // The messages so far, one after the other.
    static inline std::string asked;

    // A new instance of these answers, nothing asked for yet.
    static OwnColor make(const Answers& itsAnswers) {
        answers = itsAnswers;
        asked.clear();
        return adopt(OwnColor(send<NSObject>(definedClass().alloc(), "init"_sel))).autorelease();
    }
    static Class definedClass() {
        static const ClassDefinition definition{
            {.name = "TessarinTestColor",
             .superclass = "NSColor",
             .methods = {instanceMethod("colorSpace", colorSpace),
                         instanceMethod("colorUsingColorSpaceName:", colorUsingColorSpaceName),
                         component<&Answers::red>("redComponent"),
                         component<&Answers::green>("greenComponent"),
                         component<&Answers::blue>("blueComponent"), component<&Answers::hue>("hueComponent"),
                         component<&Answers::saturation>("saturationComponent"),
                         component<&Answers::brightness>("brightnessComponent"),
                         component<&Answers::alpha>("alphaComponent"),
                         classMethod("colorWithCalibratedHue:saturation:brightness:alpha:", colorWithHSB),
                         classMethod("colorWithCalibratedRed:green:blue:alpha:", colorWithRGB)}}};
        return definition.classObject();
    }

    // What its class was asked to make a colour of; it makes an instance of its own.
    static inline std::vector<CGFloat> madeOf;

private:
    static void note(SEL selector) { asked.append(runtime::selectorName(selector)).append(" "); }

    template <CGFloat Answers::*answer>
    static CGFloat handOut(OwnColor, SEL selector) {
        note(selector);
        return answers.*answer;
    }
    template <CGFloat Answers::*answer>
    static MethodRow component(const char* selector) {
        return instanceMethod(selector, handOut<answer>);
    }
    static NSColorSpace colorSpace(OwnColor, SEL selector) {
        note(selector);
        if (answers.raises) raise("TessarinTestException"_ns, "no space"_ns);
        return answers.space;
    }
    static NSColor colorUsingColorSpaceName(OwnColor, SEL selector, NSString name) {
        note(selector);
        asked += text(name) + " ";
        return answers.converted;
    }
    static NSColor colorWithHSB(Class, SEL, CGFloat hue, CGFloat saturation, CGFloat brightness,
                                CGFloat alpha) {
        madeOf = {hue, saturation, brightness, alpha};
        return make({});
    }
    static NSColor colorWithRGB(Class, SEL, CGFloat red, CGFloat green, CGFloat blue, CGFloat alpha) {
        madeOf = {red, green, blue, alpha};
        return make({});
    }
};

} // namespace tessarin::testing
