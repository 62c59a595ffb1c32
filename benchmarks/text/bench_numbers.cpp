// What labels cost: numbers to text, against the C library, and dates read, stepped and mapped. A step must
// not take longer for going farther.
#include <oravane/PbDateFormatMapping.h>
#include <oravane/PiNumericFormat.h>

#include <benchmark/benchmark.h>

#include <cstdio>

namespace {

constexpr int numValues = 1000;

void numbersToText(benchmark::State &state) {
    PiNumericFormat format;
    format.setFormatFloatingPoint(static_cast<int>(state.range(0)), 3);
    char text[PiNumericFormat::STRING_SIZE];
    for (auto _ : state) {
        for (int i = 0; i < numValues; ++i) {
            format.getString(1234.5f * static_cast<float>(i), text);
            benchmark::DoNotOptimize(text);
        }
    }
    state.SetItemsProcessed(state.iterations() * numValues);
}
BENCHMARK(numbersToText)->Arg(0)->Arg(3)->Arg(149);

void numbersToTextByPrintf(benchmark::State &state) {
    char text[PiNumericFormat::STRING_SIZE];
    for (auto _ : state) {
        for (int i = 0; i < numValues; ++i) {
            std::snprintf(text, sizeof text, "%.*f", static_cast<int>(state.range(0)), 1.2345 * i);
            benchmark::DoNotOptimize(text);
        }
    }
    state.SetItemsProcessed(state.iterations() * numValues);
}
BENCHMARK(numbersToTextByPrintf)->Arg(0)->Arg(3)->Arg(149);

void formatOfADomain(benchmark::State &state) {
    PiNumericFormat format;
    float max = 0;
    for (auto _ : state) {
        max += 1.7f;
        format.setFormatAuto(-max, max, max / 7, 1);
        benchmark::DoNotOptimize(format);
    }
}
BENCHMARK(formatOfADomain);

void textToDate(benchmark::State &state) {
    PiDate date;
    for (auto _ : state)
        benchmark::DoNotOptimize(date.setDateString("MON 29 FEBR 1996 23:59:59.5", "DdMYH'\""));
}
BENCHMARK(textToDate);

/// Days forward, or hours back: the two kinds of step, at growing distances.
void step(benchmark::State &state) {
    const auto distance = static_cast<float>(state.range(0));
    const auto type = distance < 0 ? PiDate::STEP_HOUR : PiDate::STEP_DAY;
    for (auto _ : state) {
        PiDate date;
        date.incDateStep(distance, type);
        benchmark::DoNotOptimize(date);
    }
}
BENCHMARK(step)->RangeMultiplier(64)->Range(1, 1 << 24)->Arg(-1)->Arg(-(1 << 12))->Arg(-(1 << 24));

void dateToCoordinateAndBack(benchmark::State &state) {
    const PbDateFormatMapping mapping("1-01-1960", "1-01-2020", 0, 60, "dmY");
    float coordinate = 30;
    for (auto _ : state) {
        coordinate = mapping.getCoordinateP(mapping.getDateP(coordinate));
        benchmark::DoNotOptimize(coordinate);
    }
}
BENCHMARK(dateToCoordinateAndBack);

} // namespace

BENCHMARK_MAIN();
