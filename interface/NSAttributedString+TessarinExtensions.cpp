// Attributed strings: made in one call.
#include "TessarinFoundation/NSAttributedString+TessarinExtensions.h"

#include "TessarinPlatform/Definition.h"

using namespace tessarin;

namespace {

// Of NSAttributedString itself and not of the receiving class, which is meant.
NSAttributedString attributedStringWithString_attributes(Class, SEL, NSString string,
                                                         NSDictionary attributes) {
    return adopt(NSAttributedString::alloc().initWithString_attributes(string, attributes)).autorelease();
}

const ExtensionGroup group{
    "NSAttributedString",
    "TessarinExtensions",
    {classMethod("tessarin_attributedStringWithString:attributes:", attributedStringWithString_attributes)}};

} // namespace

NSAttributedString tessarin_attributedStringWithString_attributes(NSString string, NSDictionary attributes) {
    return tessarin_attributedStringWithString_attributes(NSAttributedString::classObject(), string,
                                                          attributes);
}

NSAttributedString tessarin_attributedStringWithString_attributes(Class receiver, NSString string,
                                                                  NSDictionary attributes) {
    return send<NSAttributedString>(receiver, "tessarin_attributedStringWithString:attributes:"_sel, string,
                                    attributes);
}
