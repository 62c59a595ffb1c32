// Hidden lines of a thousand to a million polygons. The growth that is fitted over the sizes is printed
// behind each scene; the counters give polygons per second and visible pieces per polygon.

#include "PageScene.h"

#include <oravane/SoHiddenLines.h>

#include <benchmark/benchmark.h>

#include <functional>
#include <random>

namespace {

using Polygons = std::vector<std::vector<SbVec4f>>;

/// The wavy sheet of the pages, in normalised coordinates.
Polygons sheet(int count) {
    const page_scene::Mesh mesh = page_scene::make(count);
    Polygons polygons;
    for (std::size_t i = 0; i + 2 < mesh.corners.size(); i += 3) {
        polygons.emplace_back();
        for (std::size_t k = i; k < i + 3; ++k) {
            const page_scene::Vertex &v = mesh.nodes[mesh.corners[k]];
            polygons.back().emplace_back(v.x / 500 - 1, v.y / 500 - 1, 2 * v.z - 1, 1.0f);
        }
    }
    return polygons;
}

/// Triangles anywhere in the view: as many as there are, each so small that they cover the picture `layers`
/// times.
Polygons cloud(int count, double layers) {
    std::mt19937 random(1);
    std::uniform_real_distribution<float> anywhere(-1, 1);
    const auto size = static_cast<float>(std::sqrt(4 * layers / count));
    Polygons polygons(count);
    for (auto &polygon : polygons) {
        const float x = anywhere(random), y = anywhere(random), z = anywhere(random);
        for (int k = 0; k < 3; ++k)
            polygon.emplace_back(x + size * anywhere(random), y + size * anywhere(random),
                                 z + size * anywhere(random), 1.0f);
    }
    return polygons;
}

/// All polygons crowd in a twentieth of the view, but for one that covers it all from behind.
Polygons cluster(int count) {
    Polygons polygons = cloud(count - 1, 10);
    for (auto &polygon : polygons)
        for (SbVec4f &p : polygon)
            p.setValue(p[0] / 20, p[1] / 20, p[2], 1);
    polygons.push_back({{-1, -1, 1, 1}, {1, -1, 1, 1}, {1, 1, 1, 1}, {-1, 1, 1, 1}});
    return polygons;
}

/// Squares in a row towards the viewer, each a little smaller than the one behind.
Polygons stack(int count) {
    Polygons polygons;
    for (int i = 0; i < count; ++i) {
        const float r = 1 - 0.9f * static_cast<float>(i) / static_cast<float>(count), z = r;
        polygons.push_back({{-r, -r, z, 1}, {r, -r, z, 1}, {r, r, z, 1}, {-r, r, z, 1}});
    }
    return polygons;
}

void hiddenLines(benchmark::State &state, const std::function<Polygons(int)> &make) {
    const Polygons polygons = make(static_cast<int>(state.range(0)));
    int pieces = 0;
    for (auto _ : state) {
        SoHiddenLines lines;
        for (const auto &polygon : polygons)
            lines.addPolygon(polygon.data(), static_cast<int>(polygon.size()), SbColor(0, 0, 0), 1, 0xFFFF);
        const std::unique_ptr<SoHiddenLines::Polyline[]> visible(lines.computeHiddenLines(pieces));
        benchmark::DoNotOptimize(visible.get());
    }
    const auto count = static_cast<double>(polygons.size());
    state.counters["polygons"] = benchmark::Counter(count, benchmark::Counter::kIsIterationInvariantRate);
    state.counters["pieces/polygon"] = pieces / count;
    state.SetComplexityN(static_cast<benchmark::IterationCount>(polygons.size()));
}

void family(const char *name, const std::function<Polygons(int)> &make, int most) {
    auto *family =
        benchmark::RegisterBenchmark(name, [make](benchmark::State &state) { hiddenLines(state, make); });
    for (int size = 1000; size <= most; size *= 10)
        family->Arg(size);
    family->Unit(benchmark::kMillisecond)->Complexity();
}

} // namespace

int main(int argc, char **argv) {
    benchmark::Initialize(&argc, argv);
    if (benchmark::ReportUnrecognizedArguments(argc, argv))
        return 1;
    family("sheet", sheet, 1000000);
    family(
        "cloud/1-layer", [](int n) { return cloud(n, 1); }, 1000000);
    family(
        "cloud/20-layers", [](int n) { return cloud(n, 20); }, 100000);
    family("cluster", cluster, 100000);
    family("stack", stack, 100000);
    benchmark::RunSpecifiedBenchmarks();
    return 0;
}
