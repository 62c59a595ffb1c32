#ifndef ORAVANE_PBFIXEDCELLMESH2D_H
#define ORAVANE_PBFIXEDCELLMESH2D_H

#include <oravane/PbIndexedMesh2D.h>

/// Unstructured surface mesh whose cells all have the same number of nodes: what `PbTriangleMesh2D` and
/// `PbQuadrangleMesh2D` have in common. No array of sizes is needed, and the shift of `getCell` in meshes of
/// mixed sizes does not exist.
class ORAVANE_API PbFixedCellMesh2D : public PbIndexedMesh2D {
public:
    /// As `PbIndexedMesh2D::setGeometry`; `cellIndex` has 3 or 4 node numbers for each cell.
    void setGeometry(int numNodes, const float *x, const float *y, int numCells, const int *cellIndex);
    void setGeometry(int numNodes, const float *x, const float *y, const float *z, int numCells,
                     const int *cellIndex);

    /// The arrays as `setGeometry` takes them, or with a pointer to the node numbers of each cell. Null
    /// arrays for no cells. Valid until the geometry changes.
    void getGeometry(int &numNodes, const float *&x, const float *&y, int &numCells,
                     const int *&cellIndex) const;
    void getGeometry(int &numNodes, const float *&x, const float *&y, const float *&z, int &numCells,
                     const int *&cellIndex) const;
    void getGeometry(int &numNodes, const float *&x, const float *&y, int &numCells,
                     const int *const *&cells) const;
    void getGeometry(int &numNodes, const float *&x, const float *&y, const float *&z, int &numCells,
                     const int *const *&cells) const;

    /// Null while the mesh has a z.
    const PbCell *getCell(int index) const override;

protected:
    PbFixedCellMesh2D(int isDataDuplicate, int cellSize) : PbIndexedMesh2D(isDataDuplicate, cellSize) {}
    PbFixedCellMesh2D(const PbFixedCellMesh2D &source, int cellSize) : PbIndexedMesh2D(source, cellSize) {}
    PbFixedCellMesh2D &operator=(const PbFixedCellMesh2D &source);

private:
    mutable std::vector<const int *> m_cells; ///< of the last `getGeometry` that asked for them
};

#endif
