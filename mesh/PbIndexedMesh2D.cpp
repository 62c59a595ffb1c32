#include <oravane/PbIndexedMesh2D.h>

#include "mesh/GridNodes.h"
#include "mesh/ValueRange.h"

#include <algorithm>
#include <limits>
#include <map>
#include <utility>

using oravane::ValueRange;

PbIndexedMesh2D::PbIndexedMesh2D(int isDataDuplicate, int fixedCellSize)
    : PbMesh2D(isDataDuplicate), m_fixedCellSize(fixedCellSize), m_x(isDataDuplicate != 0),
      m_y(isDataDuplicate != 0), m_elemIndex(isDataDuplicate != 0), m_elemType(isDataDuplicate != 0),
      m_quadrangleCell(this), m_triangleCell(this) {}

PbIndexedMesh2D::PbIndexedMesh2D(int isDataDuplicate) : PbIndexedMesh2D(isDataDuplicate, 0) {}

PbIndexedMesh2D::PbIndexedMesh2D(int numNodes, const float *x, const float *y, int numCells,
                                 const int *cellIndex, const int *cellSizes, int isDataDuplicate)
    : PbIndexedMesh2D(numNodes, x, y, nullptr, numCells, cellIndex, cellSizes, isDataDuplicate) {}

PbIndexedMesh2D::PbIndexedMesh2D(int numNodes, const float *x, const float *y, const float *z, int numCells,
                                 const int *cellIndex, const int *cellSizes, int isDataDuplicate)
    : PbIndexedMesh2D(isDataDuplicate) {
    setXYGeometry(numNodes, x, y, z, numCells, cellIndex, cellSizes);
}

PbIndexedMesh2D::PbIndexedMesh2D(const PbIndexedMesh2D &source, int fixedCellSize)
    : PbMesh2D(source), m_fixedCellSize(fixedCellSize), m_x(source.m_x), m_y(source.m_y),
      m_elemIndex(source.m_elemIndex), m_elemType(source.m_elemType), m_quadrangleCell(this),
      m_triangleCell(this) {
    copyGeometry(source);
}

PbIndexedMesh2D::PbIndexedMesh2D(const PbIndexedMesh2D &source) : PbIndexedMesh2D(source, 0) {}

PbIndexedMesh2D &PbIndexedMesh2D::operator=(const PbIndexedMesh2D &source) {
    if (this == &source)
        return *this;
    for (int cell = 0; m_fixedCellSize && cell < source.getNumCells(); ++cell)
        if (static_cast<int>(source.getCellNodes(cell).size()) != m_fixedCellSize)
            return *this;
    PbMesh2D::operator=(source);
    m_x = source.m_x;
    m_y = source.m_y;
    m_elemIndex = source.m_elemIndex;
    m_elemType = source.m_elemType;
    copyGeometry(source);
    PbBase::operator=(source);
    return *this;
}

void PbIndexedMesh2D::copyGeometry(const PbIndexedMesh2D &source) {
    m_elemOrientation = source.m_elemOrientation;
    m_orientFlags = source.m_orientFlags;
    m_areOwnersValid = false;
    m_cellStart.clear();
    if (m_fixedCellSize)
        return;
    m_cellStart = source.m_cellStart;
    if (!source.m_fixedCellSize)
        return;
    std::fill_n(m_elemType.makeOwn(getNumCells(), 0), getNumCells(), source.m_fixedCellSize);
    for (int cell = 0; cell <= getNumCells(); ++cell)
        m_cellStart.push_back(cell * source.m_fixedCellSize);
}

bool PbIndexedMesh2D::acceptCellSizes(int numCells, const int *cellSizes, long long &total) const {
    total = 0;
    if (!cellSizes) {
        total = static_cast<long long>(numCells) * m_fixedCellSize;
        return numCells == 0 || m_fixedCellSize > 0;
    }
    for (int cell = 0; cell < numCells; ++cell) {
        if (cellSizes[cell] < 0 || (m_fixedCellSize && cellSizes[cell] != m_fixedCellSize))
            return false;
        total += cellSizes[cell];
    }
    return true;
}

void PbIndexedMesh2D::setXYGeometry(int numNodes, const float *x, const float *y, const float *z,
                                    int numCells, const int *cellIndex, const int *cellSizes) {
    long long total = 0;
    if (!acceptNodes(numNodes, x, y) || numCells < 0 || !acceptCellSizes(numCells, cellSizes, total) ||
        total > std::numeric_limits<int>::max() || (total > 0 && !cellIndex))
        return;
    const bool isNewCount = numNodes != getNumNodes();
    storeNodes(numNodes, x, y, z);
    storeCells(numCells, cellIndex, cellSizes);
    finishGeometry(isNewCount);
}

void PbIndexedMesh2D::setNodesAndOwnCells(int numNodes, const float *x, const float *y,
                                          std::span<const int> cellIndex) {
    const bool isNewCount = numNodes != getNumNodes();
    storeNodes(numNodes, x, y, nullptr);
    std::copy(cellIndex.begin(), cellIndex.end(), m_elemIndex.makeOwn(static_cast<int>(cellIndex.size()), 0));
    m_elemType.clear();
    setCounts(numNodes, static_cast<int>(cellIndex.size()) / m_fixedCellSize);
    finishGeometry(isNewCount);
}

