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
    /// For the kit that is a copy: what was made for the original is remade for it.
    void copyFrom(const MarkerParts &original);

private:
    /// A part of `markerApp`.
    struct Part {
        const char *field;
        std::uint64_t madeId = 0;  ///< of the node, as it was made
        bool isOfOriginal = false; ///< made for the kit of which this one is a copy
    };

    SoNode *nodeOf(const Part &part) const;
    bool isMade(const Part &part) const;
    void setPart(Part &part, SoNode *node);

    SoBaseKit &m_kit;
    Part m_font{"font"}, m_drawStyle{"drawStyle"};
};

} // namespace oravane

#endif
