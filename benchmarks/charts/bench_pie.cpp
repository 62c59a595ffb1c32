// Pie charts with annotations: the time of a slice is to stay the same from few slices to many, wherever the
// annotations stand. Radial ones move out step by step until a turn has room for them, and take a look at all
// of them in each step.
#include "meshrep/KitScene.h"

#include <oravane/PoPieChart2D.h>
#include <oravane/PoPieChart3D.h>

#include <string>

namespace {

template <class Pie>
void slices(benchmark::State &state, int position) {
    const int n = static_cast<int>(state.range(0));
    auto *pie = new Pie;
    KitScene scene(pie);
    pie->sliceGroupActive = FALSE;
    pie->extAnnotPosition = position;
    pie->extAnnotPercentVisibility = TRUE;
    for (int k = 0; k < n; ++k) {
        pie->sliceText.set1Value(k, ("slice " + std::to_string(k + 1)).c_str());
        pie->sliceValue.set1Value(k, static_cast<float>(1 + k * 37 % 11));
    }
    scene.traverse();
    for (auto _ : state) {
        pie->touchKit();
        scene.traverse();
    }
    state.counters["slice"] = timePer(n);
}

void registerBenchmarks() {
    struct Row {
        const char *name;
        int position;
    };
    for (const Row &row : {Row{"radial", PoPieChart::RADIAL_EXT_POS},
                           {"horizontal", PoPieChart::HOR_EXT_POS},
                           {"row", PoPieChart::HOR_ALIGNED_EXT_POS},
                           {"column", PoPieChart::VERT_ALIGNED_EXT_POS},
                           {"square", PoPieChart::SQUARE_ALIGNED_EXT_POS}})
        for (const bool isSolid : {false, true}) {
            const std::string name = std::string(isSolid ? "solid/" : "flat/") + row.name;
            benchmark::RegisterBenchmark(name.c_str(), isSolid ? slices<PoPieChart3D> : slices<PoPieChart2D>,
                                         row.position)
                ->ArgsProduct({{8, 45, 360}})
                ->Unit(benchmark::kMicrosecond);
        }
}

} // namespace

int main(int argc, char **argv) {
    registerBenchmarks();
    runKitBenchmarks(argc, argv);
}
