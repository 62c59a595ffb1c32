#ifndef ORAVANE_PICONTOURINGFILLED_H
#define ORAVANE_PICONTOURINGFILLED_H

#include <oravane/PiContouring.h>

#include <cstddef>

class SoGroup;
class SoMaterial;
class SoMaterialBinding;

namespace oravane {
class BandFaces;
}

/// Draws a field as bands of flat colour: cuts each cell into pieces, one for each band between two levels.
///
/// \code
///   PiContouringFilled contouring;
///   contouring.setMesh(&grid, nullptr);
///   contouring.setDataMapping(&mapping);
///   contouring.setIsovaluesList(&levels);
///   contouring.fillSurf(values, nullptr, group, material, binding);
/// \endcode
///
/// A piece takes the colour of the level just below the mean of the values along its boundary, by
/// `getLowerIsovalue`, so that all pieces of one band look alike. Pieces come cell by cell. A cell with a
/// piece of ten points or more is left with the pieces before that one.
class ORAVANE_API PiContouringFilled : public PiContouring {
public:
    PiContouringFilled();
    ~PiContouringFilled();

    /// Computes the bands. `values` has one float for each node, `z` the same or null, see
    /// `computeContouringPoints`. Adds to `group`: `binding`, set to PER_FACE; a `SoCoordinate3` with all
    /// nodes and behind them all crossings; a `SoIndexedFaceSet`. Face k has colour k of `material`.
    ///
    /// `diffuseColor`, and `transparency` when the mapping uses transparency, have one entry for each piece
    /// that could be expected; entries without a face, at the end, are black and opaque. A piece whose level
    /// has no colour in the mapping is left out. Without a mapping no binding is added, and the material
    /// stays as it is. Without values, nodes, or one of the three nodes to write to, nothing happens.
    ///
    /// When the mapping makes values beyond a threshold so transparent that they are deleted, cells across
    /// that threshold would stand as a wall along the rest: those are left out, too, but for the three
    /// corners inside that a quadrangle may have.
    void fillSurf(const float *values, const float *z, SoGroup *group, SoMaterial *material,
                  SoMaterialBinding *binding);

protected:
    /// \name Steps of fillSurf
    /// `setOutput`, `preventFromThresholdWall`, `computeContouringPoints`, one of the two that cut the cells,
    /// and `makeNode`, each with the same values.
    /// @{

    /// The nodes to write to; none of them null.
    void setOutput(SoGroup *group, SoMaterial *material, SoMaterialBinding *binding);
    /// Leaves out cells across a threshold beyond which all is deleted.
    void preventFromThresholdWall(const float *values);
    /// Cuts all cells.
    void isoFilledElemIndexedMesh(const float *values);
    /// Does the same, but joins cells of a structured grid that no level crosses to rectangles, with the mean
    /// of their four corners: far fewer faces where the field is flat. Any other mesh is cut cell by cell.
    void isoFilledElemParalCartGrid2D(const float *values);
    /// Adds the binding, the coordinates and the faces to the group.
    void makeNode();

    /// @}

private:
    struct Output;

    void cutCells(bool isMerging);
    void colorPieces(oravane::BandFaces &faces, std::size_t numColors);

    std::unique_ptr<Output> m_output;
};

#endif
