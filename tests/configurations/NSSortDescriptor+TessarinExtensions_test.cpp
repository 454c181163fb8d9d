#include "ManyThreads.h"

#include "TessarinFoundation/NSSortDescriptor+TessarinExtensions.h"

#include <cstring>

namespace tessarin::testing {
namespace {

NSDictionary configurationOf(NSObject keyPath, NSObject ascending, NSObject selector = nil) {
    const NSMutableDictionary configuration = NSMutableDictionary::dictionary();
    if (keyPath) configuration.setObject_forKey(keyPath, "keypath"_ns);
    if (ascending) configuration.setObject_forKey(ascending, "ascending"_ns);
    if (selector) configuration.setObject_forKey(selector, "selector"_ns);
    return configuration;
}

NSNumber number(int value) { return NSNumber::numberWithInt(value); }

class SortDescriptorConfigurationTest : public PlatformTest {};

TEST_F(SortDescriptorConfigurationTest, HoldsKeyDirectionAndSelector) {
    const NSSortDescriptor byName = NSSortDescriptor::sortDescriptorWithKey_ascending("name"_ns, true);
    const NSDictionary configuration = tessarin_configuration(byName);
    EXPECT_TRUE(configuration.isEqual(configurationOf("name"_ns, number(1), "compare:"_ns)));
    EXPECT_EQ(configuration.count(), 3u);
    EXPECT_TRUE(tessarin_sortDescriptorWithConfiguration(configuration).isEqual(byName));
}

TEST_F(SortDescriptorConfigurationTest, NamesAnySelector) {
    for (const char* name : {"caseInsensitiveCompare:", "localizedCompare:", "compareToMyOwnLiking:"}) {
        const NSSortDescriptor descriptor = NSSortDescriptor::sortDescriptorWithKey_ascending_selector(
            "name"_ns, true, runtime::registerSelector(name));
        const NSDictionary configuration = tessarin_configuration(descriptor);
        EXPECT_EQ(text(configuration.objectForKey("selector"_ns)), name);
        EXPECT_TRUE(tessarin_sortDescriptorWithConfiguration(configuration).isEqual(descriptor));
    }
}

TEST_F(SortDescriptorConfigurationTest, ADescendingOneHasTheInteger0) {
    const NSSortDescriptor descending = NSSortDescriptor::sortDescriptorWithKey_ascending("name"_ns, false);
    const NSDictionary configuration = tessarin_configuration(descending);
    EXPECT_TRUE(NSObject(configuration.objectForKey("ascending"_ns)).isEqual(number(0)));
    EXPECT_TRUE(tessarin_sortDescriptorWithConfiguration(configuration).isEqual(descending));
}

TEST_F(SortDescriptorConfigurationTest, TheDirectionIsNoBooleanNumber) {
    for (const bool ascending : {true, false}) {
        const NSNumber direction =
            tessarin_configuration(NSSortDescriptor::sortDescriptorWithKey_ascending("name"_ns, ascending))
                .objectForKey("ascending"_ns);
        EXPECT_EQ(std::strchr("cCB", direction.objCType()[0]), nullptr) << direction.objCType();
    }
}

TEST_F(SortDescriptorConfigurationTest, IsImmutable) {
    const NSDictionary configuration =
        tessarin_configuration(NSSortDescriptor::sortDescriptorWithKey_ascending("name"_ns, true));
    EXPECT_FALSE(configuration.isKindOfClass(NSMutableDictionary::classObject()));
}

TEST_F(SortDescriptorConfigurationTest, IsNotOwnedByTheCaller) {
    const NSSortDescriptor byName = NSSortDescriptor::sortDescriptorWithKey_ascending("name"_ns, true);
    EXPECT_EQ(ownedReferencesOfNew([&] { return tessarin_configuration(byName); }), 0);
}

TEST_F(SortDescriptorConfigurationTest, GoesThroughPropertyLists) {
    const NSSortDescriptor descriptor = NSSortDescriptor::sortDescriptorWithKey_ascending_selector(
        "effect.name"_ns, false, "caseInsensitiveCompare:"_sel);
    for (const NSPropertyListFormat format :
         {NSPropertyListBinaryFormat_v1_0, NSPropertyListXMLFormat_v1_0}) {
        const NSData data = NSPropertyListSerialization::dataWithPropertyList_format_options_error(
            tessarin_configuration(descriptor), format, 0, nullptr);
        const NSDictionary read =
            NSPropertyListSerialization::propertyListWithData_options_format_error(data, 0, nullptr, nullptr);
        EXPECT_TRUE(tessarin_sortDescriptorWithConfiguration(read).isEqual(descriptor));
    }
}

TEST_F(SortDescriptorConfigurationTest, ADescriptorWithoutAKeyIsRefusedByTheDictionary) {
    const Retained<NSSortDescriptor> descriptor = adopt(NSSortDescriptor::alloc());
    EXPECT_THROWS_NAMED(tessarin_configuration(descriptor), "NSInvalidArgumentException");
}

TEST_F(SortDescriptorConfigurationTest, ADescriptorWithoutASelectorHasNoEntryForIt) {
    static const ClassDefinition definition{{.name = "TessarinSelectorlessDescriptor",
                                             .superclass = "NSSortDescriptor",
                                             .methods = {instanceMethod(
                                                 "selector", +[](NSSortDescriptor, SEL) { return SEL(); })}}};
    const Retained<NSSortDescriptor> descriptor =
        adopt(as<NSSortDescriptor>(NSObject(definition.classObject().alloc()))
                  .initWithKey_ascending("name"_ns, true));
    EXPECT_TRUE(tessarin_configuration(descriptor).isEqual(configurationOf("name"_ns, number(1))));
}

TEST_F(SortDescriptorConfigurationTest, OfNilIsNil) {
    EXPECT_FALSE(tessarin_configuration(NSSortDescriptor()));
    EXPECT_FALSE(tessarin_initWithConfiguration(nil, configurationOf("name"_ns, number(1))));
}

// ---- Descriptors made of configurations

class ConfiguredSortDescriptorTest : public PlatformTest {
protected:
    static void expectDefaultComparison(NSDictionary configuration) {
        const NSSortDescriptor made = tessarin_sortDescriptorWithConfiguration(configuration);
        EXPECT_TRUE(made.isEqual(NSSortDescriptor::sortDescriptorWithKey_ascending("name"_ns, true)));
        EXPECT_EQ(text(NSStringFromSelector(made.selector())), "compare:");
    }
    // That a configuration leaves a descriptor as it is allocated, and that this one is safe to use.
    static void expectRefusal(NSDictionary configuration) {
        const NSSortDescriptor allocated = NSSortDescriptor::alloc();
        const NSSortDescriptor made = tessarin_initWithConfiguration(allocated, configuration);
        EXPECT_EQ(made, allocated);
        const Retained<NSSortDescriptor> owned = adopt(made);
        EXPECT_EQ(owned.retainCount(), 1u);
        expectEmpty(owned);
        expectEmpty(tessarin_sortDescriptorWithConfiguration(configuration));
    }
    static void expectEmpty(NSSortDescriptor descriptor) {
        EXPECT_TRUE(descriptor.isMemberOfClass(NSSortDescriptor::classObject()));
        EXPECT_FALSE(descriptor.key());
        EXPECT_FALSE(descriptor.ascending());
        EXPECT_EQ(descriptor.selector(), SEL());
        EXPECT_TRUE(descriptor.isEqual(descriptor));
        EXPECT_FALSE(descriptor.isEqual(NSSortDescriptor::sortDescriptorWithKey_ascending("x"_ns, false)));
        EXPECT_EQ(descriptor.hash(), descriptor.hash());
        EXPECT_FALSE(text(descriptor.description()).empty());
        const Retained<NSSortDescriptor> copy = adopt(NSSortDescriptor(descriptor.copy()));
        EXPECT_FALSE(copy.key());
    }
};

TEST_F(ConfiguredSortDescriptorTest, TheStringYESIsAscending) {
    expectDefaultComparison(configurationOf("name"_ns, "YES"_ns));
}

TEST_F(ConfiguredSortDescriptorTest, DirectionsAreReadAsBooleans) {
    const auto isAscending = [](NSObject direction) {
        return tessarin_sortDescriptorWithConfiguration(configurationOf("name"_ns, direction)).ascending();
    };
    for (const NSObject direction : {NSObject(number(1)), NSObject(number(7)), NSObject(number(-1)),
                                     NSObject(NSNumber::numberWithBool(true)), NSObject("1"_ns)})
        EXPECT_TRUE(isAscending(direction)) << text(direction.description());
    for (const NSObject direction : {NSObject(number(0)), NSObject(NSNumber::numberWithBool(false)),
                                     NSObject("NO"_ns), NSObject("0"_ns), NSObject(""_ns)})
        EXPECT_FALSE(isAscending(direction)) << text(direction.description());
}

TEST_F(ConfiguredSortDescriptorTest, AnyObjectWithABooleanValueIsADirection) {
    static const ClassDefinition definition{{.name = "TessarinDirection",
                                             .methods = {instanceMethod(
                                                 "boolValue", +[](NSObject, SEL) -> BOOL { return YES; })}}};
    const Retained<NSObject> direction =
        adopt(send<NSObject>(NSObject(definition.classObject().alloc()), "init"_sel));
    expectDefaultComparison(configurationOf("name"_ns, direction));
}

TEST_F(ConfiguredSortDescriptorTest, AnEmptySelectorIsIgnored) {
    expectDefaultComparison(configurationOf("name"_ns, number(1), ""_ns));
}

TEST_F(ConfiguredSortDescriptorTest, ASelectorThatIsNoStringIsIgnored) {
    expectDefaultComparison(configurationOf("name"_ns, number(1), number(5)));
    expectDefaultComparison(configurationOf("name"_ns, number(1), NSNull::null()));
}

TEST_F(ConfiguredSortDescriptorTest, AMissingSelectorIsTheDefault) {
    expectDefaultComparison(configurationOf("name"_ns, number(1)));
}

// A selector's name ends where a C string does, and is UTF-8.
NSArray namesThatNoSelectorHas() {
    const auto units = [](std::u16string_view name) { return NSString(name); };
    return NSArray::arrayOf(units({u"caseInsensitiveCompare:\0", 24}), units({u"localizedCompare:\0:", 19}),
                            units({u"\0", 1}), units({u"\0compare:", 9}), units(u"localizedCompare:\xD800"),
                            units(u"\xDC00"), units(u"localized\xDC00\xD800:"));
}

TEST_F(ConfiguredSortDescriptorTest, ANameThatNoSelectorHasGivesTheNullSelector) {
    const NSArray names = namesThatNoSelectorHas();
    for (NSUInteger index = 0; index < names.count(); ++index)
        EXPECT_EQ(NSSelectorFromString(names.objectAtIndex(index)), SEL()) << "name " << index;
    EXPECT_NE(NSSelectorFromString(u"compare\U0001F600:"_ns), SEL());
}

TEST_F(ConfiguredSortDescriptorTest, ANameThatNoSelectorHasIsIgnored) {
    const NSArray names = namesThatNoSelectorHas();
    for (NSUInteger index = 0; index < names.count(); ++index) {
        SCOPED_TRACE("name " + std::to_string(index));
        expectDefaultComparison(configurationOf("name"_ns, number(1), names.objectAtIndex(index)));
    }
}

TEST_F(ConfiguredSortDescriptorTest, ASelectorThatNobodyAnswersIsKept) {
    const NSSortDescriptor made = tessarin_sortDescriptorWithConfiguration(
        configurationOf("name"_ns, number(1), "no such: comparison"_ns));
    EXPECT_EQ(text(NSStringFromSelector(made.selector())), "no such: comparison");
    EXPECT_EQ(text(made.key()), "name");
}

TEST_F(ConfiguredSortDescriptorTest, FurtherEntriesAreIgnored) {
    const NSMutableDictionary configuration =
        NSMutableDictionary::dictionaryWithDictionary(configurationOf("name"_ns, number(1)));
    configuration.setObject_forKey("x"_ns, "kind"_ns);
    expectDefaultComparison(configuration);
}

TEST_F(ConfiguredSortDescriptorTest, AnEmptyKeyPathLeavesTheReceiverUninitialised) {
    expectRefusal(configurationOf(""_ns, number(1)));
}

TEST_F(ConfiguredSortDescriptorTest, AKeyPathThatIsNoStringLeavesTheReceiverUninitialised) {
    expectRefusal(configurationOf(number(5), number(1)));
}

TEST_F(ConfiguredSortDescriptorTest, AMissingKeyPathLeavesTheReceiverUninitialised) {
    expectRefusal(configurationOf(nil, number(1), "compare:"_ns));
}

TEST_F(ConfiguredSortDescriptorTest, AMissingDirectionLeavesTheReceiverUninitialised) {
    expectRefusal(configurationOf("name"_ns, nil));
}

TEST_F(ConfiguredSortDescriptorTest, ADirectionWithoutABooleanValueLeavesTheReceiverUninitialised) {
    expectRefusal(configurationOf("name"_ns, NSArray::array()));
    expectRefusal(configurationOf("name"_ns, NSNull::null()));
}

TEST_F(ConfiguredSortDescriptorTest, NoConfigurationLeavesTheReceiverUninitialised) {
    expectRefusal(nil);
    expectRefusal(NSDictionary::dictionary());
}

TEST_F(ConfiguredSortDescriptorTest, AnUninitialisedOneCanBeInitialisedLater) {
    const NSSortDescriptor refused =
        tessarin_initWithConfiguration(NSSortDescriptor::alloc(), NSDictionary::dictionary());
    const Retained<NSSortDescriptor> made =
        adopt(tessarin_initWithConfiguration(refused, configurationOf("name"_ns, number(1))));
    EXPECT_EQ(text(made.key()), "name");
}

TEST_F(ConfiguredSortDescriptorTest, AnUninitialisedOneLeavesTheOrderWhenItSorts) {
    const NSMutableArray array = NSMutableArray::arrayWithArray(NSArray::arrayOf("b"_ns, "a"_ns, "c"_ns));
    const NSSortDescriptor empty = tessarin_sortDescriptorWithConfiguration(nil);
    EXPECT_EQ(thrownName([&] { return array.sortUsingDescriptors(NSArray::arrayOf(empty)), 0; }),
              "(nothing)");
    EXPECT_EQ(texts(array), (Texts{"b", "a", "c"}));
}

// Whether the platform sorts by it or refuses to, as GNUstep does.
TEST_F(ConfiguredSortDescriptorTest, AnUninitialisedOneLosesNothingWhenItSorts) {
    const NSMutableArray array = NSMutableArray::arrayWithArray(NSArray::arrayOf("b"_ns, "a"_ns, "c"_ns));
    const NSSortDescriptor empty = tessarin_sortDescriptorWithConfiguration(nil);
    static_cast<void>(thrownName([&] { return array.sortUsingDescriptors(NSArray::arrayOf(empty)), 0; }));
    EXPECT_EQ(texts(array), (Texts{"b", "a", "c"}));
}

TEST_F(ConfiguredSortDescriptorTest, TheInitialisedOneIsOwnedByTheCaller) {
    const NSDictionary configuration = configurationOf("name"_ns, number(1));
    const auto owned = [&] {
        return ownedReferencesOfNew(
            [&] { return tessarin_initWithConfiguration(NSSortDescriptor::alloc(), configuration); });
    };
    EXPECT_EQ(owned(), 1);
}

TEST_F(ConfiguredSortDescriptorTest, TheMadeOneIsNot) {
    for (const NSDictionary configuration : {configurationOf("name"_ns, number(1)), NSDictionary()})
        EXPECT_EQ(
            ownedReferencesOfNew([&] { return tessarin_sortDescriptorWithConfiguration(configuration); }), 0);
}

TEST_F(ConfiguredSortDescriptorTest, IsOfTheReceivingClass) {
    static const ClassDefinition definition{
        {.name = "TessarinOwnSortDescriptor", .superclass = "NSSortDescriptor"}};
    for (const NSDictionary configuration : {configurationOf("name"_ns, number(1)), NSDictionary()}) {
        const NSSortDescriptor made =
            tessarin_sortDescriptorWithConfiguration(definition.classObject(), configuration);
        EXPECT_TRUE(made.isMemberOfClass(definition.classObject()));
    }
}

TEST_F(ConfiguredSortDescriptorTest, AsksASubclassForItsInitialiser) {
    static const ClassDefinition definition{
        {.name = "TessarinPrefixingDescriptor",
         .superclass = "NSSortDescriptor",
         .methods = {instanceMethod(
             "initWithKey:ascending:selector:",
             +[](NSSortDescriptor self, SEL selector, NSString key, BOOL ascending, SEL comparison) {
                 return sendSuper<NSSortDescriptor>(self, "TessarinPrefixingDescriptor"_class, selector,
                                                    "track."_ns.stringByAppendingString(key), ascending,
                                                    comparison);
             })}}};
    for (const NSString selector : {"compare:"_ns, NSString()}) {
        const NSSortDescriptor made = tessarin_sortDescriptorWithConfiguration(
            definition.classObject(), configurationOf("name"_ns, number(1), selector));
        EXPECT_EQ(text(made.key()), "track.name");
    }
}

TEST_F(ConfiguredSortDescriptorTest, AsksASubclassForItsInitialiserWithoutASelector) {
    static const ClassDefinition definition{
        {.name = "TessarinPlainPrefixingDescriptor",
         .superclass = "NSSortDescriptor",
         .methods = {instanceMethod(
             "initWithKey:ascending:",
             +[](NSSortDescriptor self, SEL selector, NSString key, BOOL ascending) {
                 return sendSuper<NSSortDescriptor>(self, "TessarinPlainPrefixingDescriptor"_class, selector,
                                                    "track."_ns.stringByAppendingString(key), ascending);
             })}}};
    const auto keyOfOneMadeWith = [&](NSObject selector) {
        const NSSortDescriptor made = tessarin_sortDescriptorWithConfiguration(
            definition.classObject(), configurationOf("name"_ns, number(1), selector));
        return text(made.key());
    };
    for (const NSObject none : {NSObject(), NSObject(""_ns), NSObject(number(5)), NSObject(NSNull::null())})
        EXPECT_EQ(keyOfOneMadeWith(none), "track.name") << text(none.description());
    EXPECT_EQ(keyOfOneMadeWith("compare:"_ns), "name");
}

TEST_F(ConfiguredSortDescriptorTest, AsksASubclassForItsReadingOfConfigurations) {
    static const ClassDefinition definition{
        {.name = "TessarinStubbornDescriptor",
         .superclass = "NSSortDescriptor",
         .methods = {instanceMethod(
             "tessarin_initWithConfiguration:", +[](NSSortDescriptor self, SEL, NSDictionary) {
                 return self.initWithKey_ascending("always"_ns, true);
             })}}};
    EXPECT_EQ(text(tessarin_sortDescriptorWithConfiguration(definition.classObject(), nil).key()), "always");
}

TEST_F(ConfiguredSortDescriptorTest, SortsAsTheOriginalDoes) {
    const auto track = [](NSString name) {
        return NSDictionary::dictionaryWithObject_forKey(name, "name"_ns);
    };
    const NSArray tracks = NSArray::arrayOf(track("bass"_ns), track("Alto"_ns), track("Choir"_ns));
    const NSSortDescriptor order = tessarin_sortDescriptorWithConfiguration(
        configurationOf("name"_ns, number(0), "caseInsensitiveCompare:"_ns));
    const NSArray sorted = tracks.sortedArrayUsingDescriptors(NSArray::arrayOf(order));
    EXPECT_EQ(texts(sorted.valueForKey("name"_ns)), (Texts{"Choir", "bass", "Alto"}));
}

// One descriptor and one array on many threads at once: neither changes.
TEST_F(ConfiguredSortDescriptorTest, ConcurrentReadingAndSortingFindTheSame) {
    const NSArray words = NSArray::arrayOf("b"_ns, "D"_ns, "a"_ns, "C"_ns, "e"_ns);
    const NSSortDescriptor order = NSSortDescriptor::sortDescriptorWithKey_ascending_selector(
        "self"_ns, false, "caseInsensitiveCompare:"_sel);
    onManyThreads(300, [&] {
        const NSSortDescriptor made = tessarin_sortDescriptorWithConfiguration(tessarin_configuration(order));
        const NSArray sorted = words.sortedArrayUsingDescriptors(NSArray::arrayOf(made, order));
        return (made.isEqual(order) ? "" : text(made.description()))
               + difference(text(sorted.componentsJoinedByString(" "_ns)), "e D C b a");
    });
}

} // namespace
} // namespace tessarin::testing
