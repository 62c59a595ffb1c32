#ifndef ORAVANE_POBASEAXIS_H
#define ORAVANE_POBASEAXIS_H

#include <oravane/PoKestrava.h>

/// Root of all axis kits, single axes and groups of them. Draws nothing by itself.
class ORAVANE_API PoBaseAxis : public PoKestrava {
    SO_KIT_HEADER(PoBaseAxis);

public:
    static void initClass();

protected:
    /// `catchAction` as for `PoBase`.
    explicit PoBaseAxis(void (*catchAction)(void *, SoAction *) = nullptr);
    ~PoBaseAxis() override = default;
};

#endif
