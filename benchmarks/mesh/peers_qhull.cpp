#include "points.h"

#include <benchmark/benchmark.h>

extern "C" {
#include <libqhull_r/qhull_ra.h>
}

namespace {

/// Facets as they come: on a lattice squares, not yet cut into triangles.
void qhull(benchmark::State &state, points::Kind kind) {
    const points::Points given = points::make(kind, static_cast<std::size_t>(state.range(0)));
    std::vector<double> coordinates;
    for (std::size_t i = 0; i < given.x.size(); ++i) {
        coordinates.push_back(given.x[i]);
        coordinates.push_back(given.y[i]);
    }
    for (auto _ : state) {
        qhT hull;
        qhT *const qh = &hull; // the name that the macros of the library expect
        qh_zero(qh, stderr);
        char command[] = "qhull d Qbb Qc Qz Q12";
        const int count = static_cast<int>(given.x.size());
        const int failed = qh_new_qhull(qh, 2, count, coordinates.data(), False, command, nullptr, stderr);
        double facets = 0;
        facetT *facet = nullptr;
        if (!failed)
            FORALLfacets {
                facets += !facet->upperdelaunay;
            }
        state.counters["facets"] = facets;
        qh_freeqhull(qh, !qh_ALL);
        int shortMemory = 0, totalShort = 0;
        qh_memfreeshort(qh, &shortMemory, &totalShort);
    }
}

void sizes(benchmark::internal::Benchmark *b) {
    b->Arg(100000)->Arg(1000000)->Unit(benchmark::kMillisecond);
}

BENCHMARK_CAPTURE(qhull, uniform, points::UNIFORM)->Apply(sizes);
BENCHMARK_CAPTURE(qhull, clustered, points::CLUSTERED)->Apply(sizes);
BENCHMARK_CAPTURE(qhull, lattice, points::LATTICE)->Apply(sizes);

} // namespace
