// An axis that is built anew: the time of one graduation, with its tick and text, is to stay the same from
// few of them to many. Texts that were measured before are looked up; of new ones their letters are built.
#include "meshrep/KitScene.h"

#include <oravane/PoLinearAxis.h>

namespace {

/// `isNew`: every rebuild has texts that were never measured.
void rebuildAxis(benchmark::State &state, bool isNew) {
    const auto numGrads = static_cast<float>(state.range(0));
    auto *axis = new PoLinearAxis;
    KitScene scene(axis);
    axis->step = 1;
    float offset = 0;
    for (auto _ : state) {
        if (isNew)
            offset += numGrads;
        axis->start.setValue(offset, 0, 0);
        axis->end = offset + numGrads;
        axis->touchKit();
        scene.traverse();
    }
    const float *coords = nullptr;
    state.counters["graduations"] = axis->getMainGradCoords(coords);
    state.counters["each"] = timePer(static_cast<double>(numGrads));
}

void known(benchmark::State &state) {
    rebuildAxis(state, false);
}
void fresh(benchmark::State &state) {
    rebuildAxis(state, true);
}

BENCHMARK(known)->RangeMultiplier(10)->Range(10, 10000)->Unit(benchmark::kMicrosecond);
BENCHMARK(fresh)->RangeMultiplier(10)->Range(10, 1000)->Unit(benchmark::kMicrosecond);

} // namespace

int main(int argc, char **argv) {
    runKitBenchmarks(argc, argv);
}
