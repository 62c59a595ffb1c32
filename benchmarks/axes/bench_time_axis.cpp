// Time axes: the cost of a label is to stay the same from one level to ten, and from a few labels to all that
// a level may have. Behind it the parts of a rebuild that need no scene: reading a description, choosing
// levels, and finding the dates, whose cost must not depend on the span.
#include "axes/DateGraduations.h"
#include "meshrep/KitScene.h"
#include "text/DateTime.h"

#include <oravane/PbDateFormatMapping.h>
#include <oravane/PbMiscTextAttr.h>
#include <oravane/PoTimeAxis.h>

#include <cstdlib>
#include <string>

namespace {

/// A level of `count` labels over a span of `count` days, described `numLevels` times.
std::string description(long numLevels) {
    std::string text;
    for (long k = 0; k < numLevels; ++k)
        text += k == 0 ? "1 DAY D ' ' M 3 ' ' Y 4" : ";1 DAY D ' ' M 3 ' ' Y 4";
    return text;
}

std::string dateAfter(double days) {
    PiDate date;
    oravane::stepSeconds(date, 86400 * days);
    const auto digits = [](int number, std::size_t count) {
        const std::string text = std::to_string(number);
        return std::string(count - text.size(), '0') + text;
    };
    return digits(date.day, 2) + "-" + digits(date.month, 2) + "-" + digits(date.year, 4);
}

/// All labels of a rebuild; each level names its days anew, of which the years repeat nothing.
void rebuild(benchmark::State &state) {
    const long numLevels = state.range(0), numDays = state.range(1);
    const std::string last = dateAfter(static_cast<double>(numDays - 1));
    PbDateFormatMapping mapping("01-01-1970", last.c_str(), 0, 1, "dmY");
    PbMiscTextAttr attributes;
    attributes.setLineLength(';', 0);
    auto *kit = new PoTimeAxis;
    KitScene scene(kit);
    kit->setDateFormatMapping(&mapping);
    kit->setMiscTextAttr(&attributes);
    kit->startDate = "01-01-1970";
    kit->endDate = last.c_str();
    kit->gradRep = description(numLevels).c_str();
    for (auto _ : state) {
        kit->touchKit();
        scene.traverse();
    }
    const auto *texts = static_cast<SoGroup *>(kit->getPart("mainGradText", FALSE));
    const int numLabels = texts ? texts->getNumChildren() : 0;
    if (numLabels != numLevels * numDays)
        state.SkipWithError("labels are missing");
    state.counters["label"] = timePer(numLabels);
}
BENCHMARK(rebuild)
    ->ArgsProduct({{1, 2, 5, 10}, {1000}})
    ->ArgsProduct({{1}, {10, 100, 10000, 100000}})
    ->Unit(benchmark::kMillisecond);

/// Reading a description, the automatic levels of a span, and the labels of them all.
void readDescription(benchmark::State &state) {
    const std::string text = description(state.range(0));
    int error = 0;
    for (auto _ : state)
        benchmark::DoNotOptimize(oravane::parseAxisRep(text, ';', error));
    state.counters["level"] = timePer(static_cast<double>(state.range(0)));
}
BENCHMARK(readDescription)->RangeMultiplier(10)->Range(1, 10000);

void automaticLevels(benchmark::State &state) {
    oravane::DateAxis axis;
    axis.end = axis.start;
    oravane::stepSeconds(axis.end, static_cast<double>(state.range(0)));
    PbDateFormatMapping mapping;
    mapping.setDateMappingP(axis.start, axis.end, 0, 1);
    std::size_t numLabels = 0;
    for (auto _ : state) {
        numLabels = 0;
        for (const auto &level :
             oravane::DateRepresentations().getDateAxisRep(axis.start, axis.end, axis.language))
            numLabels += oravane::getGradList(axis, level, mapping).labels.size();
        benchmark::DoNotOptimize(numLabels);
    }
    state.counters["label"] = timePer(static_cast<double>(numLabels));
}
BENCHMARK(automaticLevels)->RangeMultiplier(1000)->Range(1, 3'000'000'000'000);

/// A step of a second over many years, which is refused at the bound.
void tooMany(benchmark::State &state) {
    oravane::DateAxis axis;
    axis.end.year += static_cast<int>(state.range(0));
    PbDateFormatMapping mapping;
    mapping.setDateMappingP(axis.start, axis.end, 0, 1);
    int error = 0;
    const auto levels = oravane::parseAxisRep("1 SEC s", ';', error);
    for (auto _ : state)
        benchmark::DoNotOptimize(oravane::getGradList(axis, levels->front(), mapping));
}
BENCHMARK(tooMany)->Arg(1)->Arg(62)->Arg(100000)->Unit(benchmark::kMillisecond);

} // namespace

int main(int argc, char **argv) {
    setenv("COIN_FORCE_FREETYPE_OFF", "1", 1);
    runKitBenchmarks(argc, argv);
}
