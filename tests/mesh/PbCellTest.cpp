#include "MeshSamples.h"

#include <oravane/PbPixelCell.h>
#include <oravane/PbQuadrangleCell.h>
#include <oravane/PbTriangleCell.h>

#include <gtest/gtest.h>

using test::listFrom;

namespace {

/// Node positions of one mesh that all cells below are taken from.
const float X[] = {0, 4, 5, 1, 2, 8, 2, 2};
const float Y[] = {0, 1, 4, 2, 0.5f, 2, 2, 2};

/// Location, weights and interpolation of a cell agree at many places: the weights add up to 1, they rebuild
/// the position, and the position is located where they were taken.
void expectLocationInvertsInterpolation(const PbCell &cell) {
    for (float u = 0.1f; u < 0.6f; u += 0.2f)
        for (float v = 0.1f; v < 0.5f; v += 0.1f) {
            const SbVec3f asked(u, v, 0);
            float weights[PbCell::MAX_NODES];
            cell.getWeight(asked, weights);
            SbVec3f position(0, 0, 0);
            float sum = 0;
            for (int i = 0; i < cell.getNumNodes(); ++i) {
                position += weights[i] * cell.getNodeCoord(i);
                sum += weights[i];
            }
            EXPECT_NEAR(sum, 1, 1e-6);
            SbVec3f found(0, 0, 0);
            EXPECT_EQ(cell.locatePoint(position, 0, found), 1) << u << ' ' << v;
            EXPECT_TRUE(found.equals(asked, 1e-8f)) << u << ' ' << v << ": " << found[0] << ' ' << found[1];
        }
}

TEST(PbCell, LocationInvertsInterpolation) {
    PbTriangleCell triangle(nullptr), turned(nullptr);
    PbQuadrangleCell unit(nullptr), quadrangle(nullptr), steep(nullptr), steeper(nullptr);
    PbPixelCell pixel(nullptr);
    EXPECT_EQ(triangle.set(0, X, Y, 0, 1, 2), 1);
    EXPECT_EQ(turned.set(0, X, Y, 3, 2, 1), 1);
    quadrangle.set(0, X, Y, 0, 1, 2, 3);
    const float z[] = {0, 0, 3, 3}; // a plane that leans over, so that each pair of axes gets used
    const float steepX[] = {0, 1, 1, 0}, steepY[] = {0, 0, 0.01f, 0.01f};
    steep.set(0, steepX, steepY, z, 0, 1, 2, 3);
    steeper.set(0, steepY, steepX, z, 0, 1, 2, 3);
    pixel.set(2, 7, -2, 5, 4, 1, 1);
    for (const PbCell *cell : std::initializer_list<const PbCell *>{&triangle, &turned, &unit, &quadrangle,
                                                                    &steep, &steeper, &pixel})
        expectLocationInvertsInterpolation(*cell);
    expectLocationInvertsInterpolation(PbTriangleCell(nullptr));
}

TEST(PbCell, ListsNodesOfEdgesAndOfTheOneFacet) {
    PbTriangleCell triangle(nullptr);
    triangle.set(7, X, Y, 4, 1, 2);
    PbPixelCell pixel(nullptr);
    pixel.set(0, 0, 1, 1, 5, 2, 3);
    const auto edge = [](const PbCell &cell, int number) {
        return listFrom([&](auto &nodes) { cell.getNodesIndexOfEdge(number, nodes); });
    };
    const auto facet = [](const PbCell &cell, int number) {
        return listFrom([&](auto &nodes) { cell.getNodesIndexOfFacet(number, nodes); });
    };
    EXPECT_EQ(edge(triangle, 2), (std::vector<int>{2, 4}));
    EXPECT_EQ(facet(triangle, 0), (std::vector<int>{4, 1, 2}));
    EXPECT_EQ(pixel.getIndex(), 2 * 4 + 3);
    EXPECT_EQ(facet(pixel, 0), (std::vector<int>{13, 18, 19, 14}));
    EXPECT_EQ(edge(pixel, 3), (std::vector<int>{14, 13}));
    EXPECT_EQ(listFrom([&](PbArrayOfInt &nodes) { pixel.getNodesLocalIndexOfEdge(3, nodes); }),
              (std::vector<int>{3, 0}));
    for (const int none : {-1, 3})
        EXPECT_TRUE(edge(triangle, none).empty()) << none;
    EXPECT_TRUE(facet(pixel, 1).empty());
    EXPECT_EQ(triangle.getNodeIndex(3), -1);
}

TEST(PbCell, MeasuresItself) {
    PbTriangleCell triangle(nullptr);
    triangle.set(0, X, Y, 0, 1, 3);
    EXPECT_FLOAT_EQ(triangle.getArea(), 3.5f);
    EXPECT_FLOAT_EQ(triangle.getLongestEdgeLength(), std::sqrt(17.0f));
    PbQuadrangleCell quadrangle(nullptr);
    quadrangle.set(0, X, Y, 0, 1, 2, 3);
    EXPECT_FLOAT_EQ(quadrangle.getArea(), 8.5f);
    EXPECT_EQ(quadrangle.getCenter(), SbVec3f(2.5f, 1.75f, 0));
    EXPECT_EQ(quadrangle.getBoundingBox().getMax(), SbVec3f(5, 4, 0));
    PbPixelCell backwards(nullptr);
    backwards.set(2, 0, -1, 1, 2, 0, 0);
    EXPECT_EQ(backwards.getArea(), 3);
    EXPECT_EQ(backwards.getLongestEdgeLength(), 3);
    EXPECT_EQ(backwards.getBoundingBox().getMin(), SbVec3f(-1, 0, 0));
}

TEST(PbTriangleCell, ToleranceWidensIt) {
    PbTriangleCell cell(nullptr);
    SbVec3f pcoord(0, 0, 5);
    EXPECT_EQ(cell.locatePoint(SbVec3f(1.01f, 0, 0), 0, pcoord), 0);
    EXPECT_EQ(cell.locatePoint(SbVec3f(0.6f, 0.6f, 0), 0, pcoord), 0) << "beyond the slanting side";
    EXPECT_EQ(cell.locatePoint(SbVec3f(1.01f, 0, 0), 0.02f, pcoord), 1);
    EXPECT_EQ(cell.locatePoint(SbVec3f(0.25f, 0.25f, 0), 0, pcoord), 1);
    EXPECT_EQ(pcoord, SbVec3f(0.25f, 0.25f, 5)) << "the third component is the caller's";
}

TEST(PbTriangleCell, DegenerateOneKeepsItsNodesAndContainsNothing) {
    PbTriangleCell cell(nullptr);
    const float z[8] = {};
    SbVec3f pcoord;
    const std::function<int()> refused[] = {
        [&] { return cell.set(4, X, Y, 0, 4, 5); },
        [&] { return cell.set(4, X, Y, z, 0, 1, 3); },
        [&] { return cell.set(4, nullptr, Y, 0, 1, 3); },
    };
    for (const auto &set : refused) {
        ASSERT_EQ(cell.set(3, X, Y, 0, 1, 2), 1);
        EXPECT_EQ(set(), 0);
        EXPECT_EQ(cell.getIndex(), 3);
        EXPECT_EQ(cell.getNodeCoord(2), SbVec3f(5, 4, 0));
        EXPECT_EQ(cell.locatePoint(SbVec3f(3, 1.5f, 0), 100, pcoord), 0);
    }
    EXPECT_EQ(cell.set(4, X, Y, nullptr, 0, 1, 3), 1);
}

TEST(PbQuadrangleCell, LocatesInPlaneAndInSpace) {
    PbQuadrangleCell cell(nullptr);
    SbVec3f pcoord(0, 0, 9);
    EXPECT_EQ(cell.locatePoint(SbVec3f(0.3f, 0.7f, 8), 0, pcoord), 1);
    EXPECT_TRUE(pcoord.equals(SbVec3f(0.3f, 0.7f, 0), 1e-12f));
    // A roof over the unit square: the point is projected along the normal, not along z.
    const float x[] = {0, 1, 1, 0}, y[] = {0, 0, 1, 1}, z[] = {0, 1, 1, 0};
    cell.set(0, x, y, z, 0, 1, 2, 3);
    EXPECT_EQ(cell.locatePoint(SbVec3f(0, 0.5f, 1), 0, pcoord), 1);
    EXPECT_TRUE(pcoord.equals(SbVec3f(0.5f, 0.5f, 0), 1e-12f));
    float derivs[8];
    cell.getDerivs(SbVec3f(0.25f, 0.5f, 0), derivs);
    EXPECT_EQ(std::vector<float>(derivs, derivs + 8),
              (std::vector<float>{-0.5f, 0.5f, 0.5f, -0.5f, -0.75f, -0.25f, 0.25f, 0.75f}));
}

TEST(PbQuadrangleCell, DegenerateOnesAndBadPointsAreOutside) {
    PbQuadrangleCell cell(nullptr);
    SbVec3f pcoord;
    EXPECT_EQ(cell.locatePoint(SbVec3f(test::NOT_A_NUMBER, 0, 0), 0, pcoord), 0);
    EXPECT_EQ(cell.locatePoint(SbVec3f(test::INFINITE, 0, 0), 0, pcoord), 0);
    const float folded[] = {0, 1, 0, 1}, bow[] = {0, 1, 1, 0}; // Jacobian 0 at the centre
    cell.set(0, folded, bow, 0, 1, 2, 3);
    EXPECT_EQ(cell.locatePoint(SbVec3f(0.5f, 0.5f, 0), 0, pcoord), 0);
    cell.set(0, X, Y, Y, 6, 7, 6, 7); // all nodes at one place in space: no normal
    EXPECT_EQ(cell.locatePoint(SbVec3f(2, 2, 2), 0, pcoord), 0);
    EXPECT_EQ(cell.set(0, X, nullptr, 0, 1, 2, 3), 0);
}

TEST(PbPixelCell, InterpolatesBilinearly) {
    PbPixelCell cell(nullptr);
    const float x[] = {0, 2}, y[] = {0, 4};
    cell.set(x, y, 2, 0, 0); // nodes 0, 2, 3, 1 of the grid
    const float values[] = {0, 0, 2, 2};
    const SbVec3f vectors[] = {{0, 0, 0}, {0, 0, 0}, {2, 1, 0}, {2, 1, 0}};
    SbVec3f pcoord;
    EXPECT_EQ(cell.locatePoint(SbVec3f(1, 2, 0), 0, pcoord), 1);
    EXPECT_EQ(cell.getValue(pcoord, values), 1);
    EXPECT_EQ(cell.getValue(pcoord, vectors), SbVec3f(1, 0.5f, 0));
    EXPECT_EQ(cell.locatePoint(SbVec3f(3, 5, 0), 0, pcoord), 0);
    EXPECT_EQ(pcoord, SbVec3f(1.5f, 1.25f, 0)) << "written for a point outside too";
    const PbPixelCell unused(nullptr);
    EXPECT_EQ(unused.getValue(pcoord, values), 0) << "its nodes are none of the mesh";
    EXPECT_EQ(PbQuadrangleCell(nullptr).getValue(pcoord, vectors), SbVec3f(0, 0, 0));
}

} // namespace
