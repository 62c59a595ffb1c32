#include <oravane/PiContouring.h>

#include "geometry/ContourWork.h"

#include <oravane/PbParalCartesianGrid2D.h>
#include <oravane/PbPolarGrid2D.h>
#include <oravane/PbRegularCartesianGrid2D.h>

#include <Inventor/nodes/SoCoordinate3.h>

namespace oravane {

void ContourWork::startGrid(int numX, int numY, const float *z3) {
    isGrid = true;
    numI = numX;
    numJ = numY;
    nodeZ = z3;
}

void ContourWork::setAxes(const float *x, const float *y) {
    axisI.assign(x, x + numI);
    axisJ.assign(y, y + numJ);
}

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

void PiContouring::setMesh(const PbCartesianGrid2D *mesh, const float *z) {
    initGeometry();
    if (const auto *axes = dynamic_cast<const PbParalCartesianGrid2D *>(mesh)) {
        setMesh(axes, z);
        return;
    }
    if (!mesh)
        return;
    int numX, numY;
    const float *x, *y;
    mesh->getGeometry(numX, numY, x, y);
    m_work->startGrid(numX, numY, z);
    m_work->positions = oravane::CartesianPositions{x, y, static_cast<std::size_t>(numY)};
}

void PiContouring::setMesh(const PbParalCartesianGrid2D *mesh, const float *z) {
    initGeometry();
    if (!mesh)
        return;
    int numX, numY;
    const float *x, *y;
    mesh->getGeometry(numX, numY, x, y);
    m_work->startGrid(numX, numY, z);
    m_work->setAxes(x, y);
    m_work->positions = oravane::SeparablePositions{m_work->axisI.data(), m_work->axisJ.data()};
}

namespace {

/// Positions from `min` on by repeated addition, in double precision: in floats the last of thousands would
/// miss the bound by a good part of a cell.
void stepFrom(float min, float max, int count, std::vector<float> &axis) {
    const double step = count > 1 ? (static_cast<double>(max) - min) / (count - 1) : 0;
    axis.clear();
    double position = min;
    for (int k = 0; k < count; ++k, position += step)
        axis.push_back(static_cast<float>(position));
}

} // namespace

void PiContouring::setMesh(const PbRegularCartesianGrid2D *mesh, const float *z) {
    initGeometry();
    if (!mesh)
        return;
    int numX, numY;
    float xmin, ymin, xmax, ymax;
    mesh->getGeometry(numX, numY, xmin, ymin, xmax, ymax);
    m_work->startGrid(numX, numY, z);
    stepFrom(xmin, xmax, numX, m_work->axisI);
    stepFrom(ymin, ymax, numY, m_work->axisJ);
    m_work->positions = oravane::SeparablePositions{m_work->axisI.data(), m_work->axisJ.data()};
}

void PiContouring::setMesh(const PbPolarGrid2D *mesh, const float *z) {
    initGeometry();
    if (!mesh)
        return;
    int numX, numY;
    const float *radius, *angle;
    mesh->getGeometry(numX, numY, radius, angle);
    m_work->startGrid(numX, numY, z);
    m_work->setAxes(radius, angle);
    m_work->positions = oravane::PolarPositions(m_work->axisI.data(), m_work->axisJ);
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
