// The table of the embedded platform's classes. A class is defined when it is first looked up.
#include "platform/embedded/runtime/BuiltInClass.h"

#include <iterator>

namespace tessarin::embedded {

// Each is defined in the file that bears the class's name, or in that of the class that it serves.
ClassDescription describeNSObject();
ClassDescription describeProtocol();
ClassDescription describeNSString();
ClassDescription describeNSMutableString();
ClassDescription describeNSNumber();
ClassDescription describeNSNumberFormatter();
ClassDescription describeNSArray();
ClassDescription describeNSMutableArray();
ClassDescription describeNSDictionary();
ClassDescription describeNSMutableDictionary();
ClassDescription describeNSEnumerator();
ClassDescription describeNSCharacterSet();
ClassDescription describeNSData();
ClassDescription describeNSMutableData();
ClassDescription describeNSDate();
ClassDescription describeNSIndexSet();
ClassDescription describeNSMutableIndexSet();
ClassDescription describeNSLock();
ClassDescription describeNSNull();
ClassDescription describeNSURL();
ClassDescription describeNSFileManager();
ClassDescription describeNSException();
ClassDescription describeNSError();
ClassDescription describeNSPropertyListSerialization();
ClassDescription describeNSCoder();
ClassDescription describeNSKeyedArchiver();
ClassDescription describeNSKeyedUnarchiver();
ClassDescription describeKeyedArchiverUID();
ClassDescription describeNSBundle();
ClassDescription describeNSScreen();
ClassDescription describeNSView();
ClassDescription describeNSWindow();
ClassDescription describeNSScroller();
ClassDescription describeNSScrollView();
ClassDescription describeNSSortDescriptor();
ClassDescription describeNSAttributedString();
ClassDescription describeNSMutableAttributedString();
ClassDescription describeAttributedText();
ClassDescription describeNSMenu();
ClassDescription describeNSMenuItem();
ClassDescription describeMenuItemList();
ClassDescription describeNSScanner();
ClassDescription describeNSColor();
ClassDescription describeNSColorSpace();

const BuiltInClass builtInClasses[] = {
    {"NSObject", describeNSObject},
    {"Protocol", describeProtocol},
    {"NSString", describeNSString},
    {"NSMutableString", describeNSMutableString},
    {"NSNumber", describeNSNumber},
    {"NSNumberFormatter", describeNSNumberFormatter},
    {"NSArray", describeNSArray},
    {"NSMutableArray", describeNSMutableArray},
    {"NSDictionary", describeNSDictionary},
    {"NSMutableDictionary", describeNSMutableDictionary},
    {"NSEnumerator", describeNSEnumerator},
    {"NSCharacterSet", describeNSCharacterSet},
    {"NSData", describeNSData},
    {"NSMutableData", describeNSMutableData},
    {"NSDate", describeNSDate},
    {"NSIndexSet", describeNSIndexSet},
    {"NSMutableIndexSet", describeNSMutableIndexSet},
    {"NSLock", describeNSLock},
    {"NSNull", describeNSNull},
    {"NSURL", describeNSURL},
    {"NSFileManager", describeNSFileManager},
    {"NSException", describeNSException},
    {"NSError", describeNSError},
    {"NSPropertyListSerialization", describeNSPropertyListSerialization},
    {"NSCoder", describeNSCoder},
    {"NSKeyedArchiver", describeNSKeyedArchiver},
    {"NSKeyedUnarchiver", describeNSKeyedUnarchiver},
    {"CFKeyedArchiverUID", describeKeyedArchiverUID},
    {"NSBundle", describeNSBundle},
    {"NSScreen", describeNSScreen},
    {"NSView", describeNSView},
    {"NSWindow", describeNSWindow},
    {"NSScroller", describeNSScroller},
    {"NSScrollView", describeNSScrollView},
    {"NSSortDescriptor", describeNSSortDescriptor},
    {"NSAttributedString", describeNSAttributedString},
    {"NSMutableAttributedString", describeNSMutableAttributedString},
    {"TessarinAttributedText", describeAttributedText},
    {"NSMenu", describeNSMenu},
    {"NSMenuItem", describeNSMenuItem},
    {"TessarinMenuItemList", describeMenuItemList},
    {"NSScanner", describeNSScanner},
    {"NSColor", describeNSColor},
    {"NSColorSpace", describeNSColorSpace},
};
const std::size_t builtInClassCount = std::size(builtInClasses);

} // namespace tessarin::embedded
