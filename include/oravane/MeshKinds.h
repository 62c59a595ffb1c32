#ifndef ORAVANE_MESHKINDS_H
#define ORAVANE_MESHKINDS_H

/// The kinds of surface mesh: class, and prefix of the functions by which a representation shows that kind
/// (`cartGridFilled`, `cartGridGetLimits`, ...). A new kind is one more row.
#define ORAVANE_MESH2D_KINDS(ROW)                                                                            \
    ROW(PbCartesianGrid2D, cartGrid)                                                                         \
    ROW(PbParalCartesianGrid2D, paralCartGrid)                                                               \
    ROW(PbRegularCartesianGrid2D, regularCartGrid)                                                           \
    ROW(PbPolarGrid2D, polarGrid)

#endif
