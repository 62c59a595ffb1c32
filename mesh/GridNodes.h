#ifndef ORAVANE_GRIDNODES_H
#define ORAVANE_GRIDNODES_H

#include "mesh/ValueRange.h"

#include <Inventor/SbBox3f.h>
#include <Inventor/SbVec3f.h>
#include <Inventor/fields/SoMFVec3f.h>

namespace oravane {

/// Replaces the values of `coords` by the nodes of a structured grid in the order of their index. `nodeXY(i,
/// j)` gives x and y; z has one float per node, null stands for 0.
template <class NodeXY>
void fillNodes(int numX, int numY, const float *z, SoMFVec3f &coords, NodeXY nodeXY) {
    coords.setNum(numX * numY);
    if (numX < 1 || numY < 1)
        return;
    SbVec3f *node = coords.startEditing();
    for (int i = 0; i < numX; ++i)
        for (int j = 0; j < numY; ++j) {
            const auto xy = nodeXY(i, j);
            (node++)->setValue(static_cast<float>(xy[0]), static_cast<float>(xy[1]), z ? *z++ : 0);
        }
    coords.finishEditing();
}

/// Box over three ranges; an empty one when an axis has no value.
inline SbBox3f boxOf(const ValueRange &x, const ValueRange &y, const ValueRange &z) {
    if (!x.isValid() || !y.isValid() || !z.isValid())
        return SbBox3f();
    return SbBox3f(x.min, y.min, z.min, x.max, y.max, z.max);
}

} // namespace oravane

#endif
