#ifndef ORAVANE_PBMESH_H
#define ORAVANE_PBMESH_H

#include <oravane/PbArrayOfInt.h>
#include <oravane/PbBase.h>
#include <oravane/PbCell.h>
#include <oravane/PbDataBlock.h>

#include <Inventor/SbBox3f.h>
#include <Inventor/SbVec3f.h>

#include <cstdio>
#include <map>

/// Root of all meshes: nodes and cells, and any number of data sets on the nodes, scalar (value sets) or
/// vector (vector sets). Every representation reads a mesh through this interface. The geometry belongs to
/// the children.
///
/// \code
///   PbRegularCartesianGrid2D grid(41, 31, 0, 0, 4, 3, 1);
///   grid.addValuesSet(0, temperature);        // one float per node
///   grid.addVecsSet(0, wind);                 // one SbVec3f per node
/// \endcode
///
/// A data set has a number chosen by the application, under which a representation finds it; numbers need not
/// be dense. With `isDataDuplicate` non-zero a mesh holds its own copy of all arrays that it is given; with 0
/// it keeps the addresses, and the program keeps the arrays alive and calls `touch()` when it has changed
/// them.
///
/// Data sets refer to the number of nodes at the time when they were added. After a change of it a
/// duplicating mesh has no value sets left; in its own vector sets missing entries are (0, 0, 0). A mesh that
/// does not duplicate keeps the addresses, and the program has to give new ones; only sets of its own, which
/// it has from the assignment of a duplicating mesh, go too. The length of a given array is never checked.
///
/// A mesh is used from one thread: a search and `getCell` fill the one cell object of the mesh.
class ORAVANE_API PbMesh : public PbBase {
public:
    /// Removes the data sets (`CHANGE_VALUES_SET`, `CHANGE_VECS_SET`) before the kits are told of the
    /// deletion. In these notifications the mesh is empty already.
    ~PbMesh() override;

    /// Node `index`; (0, 0, 0) for an index outside of the mesh.
    virtual SbVec3f getNodeCoord(int index) const = 0;

    /// Adds the set `index`, or replaces its data; `getNumNodes()` entries. Reports `CHANGE_VALUES_SET` or
    /// `CHANGE_VECS_SET`. Null is refused: nothing changes.
    virtual void addValuesSet(int index, const float *values);
    virtual void addVecsSet(int index, const SbVec3f *vectors);
    /// Entries of the set `index`, one per node; null when there is no such set. Valid until the set changes.
    virtual const float *getValuesSet(int index) const;
    virtual const SbVec3f *getVecsSet(int index) const;
    /// Removes the set `index`. Returns 1; 0, and reports nothing, when there is no such set.
    virtual int removeValuesSet(int index);
    virtual int removeVecsSet(int index);
    /// Removes all sets. Reports the change, even when there was no set.
    virtual void removeAllValuesSet();
    virtual void removeAllVecsSet();
    virtual int getNumValuesSet() const;
    virtual int getNumVecsSet() const;

    /// Smallest and largest value of the set `index`; for vectors, length. NaN is passed over. Return 1; 0,
    /// and leave the result, when there is no such set or it has no value (no node, or NaN at each).
    virtual int getMinValuesSet(int index, float &min) const;
    virtual int getMinVecsSet(int index, float &min) const;
    virtual int getMaxValuesSet(int index, float &max) const;
    virtual int getMaxVecsSet(int index, float &max) const;

    /// Cells that hold the node; none for an index outside of the mesh.
    virtual void getNodeOwnerCellsInd(int node, PbArrayOfInt &cells) const = 0;
    /// Cells that hold all of `nodes`, in the order of the owners of the first one.
    virtual void getNodesOwnerCellsInd(const PbArrayOfInt &nodes, PbArrayOfInt &cells) const;
    /// Cells that share a node with `cell`: by node of the cell, then by owners of the node, each once.
    virtual void getAdjacentCellsIndByNode(int cell, PbArrayOfInt &cells) const;
    /// Cells that share a facet with `cell`, in the order of its facets.
    virtual void getAdjacentCellsIndByFacet(int cell, PbArrayOfInt &cells) const;

    /// Fills the cell object of this mesh. Valid until the next `getCell` or search. Null for an index
    /// outside of the mesh, and where the kind of mesh has no cell objects.
    virtual const PbCell *getCell(int index) const = 0;

