// The border of indexed meshes: the time of each cell is to stay the same from small meshes to large ones, in
// any order of the cells, and with many loops.
#include "geometry/fields.h"
#include "meshrep/KitScene.h"

#include <oravane/PbQuadrangleMesh2D.h>
#include <oravane/PbTriangleMesh2D.h>
#include <oravane/PoMeshFilled.h>

#include <memory>

namespace {

enum Cells { TRIANGLES, QUADRANGLES, MIXED };
enum Order { ORDERED, SHUFFLED, HOLES };

/// `count` cells, or up to a row less, over the unit square; with HOLES every hundredth is missing.
class Sheet {
public:
    Sheet(Cells cells, Order order, int count) {
        const double perSquare = cells == TRIANGLES ? 2 : cells == MIXED ? 1.5 : 1;
        m_side = static_cast<int>(std::sqrt(count / perSquare));
        for (int i = 0; i <= m_side; ++i)
            for (int j = 0; j <= m_side; ++j) {
                m_x.push_back(static_cast<float>(i) / static_cast<float>(m_side));
                m_y.push_back(static_cast<float>(j) / static_cast<float>(m_side));
            }
        for (int square = 0; square < m_side * m_side; ++square)
            addSquare(square, cells == TRIANGLES || (cells == MIXED && square % 2 == 0));
        fields::Random random(7);
        if (order == SHUFFLED)
            for (std::size_t k = m_cells.size(); k > 1; --k)
                std::swap(m_cells[k - 1], m_cells[static_cast<std::size_t>(random.uniform() * k)]);
        else if (order == HOLES)
            std::erase_if(m_cells, [&](const auto &) { return random.uniform() < 0.01; });
        makeMesh(cells);
    }

    PbMesh2D *mesh() const { return m_mesh.get(); }
    std::size_t numCells() const { return m_cells.size(); }

private:
    void addSquare(int square, bool isDivided) {
        const int a = square / m_side * (m_side + 1) + square % m_side, b = a + m_side + 1;
        if (isDivided) {
            m_cells.push_back({a, b, b + 1});
            m_cells.push_back({a, b + 1, a + 1});
        } else
            m_cells.push_back({a, b, b + 1, a + 1});
    }

    void makeMesh(Cells cells) {
        std::vector<int> nodes, sizes;
        for (const std::vector<int> &cell : m_cells) {
            nodes.insert(nodes.end(), cell.begin(), cell.end());
            sizes.push_back(static_cast<int>(cell.size()));
        }
        const int numNodes = static_cast<int>(m_x.size()), count = static_cast<int>(m_cells.size());
        const float *x = m_x.data(), *y = m_y.data();
        if (cells == TRIANGLES)
            m_mesh = std::make_unique<PbTriangleMesh2D>(numNodes, x, y, count, nodes.data(), 1);
        else if (cells == QUADRANGLES)
            m_mesh = std::make_unique<PbQuadrangleMesh2D>(numNodes, x, y, count, nodes.data(), 1);
        else
            m_mesh = std::make_unique<PbIndexedMesh2D>(numNodes, x, y, count, nodes.data(), sizes.data(), 1);
    }

    int m_side;
    std::vector<float> m_x, m_y;
    std::vector<std::vector<int>> m_cells;
    std::unique_ptr<PbMesh2D> m_mesh;
};

void border(benchmark::State &state, Cells cells, Order order) {
    const Sheet sheet(cells, order, static_cast<int>(state.range(0)));
    auto *kit = new PoMeshFilled;
    const KitScene scene(kit);
    kit->setMesh(sheet.mesh());
    Ppoint_list_list3 limits{0, nullptr};
    for (auto _ : state)
        kit->getMeshLimit(limits);
    state.counters["cell"] = timePer(static_cast<double>(sheet.numCells()));
    state.counters["loops"] = limits.numLists;
}

void sizes(benchmark::internal::Benchmark *b) {
    b->RangeMultiplier(4)->Range(1 << 14, 1 << 20)->Unit(benchmark::kMillisecond);
}

BENCHMARK_CAPTURE(border, triangles, TRIANGLES, ORDERED)->Apply(sizes);
BENCHMARK_CAPTURE(border, triangles_shuffled, TRIANGLES, SHUFFLED)->Apply(sizes);
BENCHMARK_CAPTURE(border, triangles_holes, TRIANGLES, HOLES)->Apply(sizes);
BENCHMARK_CAPTURE(border, quadrangles, QUADRANGLES, ORDERED)->Apply(sizes);
BENCHMARK_CAPTURE(border, quadrangles_shuffled, QUADRANGLES, SHUFFLED)->Apply(sizes);
BENCHMARK_CAPTURE(border, quadrangles_holes, QUADRANGLES, HOLES)->Apply(sizes);
BENCHMARK_CAPTURE(border, mixed, MIXED, ORDERED)->Apply(sizes);
BENCHMARK_CAPTURE(border, mixed_shuffled, MIXED, SHUFFLED)->Apply(sizes);
BENCHMARK_CAPTURE(border, mixed_holes, MIXED, HOLES)->Apply(sizes);

} // namespace

int main(int argc, char **argv) {
    runKitBenchmarks(argc, argv);
}
