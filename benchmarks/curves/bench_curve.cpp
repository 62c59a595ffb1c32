// Curves: the time of each point is to stay the same from short curves to long ones, in every shape, under
// every filter, and also for the traversals behind a rebuild: filled areas become triangles there.
#include "meshrep/KitScene.h"

#include <oravane/PoCurve.h>

#include <Inventor/actions/SoCallbackAction.h>
#include <Inventor/nodes/SoCoordinate3.h>
#include <Inventor/nodes/SoShape.h>

#include <cmath>

namespace {

/// A year after year of temperatures with some noise; with `offset` they are all above the threshold 0.
std::vector<SbVec2f> series(int n, float offset) {
    std::vector<SbVec2f> points;
    unsigned noise = 1;
    for (int i = 0; i < n; ++i) {
        noise = noise * 1664525u + 1013904223u;
        const float x = static_cast<float>(i) / 16;
        points.emplace_back(x, offset + 10 * std::sin(x / 58) + static_cast<float>(noise >> 24) / 64);
    }
    return points;
}

class Scene {
public:
    explicit Scene(benchmark::State &state, float offset = 0)
        : m_numPoints(static_cast<int>(state.range(0))), m_scene(kit) {
        const std::vector<SbVec2f> points = series(m_numPoints, offset);
        kit->point.setValues(0, m_numPoints, points.data());
    }
    /// Rebuilds again and again, each followed by `traverse`.
    template <class Traverse>
    void run(benchmark::State &state, Traverse traverse) {
        for (auto _ : state) {
            kit->touchKit();
            m_scene.traverse();
            traverse(m_scene.root());
        }
        state.counters["point"] = timePer(m_numPoints);
    }
    void run(benchmark::State &state) {
        run(state, [](SoNode *) {});
    }

    PoCurve *kit = new PoCurve;

private:
    int m_numPoints;
    KitScene m_scene;
};

void polyline(benchmark::State &state) {
    Scene(state).run(state);
}

void shape(benchmark::State &state, PoCurve::CurveRep rep) {
    Scene scene(state);
    scene.kit->curveRep = rep;
    scene.run(state);
}

void filled_and_raised(benchmark::State &state) {
    Scene scene(state);
    scene.kit->isCurveFilled = TRUE;
    scene.kit->raiseFilterType = PoCurve::INDEX_PERIOD;
    scene.kit->raiseIndexPeriod = 4;
    scene.run(state);
}

/// A place at every fourth point, on a curve that goes on to the right or to and fro.
void by_x(benchmark::State &state, PoCurve::CurveRep rep) {
    Scene scene(state);
    scene.kit->curveRep = rep;
    scene.kit->markerFilterType = PoCurve::X_PERIOD;
    scene.kit->markerXPeriod = 0.25f;
    scene.run(state);
}

void letters(benchmark::State &state) {
    Scene scene(state);
    scene.kit->markerFilterType = PoCurve::ALL_POINTS;
    scene.kit->markerString = "o";
    scene.run(state);
}

/// With all that a page takes of it: areas on both sides of the threshold, or one large one.
void filled_triangles(benchmark::State &state, float offset) {
    Scene scene(state, offset);
    scene.kit->isCurveFilled = TRUE;
    std::size_t triangles = 0;
    SoCallbackAction action;
    action.addTriangleCallback(
        SoShape::getClassTypeId(),
        [](void *count, SoCallbackAction *, const SoPrimitiveVertex *, const SoPrimitiveVertex *,
           const SoPrimitiveVertex *) { ++*static_cast<std::size_t *>(count); },
        &triangles);
    scene.run(state, [&](SoNode *root) {
        triangles = 0;
        action.apply(root);
    });
    state.counters["triangles"] = static_cast<double>(triangles);
}

void sizes(benchmark::internal::Benchmark *b) {
    b->RangeMultiplier(4)->Range(1 << 14, 1 << 20)->Unit(benchmark::kMillisecond);
}

BENCHMARK(polyline)->Apply(sizes);
BENCHMARK_CAPTURE(shape, smooth, PoCurve::CURVE_SMOOTH)->Apply(sizes);
BENCHMARK_CAPTURE(shape, stairs_2x, PoCurve::CURVE_STAIRS_2X)->Apply(sizes);
BENCHMARK(filled_and_raised)->Apply(sizes);
BENCHMARK_CAPTURE(by_x, polyline, PoCurve::CURVE_POLYLINE)->Apply(sizes);
BENCHMARK_CAPTURE(by_x, stairs_x, PoCurve::CURVE_STAIRS_X)->Apply(sizes);
BENCHMARK(letters)->Apply(sizes);
BENCHMARK_CAPTURE(filled_triangles, both_sides, 0.0f)->Apply(sizes);
BENCHMARK_CAPTURE(filled_triangles, one_side, 20.0f)->Apply(sizes);

} // namespace

int main(int argc, char **argv) {
    runKitBenchmarks(argc, argv);
}
