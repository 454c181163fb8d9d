// Colours as hexadecimal strings with Qt, which writes alpha first and wants a number sign.
#include <QColor>
#include <QString>

#include <benchmark/benchmark.h>

namespace {

void write(benchmark::State& state) {
    const QColor color = QColor::fromRgbF(0.25F, 0.5F, 0.75F, 1.0F);
    for (auto _ : state) benchmark::DoNotOptimize(color.name(QColor::HexArgb).constData());
}
BENCHMARK(write)->Name("Color/WriteHexadecimalQt");

void read(benchmark::State& state) {
    const QString string = QColor::fromRgbF(0.25F, 0.5F, 0.75F, 1.0F).name(QColor::HexArgb);
    for (auto _ : state) {
        QColor color(string);
        benchmark::DoNotOptimize(color);
    }
}
BENCHMARK(read)->Name("Color/ReadHexadecimalQt");

} // namespace
