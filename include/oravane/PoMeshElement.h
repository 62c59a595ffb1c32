#ifndef ORAVANE_POMESHELEMENT_H
#define ORAVANE_POMESHELEMENT_H

#include <oravane/PoBasicObjectElement.h>

class PbMesh;
class PbMesh2D;
class PbMesh3D;

/// The mesh in the traversal state; null where no node has set one.
class ORAVANE_API PoMeshElement : public PoBasicObjectElement {
    SO_ELEMENT_HEADER(PoMeshElement);

public:
    static void initClass();
    static void set(SoState *state, SoNode *node, const PbMesh2D *mesh);
    static const PbMesh *getMesh(SoState *state);
    /// The mesh when it is a surface mesh, else null.
    static const PbMesh2D *getMesh2D(SoState *state);

protected:
    ~PoMeshElement() override = default;
};

#endif
