#ifndef ORAVANE_BENCHMARKS_PAGESCENE_H
#define ORAVANE_BENCHMARKS_PAGESCENE_H

#include <algorithm>
#include <cmath>
#include <cstddef>
#include <vector>

/// A wavy sheet of triangles seen at a slant, folded over itself in the view, so that the painter's order
/// matters. Deterministic test data: the "page" workload of the project's peer benchmarks, the same numbers.
namespace page_scene {

struct Vertex {
    float x, y;    ///< in a 1000 x 1000 page
    float z;       ///< depth in [0, 1], smaller is nearer
    float r, g, b; ///< a lit colour
};

struct Mesh {
    int side = 0;              ///< cells along a side of the sheet
    std::vector<Vertex> nodes; ///< (side + 1)^2, row by row
    std::vector<int> corners;  ///< three node indices a triangle, 2 side^2 triangles

    std::size_t numTriangles() const { return corners.size() / 3; }
};

inline Vertex nodeAt(double u, double v) {
    constexpr double kPi = 3.14159265358979323846;
    const double ca = std::cos(0.6), sa = std::sin(0.6);   // turn about z
    const double ct = std::cos(1.15), st = std::sin(1.15); // tilt about x
    const double k = 2 * kPi * 3, amp = 0.12;
    const double h = amp * std::sin(k * u) * std::cos(k * v);
    const double hu = amp * k * std::cos(k * u) * std::cos(k * v);
    const double hv = -amp * k * std::sin(k * u) * std::sin(k * v);
    const double x = ca * u - sa * v, y = sa * u + ca * v;
    const double length = std::sqrt(hu * hu + hv * hv + 1);
    const double lit = 0.2 + 0.8 * std::max(0.0, (0.3 * -hu + 0.2 * -hv + 0.93) / length);
    const double t = (h + amp) / (2 * amp);
    return {static_cast<float>(500 + 600 * x),
            static_cast<float>(500 + 600 * (ct * y + st * h)),
            static_cast<float>(0.5 - 0.5 * (-st * y + ct * h)),
            static_cast<float>(std::min(1.0, lit * t)),
            static_cast<float>(std::min(1.0, lit * 0.6)),
            static_cast<float>(std::min(1.0, lit * (1 - t)))};
}

inline Mesh make(int numTriangles) {
    Mesh mesh;
    const int s = mesh.side = static_cast<int>(std::lround(std::sqrt(numTriangles / 2.0)));
    for (int j = 0; j <= s; ++j)
        for (int i = 0; i <= s; ++i)
            mesh.nodes.push_back(nodeAt(static_cast<double>(i) / s - 0.5, static_cast<double>(j) / s - 0.5));
    for (int j = 0; j < s; ++j)
        for (int i = 0; i < s; ++i) {
            const int a = j * (s + 1) + i, b = a + 1, d = a + s + 1, c = d + 1;
            for (const int corner : {a, b, c, a, c, d})
                mesh.corners.push_back(corner);
        }
    return mesh;
}

} // namespace page_scene

#endif
