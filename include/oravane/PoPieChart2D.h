#ifndef ORAVANE_POPIECHART2D_H
#define ORAVANE_POPIECHART2D_H

#include <oravane/PoPieChart.h>

#include <Inventor/fields/SoSFVec2f.h>

/// A pie chart that lies flat in the plane z = 0, drawn unlit: for each slice a face, and a border just
/// before it. See `PoPieChart` for its slices and annotations.
///
/// \code
///   PoPieChart2D { sliceText [ "fossil", "nuclear", "renewables" ]  sliceValue [ 29329, 5214, 21933 ]
///                  sliceColor [ 0.55 0.5 0.45, 0.9 0.75 0.2, 0.35 0.65 0.3 ] }
/// \endcode
class ORAVANE_API PoPieChart2D : public PoPieChart {
    SO_KIT_HEADER(PoPieChart2D);

public:
    SoSFVec2f center; ///< default (0, 0)

    PoPieChart2D();
    /// `num` texts and values, `numColors` colours; all are copied. Null arrays count as empty ones: slices
    /// need both texts and values. Without colours slices have that of the scene.
    PoPieChart2D(const SbVec2f &center, float radius, short num, const char **texts, const float *values,
                 int numColors, const SbColor *colors);
    static void initClass();
    void rebuild() override;

private:
    ~PoPieChart2D() override = default;
    void init();
};

#endif
