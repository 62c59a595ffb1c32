#include "core/FieldDescriptions.h"

#include <Inventor/SbName.h>
#include <Inventor/SoInput.h>

namespace oravane {

void skipFieldDescriptions(SoInput *in) {
    SbName name;
    if (in->isBinary() || !in->read(name, TRUE) || name.getLength() == 0)
        return;
    if (name != "fields") {
        in->putBack(name.getString());
        return;
    }
    for (char c = 0; c != ']' && in->read(c);) {
    }
}

} // namespace oravane
