// The group as a whole; its operations have files of their own.
#include "PlatformTest.h"

#include "TessarinFoundation/TessarinFoundation.h"

#include <set>

namespace tessarin::testing {
namespace {

class ExtensionGroupsTest : public PlatformTest {
protected:
    // The operations of all groups of that name on a class; all of them have to be attached.
    static std::set<std::string> selectorsOf(const std::string& className, const std::string& groupName) {
        std::set<std::string> selectors;
        for (const ExtensionGroupRecord& record : extensionGroups()) {
            if (record.className != className || record.groupName != groupName) continue;
            EXPECT_TRUE(record.attached) << className;
            selectors.insert(record.selectors.begin(), record.selectors.end());
        }
        return selectors;
    }
};

TEST_F(ExtensionGroupsTest, TheGroupsListTheirOperations) {
    const std::set<std::string> ofStrings = selectorsOf("NSString", "TessarinExtensions");
    for (const char* selector :
         {"-tessarin_pathRelativeToDirectory:", "+tessarin_parentDirectoryForPaths:",
          "+tessarin_keyPathWithComponents:", "-tessarin_stringByTrimmingLeadingCharactersInSet:"})
        EXPECT_TRUE(ofStrings.contains(selector)) << selector;
    EXPECT_TRUE(selectorsOf("NSURL", "TessarinExtensions").contains("-tessarin_fileURLRelativeToFileURL:"));
    EXPECT_TRUE(selectorsOf("NSFileManager", "TessarinExtensions").contains("+tessarin_fileManager"));
}

TEST_F(ExtensionGroupsTest, StringsAnswerTheOperations) {
    for (const NSString string : {""_ns, static_cast<NSString>(NSMutableString::string()),
                                  NSString(std::string("/a/b")), NSString(std::u16string_view(u"\u6642"))}) {
        EXPECT_TRUE(string.respondsToSelector("tessarin_pathRelativeToDirectory:"));
        EXPECT_TRUE(string.respondsToSelector("tessarin_stringByTrimmingLeadingCharactersInSet:"));
        EXPECT_FALSE(string.respondsToSelector("tessarin_parentDirectoryForPaths:"));
    }
}

TEST_F(ExtensionGroupsTest, ClassesAnswerTheClassOperations) {
    for (const Class stringClass : {NSString::classObject(), NSMutableString::classObject()}) {
        EXPECT_TRUE(stringClass.respondsToSelector("tessarin_parentDirectoryForPaths:"));
        EXPECT_TRUE(stringClass.respondsToSelector("tessarin_keyPathWithComponents:"));
        EXPECT_FALSE(stringClass.respondsToSelector("tessarin_pathRelativeToDirectory:"));
        EXPECT_TRUE(stringClass.instancesRespondToSelector("tessarin_pathRelativeToDirectory:"_sel));
    }
    EXPECT_TRUE(NSFileManager::classObject().respondsToSelector("tessarin_fileManager"));
    EXPECT_TRUE(NSURL::classObject().instancesRespondToSelector("tessarin_fileURLRelativeToFileURL:"_sel));
}

TEST_F(ExtensionGroupsTest, OtherClassesDoNot) {
    EXPECT_FALSE(NSNumber::numberWithInt(1).respondsToSelector("tessarin_pathRelativeToDirectory:"));
    EXPECT_FALSE(NSObject::classObject().respondsToSelector("tessarin_fileManager"));
}

} // namespace
} // namespace tessarin::testing
