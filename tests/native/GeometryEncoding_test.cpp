// How methods that take geometry are typed, against what the platform's compiled code says of its own.
#include "PlatformTest.h"

#include "platform/native/ObjectiveC.h"

namespace tessarin::testing {
namespace {

class GeometryEncodingTest : public PlatformTest {
protected:
    // Without the offsets of the arguments, which compilers write and nobody reads.
    static std::string encodingOf(Class classObject, const char* selector) {
        const ::Method method =
            class_getInstanceMethod(native::runtimeClass(classObject.object()), sel_registerName(selector));
        std::string encoding = method ? method_getTypeEncoding(method) : "(no method)";
        std::erase_if(encoding, [](char character) { return character >= '0' && character <= '9'; });
        return encoding;
    }
    template <class Result, class Self, class... Arguments>
    static std::string ownEncoding() {
        return std::string(tessarin::detail::methodEncoding<Result, Self, Arguments...>.view());
    }
};

TEST_F(GeometryEncodingTest, OfRectangles) {
    EXPECT_EQ((ownEncoding<NSRect, NSView>()), encodingOf(NSView::classObject(), "frame"));
    EXPECT_EQ((ownEncoding<void, NSView, NSRect>()), encodingOf(NSView::classObject(), "setFrame:"));
    EXPECT_EQ((ownEncoding<NSRect, NSWindow, NSRect>()),
              encodingOf(NSWindow::classObject(), "convertRectToScreen:"));
}

TEST_F(GeometryEncodingTest, OfPointsAndSizes) {
    EXPECT_EQ((ownEncoding<void, NSView, NSPoint>()), encodingOf(NSView::classObject(), "setFrameOrigin:"));
    EXPECT_EQ((ownEncoding<void, NSView, NSSize>()), encodingOf(NSView::classObject(), "setFrameSize:"));
}

TEST_F(GeometryEncodingTest, TheExtensionsAreTypedAlike) {
    EXPECT_EQ(encodingOf(NSView::classObject(), "tessarin_setFrameWithOriginAtTopLeft:"),
              encodingOf(NSView::classObject(), "setFrame:"));
    EXPECT_EQ(encodingOf(NSView::classObject(), "tessarin_setFrameTopLeftPoint:"),
              encodingOf(NSView::classObject(), "setFrameOrigin:"));
    EXPECT_EQ(encodingOf(NSWindow::classObject(), "tessarin_convertBaseToScreen:"),
              encodingOf(NSWindow::classObject(), "convertBaseToScreen:"));
}

} // namespace
} // namespace tessarin::testing
