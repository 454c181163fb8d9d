// Owning handles and autorelease pools.
#include "PlatformTest.h"

#include <utility>

namespace tessarin::testing {
namespace {

int livingWitnesses = 0;

id initWitness(NSObject self, SEL) {
    ++livingWitnesses;
    return sendSuper<id>(self, "OwnershipWitness"_class, "init"_sel);
}
void deallocWitness(NSObject self, SEL) {
    --livingWitnesses;
    sendSuper<void>(self, "OwnershipWitness"_class, "dealloc"_sel);
}

// Objects whose end can be observed.
class OwnershipTest : public PlatformTest {
protected:
    static void SetUpTestSuite() {
        static const ClassDefinition definition{
            {.name = "OwnershipWitness",
             .methods = {instanceMethod("init", initWitness), instanceMethod("dealloc", deallocWitness)}}};
    }
    void SetUp() override { livingWitnesses = 0; }

    static Retained<NSObject> newWitness() {
        return adopt(send<NSObject>("OwnershipWitness"_class.alloc(), "init"_sel));
    }
};

TEST_F(OwnershipTest, AdoptTakesOverTheReference) {
    {
        const Retained<NSObject> witness = newWitness();
        EXPECT_EQ(witness.retainCount(), 1u);
        EXPECT_EQ(livingWitnesses, 1);
    }
    EXPECT_EQ(livingWitnesses, 0);
}

TEST_F(OwnershipTest, RetainAddsAReference) {
    const Retained<NSObject> witness = newWitness();
    {
        const Retained<NSObject> second = retain(static_cast<NSObject>(witness));
        EXPECT_EQ(second, witness);
        EXPECT_EQ(witness.retainCount(), 2u);
    }
    EXPECT_EQ(witness.retainCount(), 1u);
}

TEST_F(OwnershipTest, CopiesOwnAReferenceEach) {
    const Retained<NSObject> witness = newWitness();
    Retained<NSObject> copy = witness;
    EXPECT_EQ(witness.retainCount(), 2u);
    copy = newWitness();
    EXPECT_EQ(witness.retainCount(), 1u);
    copy = witness;
    EXPECT_EQ(livingWitnesses, 1);
    EXPECT_EQ(witness.retainCount(), 2u);
}

TEST_F(OwnershipTest, AssigningAHandleToItselfKeepsIt) {
    Retained<NSObject> witness = newWitness();
    Retained<NSObject>& same = witness;
    witness = same;
    EXPECT_EQ(witness.retainCount(), 1u);
    EXPECT_EQ(livingWitnesses, 1);
}

TEST_F(OwnershipTest, MovingHandsTheReferenceOn) {
    Retained<NSObject> first = newWitness();
    const Retained<NSObject> second = std::move(first);
    EXPECT_FALSE(first);
    EXPECT_EQ(second.retainCount(), 1u);
}

TEST_F(OwnershipTest, LeakKeepsTheReference) {
    Retained<NSObject> witness = newWitness();
    const NSObject leaked = witness.leak();
    EXPECT_FALSE(witness);
    EXPECT_EQ(leaked.retainCount(), 1u);
    runtime::release(leaked.object());
    EXPECT_EQ(livingWitnesses, 0);
}

TEST_F(OwnershipTest, ResetReleasesOnce) {
    Retained<NSObject> witness = newWitness();
    witness.reset();
    EXPECT_FALSE(witness);
    EXPECT_EQ(livingWitnesses, 0);
    witness.reset();
    EXPECT_EQ(livingWitnesses, 0);
}

TEST_F(OwnershipTest, AutoreleaseHandsTheReferenceToThePool) {
    {
        const AutoreleasePool pool;
        const NSObject witness = newWitness().autorelease();
        EXPECT_EQ(witness.retainCount(), 1u);
        EXPECT_EQ(livingWitnesses, 1);
    }
    EXPECT_EQ(livingWitnesses, 0);
}

TEST_F(OwnershipTest, NilIsOwnedLikeAnyHandle) {
    Retained<NSString> none;
    const Retained<NSString> copy = none;
    none = retain(NSString());
    none = nil;
    EXPECT_FALSE(none.autorelease());
    EXPECT_FALSE(copy);
    EXPECT_EQ(runtime::retain(nullptr), nullptr);
    EXPECT_EQ(runtime::autorelease(nullptr), nullptr);
    runtime::release(nullptr);
}

TEST_F(OwnershipTest, PoolsReleaseWhatCameInAfterTheyWereOpened) {
    const AutoreleasePool outer;
    newWitness().autorelease();
    {
        const AutoreleasePool inner;
        newWitness().autorelease();
        newWitness().autorelease();
        EXPECT_EQ(livingWitnesses, 3);
    }
    EXPECT_EQ(livingWitnesses, 1);
    newWitness().autorelease();
    EXPECT_EQ(livingWitnesses, 2);
}

TEST_F(OwnershipTest, PoolsReleaseAsOftenAsAnObjectCameIn) {
    const Retained<NSObject> witness = newWitness();
    {
        const AutoreleasePool pool;
        for (int times = 0; times < 100; ++times) retain(static_cast<NSObject>(witness)).autorelease();
        EXPECT_EQ(witness.retainCount(), 101u);
    }
    EXPECT_EQ(witness.retainCount(), 1u);
}

TEST_F(OwnershipTest, PoolsHoldManyObjects) {
    {
        const AutoreleasePool pool;
        for (int times = 0; times < 10000; ++times) newWitness().autorelease();
        EXPECT_EQ(livingWitnesses, 10000);
    }
    EXPECT_EQ(livingWitnesses, 0);
}

TEST_F(OwnershipTest, CollectionsOwnTheirElements) {
    {
        const Retained<NSMutableArray> array = adopt(NSMutableArray::alloc().init());
        array.addObject(newWitness());
        EXPECT_EQ(livingWitnesses, 1);
    }
    EXPECT_EQ(livingWitnesses, 0);
}

TEST_F(OwnershipTest, FactoriesAnswerWhatTheCallerDoesNotOwn) {
    const Retained<NSObject> element = newWitness();
    {
        const AutoreleasePool pool;
        EXPECT_TRUE(NSArray::arrayWithObject(element));
        EXPECT_EQ(element.retainCount(), 2u);
    }
    EXPECT_EQ(element.retainCount(), 1u);
}

} // namespace
} // namespace tessarin::testing
