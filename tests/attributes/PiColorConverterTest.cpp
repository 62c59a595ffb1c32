#include <oravane/PiColorConverter.h>

#include "attributes/AttributeTest.h"

namespace {

TEST(PiColorConverter, KnownColours) {
    const struct {
        SbVec3f hls;
        SbColor rgb;
    } rows[] = {
        {SbVec3f(0, 0.5f, 1), red},
        {SbVec3f(120, 0.5f, 1), green},
        {SbVec3f(0, 0.5f, 0), grey},
        {SbVec3f(30, 0.5f, 1), SbColor(1, 0.5f, 0)},
        {SbVec3f(0, 0.75f, 1), SbColor(1, 0.5f, 0.5f)},
    };
    for (const auto &row : rows) {
        EXPECT_TRUE(PiColorConverter::toRGB(row.hls.getValue()).equals(row.rgb, 1e-6f)) << row.hls[0];
        float hls[3];
        PiColorConverter::toHLS(row.rgb, hls);
        EXPECT_TRUE(row.hls.equals(SbVec3f(hls), 1e-8f)) << row.hls[0];
    }
}

TEST(PiColorConverter, RoundTripOverTheCube) {
    for (int i = 0; i < 1000; ++i) {
        const SbColor rgb(float(i % 10) / 9, float(i / 10 % 10) / 9, float(i / 100) / 9);
        float hls[3];
        PiColorConverter::toHLS(rgb, hls);
        EXPECT_TRUE(PiColorConverter::toRGB(hls).equals(rgb, 1e-10f)) << i;
        EXPECT_TRUE(hls[0] >= 0 && hls[0] < 360) << i;
        hls[0] += 720; // whole turns
        EXPECT_TRUE(PiColorConverter::toRGB(hls).equals(rgb, 1e-8f)) << i;
    }
}

TEST(PiColorConverter, AnyInputGivesComponentsFrom0To1) {
    const float odd[] = {NaN, infinity, -1e30f, -20, 2, 1e30f};
    for (float h : odd)
        for (float l : odd)
            for (float s : odd) {
                const float in[3] = {h, l, s};
                const SbColor rgb = PiColorConverter::toRGB(in);
                float hls[3];
                PiColorConverter::toHLS(SbColor(in), hls);
                for (int i = 0; i < 3; ++i)
                    EXPECT_TRUE(rgb[i] >= 0 && rgb[i] <= 1 && hls[i] >= 0 && hls[i] < 360) << h << l << s;
            }
}

} // namespace
