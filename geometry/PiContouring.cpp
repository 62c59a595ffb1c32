#include <oravane/PiContouring.h>

#include "geometry/ContourWork.h"
#include "mesh/OrientedCells.h"

#include <oravane/PbQuadrangleMesh2D.h>
#include <oravane/PbTriangleMesh2D.h>

#include <Inventor/nodes/SoCoordinate3.h>

#include <type_traits>

namespace oravane {

void ContourWork::spellOutGrid() {
    inside.clear();
    nodes.clear();
    for (int i = 0; i < numI; ++i)
        for (int j = 0; j < numJ; ++j) {
            const auto [x, y] = std::visit([&](const auto &p) { return p.node(i, j); }, positions);
            const auto node = static_cast<std::int32_t>(nodes.size());
            nodes.push_back({x, y, nodeZ ? nodeZ[node] : 0});
            if (i + 1 < numI && j + 1 < numJ)
                inside.push_back({{node, node + numJ, node + numJ + 1, node + 1}, 4});
        }
}

} // namespace oravane

using oravane::ContourWork;

PiContouring::PiContouring() : m_work(std::make_unique<ContourWork>()) {}

PiContouring::~PiContouring() = default;

void PiContouring::initGeometry() {
    m_work->isGrid = false;
    m_work->cells.clear();
    m_work->nodes.clear();
}

void PiContouring::addElems(int n, const int *nodes) {
    if (nodes && n > 2)
        oravane::addPolygon({nodes, static_cast<std::size_t>(n)}, m_work->cells);
}

void PiContouring::setPoints(int n, const float *x, const float *y, const float *z) {
    m_work->nodes.clear();
    if (!x || !y)
        return;
    for (int k = 0; k < n; ++k)
        m_work->nodes.push_back({x[k], y[k], z ? z[k] : 0});
}

void PiContouring::setPoints(int n, const SoCoordinate3 *coordinates) {
    m_work->nodes.clear();
    if (!coordinates)
        return;
    n = std::min(n, coordinates->point.getNum());
    const SbVec3f *points = coordinates->point.getValues(0);
    for (int k = 0; k < n; ++k)
        m_work->nodes.push_back({points[k][0], points[k][1], points[k][2]});
}

void PiContouring::setMesh(const PbMesh2D *mesh, const float *z) {
    initGeometry();
    if (mesh)
        mesh->meshContouring(this, z);
}

template <class Grid>
void PiContouring::setGrid(const Grid *grid, const float *z) {
    initGeometry();
    if (!grid)
        return;
    m_work->isGrid = true;
    m_work->nodeZ = z;
    grid->getDim(m_work->numI, m_work->numJ);
    if constexpr (std::is_same_v<Grid, PbRegularCartesianGrid2D>)
        m_work->positions = m_work->steps.emplace(*grid).separable();
    else
        m_work->positions = oravane::positionsOf(*grid);
}

void PiContouring::setMesh(const PbCartesianGrid2D *mesh, const float *z) {
    // A grid of two axes is a Cartesian one by descent, but does not have one x and one y for each node.
    if (const auto *axes = dynamic_cast<const PbParalCartesianGrid2D *>(mesh))
        setGrid(axes, z);
    else
        setGrid(mesh, z);
}

void PiContouring::setMesh(const PbParalCartesianGrid2D *mesh, const float *z) {
    setGrid(mesh, z);
}

void PiContouring::setMesh(const PbRegularCartesianGrid2D *mesh, const float *z) {
    setGrid(mesh, z);
}

void PiContouring::setMesh(const PbPolarGrid2D *mesh, const float *z) {
    setGrid(mesh, z);
}

void PiContouring::setCells(const oravane::OrientedCells &cells, const float *z) {
    initGeometry();
    cells.forEach(
        [this](int, std::span<const int> nodes) { addElems(static_cast<int>(nodes.size()), nodes.data()); });
    int numNodes = 0;
    const float *x = nullptr, *y = nullptr;
    cells.mesh().getNodes(numNodes, x, y);
    setPoints(numNodes, x, y, z);
}

void PiContouring::setMesh(const PbIndexedMesh2D *mesh, const float *z) {
    if (mesh)
        setCells(oravane::OrientedCells(*mesh), z);
    else
        initGeometry();
}

void PiContouring::setMesh(const PbTriangleMesh2D *mesh, const float *z) {
    if (mesh)
        setCells(oravane::OrientedCells(*mesh), z);
    else
        initGeometry();
}

void PiContouring::setMesh(const PbQuadrangleMesh2D *mesh, const float *z) {
    if (mesh)
        setCells(oravane::OrientedCells(*mesh), z);
    else
        initGeometry();
}

bool PiContouring::computeContouringPoints(const float *values, const float *z) {
    const std::size_t numNodes = m_work->numNodes();
    m_work->values = values;
    m_work->z = z;
    if (!values || numNodes == 0 || numNodes > oravane::MAX_ISO_NUMBERS)
        return false;
    adjustIsovalList(static_cast<int>(numNodes), values, 0, nullptr, 0, nullptr);
    m_work->levels.assign({m_isovalues.data(), static_cast<std::size_t>(m_numIsovalues)});
    return true;
}
