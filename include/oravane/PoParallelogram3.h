#ifndef ORAVANE_POPARALLELOGRAM3_H
#define ORAVANE_POPARALLELOGRAM3_H

#include <oravane/PoKestrava.h>

#include <Inventor/fields/SoSFVec3f.h>

/// A filled parallelogram in space, given by three corners; the fourth is r + p - q. Drawn unlit.
///
/// Generates the part `parallelogram3`: four coordinates p, q, r, r + p - q and one face.
class ORAVANE_API PoParallelogram3 : public PoKestrava {
    SO_KIT_HEADER(PoParallelogram3);
    SO_KIT_CATALOG_ENTRY_HEADER(parallelogram3);

public:
    SoSFVec3f p; ///< first corner, default (0, 0, 0)
    SoSFVec3f q; ///< second corner, default (1, 0, 0)
    SoSFVec3f r; ///< third corner, default (1, 1, 0)

    PoParallelogram3();
    static void initClass();
    void rebuild() override;

private:
    ~PoParallelogram3() override = default;
};

#endif
