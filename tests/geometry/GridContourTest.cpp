#include "geometry/GridContour.h"
#include "geometry/IndexedContour.h"

#include "geometry/ContourFields.h"
#include "geometry/ContourReference.h"

#include <gtest/gtest.h>

#include <cmath>
#include <numeric>

using namespace oravane;

namespace {

/// A grid of one kind, with the arrays that its positions refer to.
struct Grid {
    int numI, numJ;
    std::vector<float> x, y, z;
    GridPositions positions = SeparablePositions{nullptr, nullptr};

    std::vector<Ppoint3> nodes() const {
        std::vector<Ppoint3> result;
        for (int i = 0; i < numI; ++i)
            for (int j = 0; j < numJ; ++j) {
                const auto [px, py] = std::visit([&](const auto &p) { return p.node(i, j); }, positions);
                result.push_back({px, py, z.empty() ? 0 : z[i * numJ + j]});
            }
        return result;
    }
    const float *zData() const { return z.empty() ? nullptr : z.data(); }
};

enum Kind { CARTESIAN, SEPARABLE, POLAR };
const char *const kindNames[] = {"cartesian", "separable", "polar"};

/// `grid` has to stay where it is, its positions point into it.
void makeGrid(Kind kind, int numI, int numJ, Grid &grid) {
    grid.numI = numI;
    grid.numJ = numJ;
    if (kind == CARTESIAN) {
        for (int n = 0; n < numI * numJ; ++n) {
            grid.x.push_back(static_cast<float>(n / numJ) + 0.2f * std::sin(static_cast<float>(3 * n)));
            grid.y.push_back(static_cast<float>(n % numJ) + 0.2f * std::cos(static_cast<float>(5 * n)));
            grid.z.push_back(0.1f * static_cast<float>(n % 7));
        }
        grid.positions = CartesianPositions{grid.x.data(), grid.y.data(), static_cast<std::size_t>(numJ)};
        return;
    }
    for (int i = 0; i < numI; ++i)
        grid.x.push_back(1 + 0.25f * static_cast<float>(i));
    for (int j = 0; j < numJ; ++j)
        grid.y.push_back(kind == POLAR ? 0.01f * static_cast<float>(j) : 2 - 0.25f * static_cast<float>(j));
    if (kind == SEPARABLE)
        grid.positions = SeparablePositions{grid.x.data(), grid.y.data()};
    else
        grid.positions = PolarPositions(grid.x.data(), grid.y);
}

ContourReference referenceOf(const ContourCase &field, const Grid &grid) {
    ContourReference reference(field.levels, field.values, grid.nodes());
    const int nx = field.numI, ny = field.numJ;
    for (int i = 0; i + 1 < nx; ++i)
        for (int j = 0; j + 1 < ny; ++j)
            reference.addCell({i * ny + j, (i + 1) * ny + j, (i + 1) * ny + j + 1, i * ny + j + 1});
    reference.searchGrid(nx, ny, [&](int a, int b, float iso) {
        const float va = field.values[a], vb = field.values[b];
        const int i = a / ny, j = a % ny;
        const auto [x, y] = std::visit(
            [&](const auto &p) {
                return b - a == 1 && ny > 1 ? p.alongJ(i, j, va, vb)(iso) : p.alongI(i, j, va, vb)(iso);
            },
            grid.positions);
        const float *z = grid.zData();
        return Ppoint3{x, y, z ? static_cast<float>(EdgeCoordinate(z[a], va, z[b], vb).at(iso)) : 0};
    });
    return reference;
}

std::vector<ContourReference::Line> toLines(const IsoLines &lines, const std::vector<float> &levels) {
    std::vector<ContourReference::Line> result;
    for (const IsoLines::Line &line : lines.lines)
        result.push_back({{lines.points.begin() + static_cast<std::ptrdiff_t>(line.start),
                           lines.points.begin() + static_cast<std::ptrdiff_t>(line.start + line.count)},
                          levels[line.level]});
    return result;
}

/// Result of making bands, in vectors.
struct Bands {
    BandCounts counts;
    std::vector<Ppoint3> points;
    std::vector<std::int32_t> indices, bands;
    BandTable table;

