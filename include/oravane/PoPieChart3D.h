#ifndef ORAVANE_POPIECHART3D_H
#define ORAVANE_POPIECHART3D_H

#include <oravane/PoPieChart.h>

#include <Inventor/fields/SoSFVec3f.h>

/// A pie chart of closed bodies between the heights of `center` and `zCenter2`, whichever is higher. Slices
/// are lit; borders, arrows and annotations are not. Annotations and arrows lie at the upper face, that of
/// the greater z, which is the near one wherever texts are seen from their front. See `PoPieChart` for slices
/// and annotations. Equal heights give a flat pie; one that is not finite gives none.
///
/// \code
///   PoPieChart3D { zCenter2 0.2  sliceText [ "a", "b" ]  sliceValue [ 1, 2 ]  sliceColor [ 1 0 0, 0 0 1 ] }
/// \endcode
class ORAVANE_API PoPieChart3D : public PoPieChart {
    SO_KIT_HEADER(PoPieChart3D);

public:
    SoSFVec3f center;   ///< of one face, default (0, 0, 0)
    SoSFFloat zCenter2; ///< height of the other face, default 1

    PoPieChart3D();
    /// As that of `PoPieChart2D`.
    PoPieChart3D(const SbVec3f &center, float zCenter2, float radius, short num, const char **texts,
                 const float *values, int numColors, const SbColor *colors);
    static void initClass();
    void rebuild() override;

private:
    ~PoPieChart3D() override = default;
    void init();
};

#endif
