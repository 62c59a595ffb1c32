// Bar charts: what a rebuild costs, bars alone, with colours, and with all their texts. The time of a bar is
// to stay the same from few bars to many.
#include "geometry/fields.h"
#include "meshrep/KitScene.h"

#include <oravane/PbLinearDataMapping.h>
#include <oravane/PoSingleHistogram.h>

#include <string>
#include <vector>

namespace {

enum Texts { NONE, VALUES, VALUES_AND_NAMES };

void rebuild(benchmark::State &state, Texts texts, bool isColored) {
    const auto count = static_cast<int>(state.range(0));
    std::vector<std::string> names;
    std::vector<const char *> namePointers;
    std::vector<float> values;
    fields::Random random(11);
    for (int i = 0; i < count; ++i) {
        names.push_back("Station " + std::to_string(i));
        values.push_back(static_cast<float>(100 * random.uniform() - 20));
    }
    for (const std::string &name : names)
        namePointers.push_back(name.c_str());
    auto *kit = new PoSingleHistogram(SbVec2f(0, 0), 1, PoHistogram::X, count, values.data(),
                                      texts == VALUES_AND_NAMES ? namePointers.data() : nullptr);
    KitScene scene(kit);
    PbLinearDataMapping mapping;
    mapping.setValues(-20.0f, SbColor(0, 0, 1), 80.0f, SbColor(1, 0, 0));
    kit->setDataMapping(&mapping);
    kit->coloring = isColored ? PoHistogram::DATA_MAPPING : PoHistogram::COLOR_LIST;
    kit->valueVisibility = texts == NONE ? PoHistogram::VISIBILITY_OFF : PoHistogram::VISIBILITY_ON;
    for (auto _ : state) {
        kit->touchKit();
        scene.traverse();
    }
    state.counters["bar"] = timePer(count);
}

void sizes(benchmark::internal::Benchmark *b) {
    b->RangeMultiplier(10)->Range(100, 10000)->Unit(benchmark::kMicrosecond);
}

BENCHMARK_CAPTURE(rebuild, bars, NONE, false)->Apply(sizes);
BENCHMARK_CAPTURE(rebuild, colored_bars, NONE, true)->Apply(sizes);
BENCHMARK_CAPTURE(rebuild, values, VALUES, false)->Apply(sizes);
BENCHMARK_CAPTURE(rebuild, values_and_names, VALUES_AND_NAMES, false)->Apply(sizes);

} // namespace

int main(int argc, char **argv) {
    runKitBenchmarks(argc, argv);
}
