#include "Arguments.h"

#include "Failure.h"

#include <algorithm>
#include <charconv>
#include <locale>
#include <map>
#include <optional>
#include <sstream>

const std::string_view helpText =
    R"(Keeps a chosen audio component and stream format, and finds them again later.

Usage:
  remember_effect list    --components PATH...
  remember_effect choose  NAME --rate R --channels N --bits B --components PATH... --preferences FILE
  remember_effect restore --components PATH... --preferences FILE
  remember_effect --help

Commands:
  list      prints the components that the bundles declare
  choose    keeps a component and a linear PCM stream format in a property list
  restore   reads the property list, finds the component again and prints both

Arguments:
  NAME                a component's name, with or without its manufacturer: "Delay" or "Acme: Delay"
  --rate R            frames per second, 1 to 1000000
  --channels N        1 to 1024
  --bits B            8, 16 or 24 for signed integer samples, 32 for floating-point samples
  --components PATH   a bundle, a folder of .component bundles, or an Info.plist; any number, may be repeated
  --preferences FILE  the property list; its other keys are kept

Exit status: 0 for success, 1 for a failure, 2 for a wrong command line.
)";

namespace {

constexpr double maximumSampleRate = 1'000'000;
constexpr std::uint32_t maximumChannels = 1024;

using Values = std::vector<std::string>;

struct CommandRule {
    std::string_view name;
    Command command;
    std::size_t operands;                  // words that belong to no option
    std::vector<std::string_view> options; // every one of them is needed
};

const CommandRule commandRules[] = {
    {"list", Command::list, 0, {"--components"}},
    {"choose", Command::choose, 1, {"--rate", "--channels", "--bits", "--components", "--preferences"}},
    {"restore", Command::restore, 0, {"--components", "--preferences"}},
};

std::string quoted(std::string_view text) { return '"' + std::string(text) + '"'; }

bool isOption(std::string_view word) { return word.starts_with("--"); }

bool takesMany(std::string_view option) { return option == "--components"; }

const CommandRule& ruleOfCommand(std::string_view name) {
    const auto* const rule = std::ranges::find(commandRules, name, &CommandRule::name);
    if (rule == std::end(commandRules))
        throw UsageFailure("unknown command " + quoted(name) + "; try --help");
    return *rule;
}

bool isKnownOption(std::string_view option) {
    return std::ranges::any_of(
        commandRules, [&](const auto& rule) { return std::ranges::count(rule.options, option) != 0; });
}

void checkOption(const CommandRule& rule, const std::string& option) {
    if (!isKnownOption(option)) throw UsageFailure("unknown option " + quoted(option) + "; try --help");
    if (std::ranges::count(rule.options, option) == 0)
        throw UsageFailure(std::string(rule.name) + " takes no " + option);
}

// The values of each option; those under the empty name belong to none.
std::map<std::string, Values> collectValues(const CommandRule& rule, const std::vector<std::string>& words) {
    std::map<std::string, Values> values;
    std::string option; // whose value comes next
    for (auto word = words.begin() + 1; word != words.end(); ++word) {
        if (!isOption(*word)) {
            values[option].push_back(*word);
            if (!takesMany(option)) option.clear();
            continue;
        }
        if (!option.empty() && values[option].empty()) throw UsageFailure(option + " needs a value");
        checkOption(rule, *word);
        option = *word;
        if (!takesMany(option) && values.contains(option)) throw UsageFailure(option + " is given twice");
        values[option];
    }
    return values;
}

double parseSampleRate(const std::string& text) {
    std::istringstream stream(text);
    stream.imbue(std::locale::classic()); // whatever the user's own decimal separator is
    double rate = 0;
    if (stream >> std::noskipws >> rate && stream.peek() == std::istringstream::traits_type::eof()
        && rate >= 1 && rate <= maximumSampleRate)
        return rate;
    throw UsageFailure("--rate must be a number from 1 to 1000000, not " + quoted(text));
}

std::optional<std::uint32_t> parseInteger(const std::string& text) {
    std::uint32_t value = 0;
    const char* const end = text.data() + text.size();
    const auto [stop, error] = std::from_chars(text.data(), end, value);
    if (error != std::errc() || stop != end) return std::nullopt;
    return value;
}

std::uint32_t parseChannels(const std::string& text) {
    const auto channels = parseInteger(text);
    if (channels && *channels >= 1 && *channels <= maximumChannels) return *channels;
    throw UsageFailure("--channels must be a whole number from 1 to 1024, not " + quoted(text));
}

std::uint32_t parseBits(const std::string& text) {
    const auto bits = parseInteger(text);
    if (bits == 8u || bits == 16u || bits == 24u || bits == 32u) return *bits;
    throw UsageFailure("--bits must be 8, 16, 24 or 32, not " + quoted(text));
}

} // namespace

Arguments parseArguments(const std::vector<std::string>& words) {
    if (words.empty()) throw UsageFailure("no command is given; try --help");
    if (std::ranges::count(words, "--help") != 0) return {};
    const CommandRule& rule = ruleOfCommand(words.front());
    std::map<std::string, Values> values = collectValues(rule, words);

    const Values& operands = values[""];
    if (operands.size() < rule.operands)
        throw UsageFailure(std::string(rule.name) + " needs the name of a component");
    if (operands.size() > rule.operands)
        throw UsageFailure("unexpected argument " + quoted(operands[rule.operands]));
    for (const std::string_view name : rule.options) {
        const std::string option(name);
        if (!values.contains(option)) throw UsageFailure(std::string(rule.name) + " needs " + option);
        if (values[option].empty() || std::ranges::count(values[option], "") != 0)
            throw UsageFailure(option + " needs a value");
    }

    Arguments arguments;
    arguments.command = rule.command;
    arguments.componentPaths = values["--components"];
    if (rule.command == Command::list) return arguments;
    arguments.preferencesFile = values["--preferences"].front();
    if (rule.command == Command::restore) return arguments;
    arguments.componentName = operands.front();
    arguments.sampleRate = parseSampleRate(values["--rate"].front());
    arguments.channels = parseChannels(values["--channels"].front());
    arguments.bitsPerChannel = parseBits(values["--bits"].front());
    return arguments;
}
