// Merging, removing and mapping to indexes with Qt, whose strings count their references themselves.
#include "Names.h"

#include <QHash>
#include <QList>
#include <QSet>
#include <QString>

namespace {

QList<QString> listOf(const std::vector<std::string>& names) {
    QList<QString> list;
    for (const std::string& name : names) list.append(QString::fromStdString(name));
    return list;
}

void merge(benchmark::State& state) {
    const QList<QString> present = listOf(bench::presentNames(state.range(0)));
    const QList<QString> other = listOf(bench::otherNames(state.range(0)));
    for (auto _ : state) {
        QList<QString> merged = present;
        QSet<QString> contained(present.begin(), present.end());
        for (const QString& name : other) {
            if (contained.contains(name)) continue;
            contained.insert(name);
            merged.append(name);
        }
        benchmark::DoNotOptimize(merged.constData());
    }
    bench::perElement(state);
}
BENCHMARK(merge)->Name("ArrayMerge/Qt")->Apply(bench::sizes);

void remove(benchmark::State& state) {
    const QList<QString> present = listOf(bench::presentNames(state.range(0)));
    const QList<QString> other = listOf(bench::otherNames(state.range(0)));
    for (auto _ : state) {
        const QSet<QString> removed(other.begin(), other.end());
        QList<QString> remaining;
        for (const QString& name : present)
            if (!removed.contains(name)) remaining.append(name);
        benchmark::DoNotOptimize(remaining.constData());
    }
    bench::perElement(state);
}
BENCHMARK(remove)->Name("ArrayRemoval/Qt")->Apply(bench::sizes);

void findIndexes(benchmark::State& state) {
    const QList<QString> present = listOf(bench::presentNames(state.range(0)));
    const QList<QString> searched = listOf(bench::searchedNames(state.range(0)));
    for (auto _ : state) {
        QHash<QString, qsizetype> positions;
        positions.reserve(present.size());
        for (qsizetype position = 0; position < present.size(); ++position)
            if (!positions.contains(present[position])) positions.insert(present[position], position);
        QSet<qsizetype> indexes;
        for (const QString& name : searched) indexes.insert(positions.value(name));
        benchmark::DoNotOptimize(indexes.size());
    }
    bench::perElement(state);
}
BENCHMARK(findIndexes)->Name("ArrayIndexes/Qt")->Apply(bench::sizes);

} // namespace
