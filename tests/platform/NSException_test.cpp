// Exceptions and errors as objects.
#include "PlatformTest.h"

#include "TessarinPlatform/NSError.h"

namespace tessarin::testing {
namespace {

class NSExceptionTest : public PlatformTest {};
class NSErrorTest : public PlatformTest {};

TEST_F(NSExceptionTest, HoldsNameReasonAndUserInfo) {
    const NSDictionary userInfo = NSDictionary::dictionaryWithObject_forKey("1"_ns, "a"_ns);
    const NSException exception =
        NSException::exceptionWithName_reason_userInfo("Name"_ns, "why"_ns, userInfo);
    EXPECT_EQ(text(exception.name()), "Name");
    EXPECT_EQ(text(exception.reason()), "why");
    EXPECT_TRUE(exception.userInfo().isEqual(userInfo));
}

TEST_F(NSExceptionTest, IsCaughtAsTheObjectThatWasRaised) {
    const NSException raised = NSException::exceptionWithName_reason_userInfo("Name"_ns, "why"_ns, nil);
    const NSException caught = attempt(
        [&] {
            raised.raise();
            return NSException();
        },
        [](NSException exception) { return exception; });
    EXPECT_EQ(caught, raised);
}

// Two arguments precede the variable ones, which the seam has no sending for.
TESSARIN_DISPATCHES void raiseWithFormat(NSString name, NSString format, int number, NSString string) {
    using Raising = void (*)(NSObject, SEL, NSObject, NSObject, ...);
    const SEL selector = "raise:format:"_sel;
    const NSObject classObject = NSException::classObject();
    const auto raising = reinterpret_cast<Raising>(runtime::lookUp(classObject.object(), selector));
    raising(classObject, selector, name, format, number, string.object());
}

TEST_F(NSExceptionTest, IsRaisedWithAFormat) {
    std::string reason;
    attempt(
        [] { raiseWithFormat("Name"_ns, "%d of %@"_ns, 3, "x"_ns); },
        [&](NSException exception) { reason = text(exception.name()) + ": " + text(exception.reason()); });
    EXPECT_EQ(reason, "Name: 3 of x");
}

TEST_F(NSErrorTest, HoldsDomainCodeAndUserInfo) {
    const NSDictionary userInfo = NSDictionary::dictionaryWithObject_forKey("1"_ns, "a"_ns);
    const NSError error = NSError::errorWithDomain_code_userInfo("Domain"_ns, -7, userInfo);
    EXPECT_EQ(text(error.domain()), "Domain");
    EXPECT_EQ(error.code(), -7);
    EXPECT_TRUE(error.userInfo().isEqual(userInfo));
}

TEST_F(NSErrorTest, IsDescribedByItsUserInfo) {
    const NSDictionary userInfo =
        NSDictionary::dictionaryWithObject_forKey("It broke."_ns, NSLocalizedDescriptionKey());
    EXPECT_EQ(text(NSError::errorWithDomain_code_userInfo("Domain"_ns, 1, userInfo).localizedDescription()),
              "It broke.");
}

TEST_F(NSErrorTest, IsDescribedByDomainAndCodeOtherwise) {
    EXPECT_EQ(text(NSError::errorWithDomain_code_userInfo("Domain"_ns, 12, nil).localizedDescription()),
              "The operation couldn\u2019t be completed. (Domain error 12.)");
}

TEST_F(NSErrorTest, EqualsAnErrorOfTheSameParts) {
    const auto error = [](NSInteger code) {
        return NSError::errorWithDomain_code_userInfo("Domain"_ns, code, nil);
    };
    EXPECT_TRUE(error(1).isEqual(error(1)));
    EXPECT_FALSE(error(1).isEqual(error(2)));
}

TEST_F(NSErrorTest, CanBeCopied) {
    const NSError error = NSError::errorWithDomain_code_userInfo("Domain"_ns, 1, nil);
    const Retained<NSError> copy = adopt(error.copy());
    EXPECT_EQ(text(copy.domain()), "Domain");
    EXPECT_EQ(copy.code(), 1);
}

} // namespace
} // namespace tessarin::testing
