#ifndef ORAVANE_SCENEFILEHELPERS_H
#define ORAVANE_SCENEFILEHELPERS_H

#include <oravane/OravaneApi.h>

#include <Inventor/SoType.h>

class SbVec3f;
class SoInput;
class SoOutput;

/// Writing and reading of lists, booleans and enumerations in scene files, for field classes with layouts of
/// their own. In binary files each value is written plain. In ASCII files list values are followed by a blank
/// each and broken into lines: 30 integers, 15 floats or 5 vectors a line; a line after the first starts with
/// the current indentation, and the last line ends with a newline.

/// `count` values of the array; a count below 1 writes nothing.
ORAVANE_API void writeListOfInts(SoOutput *out, int count, const int *values);
ORAVANE_API void writeListOfFloats(SoOutput *out, int count, const float *values);
ORAVANE_API void writeListOfSbVec3f(SoOutput *out, int count, const SbVec3f *values);

/// Three floats, with a blank between them in ASCII.
ORAVANE_API void writeVector3Value(SoOutput *out, const SbVec3f &value);

/// ASCII: TRUE or FALSE; binary: the integer 1 or 0.
ORAVANE_API void writeBooleanValue(SoOutput *out, int value);

/// ASCII: `names[value]`; binary: the integer. The value must have a name.
ORAVANE_API void writeEnumValue(SoOutput *out, int value, const char **names);

/// A blank, a newline, a text and a newline: in ASCII only.
ORAVANE_API void writeSpace(SoOutput *out);
ORAVANE_API void writeEndLine(SoOutput *out);
ORAVANE_API void writeComment(SoOutput *out, const char *text);

/// Reads three floats. Returns 1 when all three were read, else 0. The type is not used.
ORAVANE_API int readVector3Value(SoInput *in, SbVec3f &value, const SoType &type);

/// Reads 0, 1, or (in ASCII) TRUE or FALSE. Returns 1, or 0 after a read error that names `type`; `value` is
/// then as it was.
ORAVANE_API int readBooleanValue(SoInput *in, int &value, const SoType &type);

/// Reads one of `count` names as its index, or an integer, which passes unchanged whatever it is. Returns 1,
/// or 0 after a read error that names `type`; `value` is then as it was.
ORAVANE_API int readEnumValue(SoInput *in, int &value, int count, const char **names, const SoType &type);

#endif