    void resize() {
        points.resize(counts.points);
        indices.resize(counts.indices);
        bands.resize(counts.pieces);
    }
    void trim(const BandFaces &faces) {
        indices.resize(faces.numIndices());
        bands.resize(faces.numPieces());
    }
    std::vector<std::vector<int>> polygons() const {
        std::vector<std::vector<int>> result;
        std::vector<int> polygon;
        for (const int index : indices) {
            if (index >= 0) {
                polygon.push_back(index);
                continue;
            }
            result.push_back(std::exchange(polygon, {}));
        }
        return result;
    }
    double area() const {
        double twice = 0;
        for (const std::vector<int> &polygon : polygons())
            for (std::size_t k = 0; k < polygon.size(); ++k) {
                const Ppoint3 &p = points[polygon[k]], &q = points[polygon[(k + 1) % polygon.size()]];
                twice += static_cast<double>(p.x) * q.y - static_cast<double>(q.x) * p.y;
            }
        return twice / 2;
    }
};

GridField fieldOn(const Grid &grid, const ContourCase &field) {
    return {field.numI, field.numJ, field.values.data(), grid.zData(), grid.zData()};
}

Bands gridBands(GridContour &engine, const ContourCase &field, const Grid &grid, bool merged = false) {
    Bands result;
    IsoLevels levels;
    levels.assign(field.levels);
    result.table.assign(field.levels);
    result.counts = engine.countBands(fieldOn(grid, field), levels);
    result.resize();
    BandFaces faces(result.table, result.indices.data(), result.bands.data());
    engine.fillBands(grid.positions, merged, result.points.data(), faces);
    result.trim(faces);
    return result;
}

void expectSamePieces(const Bands &made, ContourReference &reference) {
    EXPECT_EQ(made.points, reference.points());
    EXPECT_EQ(static_cast<int>(made.counts.pieces), reference.countPieces());
    const std::vector<ContourReference::Piece> expected = reference.pieces();
    const std::vector<std::vector<int>> polygons = made.polygons();
    ASSERT_EQ(polygons.size(), expected.size());
    for (std::size_t k = 0; k < expected.size(); ++k) {
        ASSERT_EQ(polygons[k], expected[k].points) << "piece " << k;
        ASSERT_EQ(made.bands[k], made.table.find(expected[k].mean, 0)) << "piece " << k;
    }
}

TEST(GridContour, MakesWhatTheDefinitionMakes) {
    GridContour engine; // one for all: nothing of one contouring may be left in the next
    for (const ContourCase &field : contourCases())
        for (const Kind kind : {CARTESIAN, SEPARABLE, POLAR}) {
            SCOPED_TRACE(field.name + ", " + kindNames[kind]);
            Grid grid;
            makeGrid(kind, field.numI, field.numJ, grid);
            ContourReference reference = referenceOf(field, grid);
            expectSamePieces(gridBands(engine, field, grid), reference);
            IsoLevels levels;
            levels.assign(field.levels);
            IsoLines lines;
            engine.makeLines({field.numI, field.numJ, field.values.data(), grid.zData()}, grid.positions,
                             levels, lines);
            EXPECT_EQ(toLines(lines, field.levels), reference.lines());
        }
}

TEST(IndexedContour, MakesWhatTheDefinitionMakes) {
    IndexedContour engine;
    for (const ContourCase &field : contourCases())
        for (const bool triangles : {false, true}) {
            SCOPED_TRACE(field.name + (triangles ? ", triangles" : ", quadrangles"));
            Grid grid;
            makeGrid(triangles ? CARTESIAN : SEPARABLE, field.numI, field.numJ, grid);
            ContourReference reference(field.levels, field.values, grid.nodes());
            std::vector<MeshCell> cells;
            const auto add = [&](const std::vector<std::int32_t> &nodes) {
                reference.addCell(nodes);
                addPolygon(nodes, cells);
            };
            for (int i = 0; i + 1 < field.numI; ++i)
                for (int j = 0; j + 1 < field.numJ; ++j) {
                    const int a = i * field.numJ + j, b = a + field.numJ, c = b + 1, d = a + 1;
                    if (!triangles) {
                        add({b, c, d, a});
                    } else {
                        add({c, d, a});
                        add({c, a, b});
                    }
                }
            reference.searchIndexed(triangles);

            const std::vector<Ppoint3> nodes = grid.nodes();
            const MeshField mesh{cells, nodes, field.values.data(), triangles};
            IsoLevels levels;
            levels.assign(field.levels);
            Bands bands;
            bands.table.assign(field.levels);
            bands.counts = engine.countBands(mesh, levels);
            bands.resize();
            BandFaces faces(bands.table, bands.indices.data(), bands.bands.data());
            engine.fillBands(bands.points.data(), faces);
            bands.trim(faces);
            expectSamePieces(bands, reference);
            IsoLines lines;
            engine.makeLines(mesh, levels, lines);
            EXPECT_EQ(toLines(lines, field.levels), reference.lines());
        }
}

TEST(IndexedContour, LeavesOutCellsItCannotRead) {
    const std::vector<Ppoint3> nodes{{0, 0, 0}, {1, 0, 0}, {1, 1, 0}, {0, 1, 0}};
    const float values[] = {0, 1, 0, 1};
    const std::vector<MeshCell> cells{
        {{0, 1, 7, 0}, 3}, {{0, -1, 2, 0}, 3}, {{0, 1, 2, 3}, 0}, {{0, 1, 0, 1}, 4}};
    IsoLevels levels;
    const float level = 0.5f;
    levels.assign({&level, 1});
    IndexedContour engine;
    EXPECT_EQ(engine.countBands({cells, nodes, values}, levels).pieces, 3u)
        << "a cell folded onto one edge has two crossings";
    IsoLines lines;
    engine.makeLines({cells, nodes, values}, levels, lines);
    engine.makeLines({{}, {}, nullptr}, levels, lines);
    EXPECT_TRUE(lines.lines.empty());
}

TEST(IndexedContour, TakesPolygonsApart) {
    std::vector<MeshCell> cells;
    const std::int32_t nodes[] = {10, 11, 12, 13, 14, 15};
    for (const std::size_t n : {0, 1, 2, 3, 5, 6})
        addPolygon({nodes, n}, cells);
    ASSERT_EQ(cells.size(), 5u);
    const std::vector<std::vector<std::int32_t>> expected{
        {10, 11, 12}, {10, 11, 12, 13}, {10, 13, 14}, {10, 11, 12, 13}, {10, 13, 14, 15}};
    for (std::size_t k = 0; k < cells.size(); ++k)
        EXPECT_EQ(std::vector(cells[k].nodes.begin(), cells[k].nodes.begin() + cells[k].sides), expected[k]);
}

TEST(GridContour, PiecesCoverTheGridOnceUnlessOneIsTooLarge) {
    GridContour engine;
    for (const ContourCase &field : contourCases()) {
        SCOPED_TRACE(field.name);
        const bool partial = field.name == "holes" || field.name == "levels out of order" ||
                             field.name == "saddles, levels out of order";
        if (field.numI < 2 || field.numJ < 2 || partial)
            continue;
        Grid grid;
        makeGrid(SEPARABLE, field.numI, field.numJ, grid);
        const double area = (grid.x.back() - grid.x.front()) * (grid.y.back() - grid.y.front());
        EXPECT_NEAR(gridBands(engine, field, grid).area(), area, 1e-5 * std::abs(area));
        EXPECT_NEAR(gridBands(engine, field, grid, true).area(), area, 1e-5 * std::abs(area));
    }
}

TEST(GridContour, FiveLevelsAcrossTwoSidesMakeSixPieces) {
    const ContourCase field{"", 2, 2, {0, 0, 1, 0}, {0.1f, 0.3f, 0.5f, 0.7f, 0.9f}};
    Grid grid;
    makeGrid(SEPARABLE, 2, 2, grid);
    GridContour engine;
    const Bands bands = gridBands(engine, field, grid);
    // Nodes 0, 2, 3, 1 in cycle order, then the crossings of side 0 (4 to 8) and of side 1 (9 to 13).
    const std::vector<std::vector<int>> expected{{0, 4, 9, 3, 1}, {5, 10, 9, 4},  {6, 11, 10, 5},
                                                 {7, 12, 11, 6},  {8, 13, 12, 7}, {2, 13, 8}};
    EXPECT_EQ(bands.polygons(), expected);
    EXPECT_EQ(bands.bands, (std::vector<std::int32_t>{0, 1, 2, 3, 4, 5}));
}

TEST(GridContour, SaddleOnASquareJoinsTheFirstSideWithTheSecond) {
    const ContourCase field{"", 2, 2, {0, 1, 1, 0}, {0.5f}}; // corners in cycle order: 0, 1, 0, 1
    Grid grid;
    makeGrid(SEPARABLE, 2, 2, grid);
    grid.x = {0, 1};
    grid.y = {0, 1};
    grid.positions = SeparablePositions{grid.x.data(), grid.y.data()};
    IsoLevels levels;
    levels.assign(field.levels);
    GridContour engine;
    IsoLines lines;
    engine.makeLines(fieldOn(grid, field), grid.positions, levels, lines);
    const std::vector<ContourReference::Line> expected{{{{0.5f, 0, 0}, {1, 0.5f, 0}}, 0.5f},
                                                       {{{0.5f, 1, 0}, {0, 0.5f, 0}}, 0.5f}};
    EXPECT_EQ(toLines(lines, field.levels), expected);
}

TEST(GridContour, PolarCrossingsLieOnTheCircle) {
    const ContourCase field = contourCase("", 5, 40, evenLevels(0.05f, 1, 9),
                                          [](int, int j) { return 0.5 + 0.5 * std::sin(0.4 * j); });
    Grid grid;
    makeGrid(POLAR, 5, 40, grid);
    for (float &angle : grid.y)
        angle *= 12;
    grid.positions = PolarPositions(grid.x.data(), grid.y);
    GridContour engine;
    const Bands bands = gridBands(engine, field, grid);
    ASSERT_GT(bands.points.size(), 200u + 100u);
    for (std::size_t k = 200; k < bands.points.size(); ++k) {
        const double radius = std::hypot(bands.points[k].x, bands.points[k].y);
        EXPECT_NEAR(radius * 4, std::round(radius * 4), 1e-5) << "on one of the five circles";
    }
}

TEST(GridContour, MergesUncrossedCellsToTheLargestRectangle) {
    // Crossed cells around node (3, 4) only: the rest is one band, drawn in few rectangles.
    const ContourCase field = contourCase("", 8, 9, {0.5f}, [](int i, int j) { return i == 3 && j == 4; });
    Grid grid;
    makeGrid(SEPARABLE, 8, 9, grid);
    GridContour engine;
    const Bands merged = gridBands(engine, field, grid, true);
    const std::vector<std::vector<int>> polygons = merged.polygons();
    EXPECT_EQ(polygons.front(), (std::vector<int>{0, 7 * 9, 7 * 9 + 3, 3})) << "7 x 3 cells beat 2 x 8";
    EXPECT_LT(polygons.size(), 8u + 6u);
    EXPECT_NEAR(merged.area(), gridBands(engine, field, grid).area(), 1e-5);
}

TEST(BandFaces, TakesOutPiecesOfBandsThatAreNotDrawn) {
    const ContourCase field = contourCase("", 10, 10, {3.5f, 5.5f}, [](int i, int) { return i; });
    Grid grid;
    makeGrid(SEPARABLE, 10, 10, grid);
    IsoLevels levels;
    levels.assign(field.levels);
    BandTable table;
    table.assign(field.levels);
    GridContour engine;
    const BandCounts counts = engine.countBands(fieldOn(grid, field), levels);
    std::vector<Ppoint3> points(counts.points);
    std::vector<std::int32_t> indices(counts.indices), bands(counts.pieces);
    BandFaces faces(table, indices.data(), bands.data());
    engine.fillBands(grid.positions, false, points.data(), faces);
    faces.keepOnly([](int band) { return band != 1; });
    EXPECT_EQ(faces.numPieces(), counts.pieces - 9 * 3) << "two columns of halves and one of whole cells";
    EXPECT_EQ(faces.numIndices(), faces.numPieces() * 5);
    EXPECT_EQ(std::count(faces.pieceBands().begin(), faces.pieceBands().end(), 1), 0);
}

TEST(IsoLevels, CountsAndSearchesTheSameBands) {
    std::vector<float> levels = evenLevels(-1, 1, 60), values;
    for (int k = 0; k < 3000; ++k)
        values.push_back(1.2f * std::sin(0.37f * static_cast<float>(k)));
    values.insert(values.end(), levels.begin(), levels.end());
    values.insert(values.end(), {NAN, INFINITY, -INFINITY, 1e38f});
    std::vector<std::int32_t> counted(values.size()), searched(values.size());
    IsoLevels few, many;
    few.assign(levels);
    few.classify(values, counted.data());
    levels.insert(levels.begin() + 7, NAN);
    levels.insert(levels.end(), 10, 1e38f); // makes them too many to count, and bounds nothing below
    many.assign(levels);
    many.classify(values, searched.data());
    EXPECT_EQ(counted, searched);
    EXPECT_EQ(*(counted.end() - 4), IsoLevels::NO_BAND);
    EXPECT_EQ(*(counted.end() - 3), IsoLevels::NO_BAND);
    EXPECT_EQ(*(counted.end() - 2), IsoLevels::NO_BAND);
}

} // namespace
