// Every mesh calls back the function of the representation for its own kind.
#include <oravane/PbCartesianGrid2D.h>
#include <oravane/PbParalCartesianGrid2D.h>
#include <oravane/PbPolarGrid2D.h>
#include <oravane/PbRegularCartesianGrid2D.h>
#include <oravane/PiContouring.h>

#include <oravane/MeshKinds.h>

#define ORAVANE_DISPATCH(Class, prefix)                                                                      \
    void Class::meshLines(PoMeshLines *) const {}                                                            \
    void Class::meshFilled(PoMeshFilled *) const {}                                                          \
    void Class::meshSides(PoMeshSides *) const {}                                                            \
    void Class::meshContouring(PiContouring *contouring, const float *z) const {                             \
        contouring->setMesh(this, z);                                                                        \
    }                                                                                                        \
    void Class::getLimits(PoMesh2D *, Ppoint_list_list3 &) const {}                                          \
    void Class::mesh2DVec(PoMesh2DVec *) const {}

ORAVANE_MESH2D_KINDS(ORAVANE_DISPATCH)
