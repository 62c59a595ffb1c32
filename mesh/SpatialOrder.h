#ifndef ORAVANE_MESH_SPATIALORDER_H
#define ORAVANE_MESH_SPATIALORDER_H

#include <cstdint>
#include <span>
#include <vector>

namespace oravane {

/// The order in which an incremental construction should take points: all finite points by their numbers,
/// those of a random eighth behind the eighth of that eighth and so on, and in each of these rounds one after
/// another along a space-filling curve. So each point has an earlier one near by, whatever the order and
/// distribution of the input, and the expected amount of change is that of a random order.
///
/// The result depends on nothing but the arguments; `x` and `y` have the same length. Equal points of a round
/// are neighbours or nearly so; they are not taken out. Cost grows with the number of points, and with the
/// number of scales at which they cluster.
///
/// Method: N. Amenta, S. Choi, G. Rote, "Incremental Constructions con BRIO", Symposium on Computational
/// Geometry (2003), with D. Hilbert's curve inside of the rounds.
std::vector<std::int32_t> spatialOrder(std::span<const float> x, std::span<const float> y);

} // namespace oravane

#endif
