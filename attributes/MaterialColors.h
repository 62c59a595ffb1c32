#ifndef ORAVANE_ATTRIBUTES_MATERIALCOLORS_H
#define ORAVANE_ATTRIBUTES_MATERIALCOLORS_H

#include <span>

class PbDataMapping;
class SoMaterial;

namespace oravane {

/// Gives `material` one colour for each value, and transparencies when the mapping has them enabled. A value
/// that is not finite, or for which the mapping has no colour, gets a transparency of 1, so that what it
/// colours is left out.
void colorMaterial(const PbDataMapping &mapping, std::span<const float> values, SoMaterial &material);

} // namespace oravane

#endif
