#ifndef ORAVANE_POMESHLIMIT_H
#define ORAVANE_POMESHLIMIT_H

#include <oravane/PoMesh2D.h>

/// Draws the border of a surface mesh: its outline, and that of each hole.
///
/// \code
///   auto *shore = new PoMeshLimit;
///   shore->setMesh(&bay);
///   shore->set("appearance.drawStyle", "lineWidth 2");
///   root->addChild(shore);
/// \endcode
///
/// Generates `groupLimit`: coordinates and a set of lines, one closed polyline for each border (see
/// `getMeshLimit`); a polyline breaks at nodes without a finite position. The part is null without a mesh,
/// and for a mesh without a border. The colour is that of the scene or of `appearance`.
class ORAVANE_API PoMeshLimit : public PoMesh2D {
    SO_KIT_HEADER(PoMeshLimit);
    SO_KIT_CATALOG_ENTRY_HEADER(groupLimit);

public:
    PoMeshLimit();
    static void initClass();
    void rebuild() override;

protected:
    ~PoMeshLimit() override;
};

#endif
