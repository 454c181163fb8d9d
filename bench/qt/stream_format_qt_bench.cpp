// A stream format as a QVariantList and back.
#include "StreamFormat.h"

#include <QVariant>
#include <QVariantList>

#include <benchmark/benchmark.h>

using tessarin::AudioStreamBasicDescription;

namespace {

QVariantList listFromFormat(const AudioStreamBasicDescription& format) {
    QVariantList list;
    list.reserve(9);
    list.append(format.mSampleRate);
    for (const quint32 field :
         {format.mFormatID, format.mFormatFlags, format.mBytesPerPacket, format.mFramesPerPacket,
          format.mBytesPerFrame, format.mChannelsPerFrame, format.mBitsPerChannel, format.mReserved})
        list.append(field);
    return list;
}

AudioStreamBasicDescription formatFromList(const QVariantList& list) {
    return {list.at(0).toDouble(), list.at(1).toUInt(), list.at(2).toUInt(),
            list.at(3).toUInt(),   list.at(4).toUInt(), list.at(5).toUInt(),
            list.at(6).toUInt(),   list.at(7).toUInt(), list.at(8).toUInt()};
}

void outAndIn(benchmark::State& state) {
    AudioStreamBasicDescription format = bench::streamFormat;
    for (auto _ : state) {
        benchmark::DoNotOptimize(format);
        benchmark::DoNotOptimize(formatFromList(listFromFormat(format)));
    }
}
BENCHMARK(outAndIn)->Name("StreamFormat/QVariantList");

} // namespace
