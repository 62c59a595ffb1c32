#include "geometry/GridContour.h"
#include "geometry/IndexedContour.h"

#include "geometry/ContourReference.h"

#include <gtest/gtest.h>

using namespace oravane;

namespace {

enum Kind { CARTESIAN, SEPARABLE, POLAR };
const char *const kindNames[] = {"cartesian", "separable", "polar"};

/// A field on a grid of one kind, with the arrays that its positions refer to.
struct Grid {
    Grid(Kind kindOfGrid, const ContourCase &contourCase) : kind(kindOfGrid), field(contourCase) {
        levels.assign(field.levels);
        if (kind == CARTESIAN) {
            for (int n = 0; n < field.numI * field.numJ; ++n) {
                const auto i = static_cast<float>(n / field.numJ), j = static_cast<float>(n % field.numJ);
                x.push_back(i + 0.2f * std::sin(static_cast<float>(3 * n)));
                y.push_back(j + 0.2f * std::cos(static_cast<float>(5 * n)));
                z.push_back(0.1f * static_cast<float>(n % 7));
            }
            positions = CartesianPositions{x.data(), y.data(), static_cast<std::size_t>(field.numJ)};
            return;
        }
        for (int i = 0; i < field.numI; ++i)
            x.push_back(1 + 0.25f * static_cast<float>(i));
        for (int j = 0; j < field.numJ; ++j)
            y.push_back(kind == POLAR ? 0.1f * static_cast<float>(j) : 2 - 0.25f * static_cast<float>(j));
        if (kind == SEPARABLE)
            positions = SeparablePositions{x.data(), y.data()};
        else
            positions = PolarPositions(x.data(), y);
    }
    Grid(const Grid &) = delete;
    Grid &operator=(const Grid &) = delete;

    /// Where the coordinates that `between` mixes of those of nodes a and b lead to.
    template <class Between>
    Ppoint3 pointAt(int a, int b, Between between) const {
        const int ny = kind == CARTESIAN ? 1 : field.numJ; // an x for each i, or for each node
        const int ja = kind == CARTESIAN ? a : a % ny, jb = kind == CARTESIAN ? b : b % ny;
        const double u = between(x[a / ny], x[b / ny]), v = between(y[ja], y[jb]);
        const float pz = z.empty() ? 0 : static_cast<float>(between(z[a], z[b]));
        if (kind == POLAR)
            return {static_cast<float>(u * std::cos(v)), static_cast<float>(u * std::sin(v)), pz};
        return {static_cast<float>(u), static_cast<float>(v), pz};
    }
    Ppoint3 crossing(int a, int b, float iso) const {
        const double va = field.values[a], vb = field.values[b];
        return pointAt(a, b, [=](double pa, double pb) {
            const double slope = (pa - pb) / (va - vb);
            return slope * iso + (pa - slope * va);
        });
    }
    std::vector<Ppoint3> nodes() const {
        std::vector<Ppoint3> result;
        for (int n = 0; n < field.numI * field.numJ; ++n)
            result.push_back(pointAt(n, n, [](double p, double) { return p; }));
        return result;
    }
    GridField gridField() const {
        const float *pz = z.empty() ? nullptr : z.data();
        return {field.numI, field.numJ, field.values.data(), pz, pz};
    }
    /// Calls `add(a, b, c, d)` with the corners of each cell.
    template <class Add>
    void forEachCell(Add add) const {
        for (int i = 0; i + 1 < field.numI; ++i)
            for (int j = 0; j + 1 < field.numJ; ++j) {
                const int a = i * field.numJ + j, b = a + field.numJ;
                add(a, b, b + 1, a + 1);
            }
    }

    Kind kind;
    const ContourCase &field;
    std::vector<float> x, y, z;
    GridPositions positions = SeparablePositions{nullptr, nullptr};
    IsoLevels levels;
};

std::vector<ContourReference::Line> toLines(const IsoLines &lines, const std::vector<float> &levels) {
    std::vector<ContourReference::Line> result;
    for (const IsoLines::Line &line : lines.lines) {
        const auto start = lines.points.begin() + static_cast<std::ptrdiff_t>(line.start);
        result.push_back({{start, start + static_cast<std::ptrdiff_t>(line.count)}, levels[line.level]});
    }
    return result;
}

/// Result of making bands. `fill(points, faces)` makes them.
struct Bands {
    template <class Fill>
    Bands(const std::vector<float> &levels, const BandCounts &bandCounts, Fill fill)
        : counts(bandCounts), points(counts.points), indices(counts.indices), bands(counts.pieces) {
        table.assign(levels);
        BandFaces faces(table, indices.data(), bands.data());
        fill(points.data(), faces);
        indices.resize(faces.numIndices());
        bands.resize(faces.numPieces());
    }
    std::vector<std::vector<int>> polygons() const { return polygonsOf(indices); }
    double area() const { return areaOf(polygons(), points); }

