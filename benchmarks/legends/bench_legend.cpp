// Legends that are built anew: the time of one item, or of one label of a colour bar, is to stay the same
// from few of them to many. Texts that were measured before are looked up.
#include "meshrep/KitScene.h"

#include <oravane/PoIsovaluesList.h>
#include <oravane/PoItemLegend.h>
#include <oravane/PoLinearDataMapping.h>
#include <oravane/PoLinearValueLegend.h>

#include <string>

namespace {

void rebuild(benchmark::State &state, PoLegend *legend, KitScene &scene) {
    for (auto _ : state) {
        legend->touchKit();
        scene.traverse();
    }
    state.counters["each"] = timePer(static_cast<double>(state.range(0)));
}

PoItemLegend *newItemLegend(long numItems) {
    auto *legend = new PoItemLegend;
    legend->boxColor.setNum(static_cast<int>(numItems));
    for (int i = 0; i < numItems; ++i) {
        legend->item.set1Value(i, ("item " + std::to_string(i)).c_str());
        legend->boxColor.set1Value(i, SbColor(static_cast<float>(i % 7) / 7, 0, 0));
    }
    legend->numColumns = 4;
    return legend;
}

void boxes(benchmark::State &state) {
    PoItemLegend *legend = newItemLegend(state.range(0));
    KitScene scene(legend);
    rebuild(state, legend, scene);
}

/// All samples, and a title whose size follows that of the items.
void allSamples(benchmark::State &state) {
    PoItemLegend *legend = newItemLegend(state.range(0));
    KitScene scene(legend);
    legend->lineVisibility = TRUE;
    legend->markerVisibility = TRUE;
    legend->markerString = "*";
    const float sizes[] = {1, 2, 3};
    legend->lineSize.setValues(0, 3, sizes);
    legend->titleVisibility = PoLegend::VISIBILITY_ON;
    legend->titleString = "Items";
    rebuild(state, legend, scene);
}

/// Cubic values: most labels have to leave their places.
void colorBar(benchmark::State &state) {
    auto *legend = new PoLinearValueLegend;
    KitScene scene(legend);
    auto *levels = new PoIsovaluesList;
    for (int i = 0; i < state.range(0); ++i) {
        const auto value = static_cast<float>(i);
        levels->isovaluesList.set1Value(i, value * value * value);
    }
    static_cast<SoSeparator *>(scene.root())->insertChild(levels, 0);
    static_cast<SoSeparator *>(scene.root())->insertChild(new PoLinearDataMapping, 0);
    rebuild(state, legend, scene);
}

BENCHMARK(boxes)->RangeMultiplier(10)->Range(10, 1000)->Unit(benchmark::kMicrosecond);
BENCHMARK(allSamples)->RangeMultiplier(10)->Range(10, 1000)->Unit(benchmark::kMicrosecond);
BENCHMARK(colorBar)->RangeMultiplier(10)->Range(10, 1000)->Unit(benchmark::kMicrosecond);

} // namespace

int main(int argc, char **argv) {
    runKitBenchmarks(argc, argv);
}
