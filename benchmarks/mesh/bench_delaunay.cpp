// Delaunay triangulation of scattered points, and what other libraries need for the same points where they
// are installed: numbers of the points in, triangles as node numbers out.
//
//   bench_delaunay --benchmark_filter=1000000 --benchmark_repetitions=5
//
// Memory, that of the result included, is the peak over what the process had before: exact for a case that is
// run alone, less for later ones, which use the memory of those before them.
#include "PeakMemory.h"
#include "points.h"

#include <oravane/PiVoronoi2D.h>

#include <benchmark/benchmark.h>

#include <cstdlib>

namespace {

void delaunay(benchmark::State &state, points::Kind kind) {
    const points::Points given = points::make(kind, static_cast<std::size_t>(state.range(0)));
    const int n = static_cast<int>(given.x.size());
    const PeakMemory memory;
    PiVoronoi2D triangulation;
    triangulation.setPointsFields(n, given.x.data(), given.y.data());
    for (auto _ : state) {
        int numTriangles = 0, *indices = nullptr;
        triangulation.getGeometry(numTriangles, indices);
        state.counters["triangles"] = numTriangles;
        std::free(indices);
    }
    state.counters["time/point"] =
        benchmark::Counter(n, benchmark::Counter::kIsIterationInvariantRate | benchmark::Counter::kInvert);
    state.counters["bytes/point"] = memory.bytes() / n;
}

void sizes(benchmark::internal::Benchmark *b) {
    for (const int n : {1000, 10000, 100000, 1000000})
        b->Arg(n);
    b->Unit(benchmark::kMillisecond);
}

BENCHMARK_CAPTURE(delaunay, uniform, points::UNIFORM)->Apply(sizes);
BENCHMARK_CAPTURE(delaunay, clustered, points::CLUSTERED)->Apply(sizes);
BENCHMARK_CAPTURE(delaunay, lattice, points::LATTICE)->Apply(sizes);

} // namespace

BENCHMARK_MAIN();
