#include "PlatformTest.h"

#include "TessarinFoundation/TSSRAudio.h"
#include "TessarinPlatform/AudioComponent.h"
#include "TessarinPlatform/FourCharacterCodes.h"

#include <random>

namespace tessarin::testing {
namespace {

constexpr OSType code(const char (&characters)[5]) {
    OSType result = 0;
    for (int index = 0; index < 4; ++index)
        result = result << 8 | static_cast<unsigned char>(characters[index]);
    return result;
}

constexpr AudioComponentDescription acmeDelay{code("aufx"), code("dely"), code("Acme"), 0, 0};

// A handle that no operation stores, to see whether an out-pointer was written.
NSString untouched() { return "untouched"_ns; }

// ---- The error domain

TEST(ErrorDomainTest, HasItsText) { EXPECT_EQ(text(TSSRErrorDomain), "Tessarin Error Domain"); }

TEST(ErrorDomainTest, ServesForErrorsOfAnApplication) {
    const AutoreleasePool pool;
    const NSError error = NSError::errorWithDomain_code_userInfo(TSSRErrorDomain, 7, nil);
    EXPECT_TRUE(error.domain().isEqual("Tessarin Error Domain"_ns));
    EXPECT_EQ(error.code(), 7);
}

// ---- Component names

class ComponentNameTest : public PlatformTest {
protected:
    static AudioComponent componentNamed(NSString name) {
        static const AudioComponentDescription description{code("aufx"), code("name"), code("Tst0"), 0, 0};
        return AudioComponentRegister(&description, name, 1, nullptr);
    }
    // The name and the manufacturer that a display name is split into.
    static Texts split(NSString displayName) {
        NSString manufacturer = untouched();
        const NSString name = TSSRGetAudioComponentName(componentNamed(displayName), &manufacturer);
        const Texts result{text(name), text(manufacturer)};
        adopt(manufacturer).reset();
        return result;
    }
};

TEST_F(ComponentNameTest, SplitsAtTheColon) { EXPECT_EQ(split("Acme: Delay"_ns), (Texts{"Delay", "Acme"})); }

TEST_F(ComponentNameTest, WithoutAColonTheWholeNameAndNoManufacturer) {
    EXPECT_EQ(split("Delay"_ns), (Texts{"Delay", "(nil)"}));
}

TEST_F(ComponentNameTest, WithoutAColonTheNameIsNotTrimmed) {
    EXPECT_EQ(split("  Delay\t"_ns), (Texts{"  Delay\t", "(nil)"}));
    EXPECT_EQ(split(""_ns), (Texts{"", "(nil)"}));
}

TEST_F(ComponentNameTest, TrimsBothParts) {
    EXPECT_EQ(split("  Acme :  Delay  "_ns), (Texts{"Delay", "Acme"}));
    EXPECT_EQ(split("\tAcme Audio\t:\tTape Delay\t"_ns), (Texts{"Tape Delay", "Acme Audio"}));
}

TEST_F(ComponentNameTest, TrimsNoLineBreaks) {
    EXPECT_EQ(split("Acme\n: \nDelay\r "_ns), (Texts{"\nDelay\r", "Acme\n"}));
}

TEST_F(ComponentNameTest, OnlyTheFirstColonSplits) {
    EXPECT_EQ(split("Acme: Delay: Long"_ns), (Texts{"Delay: Long", "Acme"}));
    EXPECT_EQ(split("Acme:: Delay"_ns), (Texts{": Delay", "Acme"}));
}

TEST_F(ComponentNameTest, EitherPartMayBeEmpty) {
    EXPECT_EQ(split(":"_ns), (Texts{"", ""}));
    EXPECT_EQ(split("Acme:"_ns), (Texts{"", "Acme"}));
    EXPECT_EQ(split(" : Delay"_ns), (Texts{"Delay", ""}));
}

TEST_F(ComponentNameTest, KeepsCharactersOutsideASCII) {
    EXPECT_EQ(split(u"\u00c9cho \U0001F39B: D\u00e9lai \u6642"_ns), (Texts{"Délai 時", "Écho 🎛"}));
}

TEST_F(ComponentNameTest, WorksWithoutAnOutPointer) {
    EXPECT_EQ(text(TSSRGetAudioComponentName(componentNamed("Acme: Delay"_ns), nullptr)), "Delay");
    EXPECT_EQ(text(TSSRGetAudioComponentName(componentNamed("Delay"_ns), nullptr)), "Delay");
}

TEST_F(ComponentNameTest, AComponentWithoutANameGivesNilAndLeavesTheOutPointerAlone) {
    NSString manufacturer = untouched();
    EXPECT_FALSE(TSSRGetAudioComponentName(nullptr, &manufacturer));
    EXPECT_EQ(manufacturer, untouched());
    EXPECT_FALSE(TSSRGetAudioComponentName(nullptr, nullptr));
}

TEST_F(ComponentNameTest, TheNameIsAutoreleasedAndTheManufacturerOwned) {
    const AudioComponent component = componentNamed("Manufacturer of this test: Name of this test"_ns);
    NSString manufacturer;
    EXPECT_EQ(ownedReferencesOfNew([&] { return TSSRGetAudioComponentName(component, nullptr); }), 0);
    EXPECT_EQ(ownedReferencesOfNew([&] {
                  const NSString name = TSSRGetAudioComponentName(component, &manufacturer);
                  EXPECT_EQ(text(name), "Name of this test");
                  return manufacturer;
              }),
              1);
}

TEST_F(ComponentNameTest, BothPartsAreImmutable) {
    const AudioComponent split = componentNamed(NSMutableString::stringWithString("Acme: Delay"_ns));
    NSString manufacturer;
    EXPECT_FALSE(kindOf<NSMutableString>(TSSRGetAudioComponentName(split, &manufacturer)));
    EXPECT_FALSE(kindOf<NSMutableString>(manufacturer));
    adopt(manufacturer).reset();
    const AudioComponent whole = componentNamed(NSMutableString::stringWithString("Delay"_ns));
    EXPECT_FALSE(kindOf<NSMutableString>(TSSRGetAudioComponentName(whole, nullptr)));
}

// ---- Identifier strings

class IdentifierStringTest : public PlatformTest {
protected:
    // What an identifier string is read as: type, subtype, manufacturer code, manufacturer name.
    struct Reading {
        OSType type, subType, manufacturerCode;
        std::string manufacturer;
        bool operator==(const Reading&) const = default;
        friend void PrintTo(const Reading& reading, std::ostream* stream) {
            *stream << std::hex << "{" << reading.type << ", " << reading.subType << ", "
                    << reading.manufacturerCode << ", " << reading.manufacturer << "}";
        }
    };
    static Reading read(NSString identifier) {
        NSString manufacturer = untouched();
        const AudioComponentDescription description =
            TSSRAudioComponentDescriptionFromIdentifierString(identifier, &manufacturer);
        EXPECT_EQ(description.componentFlags, 0u);
        EXPECT_EQ(description.componentFlagsMask, 0u);
        const bool isTouched = manufacturer != untouched();
        const Reading reading{description.componentType, description.componentSubType,
                              description.componentManufacturer,
                              isTouched ? text(manufacturer) : "(untouched)"};
        if (isTouched) adopt(manufacturer).reset();
        return reading;
    }
    static std::string write(const AudioComponentDescription& description, NSString manufacturer) {
        return text(
            TSSRIdentifierStringFromAudioComponentDescriptionAndManufacturer(description, manufacturer));
    }
    static Reading acme(std::string manufacturer) {
        return {code("aufx"), code("dely"), code("Acme"), std::move(manufacturer)};
    }
};

TEST_F(IdentifierStringTest, IsTheManufacturerThenThreeCodes) {
    EXPECT_EQ(write(acmeDelay, "Acme"_ns), "Acme: aufx; dely; Acme");
}

TEST_F(IdentifierStringTest, ANilManufacturerIsLeftOut) {
    EXPECT_EQ(write(acmeDelay, nil), "aufx; dely; Acme");
}

TEST_F(IdentifierStringTest, AnEmptyManufacturerStillGivesItsSeparator) {
    EXPECT_EQ(write(acmeDelay, ""_ns), ": aufx; dely; Acme");
}

TEST_F(IdentifierStringTest, TheManufacturerStandsAsItIs) {
    EXPECT_EQ(write(acmeDelay, " 100% %@ \u00c9"_ns), " 100% %@ É: aufx; dely; Acme");
}

TEST_F(IdentifierStringTest, TheFlagsAreNoPartOfIt) {
    AudioComponentDescription description = acmeDelay;
    description.componentFlags = 3;
    description.componentFlagsMask = 0xFFFFFFFF;
    EXPECT_EQ(write(description, "Acme"_ns), "Acme: aufx; dely; Acme");
}

TEST_F(IdentifierStringTest, KeepsTrailingSpacesOfACode) {
    EXPECT_EQ(write({code("ab  "), code("c   "), code("d e "), 0, 0}, nil), "ab  ; c   ; d e ");
}

TEST_F(IdentifierStringTest, WritesCodesInMacOSRoman) {
    EXPECT_EQ(write({0x8E614141, 0xA9414141, 0x414141DB, 0, 0}, nil), "éaAA; ©AAA; AAA€");
}

TEST_F(IdentifierStringTest, TheStringIsImmutableAndAutoreleased) {
    const auto make = [] {
        return TSSRIdentifierStringFromAudioComponentDescriptionAndManufacturer(acmeDelay, "Acme"_ns);
    };
    EXPECT_FALSE(kindOf<NSMutableString>(make()));
    EXPECT_EQ(ownedReferencesOfNew(make), 0);
}

TEST_F(IdentifierStringTest, ReadsBackTheCodesAndTheManufacturer) {
    EXPECT_EQ(read("Acme: aufx; dely; Acme"_ns), acme("Acme"));
}

TEST_F(IdentifierStringTest, ReadsTheSameWithoutSpaces) {
    EXPECT_EQ(read("aufx;dely;Acme"_ns), acme("(untouched)"));
    EXPECT_EQ(read("aufx; dely; Acme"_ns), acme("(untouched)"));
    EXPECT_EQ(read("Acme:aufx;dely;Acme"_ns), acme("Acme"));
}

TEST_F(IdentifierStringTest, WithoutAColonTheOutPointerIsLeftAlone) {
    EXPECT_EQ(read("aufx; dely; Acme"_ns).manufacturer, "(untouched)");
}

TEST_F(IdentifierStringTest, TheManufacturerIsReadUntrimmed) {
    EXPECT_EQ(read("  Acme : aufx; dely; Acme"_ns), acme("  Acme "));
    EXPECT_EQ(read(": aufx; dely; Acme"_ns), acme(""));
}

TEST_F(IdentifierStringTest, ReadsWithoutAnOutPointer) {
    const AudioComponentDescription description =
        TSSRAudioComponentDescriptionFromIdentifierString("Acme: aufx; dely; Acme"_ns, nullptr);
    EXPECT_TRUE(TSSREqualAudioComponentDescriptions(description, acmeDelay));
}

TEST_F(IdentifierStringTest, AnotherNumberOfPiecesReadsAsZeros) {
    for (const NSString identifier : {""_ns, "aufx"_ns, "aufx; dely"_ns, "aufx; dely; Acme; x"_ns,
                                      "aufx; dely; Acme;"_ns, ";aufx; dely; Acme"_ns})
        EXPECT_EQ(read(identifier), (Reading{0, 0, 0, "(untouched)"})) << text(identifier);
}

TEST_F(IdentifierStringTest, TheManufacturerIsStoredEvenWhenTheNumberOfPiecesIsWrong) {
    EXPECT_EQ(read("Acme: aufx; dely"_ns), (Reading{0, 0, 0, "Acme"}));
    EXPECT_EQ(read("Acme:"_ns), (Reading{0, 0, 0, "Acme"}));
    EXPECT_EQ(read("Acme: aufx; dely; Acme; x"_ns), (Reading{0, 0, 0, "Acme"}));
}

TEST_F(IdentifierStringTest, APieceThatIsNoCodeReadsAsZeroByItself) {
    const OSType aufx = code("aufx"), dely = code("dely"), manufacturer = code("Acme");
    EXPECT_EQ(read("auf; dely; Acme"_ns), (Reading{0, dely, manufacturer, "(untouched)"}));
    EXPECT_EQ(read("aufx; delay; Acme"_ns), (Reading{aufx, 0, manufacturer, "(untouched)"}));
    EXPECT_EQ(read("aufx; dely; "_ns), (Reading{aufx, dely, 0, "(untouched)"}));
    EXPECT_EQ(read("; dely; Acme"_ns), (Reading{0, dely, manufacturer, "(untouched)"}));
    EXPECT_EQ(read("aufx ; dely; Acme"_ns), (Reading{0, dely, manufacturer, "(untouched)"}));
    EXPECT_EQ(read("aufx; dely; Acme "_ns), (Reading{aufx, dely, 0, "(untouched)"}));
    EXPECT_EQ(read(u"aufx; del\u0100; Acme"_ns), (Reading{aufx, 0, manufacturer, "(untouched)"}));
    EXPECT_EQ(read(";;"_ns), (Reading{0, 0, 0, "(untouched)"}));
}

TEST_F(IdentifierStringTest, LeadingWhiteSpaceOfAPieceIsLeftOut) {
    EXPECT_EQ(read("Acme: \t aufx;\tdely;   Acme"_ns), acme("Acme"));
}

TEST_F(IdentifierStringTest, LineBreaksAreNoWhiteSpace) {
    EXPECT_EQ(read("\naufx; dely; Acme"_ns), (Reading{0, code("dely"), code("Acme"), "(untouched)"}));
}

TEST_F(IdentifierStringTest, ReadsCodesInMacOSRoman) {
    EXPECT_EQ(read(u"\u00e9aAA; \u00a9AAA; AAA\u20ac"_ns),
              (Reading{0x8E614141, 0xA9414141, 0x414141DB, "(untouched)"}));
}

TEST_F(IdentifierStringTest, ANilIdentifierReadsAsZerosAndStoresNil) {
    EXPECT_EQ(read(nil), (Reading{0, 0, 0, "(nil)"}));
    EXPECT_EQ(TSSRAudioComponentDescriptionFromIdentifierString(nil, nullptr).componentType, 0u);
}

TEST_F(IdentifierStringTest, AManufacturerWithAColonDoesNotSurvive) {
    EXPECT_EQ(read(NSString(write(acmeDelay, "Acme: Audio"_ns))),
              (Reading{0, code("dely"), code("Acme"), "Acme"}));
}

TEST_F(IdentifierStringTest, ACodeThatBeginsWithASpaceDoesNotSurvive) {
    EXPECT_EQ(read(NSString(write({code(" ufx"), code("dely"), code("Acme"), 0, 0}, nil))),
              (Reading{0, code("dely"), code("Acme"), "(untouched)"}));
}

TEST_F(IdentifierStringTest, ACodeThatEndsInSpacesSurvives) {
    EXPECT_EQ(read(NSString(write({code("ab  "), code("c   "), code("de  "), 0, 0}, "Acme"_ns))),
              (Reading{code("ab  "), code("c   "), code("de  "), "Acme"}));
}

TEST_F(IdentifierStringTest, EveryOtherCodeSurvives) {
    std::mt19937 random(22);
    // What follows the space, Mac OS Roman's upper half included.
    std::uniform_int_distribution<OSType> character(0x21, 0xFF);
    std::uniform_int_distribution<UInt32> flags;
    const auto randomCode = [&] {
        OSType result = 0;
        for (int index = 0; index < 4; ++index) {
            OSType byte;
            do byte = character(random);
            while (byte == ':' || byte == ';' || byte == 0xCA); // 0xCA is the no-break space
            result = result << 8 | byte;
        }
        return result;
    };
    for (int round = 0; round < 5'000; ++round) {
        const AutoreleasePool pool;
        const AudioComponentDescription description{randomCode(), randomCode(), randomCode(), flags(random),
                                                    flags(random)};
        const bool isNamed = random() % 2 == 0;
        ASSERT_EQ(read(NSString(write(description, isNamed ? "Acme"_ns : NSString()))),
                  (Reading{description.componentType, description.componentSubType,
                           description.componentManufacturer, isNamed ? "Acme" : "(untouched)"}));
    }
}

TEST_F(IdentifierStringTest, TheManufacturerIsOwnedByTheCaller) {
    const Retained<NSString> identifier =
        retain(NSString(std::string("Maker of this test: aufx; dely; Acme")));
    EXPECT_EQ(ownedReferencesOfNew([&] {
                  NSString manufacturer;
                  TSSRAudioComponentDescriptionFromIdentifierString(identifier, &manufacturer);
                  return manufacturer;
              }),
              1);
    EXPECT_EQ(identifier.retainCount(), 2u); // this test's and the pool's
}

TEST_F(IdentifierStringTest, TheManufacturerDoesNotFollowAMutableIdentifier) {
    const NSMutableString identifier = NSMutableString::stringWithString("Acme: aufx; dely; Acme"_ns);
    NSString manufacturer;
    TSSRAudioComponentDescriptionFromIdentifierString(identifier, &manufacturer);
    identifier.setString("changed"_ns);
    EXPECT_EQ(text(manufacturer), "Acme");
    adopt(manufacturer).reset();
}

// ---- Equality of identity

TEST(EqualComponentDescriptionsTest, EqualWhenAllThreeCodesAre) {
    EXPECT_TRUE(TSSREqualAudioComponentDescriptions(acmeDelay, acmeDelay));
    EXPECT_TRUE(TSSREqualAudioComponentDescriptions({}, {}));
}

TEST(EqualComponentDescriptionsTest, DifferentWhenAnyCodeIs) {
    for (OSType AudioComponentDescription::*const field :
         {&AudioComponentDescription::componentType, &AudioComponentDescription::componentSubType,
          &AudioComponentDescription::componentManufacturer}) {
        AudioComponentDescription other = acmeDelay;
        other.*field ^= 1;
        EXPECT_FALSE(TSSREqualAudioComponentDescriptions(acmeDelay, other));
        EXPECT_FALSE(TSSREqualAudioComponentDescriptions(other, acmeDelay));
    }
}

TEST(EqualComponentDescriptionsTest, TheFlagsDoNotCount) {
    AudioComponentDescription other = acmeDelay;
    other.componentFlags = 5;
    EXPECT_TRUE(TSSREqualAudioComponentDescriptions(acmeDelay, other));
    other.componentFlagsMask = 7;
    EXPECT_TRUE(TSSREqualAudioComponentDescriptions(acmeDelay, other));
}

} // namespace
} // namespace tessarin::testing
