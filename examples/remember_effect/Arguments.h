// The command line.
#pragma once

#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

enum class Command { help, list, choose, restore };

struct Arguments {
    Command command = Command::help;
    std::vector<std::string> componentPaths;
    std::string preferencesFile; // choose and restore
    std::string componentName;   // this and what follows: choose
    double sampleRate = 0;       // frames per second
    std::uint32_t channels = 0;
    std::uint32_t bitsPerChannel = 0;
};

extern const std::string_view helpText;

// Reads the words after the program's name. Throws UsageFailure.
Arguments parseArguments(const std::vector<std::string>& words);
