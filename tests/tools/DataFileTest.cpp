#include "tools/DataFile.h"

#include "TemporaryFolder.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <array>

using oravane::GridFile;
using oravane::RawFile;

namespace {

const std::string gridHeader = "# A hill\n# nx: 3\n# ny: 2\n# x0: 10.5\n# y0: -1\n# dx: 2\n# dy: 0.5\n";

struct Fault {
    std::string content, reason;
};

/// Each content, written to a file, is refused with the reason.
template <class Read>
void expectFaults(const TemporaryFolder &folder, const std::vector<Fault> &faults, Read read) {
    for (const Fault &fault : faults) {
        const std::string path = folder.write("a.txt", fault.content);
        EXPECT_EQ(refusalOf([&] { read(path); }), "cannot read " + path + ": " + fault.reason);
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
    const std::vector<Fault> faults{
        {"", "the line \"nx\" is missing"},
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
         "fewer values than nx times ny"},
    };
    expectFaults(folder, faults, oravane::readGridFile);
    for (const std::string &nowhere : {folder.path("none.txt"), folder.path("")})
        EXPECT_EQ(refusalOf([&] { oravane::readGridFile(nowhere); }),
                  "cannot read " + nowhere + ": no such file");
}

TEST(GridFile, TheTerrainOfTheExamplesIsWhatItsHeaderStates) {
    const GridFile grid = oravane::readGridFile(ORAVANE_SOURCE_DIR "/examples/data/grid2d_st_helens.txt");
    ASSERT_EQ(grid.numX, 317);
    ASSERT_EQ(grid.numY, 460);
    EXPECT_EQ(*std::min_element(grid.values.begin(), grid.values.end()), grid.minimum);
    EXPECT_EQ(*std::max_element(grid.values.begin(), grid.values.end()), grid.maximum);
    EXPECT_EQ(grid.ymax, grid.ymin + 459 * 30);
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
    const std::vector<Fault> faults{
        {"kind: test\n", "the line \"raw_file\" is missing"},
        {"dims: 2 x\nraw_file: a.raw\n", "the value of \"dims\" is not a list of sizes: 2 x"},
        {"raw_file: a.raw\narray: v float32 1\n", "the line of array \"v\" is incomplete"},
        {"raw_file: a.raw\narray: v float64 1 1 0\n", "array \"v\" is of unknown type float64"},
        {"raw_file: a.raw\narray: v float32 1 3 0\n", tooLarge},
        {"raw_file: a.raw\narray: v float32 1 2 4\n", tooLarge},
        {"raw_file: a.raw\narray: v float32 0 2 0\n", tooLarge},
        {"raw_file: a.raw\narray: v float32 4 4611686018427387905 0\n", tooLarge},
    };
    expectFaults(folder, faults, oravane::readRawFile);
    const std::string path = folder.write("a.hdr", "raw_file: b.raw\n");
    EXPECT_EQ(refusalOf([&] { oravane::readRawFile(path); }),
              "cannot read " + folder.path("b.raw") + ": no such file");
}

} // namespace
