#ifndef ORAVANE_PBINDEXEDMESH2D_H
#define ORAVANE_PBINDEXEDMESH2D_H

#include <oravane/MeshKinds.h>
#include <oravane/PbMesh2D.h>
#include <oravane/PbQuadrangleCell.h>
#include <oravane/PbTriangleCell.h>

#include <span>
#include <vector>

/// Unstructured surface mesh: nodes with x, y and an optional z, and cells that name their nodes. Triangles
/// and quadrangles are full cells. A cell of another size is drawn as a polygon, but `getCell` has no object
/// for it; fewer than three nodes make no surface.
///
/// \code
///   const float x[] = {0, 1, 1, 0, 2}, y[] = {0, 0, 1, 1, 0.5f};
///   const int nodes[] = {0, 1, 2, 3, 1, 4, 2}, sizes[] = {4, 3};
///   PbIndexedMesh2D mesh(5, x, y, 2, nodes, sizes, 1);       // a square and a triangle
/// \endcode
///
/// A cell that names a node outside of the mesh takes no part in anything: no cell object, no owners, not
/// drawn. Negative counts or sizes, more than an int can count, and null arrays for counts above 0 are
/// refused: nothing changes, and nothing is reported.
class ORAVANE_API PbIndexedMesh2D : public PbMesh2D {
public:
    enum ElemOrientation : int {
        ORIENT_AS_GIVEN = 0, ///< cells are taken as they stand
        ORIENT_BY_FLAGS = 1, ///< a flag for each cell tells whether it turns to the left
    };

    explicit PbIndexedMesh2D(int isDataDuplicate);
    /// As `setGeometry`. Refused arguments leave the mesh empty.
    PbIndexedMesh2D(int numNodes, const float *x, const float *y, int numCells, const int *cellIndex,
                    const int *cellSizes, int isDataDuplicate);
    PbIndexedMesh2D(int numNodes, const float *x, const float *y, const float *z, int numCells,
                    const int *cellIndex, const int *cellSizes, int isDataDuplicate);
    PbIndexedMesh2D(const PbIndexedMesh2D &source);
    /// Reports the removal of the old sets, and in the end `CHANGE_GENERAL`. A mesh of one cell size takes
    /// over cells of that size only: any other source is refused.
    PbIndexedMesh2D &operator=(const PbIndexedMesh2D &source);

    /// Replaces the geometry and reports `CHANGE_MESH_GEOMETRY`; the form without `z` removes the z. `x`, `y`
    /// and `z` have `numNodes` values, `cellSizes` the number of nodes of each cell, and `cellIndex` the node
    /// numbers of all cells, one after the other: as many as the sizes add up to. The arrays may be those of
    /// the mesh itself, as `getGeometry` gives them. When the number of nodes changes, own value sets go
    /// first
    /// (`CHANGE_VALUES_SET`, if there are any).
    void setGeometry(int numNodes, const float *x, const float *y, int numCells, const int *cellIndex,
                     const int *cellSizes);
    void setGeometry(int numNodes, const float *x, const float *y, const float *z, int numCells,
                     const int *cellIndex, const int *cellSizes);
    /// The arrays as `setGeometry` takes them; valid until the geometry changes.
    void getGeometry(int &numNodes, const float *&x, const float *&y, int &numCells, const int *&cellIndex,
                     const int *&cellSizes) const;
    void getGeometry(int &numNodes, const float *&x, const float *&y, const float *&z, int &numCells,
                     const int *&cellIndex, const int *&cellSizes) const;
    void getNodes(int &numNodes, const float *&x, const float *&y) const;

    /// Replaces the nodes alone, and reports nothing: a call of `touch()` or `setGeometry` follows. The cells
    /// stay, and so does a z of the same length; own value sets of another length go.
    void setVertices(int numNodes, const float *x, const float *y);

    /// Anything but ORIENT_AS_GIVEN makes a flag for each cell: 1 when its first three nodes turn to the left
    /// (counter-clockwise), else 0. A representation reverses the cells with a flag other than 1. Reports
    /// nothing.
    virtual void setElemOrientation(ElemOrientation orientation);
    ElemOrientation getElemOrientation() const { return m_elemOrientation; }
    /// One flag for each cell, or null under ORIENT_AS_GIVEN and for a mesh without cells.
    const int *getOrientFlags() const;