void PbIndexedMesh2D::storeNodes(int numNodes, const float *x, const float *y, const float *z) {
    PbDataBlock<float>::setTogether({{&m_x, x, numNodes}, {&m_y, y, numNodes}, {&m_zCoord, z, numNodes}});
    m_areOwnersValid = false;
}

// Places come from the sizes once: a program that changes its array of sizes later cannot lead beyond the end
// of the index array.
void PbIndexedMesh2D::storeCells(int numCells, const int *cellIndex, const int *cellSizes) {
    m_cellStart.clear();
    int end = numCells * m_fixedCellSize;
    if (!m_fixedCellSize) {
        m_cellStart.reserve(static_cast<std::size_t>(numCells) + 1);
        m_cellStart.push_back(0);
        for (int cell = 0; cell < numCells; ++cell)
            m_cellStart.push_back(m_cellStart.back() + cellSizes[cell]);
        end = m_cellStart.back();
    }
    m_elemIndex.set(cellIndex, end);
    m_elemType.set(cellSizes, numCells);
    setCounts(m_x.getNum(), numCells);
}

void PbIndexedMesh2D::finishGeometry(bool isNewCount) {
    updateBoundingBox();
    setElemOrientation(getElemOrientation());
    if (isNewCount && dropValuesSets() && !notifyChange(CHANGE_VALUES_SET))
        return;
    notifyChange(CHANGE_MESH_GEOMETRY);
}

void PbIndexedMesh2D::setGeometry(int numNodes, const float *x, const float *y, int numCells,
                                  const int *cellIndex, const int *cellSizes) {
    setGeometry(numNodes, x, y, nullptr, numCells, cellIndex, cellSizes);
}

void PbIndexedMesh2D::setGeometry(int numNodes, const float *x, const float *y, const float *z, int numCells,
                                  const int *cellIndex, const int *cellSizes) {
    if (cellSizes || numCells == 0)
        setXYGeometry(numNodes, x, y, z, numCells, cellIndex, cellSizes);
}

void PbIndexedMesh2D::setVertices(int numNodes, const float *x, const float *y) {
    if (!acceptNodes(numNodes, x, y))
        return;
    const bool isNewCount = numNodes != getNumNodes();
    storeNodes(numNodes, x, y, isNewCount ? nullptr : getZcoord());
    setCounts(numNodes, getNumCells());
    updateBoundingBox();
    setElemOrientation(getElemOrientation());
    if (isNewCount)
        dropValuesSets();
}

void PbIndexedMesh2D::getGeometry(int &numNodes, const float *&x, const float *&y, int &numCells,
                                  const int *&cellIndex, const int *&cellSizes) const {
    getNodes(numNodes, x, y);
    numCells = getNumCells();
    cellIndex = m_elemIndex.data();
    if (m_fixedCellSize && m_elemType.getNum() != numCells)
        std::fill_n(m_elemType.makeOwn(numCells, 0), numCells, m_fixedCellSize);
    cellSizes = m_elemType.data();
}

void PbIndexedMesh2D::getGeometry(int &numNodes, const float *&x, const float *&y, const float *&z,
                                  int &numCells, const int *&cellIndex, const int *&cellSizes) const {
    getGeometry(numNodes, x, y, numCells, cellIndex, cellSizes);
    z = getZcoord();
}

void PbIndexedMesh2D::getNodes(int &numNodes, const float *&x, const float *&y) const {
    numNodes = getNumNodes();
    x = m_x.data();
    y = m_y.data();
}

std::span<const int> PbIndexedMesh2D::getCellNodes(int index) const {
    if (index < 0 || index >= getNumCells())
        return {};
    const int start = m_fixedCellSize ? index * m_fixedCellSize : m_cellStart[index];
    const int size = m_fixedCellSize ? m_fixedCellSize : m_cellStart[index + 1] - start;
    return size > 0 ? std::span(m_elemIndex.data() + start, static_cast<std::size_t>(size))
                    : std::span<const int>();
}

bool PbIndexedMesh2D::hasNodes(std::span<const int> nodes) const {
    return std::all_of(nodes.begin(), nodes.end(),
                       [this](int node) { return node >= 0 && node < getNumNodes(); });
}

void PbIndexedMesh2D::setElemOrientation(ElemOrientation orientation) {
    m_elemOrientation = orientation;
    m_orientFlags.clear();
    if (orientation == ORIENT_AS_GIVEN)
        return;
    m_orientFlags.reserve(static_cast<std::size_t>(getNumCells()));
    for (int cell = 0; cell < getNumCells(); ++cell) {
        const std::span<const int> nodes = getCellNodes(cell);
        double turn = 0;
        if (nodes.size() > 2 && hasNodes(nodes.first(3))) {
            const double x1 = m_x[nodes[1]], y1 = m_y[nodes[1]];
            turn = (x1 - m_x[nodes[0]]) * (m_y[nodes[2]] - y1) - (y1 - m_y[nodes[0]]) * (m_x[nodes[2]] - x1);
        }
        m_orientFlags.push_back(turn > 0);
    }
}

