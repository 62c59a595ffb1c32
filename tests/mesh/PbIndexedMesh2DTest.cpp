#include "MeshSamples.h"

#include <oravane/PbQuadrangleMesh2D.h>
#include <oravane/PbTriangleMesh2D.h>

#include <gtest/gtest.h>

#include <climits>

using test::listFrom;
using Ints = std::vector<int>;

namespace {

/// Two squares side by side, the right one as two triangles, and a lone node 6.
struct Sample {
    const float x[7] = {0, 1, 1, 0, 2, 2, 9}, y[7] = {0, 0, 1, 1, 0, 1, 9};
    const float z[7] = {0, 1, 1, 0, 2, 2, 9};
    const int nodes[10] = {0, 1, 2, 3, 1, 4, 5, 1, 5, 2};
    const int sizes[3] = {4, 3, 3};
    PbIndexedMesh2D mesh{7, x, y, 3, nodes, sizes, 1};
};

Ints cellNodes(const PbCell *cell) {
    return cell ? listFrom([&](PbArrayOfInt &list) { cell->getNodesIndex(list); }) : Ints();
}

Ints ownersOf(const PbMesh &mesh, int node) {
    return listFrom([&](PbArrayOfInt &list) { mesh.getNodeOwnerCellsInd(node, list); });
}

TEST(PbIndexedMesh2D, CellObjectsAreShiftedByTheFirstCellInMixedMeshesOnly) {
    const Sample s;
    EXPECT_EQ(cellNodes(s.mesh.getCell(0)), (Ints{0, 1, 2, 3}));
    EXPECT_EQ(cellNodes(s.mesh.getCell(1)), (Ints{0, 1, 2}));
    EXPECT_EQ(cellNodes(s.mesh.getCell(2)), (Ints{3, 1, 4}));
    const int sizes[] = {3, 3};
    const PbIndexedMesh2D mixed(7, s.x, s.y, 2, s.nodes + 4, sizes, 1);
    const PbTriangleMesh2D triangles(7, s.x, s.y, 2, s.nodes + 4, 1);
    for (const PbIndexedMesh2D *mesh : {&mixed, static_cast<const PbIndexedMesh2D *>(&triangles)}) {
        EXPECT_EQ(cellNodes(mesh->getCell(0)), (Ints{1, 4, 5}));
        EXPECT_EQ(cellNodes(mesh->getCell(1)), mesh == &mixed ? (Ints{1, 4, 5}) : (Ints{1, 5, 2}));
        EXPECT_EQ(mesh->getCell(2), nullptr);
        EXPECT_EQ(mesh->getCell(-1), nullptr);
    }
    const PbTriangleMesh2D raised(7, s.x, s.y, s.z, 2, s.nodes + 4, 1);
    EXPECT_EQ(raised.getCell(0), nullptr) << "a triangle in space has no object";
}

TEST(PbIndexedMesh2D, OwnersOrientationAndBoxesFollowTheTrueCells) {
    Sample s;
    EXPECT_EQ(ownersOf(s.mesh, 1), (Ints{0, 1, 2}));
    EXPECT_EQ(ownersOf(s.mesh, 5), (Ints{1, 2}));
    for (const int node : {6, -1, 7})
        EXPECT_EQ(ownersOf(s.mesh, node), Ints()) << node;
    PbArrayOfInt both;
    both.add(5);
    both.add(2);
    EXPECT_EQ(listFrom([&](PbArrayOfInt &list) { s.mesh.getNodesOwnerCellsInd(both, list); }), (Ints{2}));
    int cell = 0;
    EXPECT_EQ(s.mesh.getBiggestCellBox(cell).getSize()[0], 1);
    EXPECT_EQ(s.mesh.PbMesh::getBoundingBox().getMax(), SbVec3f(9, 9, 0));

    EXPECT_EQ(s.mesh.getOrientFlags(), nullptr);
    const int clockwise[] = {0, 3, 2, 1, 1, 4, 5};
    const int sizes[] = {4, 3};
    s.mesh.setElemOrientation(PbIndexedMesh2D::ORIENT_BY_FLAGS);
    s.mesh.setGeometry(7, s.x, s.y, s.z, 2, clockwise, sizes);
    const int *flags = s.mesh.getOrientFlags();
    EXPECT_EQ(Ints(flags, flags + 2), (Ints{0, 1})) << "kept for the new geometry";
}

TEST(PbIndexedMesh2D, RefusesWhatCannotBeAndKeepsWhatWas) {
    Sample s;
    const float *const none = nullptr;
    const int negative[] = {4, -3, 9}, huge[] = {INT_MAX, INT_MAX, 3};
    s.mesh.setGeometry(-1, s.x, s.y, 3, s.nodes, s.sizes);
    s.mesh.setGeometry(5, none, s.y, 3, s.nodes, s.sizes);
    s.mesh.setGeometry(5, s.x, none, 3, s.nodes, s.sizes);
    s.mesh.setGeometry(5, s.x, s.y, -3, s.nodes, s.sizes);
    s.mesh.setGeometry(5, s.x, s.y, 3, nullptr, s.sizes);
    for (const int *sizes : {static_cast<const int *>(nullptr), negative, huge})
        s.mesh.setGeometry(5, s.x, s.y, 3, s.nodes, sizes);
    s.mesh.setVertices(5, none, s.y);
    PbTriangleMesh2D triangles(7, s.x, s.y, 2, s.nodes + 4, 1);
    triangles.PbIndexedMesh2D::setGeometry(7, s.x, s.y, 3, s.nodes, s.sizes); // not of triangles alone
    static_cast<PbIndexedMesh2D &>(triangles) = s.mesh;
    triangles.setGeometry(7, s.x, s.y, INT_MAX / 2, s.nodes);
    EXPECT_EQ(s.mesh.getNumNodes(), 7);
    EXPECT_EQ(s.mesh.getNumCells(), 3);
    EXPECT_EQ(triangles.getNumCells(), 2);
}

TEST(PbIndexedMesh2D, CellsOfAnySizeAndBrokenOnesAreSafe) {
    const Sample s;
    const int sizes[] = {0, 1, 2, 9, 3, 3, 4};
    const int nodes[] = {0, 0, 1, 0, 1, 2, 3, 4, 5, 6, 0, 1, 0, 1, 99, 0, -1, 2, 0, 1, 1, 2};
    PbIndexedMesh2D mesh(7, s.x, s.y, 7, nodes, sizes, 0);
    EXPECT_FALSE(mesh.isEmpty());
    int numObjects = 0;
    for (int cell = -1; cell <= 7; ++cell)
        numObjects += mesh.getCell(cell) != nullptr;
    EXPECT_EQ(numObjects, 1) << "the last one alone; a node may stand twice in it";
    EXPECT_EQ(ownersOf(mesh, 1), (Ints{2, 3, 6})) << "each cell once, broken ones nowhere";
    EXPECT_EQ(mesh.getCellNodes(3).size(), 9u);
    mesh.setElemOrientation(PbIndexedMesh2D::ORIENT_BY_FLAGS);
    SbVec3f pcoord;
    EXPECT_EQ(mesh.findContainingCell(SbVec3f(50, 50, 0), 0, pcoord), nullptr);
    int cell = 0;
    mesh.getSmallestCellBox(cell);
    EXPECT_EQ(cell, 1);
    const PbIndexedMesh2D fresh(1);
    EXPECT_TRUE(fresh.isEmpty());
    EXPECT_EQ(fresh.getCellNodes(0).size(), 0u);
}

TEST(PbIndexedMesh2D, CopiesAreWholeInBothModesAndAcrossKinds) {
    const Sample s;
    auto source = std::make_unique<PbTriangleMesh2D>(7, s.x, s.y, 2, s.nodes + 4, 1);
    source->addValuesSet(3, s.z);
    const PbTriangleMesh2D same(*source);
    const PbIndexedMesh2D general(*source);
    PbIndexedMesh2D assigned(0);
    assigned = *source;
    PbTriangleMesh2D back(0);
    static_cast<PbIndexedMesh2D &>(back) = general;
    source.reset();
    int numNodes = 0, numCells = 0;
    const float *x = nullptr, *y = nullptr;
    for (const PbIndexedMesh2D *mesh :
         std::initializer_list<const PbIndexedMesh2D *>{&same, &general, &assigned, &back}) {
        const int *nodes = nullptr, *sizes = nullptr;
        mesh->getGeometry(numNodes, x, y, numCells, nodes, sizes);
        EXPECT_EQ(Ints(nodes, nodes + 6), Ints(s.nodes + 4, s.nodes + 10));
        EXPECT_EQ(Ints(sizes, sizes + 2), (Ints{3, 3}));
        EXPECT_EQ(x[6], 9);
        EXPECT_EQ(mesh->getValuesSet(3)[6], 9);
    }
    const int *const *cells = nullptr;
    same.getGeometry(numNodes, x, y, numCells, cells);
    EXPECT_EQ(cells[1][1], 5);
}

TEST(PbTriangleMesh2D, TriangulatesPointsAloneInBothModes) {
    // A square with a point inside, one of its corners twice, and a point nowhere.
    const float x[] = {0, 2, 2, 0, 1, 2, test::NOT_A_NUMBER}, y[] = {0, 0, 2, 2, 1, 2, 0};
    for (const int isDataDuplicate : {0, 1}) {
        PbTriangleMesh2D mesh(7, x, y, x, 0, nullptr, isDataDuplicate);
        mesh.setElemOrientation(PbIndexedMesh2D::ORIENT_BY_FLAGS);
        mesh.setGeometry(7, x, y);
        EXPECT_EQ(mesh.getNumNodes(), 7);
        ASSERT_EQ(mesh.getNumCells(), 4);
        EXPECT_EQ(mesh.getZcoord(), nullptr);
        EXPECT_FLOAT_EQ(mesh.getArea(), 4);
        for (int cell = 0; cell < 4; ++cell)
            EXPECT_EQ(mesh.getOrientFlags()[cell], 1);
        EXPECT_EQ(ownersOf(mesh, 4).size(), 4u);
        EXPECT_EQ(ownersOf(mesh, 5), Ints()) << "a copy of point 2";
        const PbTriangleMesh2D copied(mesh);
        mesh.setGeometry(4, y, y); // on one line
        EXPECT_EQ(mesh.getNumCells(), 0);
        EXPECT_EQ(copied.getCell(3)->getNumNodes(), 3) << "the triangles of a copy are its own";
        mesh.setGeometry(-1, x, y);
        EXPECT_EQ(mesh.getNumNodes(), 4) << "refused";
    }
}

TEST(PbIndexedMesh2D, ArraysOfTheMeshItselfMayComeBackInOtherPlaces) {
    const Sample s;
    const PbIndexedMesh2D source(7, s.x, s.y, s.z, 3, s.nodes, s.sizes, 1);
    for (const int isDataDuplicate : {0, 1}) {
        PbIndexedMesh2D mesh(isDataDuplicate);
        mesh = source; // arrays of its own in either mode
        for (const bool withZ : {true, false}) {
            int numNodes = 0, numCells = 0;
            const float *x = nullptr, *y = nullptr, *z = nullptr;
            const int *nodes = nullptr, *sizes = nullptr;
            mesh.getGeometry(numNodes, x, y, z, numCells, nodes, sizes);
            if (withZ)
                mesh.setGeometry(numNodes, y, z, x, numCells, nodes, sizes);
            else
                mesh.setGeometry(numNodes, z, x, numCells, nodes, sizes);
            EXPECT_EQ(mesh.getNodeCoord(3), withZ ? SbVec3f(1, 0, 0) : SbVec3f(0, 1, 0));
            EXPECT_EQ(mesh.getCellNodes(2).back(), 2);
        }
    }
}

TEST(PbIndexedMesh2D, OwnSetsOfAnotherLengthGoAndAreReportedOnce) {
    const std::vector<float> many(100);
    for (const int isDataDuplicate : {0, 1}) {
        Sample s;
        s.mesh.addValuesSet(0, s.z);
        PbIndexedMesh2D mesh(isDataDuplicate);
        mesh = s.mesh;
        test::MeshListener listener(mesh);
        for (const int numNodes : {100, 99}) {
            mesh.setGeometry(numNodes, many.data(), many.data(), 3, s.nodes, s.sizes);
            const Ints heard = listener.heard();
            EXPECT_EQ(heard.front(),
                      numNodes == 100 ? PbBase::CHANGE_VALUES_SET : PbBase::CHANGE_MESH_GEOMETRY)
                << "the second time without a set";
            EXPECT_EQ(heard.back(), PbBase::CHANGE_MESH_GEOMETRY);
            EXPECT_EQ(mesh.getNumValuesSet(), 0);
        }
    }
}

TEST(PbIndexedMesh2D, NewNodesAloneKeepTheMeshReadable) {
    const Sample s;
    PbIndexedMesh2D mesh(7, s.x, s.y, s.z, 3, s.nodes, s.sizes, 1);
    mesh.addValuesSet(0, s.z);
    mesh.setVertices(3, s.x, s.y);
    EXPECT_EQ(mesh.getValuesSet(0), nullptr) << "it had seven values";
    EXPECT_EQ(mesh.getZcoord(), nullptr);
    EXPECT_EQ(mesh.getCell(0), nullptr) << "its last node is gone";
    EXPECT_EQ(ownersOf(mesh, 1), Ints());
    mesh.setVertices(7, s.y, s.x);
    EXPECT_EQ(mesh.getCell(0)->getNodeCoord(1), SbVec3f(0, 1, 0));
}

} // namespace
