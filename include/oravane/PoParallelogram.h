#ifndef ORAVANE_POPARALLELOGRAM_H
#define ORAVANE_POPARALLELOGRAM_H

#include <oravane/PoKestrava.h>

#include <Inventor/fields/SoSFVec2f.h>

/// A filled parallelogram in the plane z = 0, given by three corners; the fourth is r + p - q. Drawn unlit.
///
/// Generates the part `parallelogram`: four coordinates p, q, r, r + p - q and one face.
class ORAVANE_API PoParallelogram : public PoKestrava {
    SO_KIT_HEADER(PoParallelogram);
    SO_KIT_CATALOG_ENTRY_HEADER(parallelogram);

public:
    SoSFVec2f p; ///< first corner, default (0, 0)
    SoSFVec2f q; ///< second corner, default (1, 0)
    SoSFVec2f r; ///< third corner, default (1, 1)

    PoParallelogram();
    static void initClass();
    void rebuild() override;

private:
    ~PoParallelogram() override = default;
};

#endif
