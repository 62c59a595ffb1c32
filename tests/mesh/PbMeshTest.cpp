#include "MeshSamples.h"

#include <oravane/PbPolarGrid2D.h>

#include <gtest/gtest.h>

using test::GridSample;
using test::MeshListener;
using test::NOT_A_NUMBER;

namespace {

using Changes = std::vector<int>;
constexpr int GENERAL = PbBase::CHANGE_GENERAL;
constexpr int DELETED = PbBase::CHANGE_DELETED;
constexpr int GEOMETRY = PbBase::CHANGE_MESH_GEOMETRY;
constexpr int VALUES = PbBase::CHANGE_VALUES_SET;
constexpr int VECS = PbBase::CHANGE_VECS_SET;

TEST(PbMesh, ReportsEachChangeOnceAndInOrder) {
    using Grid = PbParalCartesianGrid2D;
    const GridSample small(3, 2), large(5, 4);
    const float *x = small.columns.data(), *y = small.rows.data();
    auto mesh = std::make_unique<Grid>(1);
    MeshListener listener(*mesh);
    const SbVec2f flat[6] = {};
    const SbVec2f *const noVectors = nullptr;
    const struct {
        const char *name;
        std::function<void()> action;
        Changes expected;
    } rows[] = {
        {"geometry, from empty", [&] { mesh->setGeometry(3, 2, x, y); }, {VALUES, GEOMETRY}},
        {"geometry, same size", [&] { mesh->setGeometry(3, 2, x, y); }, {GEOMETRY}},
        {"geometry refused", [&] { mesh->setGeometry(3, 2, nullptr, y); }, {}},
        {"values", [&] { mesh->addValuesSet(3, small.values.data()); }, {VALUES}},
        {"values replaced", [&] { mesh->addValuesSet(3, small.x.data()); }, {VALUES}},
        {"no values", [&] { mesh->addValuesSet(4, nullptr); }, {}},
        {"vectors", [&] { mesh->addVecsSet(3, small.vectors.data()); }, {VECS}},
        {"flat vectors", [&] { mesh->addVecsSet(5, flat); }, {VECS}},
        {"no vectors", [&] { mesh->addVecsSet(6, noVectors); }, {}},
        {"unknown sets", [&] { EXPECT_EQ(mesh->removeValuesSet(9) + mesh->removeVecsSet(9), 0); }, {}},
        {"known set", [&] { EXPECT_EQ(mesh->removeVecsSet(5), 1); }, {VECS}},
        {"other size",
         [&] { mesh->setGeometry(5, 4, large.columns.data(), large.rows.data()); },
         {VALUES, GEOMETRY}},
        {"all values", [&] { mesh->removeAllValuesSet(); }, {VALUES}},
        {"all vectors", [&] { mesh->removeAllVecsSet(); }, {VECS}},
        {"assignment", [&] { *mesh = Grid(3, 2, x, y, 0); }, {VALUES, VECS, GENERAL}},
        {"assignment to itself", [&] { *mesh = static_cast<const Grid &>(*mesh); }, {}},
        {"end", [&] { mesh.reset(); }, {VALUES, VECS, DELETED}},
    };
    for (const auto &row : rows) {
        row.action();
        EXPECT_EQ(listener.heard(), row.expected) << row.name;
    }
}

TEST(PbMesh, RegularGridsChangeTheirGeometrySilently) {
    const GridSample sample(3, 2);
    PbRegularCartesianGrid2D grid(3, 2, 0, 0, 1, 1, 1);
    grid.addValuesSet(0, sample.values.data());
    grid.addVecsSet(0, sample.vectors.data());
    MeshListener listener(grid);
    grid.setGeometry(40, 30, 0, 0, 1, 1);
    EXPECT_EQ(listener.heard(), Changes());
    EXPECT_EQ(grid.getNumValuesSet(), 0);
    grid.touch(); // the listener reads the vectors at the new size
    EXPECT_EQ(grid.getVecsSet(0)[5], sample.vectors[5]);
    EXPECT_EQ(grid.getVecsSet(0)[1199], SbVec3f(0, 0, 0));
    grid.setGeometry(2, -2, 0, 0, 1, 1);
    EXPECT_EQ(grid.getNumNodes(), 1200) << "refused";
}

TEST(PbMesh, KeepsSetsByTheirNumber) {
    const GridSample sample(3, 2);
    PbRegularCartesianGrid2D grid(3, 2, 0, 0, 1, 1, 1);
    for (const int set : {5, 1})
        grid.addValuesSet(set, sample.values.data());
    grid.addValuesSet(1, sample.x.data());
    EXPECT_EQ(grid.getNumValuesSet(), 2);
    EXPECT_EQ(grid.getValuesSet(1)[2], sample.x[2]);
    EXPECT_EQ(grid.getValuesSet(5)[2], sample.values[2]);
    EXPECT_EQ(grid.getValuesSet(4), nullptr);
    char text[1000] = {};
    FILE *file = fmemopen(text, sizeof(text), "w");
    grid.print(file);
    std::fclose(file);
    const std::string printed(text);
    EXPECT_NE(printed.find("6 nodes, 2 cells"), std::string::npos) << printed;
    EXPECT_LT(printed.find("value set 1"), printed.find("value set 5")) << printed;
    grid.print(nullptr);
}

TEST(PbMesh, SmallestAndLargestOfASet) {
    PbRegularCartesianGrid2D grid(2, 2, 0, 0, 1, 1, 0), empty(1);
    const float values[] = {NOT_A_NUMBER, 2, -3, 7}, none[] = {NAN, NAN, NAN, NAN};
    const SbVec3f vectors[] = {{3, 4, 0}, {1, 0, 0}, {NOT_A_NUMBER, 0, 0}, {0, -2, 0}};
    grid.addValuesSet(0, values);
    grid.addValuesSet(1, none);
    grid.addVecsSet(0, vectors);
    empty.addValuesSet(0, values);
    float low = 99, high = 99;
    EXPECT_EQ(grid.getMinValuesSet(9, low) + grid.getMaxVecsSet(9, high), 0);
    EXPECT_EQ(grid.getMinValuesSet(1, low) + grid.getMaxValuesSet(1, high), 0);
    EXPECT_EQ(empty.getMinValuesSet(0, low), 0);
    EXPECT_EQ(std::pair(low, high), std::pair(99.0f, 99.0f));
    EXPECT_EQ(grid.getMinValuesSet(0, low) + grid.getMaxValuesSet(0, high), 2);
    EXPECT_EQ(std::pair(low, high), std::pair(-3.0f, 7.0f));
    EXPECT_EQ(grid.getMinVecsSet(0, low) + grid.getMaxVecsSet(0, high), 2);
    EXPECT_EQ(std::pair(low, high), std::pair(1.0f, 5.0f));
}

TEST(PbMesh, SharesOrOwnsWhatItIsGiven) {
    for (const int duplicate : {0, 1}) {
        SCOPED_TRACE(duplicate ? "own" : "shared");
        GridSample sample(3, 2);
        PbCartesianGrid2D grid(3, 2, sample.x.data(), sample.y.data(), sample.z.data(), duplicate);
        grid.addValuesSet(0, sample.values.data());
        grid.addVecsSet(0, sample.vectors.data());
        const SbVec2f flat[] = {{0, 1}, {1, 1}, {2, 1}, {3, 1}, {4, 1}, {5, 1}};
        grid.addVecsSet(1, flat);
        sample.values[4] = sample.x[4] = sample.z[4] = 1000;
        sample.vectors[4].setValue(1000, 0, 0);
        EXPECT_EQ(grid.getValuesSet(0)[4] == 1000, !duplicate);
        EXPECT_EQ(grid.getVecsSet(0)[4][0] == 1000, !duplicate);
        EXPECT_EQ(grid.getNodeCoord(4)[0] == 1000, !duplicate);
        EXPECT_EQ(grid.getNodeCoord(4)[2] == 1000, !duplicate);
        EXPECT_EQ(grid.getVecsSet(1)[4], SbVec3f(4, 1, 0)) << "flat vectors are always copied";
        grid.addVecsSet(1, sample.vectors.data());
        EXPECT_EQ(grid.getVecsSet(1) == sample.vectors.data(), !duplicate);
        auto freed = std::make_unique<std::vector<SbVec3f>>(sample.vectors);
        grid.addVecsSet(2, freed->data());
        freed.reset(); // its address is replaced next, and must not be read for that
        grid.addVecsSet(2, flat);
        EXPECT_EQ(grid.removeVecsSet(2), 1);

        const GridSample large(5, 4);
        grid.setGeometry(5, 4, large.x.data(), large.y.data());
        EXPECT_EQ(grid.getNumValuesSet(), duplicate ? 0 : 1);
        EXPECT_EQ(grid.getNumVecsSet(), 2);
        EXPECT_TRUE(!duplicate || grid.getVecsSet(1)[19] == SbVec3f(0, 0, 0));
    }
}

/// A copy or an assigned mesh equals its source and outlives it, if it has blocks of its own.
template <class Mesh>
void expectCopies(Mesh &&source, const GridSample &sample) {
    source.addValuesSet(3, sample.values.data());
    source.addVecsSet(2, sample.vectors.data());
    const auto expectEqual = [&](const Mesh &mesh, bool isShared) {
        ASSERT_EQ(mesh.getNumNodes(), source.getNumNodes());
        EXPECT_EQ(mesh.getNumCells(), source.getNumCells());
        EXPECT_EQ(mesh.PbMesh::getBoundingBox().getMax(), source.PbMesh::getBoundingBox().getMax());
        for (int n = 0; n < mesh.getNumNodes(); ++n) {
            EXPECT_EQ(mesh.getNodeCoord(n), source.getNodeCoord(n));
            EXPECT_EQ(mesh.getValuesSet(3)[n], sample.values[n]);
            EXPECT_EQ(mesh.getVecsSet(2)[n], sample.vectors[n]);
        }
        EXPECT_EQ(mesh.getNumValuesSet(), 1);
        EXPECT_EQ(mesh.getValuesSet(3) == sample.values.data(), isShared);
        EXPECT_EQ(mesh.getZcoord() == sample.z.data(), isShared);
    };
    const bool isShared = source.getValuesSet(3) == sample.values.data();
    expectEqual(Mesh(std::as_const(source)), isShared);
    for (const int duplicate : {0, 1}) {
        Mesh assigned(duplicate);
        assigned.addValuesSet(8, sample.values.data());
        {
            const Mesh temporary(source);
            assigned = temporary;
        }
        expectEqual(assigned, isShared && !duplicate);
    }
}

TEST(PbMesh, CopiesAndAssignsInBothModes) {
    const GridSample sample(4, 3);
    const float *x = sample.columns.data(), *y = sample.rows.data(), *z = sample.z.data();
    for (const int duplicate : {0, 1}) {
        SCOPED_TRACE(duplicate ? "own" : "shared");
        expectCopies(PbCartesianGrid2D(4, 3, sample.x.data(), sample.y.data(), z, duplicate), sample);
        expectCopies(PbParalCartesianGrid2D(4, 3, x, y, z, duplicate), sample);
        expectCopies(PbRegularCartesianGrid2D(4, 3, 0, 1, 2, 3, z, duplicate), sample);
        expectCopies(PbPolarGrid2D(4, 3, x, y, z, duplicate), sample);
    }
}

TEST(PbMesh, AParallelGridFitsIntoACartesianOneButNotTheOtherWayRound) {
    const GridSample sample(4, 3);
    const PbParalCartesianGrid2D paral(4, 3, sample.columns.data(), sample.rows.data(), 0);
    PbCartesianGrid2D assigned(0);
    assigned = paral;
    const PbCartesianGrid2D copied(paral);
    PbParalCartesianGrid2D target(1);
    PbCartesianGrid2D &asParent = target;
    asParent = assigned;
    EXPECT_EQ(target.isEmpty(), 1);
    asParent = paral;
    for (const PbCartesianGrid2D *grid :
         std::initializer_list<const PbCartesianGrid2D *>{&assigned, &copied, &target})
        for (int n = 0; n < 12; ++n)
            EXPECT_EQ(grid->getNodeCoord(n), paral.getNodeCoord(n));
    EXPECT_FLOAT_EQ(assigned.getArea(), paral.getArea());
}

} // namespace
