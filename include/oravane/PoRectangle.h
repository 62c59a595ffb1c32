#ifndef ORAVANE_PORECTANGLE_H
#define ORAVANE_PORECTANGLE_H

#include <oravane/PoKestrava.h>

#include <Inventor/fields/SoSFVec2f.h>

/// A filled rectangle in the plane z = 0 between two opposite corners, drawn unlit in the current colour.
///
/// \code
///   PoRectangle { p 0 0  q 4 5 }
/// \endcode
///
/// Generates the part `rectangle`: coordinates (p.x, p.y), (q.x, p.y), (q.x, q.y), (p.x, q.y) and one face.
/// Equal corners give a degenerate face.
class ORAVANE_API PoRectangle : public PoKestrava {
    SO_KIT_HEADER(PoRectangle);
    SO_KIT_CATALOG_ENTRY_HEADER(rectangle);

public:
    SoSFVec2f p; ///< one corner, default (0, 0)
    SoSFVec2f q; ///< the opposite corner, default (1, 1)

    PoRectangle();
    static void initClass();
    void rebuild() override;

private:
    ~PoRectangle() override = default;
};

#endif
