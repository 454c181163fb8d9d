#include "PlatformTest.h"

#include "TessarinFoundation/NSFileManager+TessarinExtensions.h"

namespace tessarin::testing {
namespace {

class FileManagerTest : public PlatformTest {};

TEST_F(FileManagerTest, EveryCallGivesAnotherObject) {
    const NSFileManager first = tessarin_fileManager(), second = tessarin_fileManager();
    EXPECT_TRUE(first);
    EXPECT_TRUE(second);
    EXPECT_NE(first, second);
}

TEST_F(FileManagerTest, IsNeverTheSharedOne) {
    const NSFileManager shared = NSFileManager::defaultManager();
    EXPECT_NE(tessarin_fileManager(), shared);
    EXPECT_NE(tessarin_fileManager(NSFileManager::classObject()), shared);
}

TEST_F(FileManagerTest, IsOfTheClassItselfAlsoWhenADerivedClassIsAsked) {
    static const ClassDefinition definition{
        {.name = "TessarinTestFileManager", .superclass = "NSFileManager"}};
    const NSFileManager manager = tessarin_fileManager(definition.classObject());
    EXPECT_TRUE(manager.isMemberOfClass(NSFileManager::classObject()));
    EXPECT_FALSE(manager.isKindOfClass(definition.classObject()));
}

TEST_F(FileManagerTest, IsAutoreleased) {
    EXPECT_EQ(ownedReferencesOfNew([] { return tessarin_fileManager(); }), 0);
}

TEST_F(FileManagerTest, ManagesFiles) {
    EXPECT_TRUE(tessarin_fileManager().fileExistsAtPath("/"_ns));
    EXPECT_FALSE(tessarin_fileManager().fileExistsAtPath("/no file of this name"_ns));
}

class TestOtherFileManager
    : public Handle<TestOtherFileManager, "TessarinTestOtherFileManager", NSFileManager> {
public:
    using Handle::Handle;
};

TEST_F(FileManagerTest, AClassThatAnswersDifferentlyIsAsked) {
    static const ClassDefinition definition{
        {.name = "TessarinTestOtherFileManager",
         .superclass = "NSFileManager",
         .methods = {classMethod(
             "tessarin_fileManager", +[](Class, SEL) { return NSFileManager::defaultManager(); })}}};
    EXPECT_EQ(tessarin_fileManager(definition.classObject()), NSFileManager::defaultManager());
    EXPECT_EQ(tessarin_fileManager<TestOtherFileManager>(), NSFileManager::defaultManager());
}

TEST_F(FileManagerTest, ANamedClassThatAnswersAsItsSuperclassGivesANewOne) {
    const NSFileManager manager = tessarin_fileManager<NSFileManager>();
    EXPECT_TRUE(manager.isMemberOfClass(NSFileManager::classObject()));
    EXPECT_NE(manager, NSFileManager::defaultManager());
}

} // namespace
} // namespace tessarin::testing
