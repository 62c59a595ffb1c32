#ifndef ORAVANE_TESTS_PAGERASTER_H
#define ORAVANE_TESTS_PAGERASTER_H

#include "tools/Picture.h"

#include <gtest/gtest.h>

#include <cstdio>
#include <filesystem>
#include <fstream>
#include <string>
#include <vector>

namespace oravane_test {

/// How the pages and the pictures that are compared are made.
constexpr inline double PAGE_HEIGHT = 297, START = 10, PIXELS_PER_MILLIMETER = 5;

/// The drawing on an A4 page, as Ghostscript shows it in the pixels of the picture `like`.
inline oravane::Picture drawingOf(const std::filesystem::path &page, const oravane::Picture &like) {
    namespace fs = std::filesystem;
    const fs::path raster = page.parent_path() / (page.stem().string() + ".raster.png");
    // At four times the resolution and averaged, as the pictures are: thin lines would come out too wide.
    const std::string command =
        "gs -q -dSAFER -dBATCH -dNOPAUSE -sDEVICE=png16m -dDownScaleFactor=4 -dFIXEDMEDIA -sPAPERSIZE=a4 -r" +
        std::to_string(4 * PIXELS_PER_MILLIMETER * 25.4) + " -o '" + raster.string() + "' '" + page.string() +
        "' 2>&1";
    FILE *pipe = popen(command.c_str(), "r");
    std::string complaints;
    for (int c = std::fgetc(pipe); c != EOF; c = std::fgetc(pipe))
        complaints += static_cast<char>(c);
    EXPECT_EQ(pclose(pipe), 0);
    EXPECT_EQ(complaints, "");
    const oravane::Picture whole = oravane::readPng(raster.string());
    fs::remove(raster);
    std::ifstream in(page);
    std::string line;
    bool isLandscape = false;
    for (int i = 0; i < 150 && std::getline(in, line); ++i)
        isLandscape = isLandscape || line == "90 rotate";
    oravane::Picture drawing{like.width, like.height, std::vector<unsigned char>(like.rgb.size())};
    for (int v = 0; v < like.height; ++v) {
        for (int u = 0; u < like.width; ++u) {
            // Millimetres from the lower left of the page; a landscape page is turned to the left.
            const double along = START + (u + 0.5) / PIXELS_PER_MILLIMETER;
            const double x = isLandscape ? START + (v + 0.5) / PIXELS_PER_MILLIMETER : along;
            const double y = isLandscape ? along : START + (like.height - v - 0.5) / PIXELS_PER_MILLIMETER;
            const auto pixel = whole.at(static_cast<int>(x * PIXELS_PER_MILLIMETER),
                                        static_cast<int>((PAGE_HEIGHT - y) * PIXELS_PER_MILLIMETER));
            for (std::size_t c = 0; c < 3; ++c)
                drawing.rgb[3 * (static_cast<std::size_t>(v) * like.width + u) + c] = pixel[c];
        }
    }
    return drawing;
}

} // namespace oravane_test

#endif
