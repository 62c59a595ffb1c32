#include "tools/DataFile.h"

#include "TemporaryFolder.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <array>

using oravane::GridFile;
using oravane::RawFile;

namespace {

const std::string gridHeader = "# A hill\n# nx: 3\n# ny: 2\n# x0: 10.5\n# y0: -1\n# dx: 2\n# dy: 0.5\n";

/// Each content, written to a file, is refused with the reason.
template <class Read>
void expectFaults(const TemporaryFolder &folder, Read read,
                  std::initializer_list<std::pair<std::string, std::string>> faults) {
    for (const auto &[content, reason] : faults) {
        const std::string path = folder.write("a.txt", content);
        EXPECT_EQ(refusalOf([&] { read(path); }), "cannot read " + path + ": " + reason);
    }
}

TEST(GridFile, RowsAlongXBecomeNodesAlongY) {
    const TemporaryFolder folder;
    const GridFile grid = oravane::readGridFile(
        folder.write("hill.txt", gridHeader + "# max: 6.5\n# missing: -9999\n1 2 3\r\n4 5\n6.5\n"));
    EXPECT_EQ(grid.numX, 3);
    EXPECT_EQ(grid.numY, 2);
    EXPECT_EQ(grid.values, (std::vector<float>{1, 4, 2, 5, 3, 6.5f}));
    EXPECT_EQ((std::array{grid.xmin, grid.xmax, grid.ymin, grid.ymax, grid.maximum}),
              (std::array{10.5f, 14.5f, -1.0f, -0.5f, 6.5f}));
    EXPECT_TRUE(grid.minimum != grid.minimum) << "the file states none";
    EXPECT_EQ(grid.missing, -9999.0f);
    EXPECT_FALSE(
        oravane::readGridFile(folder.write("none.txt", gridHeader + "# missing: none\n1 2 3 4 5 6")).missing);
}

TEST(GridFile, FaultsAreNamedWithTheFile) {
    const TemporaryFolder folder;
    expectFaults(folder, oravane::readGridFile,
                 {{"", "the line \"nx\" is missing"},
                  {"# nx: three\n", "the value of \"nx\" is no number: three"},
                  {"# nx: 3\n# ny: 2\n# x0: 0\n", "the line \"y0\" is missing"},
                  {"# nx: 1\n# ny: 2\n", "a grid has at least 2 x 2 nodes"},
                  {"# nx: -3\n# ny: -2\n", "a grid has at least 2 x 2 nodes"},
                  {gridHeader, "fewer values than nx times ny"},
                  {gridHeader + "1.25 2.25 3.25 4.25 5.25", "only 5 of 6 values"},
                  {gridHeader + "1 2 3 4 5 6 7", "more values than nx times ny"},
                  {gridHeader + "1 2 3 4 5 high", "not a number among the values: high"},
                  {gridHeader + "1 2 3 4 5 6,5", "not a number among the values: 6,5"},
                  {"# nx: 2000000000\n# ny: 2000000000\n# x0: 0\n# y0: 0\n# dx: 1\n# dy: 1\n1 2",
                   "fewer values than nx times ny"}});
    for (const std::string &nowhere : {folder.path("none.txt"), folder.path("")})
        EXPECT_EQ(refusalOf([&] { oravane::readGridFile(nowhere); }),
                  "cannot read " + nowhere + ": no such file");
}

TEST(RawFile, ArraysAreFoundByNameAndPlace) {
    const TemporaryFolder folder;
    // 1.5, -2 as float32 behind 7, -1 as int32, all little-endian
    folder.write("a.raw", std::string("\x07\0\0\0\xff\xff\xff\xff\0\0\xc0\x3f\0\0\0\xc0", 16));
    const RawFile file =
        oravane::readRawFile(folder.write("a.hdr", "# two arrays\nkind: test\ndims: 2 1\n"
                                                   "raw_file: a.raw\n"
                                                   "array: cells int32 2 1 0 - -1 7\n"
                                                   "array: speed float32 1 2 8 m/s -2 1.5\n"));
    EXPECT_EQ(file.dims, (std::vector<int>{2, 1}));
    EXPECT_EQ(file.keys.at("kind"), "test");
    EXPECT_EQ(file.arrays.at("cells").components, 2);
    EXPECT_EQ(file.arrays.at("cells").ints, (std::vector<int>{7, -1}));
    EXPECT_EQ(file.arrays.at("speed").floats, (std::vector<float>{1.5f, -2.0f}));
}

TEST(RawFile, FaultsAreNamedWithTheFile) {
    const TemporaryFolder folder;
    folder.write("a.raw", "12345678");
    const std::string tooLarge = "array \"v\" does not fit into the raw file";
    expectFaults(folder, oravane::readRawFile,
                 {{"kind: test\n", "the line \"raw_file\" is missing"},
                  {"dims: 2 x\nraw_file: a.raw\n", "the value of \"dims\" is not a list of sizes: 2 x"},
                  {"raw_file: a.raw\narray: v float32 1\n", "the line of array \"v\" is incomplete"},
                  {"raw_file: a.raw\narray: v float64 1 1 0\n", "array \"v\" is of unknown type float64"},
                  {"raw_file: a.raw\narray: v float32 1 3 0\n", tooLarge},
                  {"raw_file: a.raw\narray: v float32 1 2 4\n", tooLarge},
                  {"raw_file: a.raw\narray: v float32 0 2 0\n", tooLarge},
                  {"raw_file: a.raw\narray: v float32 4 4611686018427387905 0\n", tooLarge}});
    const std::string path = folder.write("a.hdr", "raw_file: b.raw\n");
    EXPECT_EQ(refusalOf([&] { oravane::readRawFile(path); }),
              "cannot read " + folder.path("b.raw") + ": no such file");
}

TEST(TableFile, ColumnsAreFoundByName) {
    const TemporaryFolder folder;
    const auto table = oravane::readTableFile(folder.write(
        "a.csv", "# A table\n# missing: -9999\nday,temp, wind\r\n2012-01-02,-2.5,-9999\r\n\n,3,1e1"));
    EXPECT_EQ(table.names, (std::vector<std::string>{"day", "temp", "wind"}));
    EXPECT_EQ(table.texts("day"), (std::vector<std::string>{"2012-01-02", ""}));
    EXPECT_EQ(table.numbers("temp"), (std::vector<float>{-2.5f, 3}));
    EXPECT_EQ(table.numbers("wind"), (std::vector<float>{-9999, 10}));
    EXPECT_EQ(table.missing, -9999.0f);
    const std::string start = "cannot read " + folder.path("a.csv") + ": ";
    EXPECT_EQ(refusalOf([&] { table.texts("Temp"); }), start + "there is no column \"Temp\"");
    EXPECT_EQ(refusalOf([&] { table.numbers("day"); }), start + "not a number in column \"day\": 2012-01-02");
}

TEST(TableFile, FaultsAreNamedWithTheFile) {
    expectFaults(TemporaryFolder(), oravane::readTableFile,
                 {{"", "the line of column names is missing"},
                  {"# a,b\n\n", "the line of column names is missing"},
                  {"# a table\na,b\n1,2\n3\n", "line 4 has not 2 values but 1"},
                  {"a,b\n1,2,\n", "line 2 has not 2 values but 3"},
                  {"a,b,a\n", "two columns are named \"a\""}});
}

/// The extremes of an array, of those values that are there.
std::array<float, 2> rangeOf(const std::vector<float> &values, float missing) {
    std::array<float, 2> range{1e30f, -1e30f};
    for (const float value : values)
        if (value != missing)
            range = {std::min(range[0], value), std::max(range[1], value)};
    return range;
}

TEST(DataOfTheExamples, IsWhatItsHeadersState) {
    const std::string folder = ORAVANE_SOURCE_DIR "/examples/data/";
    const GridFile terrain = oravane::readGridFile(folder + "grid2d_st_helens.txt");
    EXPECT_EQ(terrain.values.size(), 317u * 460);
    EXPECT_EQ(rangeOf(terrain.values, -9999), (std::array{terrain.minimum, terrain.maximum}));
    EXPECT_EQ(terrain.ymax, terrain.ymin + 459 * 30);

    const RawFile bay = oravane::readRawFile(folder + "tri2d_chesapeake_bay.hdr");
    const std::vector<int> &cells = bay.arrays.at("cells").ints;
    EXPECT_EQ(bay.arrays.at("points").floats.size(), 2u * 7258);
    EXPECT_EQ(cells.size(), 3u * 13044);
    EXPECT_EQ(*std::max_element(cells.begin(), cells.end()), 7257);
    EXPECT_EQ(rangeOf(bay.arrays.at("depth").floats, -9999), (std::array{2.0f, 35.2489014f}));

    const RawFile ocean = oravane::readRawFile(folder + "curv2d_ocean_pop.hdr");
    EXPECT_EQ(ocean.dims, (std::vector<int>{160, 182}));
    EXPECT_EQ(rangeOf(ocean.arrays.at("temperature").floats, -9999), (std::array{-1.8987534f, 31.1261768f}));

    const auto stations = oravane::readTableFile(folder + "scatter2d_stations_1995.csv");
    EXPECT_EQ(stations.rows.size(), 1042u);
    EXPECT_EQ(rangeOf(stations.numbers("slp"), *stations.missing), (std::array{996.0f, 1030.2f}));
}

} // namespace
