// Contour lines and bands of 20 levels, and what other libraries need for the same where they are installed.
//
//   bench_contour --benchmark_filter='2000' --benchmark_repetitions=5 --benchmark_report_aggregates_only=true
//
// One more peer, in Python; a field like the smooth one is
//   i, j = numpy.mgrid[0:1:2000j, 0:1:2000j]; v = i * j + .1 * numpy.sin(25 * i) * numpy.sin(25 * j)
//   generator = contourpy.contour_generator(z=v); lines = [generator.lines(l) for l in levels]
#include "fields.h"

#include <oravane/PbIsovaluesList.h>
#include <oravane/PbLinearDataMapping.h>
#include <oravane/PbRegularCartesianGrid2D.h>
#include <oravane/PiContouringFilled.h>
#include <oravane/PiContouringLines.h>
#include <oravane/PoBase.h>

#include <Inventor/nodes/SoGroup.h>
#include <Inventor/nodes/SoMaterial.h>
#include <Inventor/nodes/SoMaterialBinding.h>

#include <benchmark/benchmark.h>

namespace {

constexpr int numLevels = 20;

struct Scene {
    Scene(int n, fields::Kind kind) : values(fields::grid(n, kind)), mesh(n, n, 0, 0, 1, 1, 0) {
        levels.setIrregularIsoList(numLevels, fields::levels(values, numLevels).data());
        mapping.setValues(-1, SbColor(0, 0, 1), 1, SbColor(1, 0, 0));
    }
    std::vector<float> values;
    PbRegularCartesianGrid2D mesh;
    PbIsovaluesList levels;
    PbLinearDataMapping mapping;
};

void lines(benchmark::State &state, fields::Kind kind) {
    const Scene scene(static_cast<int>(state.range(0)), kind);
    PiContouringLines contouring;
    contouring.setIsovaluesList(&scene.levels);
    Tisoline_list made{};
    std::size_t points = 0;
    for (auto _ : state) {
        contouring.setMesh(&scene.mesh, nullptr);
        contouring.getLines(scene.values.data(), nullptr, &made);
    }
    for (int k = 0; k < made.numLines; ++k)
        points += static_cast<std::size_t>(made.lines[k].numPoints);
    state.counters["lines"] = made.numLines;
    state.counters["points"] = static_cast<double>(points);
    state.SetComplexityN(state.range(0) * state.range(0));
}

/// The scene graph nodes included: their memory is fresh each time.
void fill(benchmark::State &state, PiContouringFilled &contouring, const std::vector<float> &values) {
    SoMaterial *material = nullptr;
    for (auto _ : state) {
        auto *group = new SoGroup;
        group->ref();
        material = new SoMaterial;
        material->ref();
        contouring.fillSurf(values.data(), nullptr, group, material, new SoMaterialBinding);
        state.counters["pieces"] = material->diffuseColor.getNum();
        material->unref();
        group->unref();
    }
}

void bands(benchmark::State &state, fields::Kind kind) {
    const Scene scene(static_cast<int>(state.range(0)), kind);
    PiContouringFilled contouring;
    contouring.setIsovaluesList(&scene.levels);
    contouring.setDataMapping(&scene.mapping);
    contouring.setMesh(&scene.mesh, nullptr);
    fill(state, contouring, scene.values);
    state.SetComplexityN(state.range(0) * state.range(0));
}

/// Triangles given one by one, two for each cell of a grid.
void indexedBands(benchmark::State &state) {
    const int n = static_cast<int>(std::lround(std::sqrt(state.range(0) / 2.0))) + 1;
    const Scene scene(n, fields::SMOOTH);
    std::vector<float> x, y;
    for (int node = 0; node < n * n; ++node) {
        x.push_back(static_cast<float>(node / n));
        y.push_back(static_cast<float>(node % n));
    }
    PiContouringFilled contouring;
    contouring.setIsovaluesList(&scene.levels);
    contouring.setDataMapping(&scene.mapping);
    contouring.initGeometry();
    for (int i = 0; i + 1 < n; ++i)
        for (int j = 0; j + 1 < n; ++j) {
            const int a = i * n + j, b = a + n;
            const int triangles[2][3] = {{a, b, b + 1}, {a, b + 1, a + 1}};
            contouring.addElems(3, triangles[0]);
            contouring.addElems(3, triangles[1]);
        }
    contouring.setPoints(n * n, x.data(), y.data(), nullptr);
    fill(state, contouring, scene.values);
    state.SetComplexityN(state.range(0));
}

void sizes(benchmark::internal::Benchmark *b) {
    b->Arg(500)->Arg(1000)->Arg(2000)->Unit(benchmark::kMillisecond)->Complexity(benchmark::oN);
}

BENCHMARK_CAPTURE(lines, smooth, fields::SMOOTH)->Apply(sizes);
BENCHMARK_CAPTURE(lines, rough, fields::ROUGH)->Apply(sizes);
BENCHMARK_CAPTURE(bands, smooth, fields::SMOOTH)->Apply(sizes);
BENCHMARK_CAPTURE(bands, rough, fields::ROUGH)->Apply(sizes);
BENCHMARK(indexedBands)
    ->RangeMultiplier(4)
    ->Range(16 << 10, 1 << 20)
    ->Unit(benchmark::kMillisecond)
    ->Complexity(benchmark::oN);

} // namespace

int main(int argc, char **argv) {
    PoBase::init();
    benchmark::Initialize(&argc, argv);
    benchmark::RunSpecifiedBenchmarks();
}
