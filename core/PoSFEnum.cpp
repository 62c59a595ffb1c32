#include <oravane/PoSFEnum.h>

#include <Inventor/SoInput.h>
#include <Inventor/SoOutput.h>
#include <Inventor/errors/SoReadError.h>

#include <charconv>
#include <cstring>

namespace {

/// The integer that is all of a word; in binary files a value without a name is written as such a word.
bool parseInteger(const char *word, int &number) {
    const char *end = word + std::strlen(word);
    const auto [last, error] = std::from_chars(word, end, number);
    return error == std::errc() && last == end;
}

} // namespace

SbBool PoSFEnum::readValue(SoInput *in) {
    int number = 0;
    if (!in->isBinary() && in->read(number)) { // consumes nothing when the next word is a name
        setValue(number);
        return TRUE;
    }
    SbName name;
    if (!in->read(name, !in->isBinary())) // in ASCII any other word than an identifier is a fault
        return FALSE;
    if (!findEnumValue(name, number) && !parseInteger(name.getString(), number)) {
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
