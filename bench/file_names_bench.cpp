// Percent escapes of file names, against loops written by hand and against GLib.
#include "FileNames.h"

#include "TessarinFoundation/NSString+TessarinExtensions.h"

#include "TessarinPlatform/AutoreleasePool.h"

#include <benchmark/benchmark.h>

#include <array>
#include <string>
#include <string_view>

#if TESSARIN_BENCHMARKS_HAVE_GLIB
#    include <glib.h>
#endif

using namespace tessarin;

namespace {

using Name = std::string (*)(std::int64_t);

NSString escapedName(Name name, std::int64_t size) {
    return tessarin_fileNameByAddingPercentEscapesUsingEncoding(NSString(name(size)), NSUTF8StringEncoding);
}

template <Name name>
void escape(benchmark::State& state) {
    const AutoreleasePool outer;
    const NSString string(name(state.range(0)));
    for (auto _ : state) {
        const AutoreleasePool pool;
        benchmark::DoNotOptimize(
            tessarin_fileNameByAddingPercentEscapesUsingEncoding(string, NSUTF8StringEncoding).object());
    }
}

template <Name name>
void unescape(benchmark::State& state) {
    const AutoreleasePool outer;
    const NSString string = escapedName(name, state.range(0));
    for (auto _ : state) {
        const AutoreleasePool pool;
        benchmark::DoNotOptimize(
            tessarin_fileNameByReplacingPercentEscapesUsingEncoding(string, NSUTF8StringEncoding).object());
    }
}

// ---- By hand, from UTF-8 to UTF-8: what an application would write that never sees any other text

constexpr auto staysAsItIs = [] {
    std::array<bool, 256> result{};
    for (char letter = 'A'; letter <= 'Z'; ++letter)
        result[static_cast<unsigned char>(letter)] = result[static_cast<unsigned char>(letter | 0x20)] = true;
    for (char digit = '0'; digit <= '9'; ++digit) result[static_cast<unsigned char>(digit)] = true;
    for (const char character : std::string_view(bench::unescaped))
        result[static_cast<unsigned char>(character)] = true;
    return result;
}();

std::string escapedByHand(std::string_view text) {
    std::string result;
    result.reserve(text.size());
    for (const char character : text) {
        const auto byte = static_cast<unsigned char>(character);
        if (staysAsItIs[byte]) {
            result += character;
        } else {
            result += '%';
            result += "0123456789ABCDEF"[byte >> 4];
            result += "0123456789ABCDEF"[byte & 0xF];
        }
    }
    return result;
}

int digit(char character) {
    if (character >= '0' && character <= '9') return character - '0';
    if (character >= 'A' && character <= 'F') return character - 'A' + 10;
    if (character >= 'a' && character <= 'f') return character - 'a' + 10;
    return -1;
}

std::string unescapedByHand(std::string_view text) {
    std::string result;
    result.reserve(text.size());
    for (std::size_t index = 0; index < text.size(); ++index) {
        if (text[index] != '%') {
            result += text[index];
            continue;
        }
        if (text.size() - index < 3) return {};
        const int high = digit(text[index + 1]), low = digit(text[index + 2]);
        if (high < 0 || low < 0) return {};
        result += static_cast<char>(high << 4 | low);
        index += 2;
    }
    return result;
}

template <Name name>
void escapeByHand(benchmark::State& state) {
    const std::string text = name(state.range(0));
    for (auto _ : state) benchmark::DoNotOptimize(escapedByHand(text).data());
}

template <Name name>
void unescapeByHand(benchmark::State& state) {
    const AutoreleasePool pool;
    const std::string text(escapedName(name, state.range(0)));
    for (auto _ : state) benchmark::DoNotOptimize(unescapedByHand(text).data());
}

// ---- GLib

#if TESSARIN_BENCHMARKS_HAVE_GLIB
template <Name name>
void escapeWithGLib(benchmark::State& state) {
    const std::string text = name(state.range(0));
    for (auto _ : state) {
        char* const result = g_uri_escape_string(text.c_str(), bench::unescaped, FALSE);
        benchmark::DoNotOptimize(result);
        g_free(result);
    }
}

template <Name name>
void unescapeWithGLib(benchmark::State& state) {
    const AutoreleasePool pool;
    const std::string text(escapedName(name, state.range(0)));
    for (auto _ : state) {
        char* const result = g_uri_unescape_string(text.c_str(), nullptr);
        benchmark::DoNotOptimize(result);
        g_free(result);
    }
}
#endif

void sizes(benchmark::internal::Benchmark* benchmark) {
    for (const std::int64_t size : {32, 1024, 104'858, 1'048'576}) benchmark->Arg(size);
}

BENCHMARK(escape<bench::cleanName>)->Name("FileNames/Escape/Clean")->Apply(sizes);
BENCHMARK(escape<bench::ordinaryName>)->Name("FileNames/Escape/Ordinary")->Apply(sizes);
BENCHMARK(escape<bench::denseName>)->Name("FileNames/Escape/Dense")->Apply(sizes);
BENCHMARK(unescape<bench::cleanName>)->Name("FileNames/Unescape/Clean")->Apply(sizes);
BENCHMARK(unescape<bench::ordinaryName>)->Name("FileNames/Unescape/Ordinary")->Apply(sizes);
BENCHMARK(unescape<bench::denseName>)->Name("FileNames/Unescape/Dense")->Apply(sizes);
BENCHMARK(escapeByHand<bench::cleanName>)->Name("FileNames/EscapeByHand/Clean")->Apply(sizes);
BENCHMARK(escapeByHand<bench::ordinaryName>)->Name("FileNames/EscapeByHand/Ordinary")->Apply(sizes);
BENCHMARK(escapeByHand<bench::denseName>)->Name("FileNames/EscapeByHand/Dense")->Apply(sizes);
BENCHMARK(unescapeByHand<bench::cleanName>)->Name("FileNames/UnescapeByHand/Clean")->Apply(sizes);
BENCHMARK(unescapeByHand<bench::ordinaryName>)->Name("FileNames/UnescapeByHand/Ordinary")->Apply(sizes);
BENCHMARK(unescapeByHand<bench::denseName>)->Name("FileNames/UnescapeByHand/Dense")->Apply(sizes);
#if TESSARIN_BENCHMARKS_HAVE_GLIB
BENCHMARK(escapeWithGLib<bench::cleanName>)->Name("FileNames/EscapeGLib/Clean")->Apply(sizes);
BENCHMARK(escapeWithGLib<bench::ordinaryName>)->Name("FileNames/EscapeGLib/Ordinary")->Apply(sizes);
BENCHMARK(escapeWithGLib<bench::denseName>)->Name("FileNames/EscapeGLib/Dense")->Apply(sizes);
BENCHMARK(unescapeWithGLib<bench::cleanName>)->Name("FileNames/UnescapeGLib/Clean")->Apply(sizes);
BENCHMARK(unescapeWithGLib<bench::ordinaryName>)->Name("FileNames/UnescapeGLib/Ordinary")->Apply(sizes);
BENCHMARK(unescapeWithGLib<bench::denseName>)->Name("FileNames/UnescapeGLib/Dense")->Apply(sizes);
#endif

} // namespace
