// The table of the whole interface, docs/reference.md, against the library that runs.
#include "PlatformTest.h"

#include "TessarinFoundation/TessarinFoundation.h"
#include "TessarinPlatform/Definition.h"

#include <fstream>
#include <set>

namespace tessarin::testing {
namespace {

// A row of the tables "Class | Operation | ...", such as NSArray and "-tessarin_firstObject".
struct Operation {
    std::string owner;
    std::string selector; // with a sign: "+" for what the class itself answers, "-" for its instances

    friend auto operator<=>(const Operation&, const Operation&) = default;
    friend std::ostream& operator<<(std::ostream& stream, const Operation& operation) {
        return stream << operation.owner << ' ' << operation.selector;
    }
};
using Operations = std::set<Operation>;

// What stands between the first two backquotes from a position on, which moves behind them.
std::string quoted(const std::string& line, std::size_t& position) {
    const std::size_t begin = line.find('`', position);
    if (begin == std::string::npos) return {};
    const std::size_t end = line.find('`', begin + 1);
    if (end == std::string::npos) return {};
    position = end + 1;
    return line.substr(begin + 1, end - begin - 1);
}

Operations documentedOperations() {
    Operations operations;
    std::ifstream reference(testFile("../docs/reference.md"));
    for (std::string line; std::getline(reference, line);) {
        std::size_t position = 0;
        const std::string owner = quoted(line, position);
        const std::string selector = quoted(line, position);
        if (line.starts_with("| ") && (selector.starts_with('-') || selector.starts_with('+')))
            operations.insert({owner, selector});
    }
    return operations;
}

bool isOwn(const std::string& className) { return className.starts_with("TSSR"); }

class WholeInterfaceTest : public PlatformTest {
protected:
    const Operations documented = documentedOperations();
};

TEST_F(WholeInterfaceTest, EveryDocumentedOperationIsAnsweredByItsClass) {
    ASSERT_FALSE(documented.empty());
    for (const Operation& operation : documented) {
        const Class owner(NSObject(runtime::lookUpClass(operation.owner.c_str())));
        ASSERT_TRUE(owner) << operation;
        const SEL selector = runtime::registerSelector(operation.selector.c_str() + 1);
        EXPECT_TRUE(operation.selector.starts_with('+') ? owner.respondsToSelector(selector)
                                                        : owner.instancesRespondToSelector(selector))
            << operation;
    }
}

TEST_F(WholeInterfaceTest, EveryAttachedOperationIsDocumentedAndTheOtherWayRound) {
    Operations attached;
    for (const ExtensionGroupRecord& group : extensionGroups()) {
        const bool isMisspelt = group.groupName == "TessarinExetensions";
        if (group.groupName != "TessarinExtensions" && !isMisspelt) continue;
        EXPECT_TRUE(group.attached) << group.className;
        // That of windows has a letter too many, which is meant.
        EXPECT_EQ(isMisspelt, group.className == "NSWindow") << group.className;
        for (const std::string& selector : group.selectors) attached.insert({group.className, selector});
    }
    Operations extensions = documented;
    std::erase_if(extensions, [](const Operation& operation) { return isOwn(operation.owner); });
    EXPECT_EQ(attached, extensions);
}

} // namespace
} // namespace tessarin::testing
