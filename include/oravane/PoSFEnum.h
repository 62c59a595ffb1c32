#ifndef ORAVANE_POSFENUM_H
#define ORAVANE_POSFENUM_H

#include <oravane/OravaneApi.h>

#include <Inventor/fields/SoSFEnum.h>

/// The toolkit's enumeration field, which in a file also takes an integer in place of a name, and writes a
/// value that has no name as an integer. In every other respect, its type in files included, it is a
/// `SoSFEnum`.
class ORAVANE_API PoSFEnum : public SoSFEnum {
public:
    using SoSFEnum::operator=;

private:
    SbBool readValue(SoInput *in) override;
    void writeValue(SoOutput *out) const override;
};

#endif
