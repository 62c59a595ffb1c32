#include "vectorize/PageText.h"

#include <gtest/gtest.h>

#include <bit>
#include <cmath>
#include <cstdio>
#include <random>

namespace {

using oravane::PageText;
using oravane::shortenNumbers;

void expectAsPrinted(float value) {
    char printed[400];
    const int length = std::snprintf(printed, sizeof printed, "%.2f", static_cast<double>(value));
    PageText text, shortText;
    ASSERT_EQ(text.fixed2(value).view(), printed);
    ASSERT_EQ(shortText.shortFixed2(value), length) << printed;
    ASSERT_EQ(shortText.view(), shortenNumbers(printed)) << printed;

    std::snprintf(printed, sizeof printed, "%g", static_cast<double>(value));
    const std::string general = printed;
    const std::size_t end = std::min(general.find('e'), general.size());
    const bool hasPoint = general.find('.') != std::string::npos;
    PageText generalText;
    ASSERT_EQ(generalText.general(value).view(),
              hasPoint ? general : general.substr(0, end) + "." + general.substr(end));
}

TEST(PageText, NumbersAreThoseOfPrintf) {
    for (const float value :
         {0.0f,       -0.0f,      0.005f,      0.015f,    0.125f,    0.375f,      -0.125f, 0.995f, 99.995f,
          1e-30f,     -1e-30f,    16777215.0f, 999999.5f, 999999.4f, 9.99999e-5f, 0.0001f, 1e-5f,  100000.5f,
          0.1000005f, 8388607.5f, 2.2e13f,     2.3e13f,   1e15f,     -3.4e38f,    190.0f})
        expectAsPrinted(value);
    std::mt19937 random(7);
    for (int i = 0; i < 200000; ++i) {
        const auto value = std::bit_cast<float>(static_cast<std::uint32_t>(random()));
        if (std::isfinite(value))
            expectAsPrinted(value);
        expectAsPrinted(std::ldexp(static_cast<float>(static_cast<std::int32_t>(random())), -24));
    }
    PageText text;
    text.fixed2(1.005).fixed(-2.8346456691, 6).fixed(-1e300, 0);
    EXPECT_EQ(text.view().substr(0, 13), "1.00-2.834646");
}

TEST(PageText, OtherNumbers) {
    PageText text;
    text.fixed2(HUGE_VALF) << " ";
    text.fixed2(std::nan("")) << " ";
    text.shortFixed2(-HUGE_VALF);
    text << " ";
    text.hexByte(0x0A).hex(0xFF8000, 6) << " " << -17 << "!";
    EXPECT_EQ(text.view(), "0.00 0.00 0 0AFF8000 -17!") << "what is not finite is 0";
}

TEST(PageText, ShortensLinesWithoutChangingValues) {
    const std::pair<const char *, const char *> cases[] = {{"1.50 2.00", "1.5 2"},
                                                           {"  1.50   2.05 0.00 gc  ", "1.5 2.05 0 gc"},
                                                           {"100 ppl", "100 ppl"},
                                                           {"-0.00 10.10 100", "-0 10.1 100"},
                                                           {".00 .50 x", ". .5 x"},
                                                           {"Times1.50b 2.00", "Times1.50b 2"},
                                                           {"   ", ""}};
    for (const auto &[text, expected] : cases)
        EXPECT_EQ(shortenNumbers(text), expected) << "'" << text << "'";
}

} // namespace
