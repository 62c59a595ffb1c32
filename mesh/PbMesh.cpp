#include <oravane/PbMesh.h>

#include "mesh/ValueRange.h"

#include <algorithm>
#include <limits>

using oravane::ValueRange;

PbMesh::PbMesh(int isDataDuplicate) : m_isDataDuplicate(isDataDuplicate) {}

PbMesh::PbMesh(const PbMesh &source)
    : PbBase(source), m_numNodes(source.m_numNodes), m_numCells(source.m_numCells),
      m_boundingBox(source.m_boundingBox), m_isCellBoxValid(source.m_isCellBoxValid),
      m_isDataDuplicate(source.m_isDataDuplicate), m_smallestCellBox(source.m_smallestCellBox),
      m_biggestCellBox(source.m_biggestCellBox), m_smallestVolume(source.m_smallestVolume),
      m_biggestVolume(source.m_biggestVolume), m_smallestCellIndex(source.m_smallestCellIndex),
      m_biggestCellIndex(source.m_biggestCellIndex), m_valuesSets(source.m_valuesSets),
      m_vecsSets(source.m_vecsSets) {}

PbMesh::~PbMesh() {
    // The children are gone: a kit that rebuilds inside of a notification must find nothing to ask them for.
    beginDeletion();
    m_numNodes = 0;
    m_numCells = 0;
    removeAllValuesSet();
    removeAllVecsSet();
}

namespace {

/// Refills `sets` from `source`, with blocks in the mode of the target and one entry per node.
template <class T>
void copySets(std::map<int, PbDataBlock<T>> &sets, const std::map<int, PbDataBlock<T>> &source,
              bool isDuplicating, int numNodes, const T &fill) {
    sets.clear();
    for (const auto &[index, block] : source) {
        PbDataBlock<T> &copied = sets.emplace(index, isDuplicating).first->second;
        copied = block;
        if (copied.isOwned() && copied.getNum() < numNodes)
            copied.makeOwn(numNodes, fill);
    }
}

template <class T>
const T *findSet(const std::map<int, PbDataBlock<T>> &sets, int index) {
    const auto found = sets.find(index);
    return found == sets.end() ? nullptr : found->second.data();
}

} // namespace

PbMesh &PbMesh::operator=(const PbMesh &source) {
    if (this == &source)
        return *this;
    removeAllValuesSet();
    removeAllVecsSet();
    m_numNodes = source.m_numNodes;
    m_numCells = source.m_numCells;
    m_boundingBox = source.m_boundingBox;
    m_isCellBoxValid = source.m_isCellBoxValid;
    m_smallestCellBox = source.m_smallestCellBox;
    m_biggestCellBox = source.m_biggestCellBox;
    m_smallestVolume = source.m_smallestVolume;
    m_biggestVolume = source.m_biggestVolume;
    m_smallestCellIndex = source.m_smallestCellIndex;
    m_biggestCellIndex = source.m_biggestCellIndex;
    copySets(m_valuesSets, source.m_valuesSets, isDataDuplicate(), m_numNodes, 0.0f);
    copySets(m_vecsSets, source.m_vecsSets, isDataDuplicate(), m_numNodes, SbVec3f(0, 0, 0));
    return *this;
}

void PbMesh::setCounts(int numNodes, int numCells) {
    m_numNodes = numNodes;
    m_numCells = numCells;
    m_isCellBoxValid = false;
    for (auto &[index, block] : m_vecsSets)
        if (block.isOwned() && block.getNum() < numNodes)
            block.makeOwn(numNodes, SbVec3f(0, 0, 0));
}

bool PbMesh::dropValuesSets() {
    const auto isOwn = [this](const auto &set) { return isDataDuplicate() || set.second.isOwned(); };
    return std::erase_if(m_valuesSets, isOwn) > 0;
}

void PbMesh::addValuesSet(int index, const float *values) {
    if (!values)
        return;
    m_valuesSets.try_emplace(index, isDataDuplicate()).first->second.set(values, m_numNodes);
    notifyChange(CHANGE_VALUES_SET);
}

PbDataBlock<SbVec3f> &PbMesh::getNewVecsSet(int index, int forceOwned) {
    PbDataBlock<SbVec3f> &block = m_vecsSets.try_emplace(index, isDataDuplicate()).first->second;
    if (isDataDuplicate() || forceOwned)
        block.makeOwn(m_numNodes, SbVec3f(0, 0, 0));
    else
        block.clear();
    return block;
}

