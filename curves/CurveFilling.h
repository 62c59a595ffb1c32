#ifndef ORAVANE_CURVES_CURVEFILLING_H
#define ORAVANE_CURVES_CURVEFILLING_H

#include "curves/CurveShape.h"

namespace oravane {

/// The curve, with each run of two points or more led down (or up) to the height `threshold` at both ends
/// where it does not stand there. The feet are moved out by 1/10000 of the width of the curve, so that the
/// sides do not lie on what is drawn straight down from the end points.
PointRuns closedAtThreshold(const PointRuns &curve, float threshold);

/// The polygons between a curve of the above form and the height `threshold`: each lies on one side of it.
/// Where the curve crosses the threshold, or has a point on it, one polygon ends and the next begins.
/// A quadrangle with a concave corner starts with that. A polygon of more than 5 000 corners, where x only
/// grows or only falls, is cut into strips.
PointRuns fillingPolygons(const PointRuns &closedCurve, float threshold);

} // namespace oravane

#endif
