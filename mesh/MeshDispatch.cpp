// Every mesh calls back the function of the representation for its own kind. A representation that is not
// there yet is not called.
#include <oravane/PbCartesianGrid2D.h>
#include <oravane/PbParalCartesianGrid2D.h>
#include <oravane/PbPolarGrid2D.h>
#include <oravane/PbQuadrangleMesh2D.h>
#include <oravane/PbRegularCartesianGrid2D.h>
#include <oravane/PbTriangleMesh2D.h>
#include <oravane/PiContouring.h>
#include <oravane/PoMeshFilled.h>
#include <oravane/PoMeshLines.h>
#include <oravane/PoMeshSides.h>

#include <oravane/MeshKinds.h>

#define ORAVANE_DISPATCH(Class, prefix, linesPrefix)                                                         \
    void Class::meshLines(PoMeshLines *lines) const {                                                        \
        lines->linesPrefix##Lines(this);                                                                     \
    }                                                                                                        \
    void Class::meshFilled(PoMeshFilled *filled) const {                                                     \
        filled->prefix##Filled(this);                                                                        \
    }                                                                                                        \
    void Class::meshSides(PoMeshSides *sides) const {                                                        \
        sides->linesPrefix##Sides(this);                                                                     \
    }                                                                                                        \
    void Class::meshContouring(PiContouring *contouring, const float *z) const {                             \
        contouring->setMesh(this, z);                                                                        \
    }                                                                                                        \
    void Class::getLimits(PoMesh2D *representation, Ppoint_list_list3 &limits) const {                       \
        representation->prefix##GetLimits(this, limits);                                                     \
    }                                                                                                        \
    void Class::mesh2DVec(PoMesh2DVec *) const {}

ORAVANE_MESH2D_KINDS(ORAVANE_DISPATCH)
