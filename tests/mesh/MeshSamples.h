#ifndef ORAVANE_TESTS_MESH_MESHSAMPLES_H
#define ORAVANE_TESTS_MESH_MESHSAMPLES_H

#include "TestScene.h"

#include <oravane/PbCartesianGrid2D.h>
#include <oravane/PbParalCartesianGrid2D.h>
#include <oravane/PbRegularCartesianGrid2D.h>
#include <oravane/PoBase.h>

#include <functional>
#include <limits>
#include <memory>
#include <vector>

namespace test {

constexpr float NOT_A_NUMBER = std::numeric_limits<float>::quiet_NaN();
constexpr float INFINITE = std::numeric_limits<float>::infinity();

/// Result of a function that fills an array of cells or nodes.
template <class Fill>
std::vector<int> listFrom(Fill fill) {
    PbArrayOfInt array;
    array.add(99); // what was there before must go
    fill(array);
    std::vector<int> list;
    for (int i = 0; i < array.getNum(); ++i)
        list.push_back(array[i]);
    return list;
}

/// The arrays of a grid over steps of 0.5 in x and 0.25 in y, from (1, -1): exact in every kind of grid.
struct GridSample {
    GridSample(int nx, int ny) : numX(nx), numY(ny) {
        for (int i = 0; i < nx; ++i)
            columns.push_back(1 + 0.5f * static_cast<float>(i));
        for (int j = 0; j < ny; ++j)
            rows.push_back(-1 + 0.25f * static_cast<float>(j));
        for (const float column : columns)
            for (const float row : rows) {
                x.push_back(column);
                y.push_back(row);
                z.push_back(column * column - row);
                values.push_back(2 * column + 3 * row + 1);
                vectors.emplace_back(column, row, 1.0f);
            }
    }
    int numX, numY;
    std::vector<float> columns, rows, x, y, z, values;
    std::vector<SbVec3f> vectors;
};

struct NamedGrid {
    const char *name;
    std::unique_ptr<PbGrid2D> grid;
};

/// The sample on every kind of grid that can hold it.
inline std::vector<NamedGrid> allKinds(const GridSample &s, bool withZ, int isDataDuplicate) {
    const float *z = withZ ? s.z.data() : nullptr, *x = s.columns.data(), *y = s.rows.data();
    const SbVec2f low(x[0], y[0]), high(s.columns.back(), s.rows.back());
    std::vector<NamedGrid> grids;
    grids.push_back({"Cartesian", std::make_unique<PbCartesianGrid2D>(s.numX, s.numY, s.x.data(), s.y.data(),
                                                                      z, isDataDuplicate)});
    grids.push_back(
        {"Paral", std::make_unique<PbParalCartesianGrid2D>(s.numX, s.numY, x, y, z, isDataDuplicate)});
    grids.push_back({"Regular", std::make_unique<PbRegularCartesianGrid2D>(
                                    s.numX, s.numY, low[0], low[1], high[0], high[1], z, isDataDuplicate)});
    return grids;
}

/// Reads all that a representation would read, at the length that the mesh states.
inline void readWhole(const PbMesh &mesh) {
    if (mesh.isEmpty())
        return;
    float low = 0;
    for (const int set : {0, 1, 3, 5}) {
        mesh.getMinValuesSet(set, low);
        mesh.getMaxVecsSet(set, low);
    }
    for (int n = 0; n < mesh.getNumNodes(); ++n)
        mesh.getNodeCoord(n);
    mesh.getArea();
}

/// Listens to a mesh for its own lifetime. At each notification it reads the mesh as a kit would that
/// rebuilds at once.
class MeshListener {
public:
    explicit MeshListener(PbMesh &mesh) : m_kit(new Kit) {
        m_kit->mesh = &mesh;
        mesh.addConnection(m_kit.get());
    }
    ~MeshListener() {
        if (m_kit->mesh)
            m_kit->mesh->removeConnection(m_kit.get());
    }
    MeshListener(const MeshListener &) = delete;

    /// What was heard since the last call.
    std::vector<int> heard() { return std::exchange(m_kit->changes, {}); }

private:
    struct Kit : PoBase {
        void basicObjectChange(PbBase *object) override {
            changes.push_back(object->getChangeType());
            if (object->getChangeType() == PbBase::CHANGE_DELETED)
                mesh = nullptr;
            else
                readWhole(*mesh);
        }
        std::vector<int> changes;
        PbMesh *mesh = nullptr;
    };
    const Ref<Kit> m_kit;
};

} // namespace test

#endif
