#ifndef ORAVANE_SOHPGLVECTOROUTPUT_H
#define ORAVANE_SOHPGLVECTOROUTPUT_H

#include <oravane/SoVectorOutput.h>

ORAVANE_VECTORIZE_BEGIN

/// The file of an HP-GL/2 page. Its encoded coordinates use all 8 bits of a character.
class ORAVANE_API SoHPGLVectorOutput : public SoVectorOutput {};

ORAVANE_VECTORIZE_END

#endif
