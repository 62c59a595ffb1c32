#ifndef ORAVANE_PLANARRECORDS_H
#define ORAVANE_PLANARRECORDS_H

/// \file
/// Plain records of single-precision points and counted arrays, shared by the contouring engine, the polygon
/// toolbox and the mesh representations. A record never owns the array it points to: who fills it says how
/// long the array lives. A count of 0 goes with any pointer, null included.

/// Point of the x-y plane.
struct Ppoint {
    float x, y;
};

/// Point in space.
struct Ppoint3 {
    float x, y, z;
};

/// Displacement in the x-y plane.
struct Pvec {
    float dx, dy;
};

/// Rectangle with sides along the axes.
struct Plimit {
    float xmin, xmax, ymin, ymax;
};

/// Polyline or polygon in the plane.
struct Ppoint_list {
    int numPoints;  ///< number of points
    Ppoint *points; ///< `numPoints` points
};

/// Polyline or polygon in space.
struct Ppoint_list3 {
    int numPoints;   ///< number of points
    Ppoint3 *points; ///< `numPoints` points
};

/// Several polylines in the plane.
struct Ppoint_list_list {
    int numLists;       ///< number of polylines
    Ppoint_list *lists; ///< `numLists` polylines
};

/// Several polylines in space.
struct Ppoint_list_list3 {
    int numLists;        ///< number of polylines
    Ppoint_list3 *lists; ///< `numLists` polylines
};

#endif
