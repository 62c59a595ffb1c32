#include "tools/Picture.h"

#include "TemporaryFolder.h"

#include <gtest/gtest.h>

using oravane::Picture;

namespace {

const Picture twoByThree{2, 3, {255, 0, 0, 0, 255, 0, 0, 0, 255, 1, 2, 3, 254, 253, 252, 128, 127, 126}};

TEST(Picture, ComesBackFromAFileAsItWas) {
    const TemporaryFolder folder;
    oravane::writePng(folder.path("a.png"), twoByThree);
    const Picture read = oravane::readPng(folder.path("a.png"));
    EXPECT_EQ(read.width, 2);
    EXPECT_EQ(read.height, 3);
    EXPECT_EQ(read.rgb, twoByThree.rgb);
    EXPECT_EQ(read.at(1, 0), (std::array<unsigned char, 3>{0, 255, 0})) << "column 1 of the top row";
}

TEST(Picture, RefusalsNameTheFileAndTheReason) {
    const TemporaryFolder folder;
    const std::string nowhere = folder.path("missing/a.png");
    EXPECT_EQ(refusalOf([&] { oravane::writePng(nowhere, twoByThree); }),
              "cannot write " + nowhere + ": No such file or directory");
    EXPECT_EQ(refusalOf([&] { oravane::readPng(nowhere); }),
              "cannot read " + nowhere + ": No such file or directory");
    const std::string noPicture = folder.write("text.png", "no picture at all");
    EXPECT_EQ(refusalOf([&] { oravane::readPng(noPicture); }),
              "cannot read " + noPicture + ": Not a PNG file");
    for (const Picture &bad : {Picture{}, Picture{2, 2, {1, 2, 3}}, Picture{-1, -1, {1, 2, 3}}})
        EXPECT_NE(refusalOf([&] { oravane::writePng(folder.path("b.png"), bad); }), "");
    EXPECT_FALSE(std::filesystem::exists(folder.path("b.png")));
}

} // namespace