    /// Box of the cell whose box has the smallest or largest volume, the first of equal ones, and its index.
    /// A mesh without cells gives an empty box and -1.
    virtual SbBox3f getSmallestCellBox(int &cellIndex);
    virtual SbBox3f getBiggestCellBox(int &cellIndex);

    /// Sum over the cells; 0 for a surface mesh.
    virtual float getVolume() const = 0;
    /// Sum over the cells; 0 for a volume mesh.
    virtual float getArea() const = 0;

    /// Cell that contains `point`, as from `getCell`, and the parametric coordinates of the point in it; null
    /// when there is none. `tolerance` widens each cell in parametric units (`PbCell::locatePoint`).
    virtual const PbCell *findContainingCell(const SbVec3f &point, float tolerance, SbVec3f &pcoord);
    /// The same, but first asks the neighbours of `adjacentCell` by facet, then those by node: for a point
    /// near the last one that was found. `adjacentCell` may be the object returned by the last search, or
    /// null.
    virtual const PbCell *findContainingCell(const SbVec3f &point, float tolerance, SbVec3f &pcoord,
                                             const PbCell *adjacentCell);

    /// 0 unless the kind of mesh knows it.
    virtual float getLongestEdgeLength();
    /// Debugging dump: counts, mode and data sets.
    virtual void print(FILE *file) const;
    /// 1 while there is no node.
    virtual int isEmpty() const;

    int getNumNodes() const { return m_numNodes; }
    int getNumCells() const { return m_numCells; }
    /// Box around the nodes; an empty box for an empty mesh.
    SbBox3f getBoundingBox() const { return m_boundingBox; }

protected:
    explicit PbMesh(int isDataDuplicate);
    /// Copies all, with the mode: own blocks in depth, addresses as they are.
    PbMesh(const PbMesh &source);
    /// Removes the own sets, then copies all of this level but the mode: a duplicating mesh gets blocks of
    /// its own from any source. Does not report `CHANGE_GENERAL`: the concrete class ends its assignment with
    /// `PbBase::operator=`, when the mesh is whole again.
    PbMesh &operator=(const PbMesh &source);

    virtual void updateBoundingBox() = 0;
    virtual void updateCellBoundingBox();
    /// Searches the whole mesh; may leave out the `testedCells`, and may add to them.
    virtual const PbCell *findContainingCellProtected(const SbVec3f &point, float tolerance, SbVec3f &pcoord,
                                                      PbArrayOfInt &testedCells) = 0;

    /// Finds or makes the vector set `index` and reports nothing. When duplicating, or with `forceOwned`, the
    /// result owns `getNumNodes()` vectors for the caller to fill (`makeOwn`); otherwise it waits for an
    /// address (`set`).
    PbDataBlock<SbVec3f> &getNewVecsSet(int index, int forceOwned);

    /// Changes the counts. Own vector sets get entries (0, 0, 0) for new nodes.
    void setCounts(int numNodes, int numCells);
    /// Removes the value sets that the mesh holds as its own, for a new number of nodes, without a report.
    /// Returns whether there was one.
    bool dropValuesSets();

    /// Restarts the cell boxes, and takes one more cell.
    void resetCellBoxes();
    void compareCellBox(int cell, const SbBox3f &box);

    bool isDataDuplicate() const { return m_isDataDuplicate != 0; }

    int m_numNodes = 0;
    int m_numCells = 0;
    SbBox3f m_boundingBox;
    bool m_isCellBoxValid = false;

private:
    const PbCell *locateIn(int cell, const SbVec3f &point, float tolerance, SbVec3f &pcoord) const;
    void addOwners(const PbArrayOfInt &owners, int cell, PbArrayOfInt &cells) const;
    const PbCell *findInNeighbours(const SbVec3f &point, float tolerance, SbVec3f &pcoord, int cell);

    int m_isDataDuplicate;
    SbBox3f m_smallestCellBox;
    SbBox3f m_biggestCellBox;
    float m_smallestVolume = 0;
    float m_biggestVolume = 0;
    int m_smallestCellIndex = -1;
    int m_biggestCellIndex = -1;
    std::map<int, PbDataBlock<float>> m_valuesSets;
    std::map<int, PbDataBlock<SbVec3f>> m_vecsSets;
    PbArrayOfInt m_testedCells;
};

#endif
