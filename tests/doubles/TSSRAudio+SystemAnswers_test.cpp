// What the operations make of answers that the system's functions do not give here. The program is linked so
// that the library calls the functions with __wrap_ before their names, which hand on to the system's,
// __real_.
#include "PlatformTest.h"

#include "TessarinFoundation/TSSRAudio.h"
#include "TessarinPlatform/AudioComponent.h"
#include "TessarinPlatform/FourCharacterCodes.h"

#include <functional>
#include <optional>

namespace tessarin::testing {
namespace {

std::function<OSStatus(NSString*)> copyName;
std::optional<OSType> codeWithoutString;

class StoodInAudioTest : public PlatformTest {
protected:
    ~StoodInAudioTest() override {
        copyName = nullptr;
        codeWithoutString.reset();
    }

    static constexpr AudioComponentDescription acmeDelay{0x61756678, 0x64656C79, 0x41636D65, 0, 0};
    static std::string identifier() {
        return text(TSSRIdentifierStringFromAudioComponentDescriptionAndManufacturer(acmeDelay, "Acme"_ns));
    }
};

} // namespace
} // namespace tessarin::testing

TESSARIN_C_DECLARATIONS_BEGIN

tessarin::OSStatus __real_AudioComponentCopyName(tessarin::AudioComponent component,
                                                 tessarin::NSString* name);
tessarin::OSStatus __wrap_AudioComponentCopyName(tessarin::AudioComponent component,
                                                 tessarin::NSString* name) {
    using tessarin::testing::copyName;
    return copyName ? copyName(name) : __real_AudioComponentCopyName(component, name);
}

tessarin::NSString __real_UTCreateStringForOSType(tessarin::OSType code);
tessarin::NSString __wrap_UTCreateStringForOSType(tessarin::OSType code) {
    return code == tessarin::testing::codeWithoutString ? tessarin::NSString()
                                                        : __real_UTCreateStringForOSType(code);
}

TESSARIN_C_DECLARATIONS_END

namespace tessarin::testing {
namespace {

TEST_F(StoodInAudioTest, ANameThatComesWithAStatusIsReleased) {
    const Retained<NSString> name =
        adopt(NSString::alloc().initWithString(NSString(std::string("made at run time, then released"))));
    copyName = [&](NSString* copied) {
        *copied = retain<NSString>(name).leak();
        return OSStatus{-1};
    };
    const NSUInteger before = name.retainCount();
    NSString manufacturer = "untouched"_ns;
    EXPECT_FALSE(TSSRGetAudioComponentName(nullptr, &manufacturer));
    EXPECT_EQ(text(manufacturer), "untouched");
    EXPECT_EQ(name.retainCount(), before);
}

TEST_F(StoodInAudioTest, SuccessWithoutANameGivesNilAndLeavesTheOutPointerAlone) {
    copyName = [](NSString* copied) {
        *copied = nil;
        return OSStatus{0};
    };
    NSString manufacturer = "untouched"_ns;
    EXPECT_FALSE(TSSRGetAudioComponentName(nullptr, &manufacturer));
    EXPECT_EQ(text(manufacturer), "untouched");
}

TEST_F(StoodInAudioTest, ACodeWithoutAStringIsLeftOutWithItsSeparator) {
    EXPECT_EQ(identifier(), "Acme: aufx; dely; Acme");
    codeWithoutString = acmeDelay.componentType;
    EXPECT_EQ(identifier(), "Acme: dely; Acme");
    codeWithoutString = acmeDelay.componentSubType;
    EXPECT_EQ(identifier(), "Acme: aufx; Acme");
    codeWithoutString = acmeDelay.componentManufacturer;
    EXPECT_EQ(identifier(), "Acme: aufx; dely; ");
}

} // namespace
} // namespace tessarin::testing
