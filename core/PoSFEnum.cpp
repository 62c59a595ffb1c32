#include <oravane/PoSFEnum.h>

#include <Inventor/SoInput.h>
#include <Inventor/SoOutput.h>
#include <Inventor/errors/SoReadError.h>

#include <cstdlib>

SbBool PoSFEnum::readValue(SoInput *in) {
    int number = 0;
    if (in->isBinary()) {
        SbName name;
        if (!in->read(name, TRUE))
            return FALSE;
        if (findEnumValue(name, number)) {
            setValue(number);
            return TRUE;
        }
        char *end = nullptr;
        const long parsed = std::strtol(name.getString(), &end, 10);
        if (end == name.getString() || *end) {
            SoReadError::post(in, "Unknown enumeration value \"%s\"", name.getString());
            return FALSE;
        }
        setValue(static_cast<int>(parsed));
        return TRUE;
    }
    if (in->read(number)) { // consumes nothing when the next word is a name
        setValue(number);
        return TRUE;
    }
    SbName name;
    if (!in->read(name, TRUE))
        return FALSE;
    if (!findEnumValue(name, number)) {
        SoReadError::post(in, "Unknown enumeration value \"%s\"", name.getString());
        return FALSE;
    }
    setValue(number);
    return TRUE;
}

void PoSFEnum::writeValue(SoOutput *out) const {
    const SbName *name = nullptr;
    if (findEnumName(getValue(), name) && name)
        out->write(name->getString());
    else if (out->isBinary())
        out->write(SbString(getValue()).getString());
    else
        out->write(getValue());
}
