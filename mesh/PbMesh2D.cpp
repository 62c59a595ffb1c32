#include <oravane/PbMesh2D.h>

#include "mesh/GridNodes.h"

PbMesh2D::PbMesh2D(int isDataDuplicate) : PbMesh(isDataDuplicate), m_zCoord(isDataDuplicate != 0) {}

SbBox2f PbMesh2D::getBoundingBox() const {
    if (m_boundingBox.isEmpty())
        return SbBox2f();
    const SbVec3f &min = m_boundingBox.getMin();
    const SbVec3f &max = m_boundingBox.getMax();
    return SbBox2f(min[0], min[1], max[0], max[1]);
}

void PbMesh2D::getNodesCoord(const float *z, SoMFVec3f &coords) const {
    oravane::fillNodes(1, getNumNodes(), z, coords, [this](int, int node) { return getNodeCoord(node); });
}

void PbMesh2D::meshLines(PoMeshLines *) const {}
void PbMesh2D::meshFilled(PoMeshFilled *) const {}
void PbMesh2D::meshSides(PoMeshSides *) const {}
void PbMesh2D::meshContouring(PiContouring *, const float *) const {}
void PbMesh2D::getLimits(PoMesh2D *, Ppoint_list_list3 &) const {}
void PbMesh2D::mesh2DVec(PoMesh2DVec *) const {}

float PbMesh2D::getArea() const {
    double area = 0;
    for (int i = 0; i < getNumCells(); ++i)
        if (const PbCell *cell = getCell(i))
            area += cell->getArea();
    return static_cast<float>(area);
}

void PbMesh2D::addVecsSet(int index, const SbVec2f *vectors) {
    if (!vectors)
        return;
    SbVec3f *entries = getNewVecsSet(index, 1).makeOwn(getNumNodes(), SbVec3f(0, 0, 0));
    for (int i = 0; i < getNumNodes(); ++i)
        entries[i].setValue(vectors[i][0], vectors[i][1], 0);
    notifyChange(CHANGE_VECS_SET);
}

void PbMesh2D::setZCoord(int num, const float *z) {
    m_zCoord.set(z, num);
}

const PbCell *PbMesh2D::findContainingCellProtected(const SbVec3f &, float, SbVec3f &, PbArrayOfInt &) {
    return nullptr;
}
