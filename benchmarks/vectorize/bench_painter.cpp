// The painter's order alone, depth sort and exchange pass, of a thousand to a million polygons. The growth
// that is fitted over the sizes is printed behind each kind of scene.

#include "PageScene.h"

#include <oravane/PoBase.h>
#include <oravane/SoPainter.h>

#include <benchmark/benchmark.h>

#include <memory>
#include <random>
#include <vector>

namespace {

using Points = std::vector<SbVec4f>;

/// Polygons of a scene, in the order of their creation.
class Scene {
public:
    void add(const Points &points) {
        auto polygon = std::make_unique<PolyGon>();
        const std::vector<SbColor> colors(points.size(), SbColor(0, 0, 0));
        polygon->setValue(static_cast<int>(points.size()), points.data(), colors.data(), 0, 1, 1, 0xFFFF,
                          PolyGon::FILLED);
        polygon->setPriority(m_list.getLength());
        m_list.append(polygon.get());
        m_polygons.push_back(std::move(polygon));
    }
    const PrimitiveList &list() const { return m_list; }

private:
    std::vector<std::unique_ptr<PolyGon>> m_polygons;
    PrimitiveList m_list;
};

/// The wavy sheet of the page benchmarks.
Scene sheet(int n) {
    const page_scene::Mesh mesh = page_scene::make(n);
    Scene scene;
    for (std::size_t i = 0; i < mesh.corners.size(); i += 3) {
        Points points;
        for (std::size_t k = i; k < i + 3; ++k) {
            const page_scene::Vertex &v = mesh.nodes[mesh.corners[k]];
            points.emplace_back(v.x / 500 - 1, v.y / 500 - 1, 2 * v.z - 1, 1.0f);
        }
        scene.add(points);
    }
    return scene;
}

/// Triangles of random corners about random centres in the unit box, at most `size` away from them.
Scene scattered(int n, float size) {
    std::mt19937 random(7);
    std::uniform_real_distribution<float> uniform(-1, 1);
    Scene scene;
    for (int i = 0; i < n; ++i) {
        const float x = uniform(random), y = uniform(random), z = uniform(random);
        Points points;
        for (int k = 0; k < 3; ++k)
            points.emplace_back(x + size * uniform(random), y + size * uniform(random),
                                z + size * uniform(random), 1.0f);
        scene.add(points);
    }
    return scene;
}

/// As many neighbours for each at any number.
Scene crumbs(int n) {
    return scattered(n, 1 / std::cbrt(static_cast<float>(n)));
}

/// Sizes that do not shrink with the number: the pairs that meet grow as its square.
Scene chips(int n) {
    return scattered(n, 0.05f);
}

/// All in one spot.
Scene pile(int n) {
    return scattered(n, 1);
}

/// Small triangles with few that cross the page.
Scene wallsAndCrumbs(int n) {
    Scene scene = crumbs(n - 20);
    for (int i = 0; i < 20; ++i) {
        const float x = 0.1f * static_cast<float>(i) - 1;
        scene.add({{x, -1, -1, 1}, {x + 0.05f, -1, 1, 1}, {x + 0.05f, 1, 1, 1}, {x, 1, -1, 1}});
    }
    return scene;
}

/// A quarter of the page long, and thin.
Scene needles(int n) {
    std::mt19937 random(7);
    std::uniform_real_distribution<float> uniform(-1, 1);
    Scene scene;
    for (int i = 0; i < n; ++i) {
        const SbVec3f start(uniform(random), uniform(random), uniform(random));
        SbVec3f along(uniform(random), uniform(random), uniform(random));
        along.normalize();
        const SbVec3f end = start + 0.25f * along;
        const float width = 0.1f / std::sqrt(static_cast<float>(n));
        scene.add({{start[0], start[1], start[2], 1},
                   {end[0], end[1], end[2], 1},
                   {start[0] + width, start[1] + width, start[2], 1}});
    }
    return scene;
}

/// Each nearer than the next, but reaching farther: each is exchanged with all behind it.
Scene reversedStack(int n) {
    Scene scene;
    for (int i = 0; i < n; ++i) {
        const float t = static_cast<float>(i) / static_cast<float>(n);
        const float x = 1 - 1.6f * t, z = 0.4f * t, far = z + (x + 1) / 2;
        scene.add({{-1, -1, z, 1}, {x, -1, far, 1}, {x, 1, far, 1}, {-1, 1, z, 1}});
    }
    return scene;
}

void order(benchmark::State &state, Scene (*make)(int)) {
    const Scene scene = make(static_cast<int>(state.range(0)));
    for (auto _ : state) {
        PrimitiveList list = scene.list();
        SoPainter(&list, nullptr, 0).apply();
        benchmark::DoNotOptimize(list[0]);
    }
    state.SetComplexityN(state.range(0));
    state.counters["polygons"] = benchmark::Counter(static_cast<double>(state.range(0)),
                                                    benchmark::Counter::kIsIterationInvariantRate);
}

void family(const char *name, Scene (*make)(int), std::initializer_list<int> sizes) {
    auto *family = benchmark::RegisterBenchmark(name, order, make);
    for (const int size : sizes)
        family->Arg(size);
    family->Unit(benchmark::kMillisecond)->Complexity();
}

} // namespace

int main(int argc, char **argv) {
    PoBase::init();
    benchmark::Initialize(&argc, argv);
    if (benchmark::ReportUnrecognizedArguments(argc, argv))
        return 1;
    const auto many = {1000, 10000, 100000, 1000000};
    family("sheet", sheet, many);
    family("crumbs", crumbs, many);
    family("walls-and-crumbs", wallsAndCrumbs, many);
    family("needles", needles, {1000, 10000, 100000});
    family("chips", chips, {1000, 10000, 100000});
    family("pile", pile, {500, 1000, 2000, 4000});
    family("reversed-stack", reversedStack, {500, 1000, 2000, 4000});
    benchmark::RunSpecifiedBenchmarks();
    return 0;
}
