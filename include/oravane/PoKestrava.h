#ifndef ORAVANE_POKESTRAVA_H
#define ORAVANE_POKESTRAVA_H

#include <oravane/PoBase.h>

/// Root of the graphics kits: shapes, axes, curves, charts, legends. A class level only.
class ORAVANE_API PoKestrava : public PoBase {
    SO_KIT_HEADER(PoKestrava);

public:
    static void initClass();
    /// Registers `PoKestrava` and all graphics kits.
    static void initClasses();

protected:
    explicit PoKestrava(void (*catchAction)(void *, SoAction *) = nullptr);
    ~PoKestrava() override = default;
};

#endif
