#ifndef ORAVANE_PLANARTOPOLOGY_H
#define ORAVANE_PLANARTOPOLOGY_H

namespace oravane {

/// Edges and the one facet of the planar cells, in local node numbers.
inline constexpr int TRIANGLE_EDGES[] = {0, 1, 1, 2, 2, 0};
inline constexpr int QUADRANGLE_EDGES[] = {0, 1, 1, 2, 2, 3, 3, 0};
inline constexpr int FACET_NODES[] = {0, 1, 2, 3};

/// Bilinear weights of the nodes (0,0), (1,0), (1,1), (0,1).
template <class T>
void bilinearWeights(T u, T v, T *weights) {
    weights[0] = (1 - u) * (1 - v);
    weights[1] = u * (1 - v);
    weights[2] = u * v;
    weights[3] = (1 - u) * v;
}

/// Derivatives of these weights with respect to u, then to v.
template <class T>
void bilinearDerivs(T u, T v, T *derivs) {
    derivs[0] = v - 1;
    derivs[1] = 1 - v;
    derivs[2] = v;
    derivs[3] = -v;
    derivs[4] = u - 1;
    derivs[5] = -u;
    derivs[6] = u;
    derivs[7] = 1 - u;
}

} // namespace oravane

#endif
