// How methods that take geometry are typed, against what the platform's compiled code says of its own.
#include "MethodEncodings.h"

namespace tessarin::testing {
namespace {

class GeometryEncodingTest : public PlatformTest {};

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
