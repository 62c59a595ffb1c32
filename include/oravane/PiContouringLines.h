#ifndef ORAVANE_PICONTOURINGLINES_H
#define ORAVANE_PICONTOURINGLINES_H

#include <oravane/PiContouring.h>
#include <oravane/PlanarRecords.h>

#include <vector>

class SoGroup;
class SoMaterial;

/// Contour lines. The arrays belong to the engine that filled the record, until its next computation.
struct Tisoline_list {
    Ppoint_list3 *lines; ///< `numLines` polylines
    float *isovalues;    ///< the level of each, as it stands in the list
    int numLines;
};

/// Makes the contour lines of a field: polylines, each as long as it can be, with one level each.
///
/// Open lines come first; they begin and end on the border of the mesh or at cells that are left out. Closed
/// ones have their first point once more at the end. See `PiContouring` for an example.
class ORAVANE_API PiContouringLines : public PiContouring {
public:
    /// Computes all lines. `values` has one float for each node, `z` the same or null, see
    /// `computeContouringPoints`. No lines without values, nodes or levels; a null record is allowed.
    void getLines(const float *values, const float *z, Tisoline_list *lines);

    /// The same, and adds to `group` a `SoCoordinate3` with all points and a `SoLineSet` with one entry of
    /// `numVertices` for each line; nothing when there are no lines or no group. The colours of `material`
    /// are left to the caller.
    void makeLines(const float *values, const float *z, SoGroup *group, SoMaterial *material);

private:
    void computeLines(const float *values, const float *z);

    std::vector<Ppoint_list3> m_lines;
    std::vector<float> m_lineIsovalues;
};

#endif
