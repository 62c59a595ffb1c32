#ifndef ORAVANE_POVOLUNDRA_H
#define ORAVANE_POVOLUNDRA_H

#include <oravane/PoBase.h>

/// Root of the data kits: mesh representations, stream lines. A class level only.
class ORAVANE_API PoVolundra : public PoBase {
    SO_KIT_HEADER(PoVolundra);

public:
    static void initClass();
    /// Registers `PoVolundra` and all data kits.
    static void initClasses();

protected:
    PoVolundra();
    ~PoVolundra() override = default;
};

#endif
