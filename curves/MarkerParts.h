#ifndef ORAVANE_CURVES_MARKERPARTS_H
#define ORAVANE_CURVES_MARKERPARTS_H

#include <Inventor/SbString.h>
#include <Inventor/SbVec2f.h>

#include <cstdint>
#include <span>
#include <vector>

class PbDomain;
class SoBaseKit;
class SoField;
class SoGroup;
class SoNode;

namespace oravane {

/// Draws the marks of a kit that has the shown part `marker`. What `markerApp` needs for them, a font for
/// texts and a point size for dots, is made where the program has set none; a program that changes what was
/// made takes it over.
class MarkerParts {
public:
    explicit MarkerParts(SoBaseKit &kit) : m_kit(kit) {}
    MarkerParts(const MarkerParts &) = delete;
    MarkerParts &operator=(const MarkerParts &) = delete;

    /// What a rebuild makes; null for what is not needed.
    struct Made {
        SoGroup *marker = nullptr;
        SoNode *font = nullptr;
        SoNode *drawStyle = nullptr;
        bool dependsOnDomain = false; ///< letters do, which keep their shape in any
    };

    /// Marks at the places, in a domain under whose transform they stand or not. Sets nothing.
    Made make(const SbString &string, std::span<const SbVec2f> places, const PbDomain &domain,
              bool isTransformed) const;
    void set(const Made &made);

    /// The fields of `markerApp` with what is as it was made: a file from which the kit makes it again need
    /// not hold them.
    std::vector<SoField *> madeFields() const;

private:
    SoBaseKit &m_kit;
    std::uint64_t m_fontId = 0, m_drawStyleId = 0;
};

} // namespace oravane

#endif
