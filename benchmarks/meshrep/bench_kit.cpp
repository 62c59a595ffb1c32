// The whole road of a filled surface: what a rebuild costs in each colouring, and what an unchanged scene
// costs.
#include "geometry/fields.h"

#include <oravane/PbIsovaluesList.h>
#include <oravane/PbLinearDataMapping.h>
#include <oravane/PbRegularCartesianGrid2D.h>
#include <oravane/PoMeshFilled.h>

#include <Inventor/actions/SoSearchAction.h>
#include <Inventor/nodes/SoSeparator.h>
#include <Inventor/nodes/SoShapeHints.h>

#include <benchmark/benchmark.h>

namespace {

/// A kit with its mesh, below a separator without caches: every traversal reaches the kit.
class Scene {
public:
    Scene(int n, int coloring)
        : m_values(fields::grid(n, fields::SMOOTH)), m_mesh(n, n, 0.f, 0.f, 1.f, 1.f, 0),
          m_root(new SoSeparator), m_kit(new PoMeshFilled) {
        m_mesh.addValuesSet(0, m_values.data());
        m_kit->setMesh(&m_mesh);
        m_kit->setDataMapping(&m_mapping);
        m_kit->setIsovaluesList(&m_levels);
        m_kit->valuesIndex = 0;
        m_kit->coloringType = coloring;
        m_root->boundingBoxCaching = SoSeparator::OFF;
        m_root->ref();
        m_root->addChild(m_kit);
        traverse();
    }
    ~Scene() { m_root->unref(); }
    Scene(const Scene &) = delete;
    Scene &operator=(const Scene &) = delete;

    void change() { m_mesh.touch(); }
    /// A search inside of kits: reaches the kit, and leaves its geometry alone.
    void traverse() {
        SoSearchAction search;
        search.setType(SoShapeHints::getClassTypeId());
        search.apply(m_root);
    }

private:
    std::vector<float> m_values;
    PbRegularCartesianGrid2D m_mesh;
    PbLinearDataMapping m_mapping;
    PbIsovaluesList m_levels{-1.f, 1.f, 20};
    SoSeparator *m_root;
    PoMeshFilled *m_kit;
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
    PoBase::init();
    SoBaseKit::setSearchingChildren(TRUE);
    benchmark::Initialize(&argc, argv);
    benchmark::RunSpecifiedBenchmarks();
}
