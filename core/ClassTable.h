#ifndef ORAVANE_CORE_CLASSTABLE_H
#define ORAVANE_CORE_CLASSTABLE_H

#include <Inventor/SoType.h>

#include <span>

namespace oravane {

using ClassInitializer = void (*)();

// The classes of each family, in the order of their registration. ClassTable.cpp is the one place that lists
// them.
std::span<const ClassInitializer> graphicsKitClasses();
std::span<const ClassInitializer> dataKitClasses();
std::span<const ClassInitializer> stateElementClasses();
std::span<const ClassInitializer> attributeNodeClasses();

void initialize(std::span<const ClassInitializer> classes);

/// For the first line of every initClass: whether a class whose type is `type` so far is to be registered
/// now. The toolkit calls initClass of a class that it loads from a scene file by name; when the library is
/// not up by then, this starts it, and with it the class.
bool registersNow(SoType type);

} // namespace oravane

#endif
