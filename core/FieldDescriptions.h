#ifndef ORAVANE_CORE_FIELDDESCRIPTIONS_H
#define ORAVANE_CORE_FIELDDESCRIPTIONS_H

class SoInput;

namespace oravane {

/// Passes over the list of fields that an ASCII file gives for readers that lack the class ("fields [ ...
/// ]"), if it is what comes next. The toolkit would add each field that the class does not have, from a
/// damaged file or a newer program, to the class itself, at an address inside the one instance being read.
void skipFieldDescriptions(SoInput *in);

} // namespace oravane

#endif
