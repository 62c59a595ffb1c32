#include "PeakMemory.h"
#include "points.h"

#include <benchmark/benchmark.h>

#include <CGAL/Delaunay_triangulation_2.h>
#include <CGAL/Exact_predicates_inexact_constructions_kernel.h>
#include <CGAL/Triangulation_vertex_base_with_info_2.h>

namespace {

using Kernel = CGAL::Exact_predicates_inexact_constructions_kernel;
using Vertex = CGAL::Triangulation_vertex_base_with_info_2<std::int32_t, Kernel>;
using Triangulation = CGAL::Delaunay_triangulation_2<Kernel, CGAL::Triangulation_data_structure_2<Vertex>>;

void cgal(benchmark::State &state, points::Kind kind) {
    const points::Points given = points::make(kind, static_cast<std::size_t>(state.range(0)));
    const PeakMemory memory;
    for (auto _ : state) {
        std::vector<std::pair<Kernel::Point_2, std::int32_t>> numbered;
        numbered.reserve(given.x.size());
        for (std::size_t i = 0; i < given.x.size(); ++i)
            numbered.emplace_back(Kernel::Point_2(given.x[i], given.y[i]), static_cast<std::int32_t>(i));
        Triangulation triangulation;
        triangulation.insert(numbered.begin(), numbered.end());
        std::vector<std::int32_t> indices;
        indices.reserve(3 * triangulation.number_of_faces());
        for (auto face = triangulation.finite_faces_begin(); face != triangulation.finite_faces_end(); ++face)
            for (int k = 0; k < 3; ++k)
                indices.push_back(face->vertex(k)->info());
        state.counters["triangles"] = static_cast<double>(indices.size() / 3);
        benchmark::DoNotOptimize(indices.data());
    }
    state.counters["bytes/point"] = memory.bytes() / static_cast<double>(given.x.size());
}

void sizes(benchmark::internal::Benchmark *b) {
    b->Arg(100000)->Arg(1000000)->Unit(benchmark::kMillisecond);
}

BENCHMARK_CAPTURE(cgal, uniform, points::UNIFORM)->Apply(sizes);
BENCHMARK_CAPTURE(cgal, clustered, points::CLUSTERED)->Apply(sizes);
BENCHMARK_CAPTURE(cgal, lattice, points::LATTICE)->Apply(sizes);

} // namespace
