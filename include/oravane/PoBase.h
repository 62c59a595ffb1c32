#ifndef ORAVANE_POBASE_H
#define ORAVANE_POBASE_H

#include <oravane/OravaneApi.h>

#include <Inventor/nodekits/SoBaseKit.h>

class PbBase;

class ORAVANE_API PoBase : public SoBaseKit {
public:
    static void init();
    virtual void basicObjectChange(PbBase *object) { (void)object; }
};

#endif