    BandCounts counts;
    std::vector<Ppoint3> points;
    std::vector<std::int32_t> indices, bands;
    BandTable table;
};

Bands gridBands(GridContour &engine, const Grid &grid, bool isMerging = false) {
    const BandCounts counts = engine.countBands(grid.gridField(), grid.levels);
    return Bands(grid.field.levels, counts, [&](Ppoint3 *points, BandFaces &faces) {
        engine.fillBands(grid.positions, isMerging, points, faces);
    });
}

void expectSame(const Bands &made, const IsoLines &lines, const Grid &grid, ContourReference &reference) {
    EXPECT_EQ(made.points, reference.points());
    EXPECT_EQ(static_cast<int>(made.counts.pieces), reference.countPieces());
    const std::vector<ContourReference::Piece> expected = reference.pieces();
    const std::vector<std::vector<int>> polygons = made.polygons();
    ASSERT_EQ(polygons.size(), expected.size());
    for (std::size_t k = 0; k < expected.size(); ++k) {
        ASSERT_EQ(polygons[k], expected[k].points) << "piece " << k;
        ASSERT_EQ(made.bands[k], made.table.find(expected[k].mean, 0)) << "piece " << k;
    }
    EXPECT_EQ(toLines(lines, grid.field.levels), reference.lines());
}

TEST(GridContour, MakesWhatTheDefinitionMakes) {
    GridContour engine; // one for all: nothing of one contouring may be left in the next
    for (const ContourCase &field : contourCases())
        for (const Kind kind : {CARTESIAN, SEPARABLE, POLAR}) {
            SCOPED_TRACE(field.name + ", " + kindNames[kind]);
            const Grid grid(kind, field);
            ContourReference reference(field.levels, field.values, grid.nodes());
            grid.forEachCell([&](int a, int b, int c, int d) { reference.addCell({a, b, c, d}); });
            reference.searchGrid(field.numI, field.numJ,
                                 [&](int a, int b, float iso) { return grid.crossing(a, b, iso); });
            const Bands bands = gridBands(engine, grid);
            IsoLines lines;
            engine.makeLines(grid.gridField(), grid.positions, grid.levels, lines);
            expectSame(bands, lines, grid, reference);
        }
}

TEST(IndexedContour, MakesWhatTheDefinitionMakes) {
    IndexedContour engine;
    for (const ContourCase &field : contourCases())
        for (const bool triangles : {false, true}) {
            SCOPED_TRACE(field.name + (triangles ? ", triangles" : ", quadrangles"));
            const Grid grid(triangles ? CARTESIAN : SEPARABLE, field);
            const std::vector<Ppoint3> nodes = grid.nodes();
            ContourReference reference(field.levels, field.values, nodes);
            std::vector<MeshCell> cells;
            const auto add = [&](const std::vector<std::int32_t> &corners) {
                reference.addCell(corners);
                addPolygon(corners, cells);
            };
            grid.forEachCell([&](int a, int b, int c, int d) {
                add(triangles ? std::vector{c, d, a} : std::vector{b, c, d, a});
                if (triangles)
                    add({c, a, b});
            });
            reference.searchIndexed(triangles);
            const MeshField mesh{cells, nodes, field.values.data(), triangles};
            const BandCounts counts = engine.countBands(mesh, grid.levels);
            const Bands bands(field.levels, counts,
                              [&](Ppoint3 *points, BandFaces &faces) { engine.fillBands(points, faces); });
            IsoLines lines;
            engine.makeLines(mesh, grid.levels, lines);
            expectSame(bands, lines, grid, reference);
        }
}

TEST(IndexedContour, LeavesOutCellsItCannotRead) {
    const std::vector<Ppoint3> nodes(4);
    const float values[] = {0, 1, 0, 1}, level = 0.5f;
    const std::vector<MeshCell> cells{
        {{0, 1, 7, 0}, 3}, {{0, -1, 2, 0}, 3}, {{0, 1, 2, 3}, 0}, {{0, 1, 0, 1}, 4}};
    IsoLevels levels;
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
    const std::int32_t nodes[] = {10, 11, 12, 13, 14, 15};
    std::vector<MeshCell> cells;
    for (const std::size_t n : {0, 1, 2, 3, 5, 6})
        addPolygon({nodes, n}, cells);
    std::vector<std::vector<std::int32_t>> made;
    for (const MeshCell &cell : cells)
        made.emplace_back(cell.nodes.begin(), cell.nodes.begin() + cell.sides);
    EXPECT_EQ(made, (std::vector<std::vector<std::int32_t>>{
                        {10, 11, 12}, {10, 11, 12, 13}, {10, 13, 14}, {10, 11, 12, 13}, {10, 13, 14, 15}}));
}

TEST(GridContour, MergesUncrossedCellsToTheLargestRectangle) {
    // Crossed cells around node (3, 4) only: the rest is one band, drawn in few rectangles.
    const ContourCase field = contourCase("", 8, 9, {0.5f}, [](int i, int j) { return i == 3 && j == 4; });
    GridContour engine;
    const std::vector<std::vector<int>> polygons = gridBands(engine, Grid(SEPARABLE, field), true).polygons();
    EXPECT_EQ(polygons.front(), (std::vector<int>{0, 7 * 9, 7 * 9 + 3, 3})) << "7 x 3 cells beat 2 x 8";
    EXPECT_LT(polygons.size(), 8u + 6u);
    for (const ContourCase &other : contourCases()) {
        const Grid grid(SEPARABLE, other);
        EXPECT_NEAR(gridBands(engine, grid, true).area(), gridBands(engine, grid).area(), 1e-4) << other.name;
    }
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
    EXPECT_EQ(std::count(counted.end() - 4, counted.end() - 1, IsoLevels::NO_BAND), 3);
}

} // namespace
