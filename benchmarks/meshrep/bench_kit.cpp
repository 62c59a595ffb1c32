// The whole road of a filled surface: what a rebuild costs in each colouring, and what an unchanged scene
// costs.
#include "geometry/fields.h"
#include "meshrep/KitScene.h"

#include <oravane/PbIsovaluesList.h>
#include <oravane/PbLinearDataMapping.h>
#include <oravane/PbRegularCartesianGrid2D.h>
#include <oravane/PoMeshFilled.h>

namespace {

/// A kit with its mesh, in a scene.
class Scene {
public:
    Scene(int n, int coloring)
        : m_values(fields::grid(n, fields::SMOOTH)), m_mesh(n, n, 0.f, 0.f, 1.f, 1.f, 0),
          m_kit(new PoMeshFilled), m_scene(m_kit) {
        m_mesh.addValuesSet(0, m_values.data());
        m_kit->setMesh(&m_mesh);
        m_kit->setDataMapping(&m_mapping);
        m_kit->setIsovaluesList(&m_levels);
        m_kit->valuesIndex = 0;
        m_kit->coloringType = coloring;
        traverse();
    }

    void change() { m_mesh.touch(); }
    void traverse() { m_scene.traverse(); }

private:
    std::vector<float> m_values;
    PbRegularCartesianGrid2D m_mesh;
    PbLinearDataMapping m_mapping;
    PbIsovaluesList m_levels{-1.f, 1.f, 20};
    PoMeshFilled *m_kit;
    KitScene m_scene;
};

void rebuild(benchmark::State &state, int coloring) {
    Scene scene(static_cast<int>(state.range(0)), coloring);
    for (auto _ : state) {
        scene.change();
        scene.traverse();
    }
    state.SetComplexityN(state.range(0) * state.range(0));
}

void unchanged(benchmark::State &state) {
    Scene scene(static_cast<int>(state.range(0)), PoMesh::COLOR_CONTOURING);
    for (auto _ : state)
        scene.traverse();
    state.SetComplexityN(state.range(0) * state.range(0));
}

void sizes(benchmark::internal::Benchmark *b) {
    b->Arg(250)->Arg(500)->Arg(1000)->Arg(2000)->Unit(benchmark::kMillisecond)->Complexity(benchmark::oN);
}

BENCHMARK_CAPTURE(rebuild, inherited, PoMesh::COLOR_INHERITED)->Apply(sizes);
BENCHMARK_CAPTURE(rebuild, average, PoMesh::COLOR_AVERAGE)->Apply(sizes);
BENCHMARK_CAPTURE(rebuild, mapping, PoMesh::COLOR_MAPPING)->Apply(sizes);
BENCHMARK_CAPTURE(rebuild, contouring, PoMesh::COLOR_CONTOURING)->Apply(sizes);
BENCHMARK(unchanged)->Arg(250)->Arg(1000)->Arg(2000)->Complexity(benchmark::o1);

} // namespace

int main(int argc, char **argv) {
    runKitBenchmarks(argc, argv);
}
