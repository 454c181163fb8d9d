// Paths relative to a directory, against std::filesystem on the same strings, and the parent directory of
// many paths.
#include "TessarinFoundation/NSString+TessarinExtensions.h"

#include "TessarinPlatform/AutoreleasePool.h"
#include "TessarinPlatform/NSMutableArray.h"
#include "TessarinPlatform/Retained.h"

#include <benchmark/benchmark.h>

#include <filesystem>
#include <string>

using namespace tessarin;

namespace {

// ---- The path relative to a directory

struct Example {
    std::string path;
    std::string directory;
};

std::string component(const char* name, std::int64_t level) { return "/" + (name + std::to_string(level)); }

// A path and a directory of a depth that part halfway, so that the result goes up and down again.
Example partingHalfway(std::int64_t depth) {
    Example example;
    for (std::int64_t level = 0; level < depth; ++level) {
        example.path += component(level < depth / 2 ? "Shared " : "Take ", level);
        example.directory += component(level < depth / 2 ? "Shared " : "Mix ", level);
    }
    return example;
}

// A path that lies in the directory.
Example prefixed(std::int64_t depth) {
    Example example;
    for (std::int64_t level = 0; level < depth; ++level) {
        example.path += component("Shared ", level);
        if (level < depth / 2) example.directory = example.path;
    }
    return example;
}

template <Example (*example)(std::int64_t)>
void relativePath(benchmark::State& state) {
    const AutoreleasePool outer;
    const Example strings = example(state.range(0));
    const NSString path{strings.path};
    const NSString directory{strings.directory};
    for (auto _ : state) {
        const AutoreleasePool pool;
        benchmark::DoNotOptimize(tessarin_pathRelativeToDirectory(path, directory).object());
    }
}

// From the strings that an application has.
template <Example (*example)(std::int64_t)>
void lexicallyRelativeOfStrings(benchmark::State& state) {
    const Example strings = example(state.range(0));
    for (auto _ : state) {
        const std::filesystem::path path(strings.path);
        benchmark::DoNotOptimize(path.lexically_relative(strings.directory).native().data());
    }
}

// From paths that were taken apart before.
template <Example (*example)(std::int64_t)>
void lexicallyRelativeOfPaths(benchmark::State& state) {
    const Example strings = example(state.range(0));
    const std::filesystem::path path(strings.path);
    const std::filesystem::path directory(strings.directory);
    for (auto _ : state) benchmark::DoNotOptimize(path.lexically_relative(directory).native().data());
}

BENCHMARK(relativePath<partingHalfway>)->Name("RelativePath/Components")->Arg(2)->Arg(8)->Arg(64);
BENCHMARK(lexicallyRelativeOfStrings<partingHalfway>)
    ->Name("RelativePath/LexicallyRelativeOfStrings")
    ->Arg(2)
    ->Arg(8)
    ->Arg(64);
BENCHMARK(lexicallyRelativeOfPaths<partingHalfway>)
    ->Name("RelativePath/LexicallyRelativeOfPaths")
    ->Arg(2)
    ->Arg(8)
    ->Arg(64);
BENCHMARK(relativePath<prefixed>)->Name("RelativePathBelow/Prefix")->Arg(2)->Arg(8)->Arg(64);
BENCHMARK(lexicallyRelativeOfStrings<prefixed>)
    ->Name("RelativePathBelow/LexicallyRelativeOfStrings")
    ->Arg(2)
    ->Arg(8)
    ->Arg(64);
BENCHMARK(lexicallyRelativeOfPaths<prefixed>)
    ->Name("RelativePathBelow/LexicallyRelativeOfPaths")
    ->Arg(2)
    ->Arg(8)
    ->Arg(64);

// ---- The parent directory of paths

Retained<NSMutableArray> pathsOfProject(std::int64_t count) {
    const AutoreleasePool pool;
    Retained<NSMutableArray> paths =
        adopt(NSMutableArray::alloc().initWithCapacity(static_cast<NSUInteger>(count)));
    for (std::int64_t index = 0; index < count; ++index)
        paths.addObject(NSString("/Users/editor/Music/Projects/Album " + std::to_string(index % 100)
                                 + "/Song " + std::to_string(index % 1000) + "/Take "
                                 + std::to_string(100'000 + index) + ".wav"));
    return paths;
}

void parentDirectory(benchmark::State& state) {
    const Retained<NSMutableArray> paths = pathsOfProject(state.range(0));
    for (auto _ : state) {
        const AutoreleasePool pool;
        benchmark::DoNotOptimize(tessarin_parentDirectoryForPaths(paths).object());
    }
    state.SetItemsProcessed(state.iterations() * state.range(0));
    state.SetComplexityN(state.range(0));
}
BENCHMARK(parentDirectory)
    ->Name("ParentDirectory/Paths")
    ->RangeMultiplier(10)
    ->Range(1, 100'000)
    ->Complexity(benchmark::oN);

} // namespace
