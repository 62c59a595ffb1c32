// A label's box against lines of growing length: the cost of a point must not grow.
//
//   bench_polygons --benchmark_repetitions=5 --benchmark_report_aggregates_only=true
#include <oravane/PlanarPolygons.h>

#include <benchmark/benchmark.h>

#include <cmath>
#include <cstdint>
#include <vector>

namespace {

/// A wave through the unit square, as a contour line has it: short steps, here and there near the box.
std::vector<Ppoint3> wave(std::int64_t numPoints) {
    std::vector<Ppoint3> line;
    for (std::int64_t i = 0; i < numPoints; ++i) {
        const double t = static_cast<double>(i) / static_cast<double>(numPoints);
        line.push_back({static_cast<float>(t), static_cast<float>(0.5 + 0.4 * std::sin(40 * t)), 1});
    }
    return line;
}

const std::vector<Ppoint3> box{{0.48f, 0.75f, 0}, {0.52f, 0.75f, 0}, {0.52f, 0.77f, 0}, {0.48f, 0.77f, 0}};

void finish(benchmark::State &state) {
    state.SetComplexityN(state.range(0));
    state.counters["points/s"] = benchmark::Counter(static_cast<double>(state.range(0)),
                                                    benchmark::Counter::kIsIterationInvariantRate);
}

/// `shift` moves the box away from the line, so that every segment has to be looked at.
void crossesBox(benchmark::State &state, float shift) {
    const std::vector<Ppoint3> line = wave(state.range(0));
    std::vector<Ppoint3> corners = box;
    for (Ppoint3 &corner : corners)
        corner.y += shift;
    for (auto _ : state)
        benchmark::DoNotOptimize(
            pintersParaPolyline2D(corners.data(), line.data(), static_cast<int>(line.size())));
    finish(state);
}

/// A result of many megabytes is memory that the system hands out for the first time, at some cost a point.
void outsideOfBox(benchmark::State &state) {
    std::vector<Ppoint3> line = wave(state.range(0)), closed = box;
    closed.push_back(box.front());
    Ppoint_list_list3 pieces{};
    for (auto _ : state) {
        pdiffPolygons2D({static_cast<int>(line.size()), line.data()}, {5, closed.data()}, &pieces);
        state.counters["pieces"] = pieces.numLists;
        for (int k = 0; k < pieces.numLists; ++k)
            delete[] pieces.lists[k].points;
        delete[] pieces.lists;
    }
    finish(state);
}

/// Two waves that cross a few dozen times, however many points they have.
void crossingsOfLines(benchmark::State &state) {
    std::vector<Ppoint3> p = wave(state.range(0)), q = p;
    for (Ppoint3 &point : q)
        point.y = 1 - point.y + 0.1f * point.x;
    for (auto _ : state)
        state.counters["crossings"] =
            pintersPolygons2D({static_cast<int>(p.size()), p.data()}, {static_cast<int>(q.size()), q.data()},
                              nullptr, nullptr, nullptr, nullptr);
    finish(state);
}

void sizes(benchmark::internal::Benchmark *b) {
    b->RangeMultiplier(10)->Range(1000, 1000000)->Unit(benchmark::kMicrosecond)->Complexity(benchmark::oN);
}

BENCHMARK_CAPTURE(crossesBox, missed, 0.65f)->Apply(sizes);
BENCHMARK_CAPTURE(crossesBox, hit, 0.0f)->Apply(sizes);
BENCHMARK(outsideOfBox)->Apply(sizes);
BENCHMARK(crossingsOfLines)->Apply(sizes);

} // namespace

BENCHMARK_MAIN();