void PbMesh::addVecsSet(int index, const SbVec3f *vectors) {
    if (!vectors)
        return;
    m_vecsSets.try_emplace(index, isDataDuplicate()).first->second.set(vectors, m_numNodes);
    notifyChange(CHANGE_VECS_SET);
}

const float *PbMesh::getValuesSet(int index) const {
    return findSet(m_valuesSets, index);
}

const SbVec3f *PbMesh::getVecsSet(int index) const {
    return findSet(m_vecsSets, index);
}

int PbMesh::removeValuesSet(int index) {
    if (m_valuesSets.erase(index) == 0)
        return 0;
    notifyChange(CHANGE_VALUES_SET);
    return 1;
}

int PbMesh::removeVecsSet(int index) {
    if (m_vecsSets.erase(index) == 0)
        return 0;
    notifyChange(CHANGE_VECS_SET);
    return 1;
}

void PbMesh::removeAllValuesSet() {
    m_valuesSets.clear();
    notifyChange(CHANGE_VALUES_SET);
}

void PbMesh::removeAllVecsSet() {
    m_vecsSets.clear();
    notifyChange(CHANGE_VECS_SET);
}

int PbMesh::getNumValuesSet() const {
    return static_cast<int>(m_valuesSets.size());
}

int PbMesh::getNumVecsSet() const {
    return static_cast<int>(m_vecsSets.size());
}

namespace {

ValueRange rangeOf(const float *values, int num) {
    ValueRange range;
    if (values)
        range.add(values, num);
    return range;
}

ValueRange rangeOf(const SbVec3f *vectors, int num) {
    ValueRange range;
    for (int i = 0; vectors && i < num; ++i)
        range.add(vectors[i].length());
    return range;
}

int store(const ValueRange &range, float ValueRange::*bound, float &result) {
    if (range.isValid())
        result = range.*bound;
    return range.isValid();
}

} // namespace

int PbMesh::getMinValuesSet(int index, float &min) const {
    return store(rangeOf(getValuesSet(index), m_numNodes), &ValueRange::min, min);
}

int PbMesh::getMinVecsSet(int index, float &min) const {
    return store(rangeOf(getVecsSet(index), m_numNodes), &ValueRange::min, min);
}

int PbMesh::getMaxValuesSet(int index, float &max) const {
    return store(rangeOf(getValuesSet(index), m_numNodes), &ValueRange::max, max);
}

int PbMesh::getMaxVecsSet(int index, float &max) const {
    return store(rangeOf(getVecsSet(index), m_numNodes), &ValueRange::max, max);
}

void PbMesh::getNodesOwnerCellsInd(const PbArrayOfInt &nodes, PbArrayOfInt &cells) const {
    cells.empty();
    if (nodes.getNum() < 1)
        return;
    getNodeOwnerCellsInd(nodes[0], cells);
    PbArrayOfInt owners;
    for (int i = 1; i < nodes.getNum() && cells.getNum() > 0; ++i) {
        getNodeOwnerCellsInd(nodes[i], owners);
        PbArrayOfInt common;
        for (int k = 0; k < cells.getNum(); ++k)
            if (owners.find(cells.get(k)) >= 0)
                common.add(cells.get(k));
        cells = common;
    }
}

void PbMesh::addOwners(const PbArrayOfInt &owners, int cell, PbArrayOfInt &cells) const {
    for (int i = 0; i < owners.getNum(); ++i)
        if (owners[i] != cell && cells.find(owners[i]) < 0)
            cells.add(owners[i]);
}

void PbMesh::getAdjacentCellsIndByNode(int cell, PbArrayOfInt &cells) const {
    cells.empty();
    PbArrayOfInt nodes;
    PbArrayOfInt owners;
    if (const PbCell *object = getCell(cell))
        object->getNodesIndex(nodes);
    for (int i = 0; i < nodes.getNum(); ++i) {
        getNodeOwnerCellsInd(nodes.get(i), owners);
        addOwners(owners, cell, cells);
    }
}

void PbMesh::getAdjacentCellsIndByFacet(int cell, PbArrayOfInt &cells) const {
    cells.empty();
    const PbCell *object = getCell(cell);
    const int numFacets = object ? object->getNumFacets() : 0;
    PbArrayOfInt nodes;
    PbArrayOfInt owners;
    for (int facet = 0; facet < numFacets; ++facet) {
        getCell(cell)->getNodesIndexOfFacet(facet,
                                            nodes); // owners may have been found through the cell object
        getNodesOwnerCellsInd(nodes, owners);
        addOwners(owners, cell, cells);
    }
}

