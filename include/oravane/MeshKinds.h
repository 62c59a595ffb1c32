#ifndef ORAVANE_MESHKINDS_H
#define ORAVANE_MESHKINDS_H

/// The kinds of surface mesh: class, prefix of the functions by which a representation shows that kind
/// (`cartGridFilled`, `cartGridGetLimits`, ...), and the prefix that wire frames and walls use
/// (`cartGridLines`, `indexedSides`, ...). A new kind is one more row.
#define ORAVANE_MESH2D_KINDS(ROW)                                                                            \
    ROW(PbCartesianGrid2D, cartGrid, cartGrid)                                                               \
    ROW(PbParalCartesianGrid2D, paralCartGrid, paralCartGrid)                                                \
    ROW(PbRegularCartesianGrid2D, regularCartGrid, regularCartGrid)                                          \
    ROW(PbPolarGrid2D, polarGrid, polarGrid)                                                                 \
    ROW(PbIndexedMesh2D, indexedMesh, indexed)                                                               \
    ROW(PbTriangleMesh2D, triangleMesh, triangle)                                                            \
    ROW(PbQuadrangleMesh2D, quadrangleMesh, quadrangle)

/// What every kind declares for it: one override for each representation, which calls that representation
/// back. `mesh/MeshDispatch.cpp` defines them for all kinds. A new representation is one more line here and
/// there.
#define ORAVANE_MESH2D_DISPATCH                                                                              \
    void meshLines(PoMeshLines *lines) const override;                                                       \
    void meshFilled(PoMeshFilled *filled) const override;                                                    \
    void meshSides(PoMeshSides *sides) const override;                                                       \
    void meshContouring(PiContouring *contouring, const float *z) const override;                            \
    void getLimits(PoMesh2D *mesh, Ppoint_list_list3 &limits) const override;                                \
    void mesh2DVec(PoMesh2DVec *vectors) const override;

#endif
