#ifndef ORAVANE_PBGRID2D_H
#define ORAVANE_PBGRID2D_H

#include <oravane/PbMesh2D.h>

class PbPixelCell;
class PbQuadrangleCell;

/// Structured surface mesh of numX by numY nodes. Node (i, j) has the index i * numY + j, cell (i, j) the
/// index i * (numY - 1) + j: the y index runs fastest. The children differ in how they store x and y; an
/// array z has one float per node in all of them.
///
/// Sizes of 0 make the grid empty; arrays may then be null. Negative sizes, more nodes than an int can count,
/// and null `x` or `y` are refused: nothing changes, and nothing is reported. A grid one node wide has nodes
/// but no cells.
class ORAVANE_API PbGrid2D : public PbMesh2D {
public:
    /// Replaces the geometry and reports `CHANGE_MESH_GEOMETRY`; the form without `z` removes the z. When the
    /// number of nodes changes, a duplicating grid first removes its value sets (`CHANGE_VALUES_SET`). The
    /// lengths of `x` and `y` depend on the kind of grid.
    void setGeometry(int numX, int numY, const float *x, const float *y);
    void setGeometry(int numX, int numY, const float *x, const float *y, const float *z);
    /// Sizes and arrays as `setGeometry` takes them; the arrays are valid until the geometry changes.
    void getGeometry(int &numX, int &numY, const float *&x, const float *&y) const;
    void getGeometry(int &numX, int &numY, const float *&x, const float *&y, const float *&z) const;

    void getDim(int &numX, int &numY) const;
    /// Position of a node or cell in the grid; -1 and -1 for an index outside of it.
    void getNodeIndices(int index, int &i, int &j) const;
    void getCellIndices(int index, int &i, int &j) const;

    /// Its nodes are (i, j), (i+1, j), (i+1, j+1), (i, j+1).
    const PbCell *getCell(int index) const override;
    SbVec3f getNodeCoord(int index) const override;
    void getNodesCoord(const float *z, SoMFVec3f &coords) const override;
    /// Node (i, j) with the z of the mesh; (0, 0, 0) outside of the grid.
    virtual SbVec3f getNodeCoord(int i, int j) const;

    /// In the order (i, j), (i-1, j), (i-1, j-1), (i, j-1) of cells, those that exist.
    void getNodeOwnerCellsInd(int node, PbArrayOfInt &cells) const override;
    /// Rows i-1, i, i+1, each from j-1 to j+1, without the cell itself.
    void getAdjacentCellsIndByNode(int cell, PbArrayOfInt &cells) const override;
    /// In the order (i-1, j), (i+1, j), (i, j-1), (i, j+1), those that exist.
    void getAdjacentCellsIndByFacet(int cell, PbArrayOfInt &cells) const override;

protected:
    explicit PbGrid2D(int isDataDuplicate) : PbMesh2D(isDataDuplicate) {}
    PbGrid2D(const PbGrid2D &source) = default;
    PbGrid2D &operator=(const PbGrid2D &source) = default;

    /// Stores x and y; the sizes of the grid are still the old ones. Called with valid arguments only, null
    /// arrays with sizes of 0.
    virtual void setXYGeometry(int numX, int numY, const float *x, const float *y) = 0;
    virtual void getXYGeometry(const float *&x, const float *&y) const = 0;

    /// 1 for sizes that a grid can have; both are set to 0 when one is.
    static bool acceptDim(int &numX, int &numY);
    void setDim(int numX, int numY);
    bool hasNode(int i, int j) const { return i >= 0 && i < m_numX && j >= 0 && j < m_numY; }
    bool hasCell(int i, int j) const { return i >= 0 && i < m_numX - 1 && j >= 0 && j < m_numY - 1; }
    int nodeIndex(int i, int j) const { return i * m_numY + j; }
    int cellIndex(int i, int j) const { return i * (m_numY - 1) + j; }

    /// x and y of a node inside of the grid.
    virtual SbVec2f getNodeXY(int i, int j) const = 0;
    /// Fills the cell object for a cell inside of the grid; null: this kind has no cell objects.
    virtual const PbCell *fillCell(int i, int j) const = 0;
    /// The same for a cell with sides along the axes: the pixel, or the quadrangle when there is a z.
    const PbCell *fillRectangle(PbPixelCell &pixel, PbQuadrangleCell &quadrangle, int i, int j) const;
    /// Cell (i, j) and the parametric coordinates of `point` in it, wherever the point is; null outside of
    /// the grid.
    const PbCell *locateInCell(int i, int j, const SbVec3f &point, SbVec3f &pcoord) const;
    void updateBoundingBox() override;
    void updateCellBoundingBox() override;

    int m_numX = 0;
    int m_numY = 0;

private:
    void addCell(int i, int j, PbArrayOfInt &cells) const;
};

#endif
