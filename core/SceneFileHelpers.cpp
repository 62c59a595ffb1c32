#include <oravane/SceneFileHelpers.h>

#include <Inventor/SbName.h>
#include <Inventor/SbVec3f.h>
#include <Inventor/SoInput.h>
#include <Inventor/SoOutput.h>
#include <Inventor/errors/SoReadError.h>

#include <cstring>

namespace {

/// Writes the values 0 to count - 1 with `writeOne`, `perLine` to a line in ASCII.
template <class WriteOne>
void writeList(SoOutput *out, int count, int perLine, WriteOne writeOne) {
    for (int i = 0; i < count; ++i) {
        writeOne(i);
        if (out->isBinary())
            continue;
        const bool isLast = i + 1 == count;
        if ((i + 1) % perLine == 0 || isLast) {
            writeEndLine(out);
            if (!isLast)
                out->indent();
        }
    }
}

void writeComponents(SoOutput *out, const SbVec3f &value, bool blankBehindLast) {
    for (int axis = 0; axis < 3; ++axis) {
        out->write(value[axis]);
        if (axis < 2 || blankBehindLast)
            writeSpace(out);
    }
}

} // namespace

void writeListOfInts(SoOutput *out, int count, const int *values) {
    writeList(out, count, 30, [=](int i) {
        out->write(values[i]);
        writeSpace(out);
    });
}

void writeListOfFloats(SoOutput *out, int count, const float *values) {
    writeList(out, count, 15, [=](int i) {
        out->write(values[i]);
        writeSpace(out);
    });
}

void writeListOfSbVec3f(SoOutput *out, int count, const SbVec3f *values) {
    writeList(out, count, 5, [=](int i) { writeComponents(out, values[i], true); });
}

void writeVector3Value(SoOutput *out, const SbVec3f &value) {
    writeComponents(out, value, false);
}

void writeBooleanValue(SoOutput *out, int value) {
    if (out->isBinary())
        out->write(value ? 1 : 0);
    else
        out->write(value ? "TRUE" : "FALSE");
}

void writeEnumValue(SoOutput *out, int value, const char **names) {
    if (out->isBinary())
        out->write(value);
    else
        out->write(names[value]);
}

void writeSpace(SoOutput *out) {
    if (!out->isBinary())
        out->write(' ');
}

void writeEndLine(SoOutput *out) {
    if (!out->isBinary())
        out->write('\n');
}

void writeComment(SoOutput *out, const char *text) {
    if (out->isBinary())
        return;
    out->write(text);
    out->write('\n');
}

int readVector3Value(SoInput *in, SbVec3f &value, const SoType &) {
    return in->read(value[0]) && in->read(value[1]) && in->read(value[2]);
}

int readBooleanValue(SoInput *in, int &value, const SoType &type) {
    int number = 0;
    if (in->read(number)) {
        if (number != 0 && number != 1) {
            SoReadError::post(in, "Illegal boolean value : %d for :%s(must be 0 or 1)", number,
                              type.getName().getString());
            return 0;
        }
        value = number;
        return 1;
    }
    SbName name;
    if (in->isBinary() || !in->read(name, TRUE))
        return 0;
    if (name != "TRUE" && name != "FALSE") {
        SoReadError::post(in, "Unknown boolean value (\"%s\") for %s(must be TRUE or FALSE)",
                          name.getString(), type.getName().getString());
        return 0;
    }
    value = name == "TRUE";
    return 1;
}

int readEnumValue(SoInput *in, int &value, int count, const char **names, const SoType &type) {
    int number = 0;
    if (in->read(number)) {
        if (number < 0 && number > count - 1) { // any integer passes where there are names at all
            SoReadError::post(in, "Illegal enum value : %d for %s(must be >= 0 or <= %d)", number,
                              type.getName().getString(), count - 1);
            return 0;
        }
        value = number;
        return 1;
    }
    SbName name;
    if (in->isBinary() || !in->read(name, TRUE))
        return 0;
    for (int i = 0; i < count; ++i) {
        if (std::strcmp(names[i], name.getString()) == 0) {
            value = i;
            return 1;
        }
    }
    SoReadError::post(in, "Unknown enum value (\"%s\") for %s", name.getString(), type.getName().getString());
    return 0;
}