    /// Finds the cells of each node anew. Only a program that changed the index array in its own memory calls
    /// it.
    virtual void updateOwnerCellsList();

    /// Nodes of a cell in their order, as they were given; none for an index outside of the mesh.
    std::span<const int> getCellNodes(int index) const;

    /// The triangle or quadrangle object; null for other sizes, for a triangle on a line and one in space.
    ///
    /// For a mesh of mixed sizes the object is made from the node numbers that stand where cell `index` would
    /// if cell 0 had no nodes: in a mesh of triangles, cells 0 and 1 both read the first three numbers, and
    /// the last three are never read. What works with cell objects (`getArea`, point location, neighbours)
    /// follows. `getCellNodes` and all representations read the true cells.
    const PbCell *getCell(int index) const override;
    SbVec3f getNodeCoord(int index) const override;
    void getNodesCoord(const float *z, SoMFVec3f &coords) const override;
    /// In ascending order, each cell once.
    void getNodeOwnerCellsInd(int node, PbArrayOfInt &cells) const override;
    /// Counts cells by their number of nodes, too.
    void print(FILE *file) const override;
    /// 1 while there is no node or no cell.
    int isEmpty() const override;

    ORAVANE_MESH2D_DISPATCH

protected:
    /// For a mesh all of whose cells have `fixedCellSize` nodes; 0: any.
    PbIndexedMesh2D(int isDataDuplicate, int fixedCellSize);
    PbIndexedMesh2D(const PbIndexedMesh2D &source, int fixedCellSize);

    /// Null `cellSizes`: all cells have the fixed size.
    void setXYGeometry(int numNodes, const float *x, const float *y, const float *z, int numCells,
                       const int *cellIndex, const int *cellSizes);

    /// Whether these can be nodes.
    static bool acceptNodes(int numNodes, const float *x, const float *y) {
        return numNodes == 0 || (numNodes > 0 && x && y);
    }

    /// Replaces the nodes, and the cells by own ones of the fixed size, in either mode.
    void setNodesAndOwnCells(int numNodes, const float *x, const float *y, std::span<const int> cellIndex);

    /// Fills the cell object for these nodes; null when there is none.
    const PbCell *fillCell(int index, std::span<const int> nodes) const;
    /// Whether all these nodes exist.
    bool hasNodes(std::span<const int> nodes) const;

    void updateBoundingBox() override;
    /// Boxes of the true cells.
    void updateCellBoundingBox() override;
    /// The cells in order; the first whose object contains the point.
    const PbCell *findContainingCellProtected(const SbVec3f &point, float tolerance, SbVec3f &pcoord,
                                              PbArrayOfInt &testedCells) override;

private:
    bool acceptCellSizes(int numCells, const int *cellSizes, long long &total) const;
    void copyGeometry(const PbIndexedMesh2D &source);
    void storeNodes(int numNodes, const float *x, const float *y, const float *z);
    void storeCells(int numCells, const int *cellIndex, const int *cellSizes);
    void finishGeometry(bool isNewCount);
    void findOwners() const;

    const int m_fixedCellSize;
    ElemOrientation m_elemOrientation = ORIENT_AS_GIVEN;
    std::vector<int> m_orientFlags;
    PbDataBlock<float> m_x;
    PbDataBlock<float> m_y;
    PbDataBlock<int> m_elemIndex;
    mutable PbDataBlock<int> m_elemType; ///< of a fixed cell size only when somebody asks for it
    std::vector<int> m_cellStart; ///< place of each cell in the index array, and its end; mixed sizes only
    mutable std::vector<int> m_owners; ///< cells of all nodes, one node after the other
    mutable std::vector<int> m_ownerStart;
    mutable bool m_areOwnersValid = false;
    mutable PbQuadrangleCell m_quadrangleCell;
    mutable PbTriangleCell m_triangleCell;
};

#endif
