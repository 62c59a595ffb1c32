#ifndef ORAVANE_PICONTOURING_H
#define ORAVANE_PICONTOURING_H

#include <oravane/MeshKinds.h>
#include <oravane/PiVolundra.h>

#include <memory>

#define ORAVANE_DECLARE(Mesh, prefix, linesPrefix) class Mesh;
ORAVANE_MESH2D_KINDS(ORAVANE_DECLARE)
#undef ORAVANE_DECLARE
class PbDataMapping;
class PbMesh2D;
class SoCoordinate3;

namespace oravane {
class OrientedCells;
struct ContourWork;
} // namespace oravane

/// Base of the contouring engines: takes the cells, the nodes and the levels, and finds where the levels
/// cross the edges of the cells. `PiContouringLines` makes polylines of the crossings, `PiContouringFilled`
/// faces of one colour.
///
/// \code
///   PiContouringLines contouring;
///   contouring.setMesh(&grid, nullptr);            // or initGeometry(), addElems(...), setPoints(...)
///   contouring.setIsovaluesList(&levels);
///   Tisoline_list lines;
///   contouring.getLines(values, nullptr, &lines);  // valid until the next computation of this engine
/// \endcode
///
/// What is given is read when something is computed, so a mesh, the arrays, the mapping and the list have to
/// live until then. Any computation may be repeated. Memory is kept from one computation to the next; cost
/// grows with the number of nodes, cells and crossings.
///
/// Levels that a node value equals are moved off it first, see `PiVolundra`. A cell with a node whose value
/// is not finite has neither lines nor faces, and the lines beside it end on its edges.
///
/// On the cells of a polar grid crossings lie on the arcs, not on their chords.
class ORAVANE_API PiContouring : public PiVolundra {
public:
    PiContouring();
    ~PiContouring();
    PiContouring(const PiContouring &) = delete;
    PiContouring &operator=(const PiContouring &) = delete;

    /// Takes cells and nodes of a mesh; what was given before is forgotten. `z` has one third coordinate for
    /// each node, or is null for 0. The general form asks the mesh for its kind, by `meshContouring`. A null
    /// mesh has no cells.
    void setMesh(const PbMesh2D *mesh, const float *z);
#define ORAVANE_DECLARE(Mesh, prefix, linesPrefix) void setMesh(const Mesh *mesh, const float *z);
    ORAVANE_MESH2D_KINDS(ORAVANE_DECLARE)
#undef ORAVANE_DECLARE

    /// Starts a mesh of any cells: none yet, and no nodes.
    void initGeometry();

    /// Adds a polygon of `n` node numbers in cycle order, taken apart into quadrangles and, for an odd rest,
    /// a triangle that share its first node. Fewer than 3 nodes, or null, add nothing. Cells that refer to a
    /// node that does not exist are left out of computations.
    void addElems(int n, const int *nodes);

    /// The nodes, in place of those given before: `n` of each coordinate; a null `z` stands for 0. A negative
    /// `n`, null `x` or `y`, or a null node mean no nodes; more than the node has points means all of them.
    void setPoints(int n, const float *x, const float *y, const float *z);
    void setPoints(int n, const SoCoordinate3 *coordinates);

    /// Colours of the faces; null gives them no colour of their own.
    void setDataMapping(const PbDataMapping *mapping) {
        m_dataMapping = mapping;
    }

protected:
    /// Moves the levels off `values`, one for each node, and makes them ready. `z` decides on the third
    /// coordinate of crossings: interpolated from these values on a grid, from the coordinates of the nodes
    /// on a mesh of any cells; null means 0. False, and nothing to compute, without values or nodes.
    bool computeContouringPoints(const float *values, const float *z);

    const PbDataMapping *m_dataMapping = nullptr;
    std::unique_ptr<oravane::ContourWork> m_work;

private:
    template <class Grid>
    void setGrid(const Grid *grid, const float *z);
    void setCells(const oravane::OrientedCells &cells, const float *z);
};

#endif
