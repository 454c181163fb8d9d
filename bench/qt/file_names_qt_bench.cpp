// Percent escapes of file names with Qt, whose strings are of 16-bit units too.
#include "FileNames.h"

#include <QByteArray>
#include <QString>
#include <QUrl>

#include <benchmark/benchmark.h>

namespace {

using Name = std::string (*)(std::int64_t);

template <Name name>
void escape(benchmark::State& state) {
    const QString string = QString::fromStdString(name(state.range(0)));
    const QByteArray unescaped(bench::unescaped);
    for (auto _ : state) benchmark::DoNotOptimize(QUrl::toPercentEncoding(string, unescaped).constData());
}

template <Name name>
void unescape(benchmark::State& state) {
    const QByteArray escaped =
        QUrl::toPercentEncoding(QString::fromStdString(name(state.range(0))), QByteArray(bench::unescaped));
    for (auto _ : state) benchmark::DoNotOptimize(QUrl::fromPercentEncoding(escaped).constData());
}

void sizes(benchmark::internal::Benchmark* benchmark) {
    for (const std::int64_t size : {32, 1024, 1'048'576}) benchmark->Arg(size);
}

BENCHMARK(escape<bench::cleanName>)->Name("FileNames/EscapeQt/Clean")->Apply(sizes);
BENCHMARK(escape<bench::ordinaryName>)->Name("FileNames/EscapeQt/Ordinary")->Apply(sizes);
BENCHMARK(escape<bench::denseName>)->Name("FileNames/EscapeQt/Dense")->Apply(sizes);
BENCHMARK(unescape<bench::cleanName>)->Name("FileNames/UnescapeQt/Clean")->Apply(sizes);
BENCHMARK(unescape<bench::ordinaryName>)->Name("FileNames/UnescapeQt/Ordinary")->Apply(sizes);
BENCHMARK(unescape<bench::denseName>)->Name("FileNames/UnescapeQt/Dense")->Apply(sizes);

} // namespace
