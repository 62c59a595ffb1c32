#ifndef ORAVANE_TESTS_AGREEMENT_H
#define ORAVANE_TESTS_AGREEMENT_H

#include "tools/Picture.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <array>
#include <cmath>

namespace oravane_test {

/// How alike two pictures of a sheet are, by the mean colours of squares of pixels.
struct Agreement {
    int blocks = 0;
    int different = 0; ///< blocks whose colours are farther apart than the limit
    int coloured = 0;  ///< blocks of the first picture that are not white
    int dark = 0, otherDark = 0;
    double ink = 0, otherInk = 0; ///< what is darker than white, summed up
    double mean = 0;              ///< of the differences, of 255
};

inline std::array<double, 3> blockMean(const oravane::Picture &picture, int u, int v, int size) {
    std::array<double, 3> mean{};
    for (int y = v; y < v + size; ++y)
        for (int x = u; x < u + size; ++x)
            for (std::size_t c = 0; c < 3; ++c)
                mean[c] += picture.at(x, y)[c] / static_cast<double>(size * size);
    return mean;
}

inline Agreement agreementOf(const oravane::Picture &picture, const oravane::Picture &other, double limit) {
    constexpr int BLOCK = 8;
    Agreement result;
    for (int v = BLOCK; v + 2 * BLOCK <= picture.height; v += BLOCK) { // the border has no part in it
        for (int u = BLOCK; u + 2 * BLOCK <= picture.width; u += BLOCK) {
            const auto a = blockMean(picture, u, v, BLOCK), b = blockMean(other, u, v, BLOCK);
            double largest = 0;
            for (std::size_t c = 0; c < 3; ++c)
                largest = std::max(largest, std::abs(a[c] - b[c]));
            result.mean += largest;
            ++result.blocks;
            result.different += largest > limit;
            result.coloured += a[0] + a[1] + a[2] < 3 * 250;
            result.dark += a[0] + a[1] + a[2] < 3 * 225;
            result.otherDark += b[0] + b[1] + b[2] < 3 * 225;
            result.ink += 3 * 255 - a[0] - a[1] - a[2];
            result.otherInk += 3 * 255 - b[0] - b[1] - b[2];
        }
    }
    result.mean /= result.blocks;
    return result;
}

} // namespace oravane_test

#endif
