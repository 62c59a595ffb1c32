#include "MeshSamples.h"

#include <oravane/PbPolarGrid2D.h>
#include <oravane/PbSortedArray.h>

#include <Inventor/fields/SoMFVec3f.h>

#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <random>

using test::allKinds;
using test::GridSample;
using test::INFINITE;
using test::listFrom;
using test::NOT_A_NUMBER;

namespace {

TEST(PbGrid2D, AllKindsGiveTheSameNodesCellsAndMeasures) {
    const GridSample sample(9, 6);
    for (const int duplicate : {0, 1})
        for (const bool withZ : {false, true})
            for (const auto &[name, grid] : allKinds(sample, withZ, duplicate)) {
                SCOPED_TRACE(std::string(name) + (withZ ? " with z" : "") + (duplicate ? " own" : " shared"));
                SoMFVec3f coords, oneByOne;
                grid->getNodesCoord(grid->getZcoord(), coords);
                grid->PbMesh2D::getNodesCoord(grid->getZcoord(), oneByOne);
                ASSERT_EQ(coords.getNum(), 54);
                EXPECT_TRUE(coords == oneByOne);
                for (int n = 0; n < grid->getNumNodes(); ++n) {
                    const SbVec3f expected(sample.x[n], sample.y[n], withZ ? sample.z[n] : 0);
                    EXPECT_EQ(grid->getNodeCoord(n), expected) << n;
                    EXPECT_EQ(coords[n], expected) << n;
                }
                EXPECT_EQ(grid->PbMesh2D::getBoundingBox(), SbBox2f(1, -1, 5, 0.25f));
                EXPECT_EQ(grid->PbMesh::getBoundingBox().getMax()[2], withZ ? 26 : 0);
                EXPECT_TRUE(withZ || std::abs(grid->getArea() - 5) < 1e-6f);
                ASSERT_EQ(grid->getNumCells(), 40);
                SbVec3f pcoord;
                for (int index = 0; index < 40; ++index) {
                    const PbCell *cell = grid->getCell(index);
                    const int n = index / 5 * 6 + index % 5;
                    EXPECT_EQ(listFrom([&](PbArrayOfInt &nodes) { cell->getNodesIndex(nodes); }),
                              (std::vector<int>{n, n + 6, n + 7, n + 1}));
                    for (int local = 0; local < 4; ++local)
                        EXPECT_EQ(cell->getNodeCoord(local), grid->getNodeCoord(cell->getNodeIndex(local)));
                    const SbVec3f inside = cell->getCenter();
                    cell = grid->findContainingCell(inside, 0, pcoord);
                    ASSERT_TRUE(cell) << index;
                    EXPECT_EQ(cell->getIndex(), index);
                    EXPECT_NEAR(cell->getValue(pcoord, sample.values.data()),
                                2 * inside[0] + 3 * inside[1] + 1, 1e-5);
                    EXPECT_EQ(grid->findContainingCell(inside, 0, pcoord, grid->getCell(0)), cell);
                }
                for (const SbVec3f &outside :
                     {SbVec3f(0.9f, -0.6f, 0), SbVec3f(1.1f, 1, 0), SbVec3f(NOT_A_NUMBER, -0.6f, 0),
                      SbVec3f(1.1f, INFINITE, 0), SbVec3f(1e30f, -0.6f, 0)})
                    EXPECT_EQ(grid->findContainingCell(outside, 0, pcoord), nullptr) << outside[0];
            }
}

TEST(PbGrid2D, AdjacencyInItsOrder) {
    const PbRegularCartesianGrid2D grid(4, 4, 0, 0, 3, 3, 1); // cells 0 to 8, three per column
    using List = std::vector<int>;
    for (const auto &[node, cells] :
         {std::pair(0, List{0}), {5, {4, 1, 0, 3}}, {15, {8}}, {13, {7, 6}}, {16, {}}})
        EXPECT_EQ(listFrom([&, n = node](auto &list) { grid.getNodeOwnerCellsInd(n, list); }), cells);
    for (const auto &[cell, cells] : {std::pair(0, List{3, 1}), {4, {1, 7, 3, 5}}, {-1, {}}})
        EXPECT_EQ(listFrom([&, c = cell](auto &list) { grid.getAdjacentCellsIndByFacet(c, list); }), cells);
    for (int cell = 0; cell <= 9; ++cell) {
        List walked = listFrom([&](auto &list) { grid.PbMesh::getAdjacentCellsIndByNode(cell, list); });
        std::sort(walked.begin(), walked.end());
        EXPECT_EQ(walked.size(), cell == 4 ? 8u : cell == 9 ? 0u : cell % 2 ? 5u : 3u);
        EXPECT_EQ(listFrom([&](auto &list) { grid.getAdjacentCellsIndByNode(cell, list); }), walked);
    }
    PbArrayOfInt nodes;
    const auto addAndAsk = [&](int node) {
        nodes += node;
        return listFrom([&](auto &list) { grid.getNodesOwnerCellsInd(nodes, list); });
    };
    addAndAsk(5);
    EXPECT_EQ(addAndAsk(6), (List{4, 1}));
    EXPECT_EQ(addAndAsk(15), List());
}

TEST(PbGrid2D, PointsOnGridLines) {
    const float x[] = {0, 1, 2}, down[] = {2, 1, 0};
    PbParalCartesianGrid2D paral(3, 3, x, x, 1), descending(3, 3, down, x, 1);
    PbRegularCartesianGrid2D regular(3, 3, 0, 0, 2, 2, 1), reversed(3, 3, 2, 0, 0, 2, 1);
    const struct {
        const char *name;
        PbGrid2D &grid;
        float x;
        int cell; // the lower row has the cells 0 and 2
    } rows[] = {
        {"the interval before a line", paral, 1, 0},
        {"descending, on a line", descending, 1, 0},
        {"the interval behind a line", regular, 1, 2},
        {"lower bound", regular, 0, 0},
        {"upper bound", regular, 2, -1},
        {"reversed bounds, first line", reversed, 2, 0},
        {"reversed bounds, last line", reversed, 0, -1},
    };
    for (const auto &row : rows) {
        SbVec3f pcoord;
        const PbCell *cell = row.grid.findContainingCell(SbVec3f(row.x, 0.5f, 0), 0, pcoord);
        EXPECT_EQ(cell ? cell->getIndex() : -1, row.cell) << row.name;
    }
}

/// A grid that bulges and shears, and counts its searches of all cells.
struct BentGrid : PbCartesianGrid2D {
    BentGrid() : PbCartesianGrid2D(1) {
        std::vector<float> x, y;
        for (int node = 0; node < 8 * 7; ++node) {
            const float i = static_cast<float>(node / 7), j = static_cast<float>(node % 7);
            x.push_back(i + 0.4f * std::sin(j) + 0.3f * j);
            y.push_back(j + 0.3f * std::cos(2 * i + j));
        }
        setGeometry(8, 7, x.data(), y.data());
    }
    const PbCell *findContainingCellProtected(const SbVec3f &point, float tolerance, SbVec3f &pcoord,
                                              PbArrayOfInt &tested) override {
        ++searches;
        return PbCartesianGrid2D::findContainingCellProtected(point, tolerance, pcoord, tested);
    }
    int searches = 0;
};

TEST(PbCartesianGrid2D, SearchGivesTheFirstCellThatContainsThePoint) {
    BentGrid grid;
    std::mt19937 random(5);
    std::uniform_real_distribution<float> position(-2, 11);
    int hits = 0;
    for (int n = 0; n < 400; ++n) {
        const SbVec3f point(position(random), position(random), 0);
        for (const float tolerance : {0.0f, 0.1f, 1.5f}) {
            int expected = -1;
            SbVec3f pcoord;
            for (int index = 0; index < grid.getNumCells() && expected < 0; ++index)
                if (grid.getCell(index)->locatePoint(point, tolerance, pcoord))
                    expected = index;
            const PbCell *found = grid.findContainingCell(point, tolerance, pcoord);
            EXPECT_EQ(found ? found->getIndex() : -1, expected)
                << point[0] << ' ' << point[1] << ' ' << tolerance;
            hits += expected >= 0;
        }
    }
    EXPECT_GT(hits, 300);
}

TEST(PbCartesianGrid2D, SearchFromACellAsksItsNeighboursFirst) {
    BentGrid grid;
    for (const int neighbour : {16, 28, 27, 15, 29}) { // by facet and by node around cell 22
        const SbVec3f inside = grid.getCell(neighbour)->getCenter();
        SbVec3f pcoord;
        const PbCell *found = grid.findContainingCell(inside, 0, pcoord, grid.getCell(22));
        ASSERT_TRUE(found);
        EXPECT_EQ(found->getIndex(), neighbour);
    }
    EXPECT_EQ(grid.searches, 0);
    SbVec3f pcoord;
    const SbVec3f far = grid.getCell(0)->getCenter();
    EXPECT_EQ(grid.findContainingCell(far, 0, pcoord, grid.getCell(41))->getIndex(), 0);
    EXPECT_EQ(grid.searches, 1);
    const PbPixelCell stranger(nullptr); // a cell of no mesh has no neighbours
    EXPECT_EQ(grid.findContainingCell(far, 0, pcoord, &stranger)->getIndex(), 0);
}

TEST(PbPolarGrid2D, HasNodesButNoCells) {
    const float radius[] = {0.5f, 2}, angle[] = {0.3f, 0.7f, 3.1f}, z[] = {0, 1, 2, 3, 4, 5};
    PbPolarGrid2D grid(2, 3, radius, angle, z, 1);
    SoMFVec3f coords;
    grid.getNodesCoord(nullptr, coords);
    for (int n = 0; n < 6; ++n) {
        const double r = radius[n / 3], t = angle[n % 3];
        const SbVec3f flat(static_cast<float>(r * std::cos(t)), static_cast<float>(r * std::sin(t)), 0);
        EXPECT_EQ(grid.getNodeCoord(n), flat + SbVec3f(0, 0, z[n])) << n;
        EXPECT_EQ(coords[n], flat) << n;
        EXPECT_TRUE(grid.PbMesh::getBoundingBox().intersect(grid.getNodeCoord(n))) << n;
    }
    EXPECT_EQ(grid.getCell(0), nullptr);
    EXPECT_EQ(grid.getArea(), 0);
    SbVec3f pcoord;
    const PbPixelCell stranger(nullptr);
    for (const PbCell *start : {static_cast<const PbPixelCell *>(nullptr), &stranger})
        EXPECT_EQ(grid.findContainingCell(grid.getNodeCoord(0), 1, pcoord, start), nullptr);
}

TEST(PbGrid2D, DegenerateSizesAndArguments) {
    const GridSample sample(3, 2);
    for (const auto &[name, grid] : allKinds(sample, true, 1)) {
        SCOPED_TRACE(name);
        const float *x = nullptr, *y = nullptr, *z = nullptr;
        int numX = 0, numY = 0;
        grid->getGeometry(numX, numY, x, y, z);
        const SbVec3f last = grid->getNodeCoord(5);
        EXPECT_EQ(grid->getCell(2), nullptr);
        EXPECT_EQ(grid->getNodeCoord(6), SbVec3f(0, 0, 0));
        EXPECT_EQ(grid->getNodeCoord(2, 2), SbVec3f(0, 0, 0));
        grid->setGeometry(numX, numY, nullptr, y, z);
        grid->setGeometry(-1, 2, x, y);
        grid->setGeometry(1 << 20, 1 << 20, x, y);
        EXPECT_EQ(grid->getNumNodes(), 6) << "refused";
        EXPECT_EQ(grid->getNodeCoord(5), last);
        grid->setGeometry(numX, numY, x, y, z); // the arrays that it owns itself
        EXPECT_EQ(grid->getNodeCoord(5), last);
        grid->getGeometry(numX, numY, x, y, z);
        grid->setGeometry(1, 2, x, y);
        EXPECT_EQ(grid->getNumNodes(), 2);
        EXPECT_EQ(grid->getNumCells(), 0);
        EXPECT_EQ(grid->getZcoord(), nullptr);
        SbVec3f pcoord;
        EXPECT_EQ(grid->findContainingCell(grid->getNodeCoord(0), 1, pcoord), nullptr);
        int cell = 5;
        EXPECT_TRUE(grid->getBiggestCellBox(cell).isEmpty());
        EXPECT_EQ(cell, -1);
        grid->setGeometry(0, 4, nullptr, nullptr);
        EXPECT_EQ(grid->isEmpty(), 1);
        EXPECT_EQ(grid->getNumCells(), 0);
        EXPECT_EQ(grid->getCell(0), nullptr);
        EXPECT_TRUE(grid->PbMesh2D::getBoundingBox().isEmpty());
    }
}

TEST(PbRegularCartesianGrid2D, TakesArraysThroughItsParentAsBounds) {
    PbRegularCartesianGrid2D grid(1);
    const float x[] = {5, NOT_A_NUMBER, 1}, y[] = {0, 3};
    static_cast<PbGrid2D &>(grid).setGeometry(3, 2, x, y);
    EXPECT_EQ(grid.getNodeCoord(0), SbVec3f(1, 0, 0));
    EXPECT_EQ(grid.getNodeCoord(1, 1), SbVec3f(3, 3, 0));
    EXPECT_EQ(grid.getNodeCoord(5), SbVec3f(5, 3, 0));
    grid.setGeometry(3, 2, 5, 3, 1, 0);
    EXPECT_EQ(grid.getNodeCoord(1, 0), SbVec3f(3, 3, 0));
    EXPECT_EQ(grid.PbMesh2D::getBoundingBox(), SbBox2f(1, 0, 5, 3));
}

TEST(PbGrid2D, BoxesOfTheSmallestAndLargestCell) {
    const float x[] = {0, 3, 4, 7}, wider[] = {0, 3, 4, 9}, y[] = {0, 1}, z[] = {0, 1, 0, 1, 0, 1, 0, 1};
    PbParalCartesianGrid2D grid(4, 2, x, y, z, 1);
    int small = -1, big = -1;
    EXPECT_EQ(grid.getSmallestCellBox(small).getVolume(), 1);
    EXPECT_EQ(grid.getBiggestCellBox(big).getVolume(), 3);
    EXPECT_EQ(std::pair(small, big), std::pair(1, 0)) << "the first of two equal cells";
    grid.setGeometry(4, 2, wider, y, z);
    grid.getBiggestCellBox(big);
    EXPECT_EQ(big, 2) << "a change of the geometry counts";
}

TEST(GetPositionInSortedArray, FindsTheIntervalInEitherDirection) {
    const float up[] = {1, 2, 4, 8}, down[] = {8, 4, 2, 1}, one[] = {3};
    const struct {
        float value;
        int num;
        const float *array;
        int expected;
    } rows[] = {
        {0, 4, up, -1}, {1, 4, up, -1},   {1.5f, 4, up, 0}, {4, 4, up, 1},       {8, 4, up, 2},
        {9, 4, up, 3},  {9, 4, down, -1}, {3, 4, down, 1},  {2, 4, down, 1},     {0, 4, down, 3},
        {4, 1, one, 0}, {2, 1, one, -1},  {2, 0, one, -1},  {2, 3, nullptr, -1}, {NOT_A_NUMBER, 4, up, -1},
    };
    for (const auto &row : rows)
        EXPECT_EQ(getPositionInSortedArray(row.value, row.num, row.array), row.expected)
            << row.value << " of " << row.num;
}

TEST(PbGrid2D, ArraysOfTheGridItselfMayComeBackInOtherPlaces) {
    const GridSample sample(3, 3);
    for (const auto &[name, grid] : test::allKinds(sample, true, 1)) {
        int numX = 0, numY = 0;
        const float *x = nullptr, *y = nullptr, *z = nullptr;
        grid->getGeometry(numX, numY, x, y, z);
        if (!x)
            continue; // a regular grid has none
        const SbVec3f before = grid->getNodeCoord(2, 2);
        grid->setGeometry(numX, numY, y, x, z);
        EXPECT_EQ(grid->getNodeCoord(2, 2), SbVec3f(before[1], before[0], before[2])) << name;
        if (std::string(name) != "Cartesian")
            continue; // x and y are shorter than z
        grid->getGeometry(numX, numY, x, y, z);
        grid->setGeometry(numX, numY, x, z, y);
        EXPECT_EQ(grid->getNodeCoord(0, 0)[0], sample.rows[0]) << name;
    }
}

} // namespace
