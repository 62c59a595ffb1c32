#ifndef ORAVANE_POGENAXIS_H
#define ORAVANE_POGENAXIS_H

#include <oravane/PoCartesianAxis.h>

#include <Inventor/fields/SoMFString.h>

/// An axis with a list of texts at equal distances: the first at its start, the last at its end, or at the
/// margins.
///
/// \code
///   auto *axis = new PoGenAxis;
///   const char *seasons[] = {"spring", "summer", "autumn", "winter"};
///   axis->gradList.setValues(0, 4, seasons);
/// \endcode
class ORAVANE_API PoGenAxis : public PoCartesianAxis {
    SO_KIT_HEADER(PoGenAxis);

public:
    SoMFString gradList; ///< default one empty text; without any, body and arrow only

    PoGenAxis();
    static void initClass();
    void rebuild() override;

protected:
    ~PoGenAxis() override = default;
};

#endif