void PbMesh::resetCellBoxes() {
    m_smallestCellBox.makeEmpty();
    m_biggestCellBox.makeEmpty();
    m_smallestVolume = std::numeric_limits<float>::max();
    m_biggestVolume = -1;
    m_smallestCellIndex = -1;
    m_biggestCellIndex = -1;
    m_isCellBoxValid = true;
}

void PbMesh::compareCellBox(int cell, const SbBox3f &box) {
    const float volume = box.getVolume();
    if (volume < m_smallestVolume) {
        m_smallestVolume = volume;
        m_smallestCellBox = box;
        m_smallestCellIndex = cell;
    }
    if (volume > m_biggestVolume) {
        m_biggestVolume = volume;
        m_biggestCellBox = box;
        m_biggestCellIndex = cell;
    }
}

void PbMesh::updateCellBoundingBox() {
    resetCellBoxes();
    for (int i = 0; i < m_numCells; ++i)
        if (const PbCell *cell = getCell(i))
            compareCellBox(i, cell->getBoundingBox());
}

SbBox3f PbMesh::getSmallestCellBox(int &cellIndex) {
    if (!m_isCellBoxValid)
        updateCellBoundingBox();
    cellIndex = m_smallestCellIndex;
    return m_smallestCellBox;
}

SbBox3f PbMesh::getBiggestCellBox(int &cellIndex) {
    if (!m_isCellBoxValid)
        updateCellBoundingBox();
    cellIndex = m_biggestCellIndex;
    return m_biggestCellBox;
}

const PbCell *PbMesh::locateIn(int cell, const SbVec3f &point, float tolerance, SbVec3f &pcoord) const {
    const PbCell *object = getCell(cell);
    return object && object->locatePoint(point, tolerance, pcoord) ? object : nullptr;
}

const PbCell *PbMesh::findInNeighbours(const SbVec3f &point, float tolerance, SbVec3f &pcoord, int cell) {
    getAdjacentCellsIndByFacet(cell, m_testedCells);
    for (int i = 0; i < m_testedCells.getNum(); ++i)
        if (const PbCell *found = locateIn(m_testedCells.get(i), point, tolerance, pcoord))
            return found;
    PbArrayOfInt neighbours;
    getAdjacentCellsIndByNode(cell, neighbours);
    for (int i = 0; i < neighbours.getNum(); ++i) {
        if (m_testedCells.find(neighbours.get(i)) >= 0)
            continue;
        if (const PbCell *found = locateIn(neighbours.get(i), point, tolerance, pcoord))
            return found;
        m_testedCells.add(neighbours.get(i));
    }
    m_testedCells.add(cell);
    return nullptr;
}

const PbCell *PbMesh::findContainingCell(const SbVec3f &point, float tolerance, SbVec3f &pcoord) {
    return findContainingCell(point, tolerance, pcoord, nullptr);
}

const PbCell *PbMesh::findContainingCell(const SbVec3f &point, float tolerance, SbVec3f &pcoord,
                                         const PbCell *adjacentCell) {
    m_testedCells.empty();
    if (adjacentCell) // its index is taken at once: it may be the object that the search refills
        if (const PbCell *found = findInNeighbours(point, tolerance, pcoord, adjacentCell->getIndex()))
            return found;
    return findContainingCellProtected(point, tolerance, pcoord, m_testedCells);
}

float PbMesh::getLongestEdgeLength() {
    return 0;
}

int PbMesh::isEmpty() const {
    return m_numNodes < 1;
}

void PbMesh::print(FILE *file) const {
    if (!file)
        return;
    std::fprintf(file, "%d nodes, %d cells, data %s\n", m_numNodes, m_numCells,
                 isDataDuplicate() ? "duplicated" : "shared");
    const auto printSet = [&](const char *kind, int index, const ValueRange &range) {
        std::fprintf(file, "  %s set %d", kind, index);
        if (range.isValid())
            std::fprintf(file, ": %g to %g", range.min, range.max);
        std::fprintf(file, "\n");
    };
    for (const auto &[index, block] : m_valuesSets)
        printSet("value", index, rangeOf(block.data(), m_numNodes));
    for (const auto &[index, block] : m_vecsSets)
        printSet("vector", index, rangeOf(block.data(), m_numNodes));
}