const int *PbIndexedMesh2D::getOrientFlags() const {
    return m_orientFlags.empty() ? nullptr : m_orientFlags.data();
}

const PbCell *PbIndexedMesh2D::fillCell(int index, std::span<const int> nodes) const {
    if (!hasNodes(nodes))
        return nullptr;
    const float *x = m_x.data(), *y = m_y.data(), *z = getZcoord();
    if (nodes.size() == 3)
        return m_triangleCell.set(index, x, y, z, nodes[0], nodes[1], nodes[2]) ? &m_triangleCell : nullptr;
    if (nodes.size() != 4)
        return nullptr;
    m_quadrangleCell.set(index, x, y, z, nodes[0], nodes[1], nodes[2], nodes[3]);
    return &m_quadrangleCell;
}

const PbCell *PbIndexedMesh2D::getCell(int index) const {
    const std::span<const int> nodes = getCellNodes(index);
    if (nodes.empty() || index == 0)
        return fillCell(index, nodes);
    return fillCell(index, {nodes.data() - getCellNodes(0).size(), nodes.size()});
}

SbVec3f PbIndexedMesh2D::getNodeCoord(int index) const {
    if (index < 0 || index >= getNumNodes())
        return SbVec3f(0, 0, 0);
    return SbVec3f(m_x[index], m_y[index], getNodeZ(index));
}

void PbIndexedMesh2D::getNodesCoord(const float *z, SoMFVec3f &coords) const {
    oravane::fillNodes(1, getNumNodes(), z, coords,
                       [this](int, int node) { return SbVec2f(m_x[node], m_y[node]); });
}

void PbIndexedMesh2D::updateOwnerCellsList() {
    findOwners();
}

// Counts the owners of each node, then puts every cell at the next free place of each of its nodes.
void PbIndexedMesh2D::findOwners() const {
    std::vector<int> lastOwner;
    const auto forEachNode = [&](auto visit) {
        lastOwner.assign(static_cast<std::size_t>(getNumNodes()), -1);
        for (int cell = 0; cell < getNumCells(); ++cell) {
            const std::span<const int> nodes = getCellNodes(cell);
            if (!hasNodes(nodes))
                continue;
            for (const int node : nodes)
                if (std::exchange(lastOwner[node], cell) != cell)
                    visit(cell, node);
        }
    };
    m_ownerStart.assign(static_cast<std::size_t>(getNumNodes()) + 2, 0);
    forEachNode([this](int, int node) { ++m_ownerStart[node + 2]; });
    for (std::size_t node = 2; node < m_ownerStart.size(); ++node)
        m_ownerStart[node] += m_ownerStart[node - 1];
    m_owners.resize(static_cast<std::size_t>(m_ownerStart.back()));
    forEachNode([this](int cell, int node) { m_owners[m_ownerStart[node + 1]++] = cell; });
    m_areOwnersValid = true;
}

void PbIndexedMesh2D::getNodeOwnerCellsInd(int node, PbArrayOfInt &cells) const {
    cells.empty();
    if (node < 0 || node >= getNumNodes())
        return;
    if (!m_areOwnersValid)
        findOwners();
    const int start = m_ownerStart[node];
    if (m_ownerStart[node + 1] > start)
        cells.add(m_ownerStart[node + 1] - start, m_owners.data() + start);
}

int PbIndexedMesh2D::isEmpty() const {
    return getNumNodes() < 1 || getNumCells() < 1;
}

void PbIndexedMesh2D::print(FILE *file) const {
    if (!file)
        return;
    PbMesh2D::print(file);
    std::map<std::size_t, int> countBySize;
    for (int cell = 0; cell < getNumCells(); ++cell)
        ++countBySize[getCellNodes(cell).size()];
    for (const auto &[size, count] : countBySize)
        std::fprintf(file, "  %d cells of %zu nodes\n", count, size);
}

void PbIndexedMesh2D::updateBoundingBox() {
    ValueRange x, y, z;
    x.add(m_x.data(), m_x.getNum());
    y.add(m_y.data(), m_y.getNum());
    if (getZcoord())
        z.add(getZcoord(), getNumNodes());
    else
        z.add(0);
    m_boundingBox = oravane::boxOf(x, y, z);
}

void PbIndexedMesh2D::updateCellBoundingBox() {
    resetCellBoxes();
    for (int cell = 0; cell < getNumCells(); ++cell) {
        const std::span<const int> nodes = getCellNodes(cell);
        if (nodes.empty() || !hasNodes(nodes))
            continue;
        SbBox3f box;
        for (const int node : nodes)
            box.extendBy(getNodeCoord(node));
        compareCellBox(cell, box);
    }
}

const PbCell *PbIndexedMesh2D::findContainingCellProtected(const SbVec3f &point, float tolerance,
                                                           SbVec3f &pcoord, PbArrayOfInt &) {
    for (int index = 0; index < getNumCells(); ++index) {
        const PbCell *cell = getCell(index);
        if (cell && cell->locatePoint(point, tolerance, pcoord))
            return cell;
    }
    return nullptr;
}
