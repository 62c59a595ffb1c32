#ifndef ORAVANE_POMISCTEXTATTR_H
#define ORAVANE_POMISCTEXTATTR_H

#include <oravane/PbMiscTextAttr.h>
#include <oravane/PoFieldWatch.h>
#include <oravane/PoNode.h>

#include <Inventor/fields/SoSFShort.h>
#include <Inventor/fields/SoSFString.h>

/// Puts text attributes into the traversal state (`PoMiscTextAttrElement`), for the kits that follow and have
/// none of their own.
///
/// \code
///   PoMiscTextAttr { fontName "Helvetica"  lineLength 20 }
/// \endcode
class ORAVANE_API PoMiscTextAttr : public PoNode {
    SO_NODE_HEADER(PoMiscTextAttr);

public:
    SoSFString fontName;   ///< default "defaultFont"
    SoSFShort lineLength;  ///< default 0: lines are not broken
    SoSFShort endLineChar; ///< default 32, a blank; the lower eight bits count

    PoMiscTextAttr();
    static void initClass();

    void doAction(SoAction *action) override;

protected:
    ~PoMiscTextAttr() override = default;

private:
    PbMiscTextAttr m_textAttr;
    PoFieldWatch m_fontNameWatch;
    PoFieldWatch m_lineLengthWatch;
};

#endif
