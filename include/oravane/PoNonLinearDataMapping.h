#ifndef ORAVANE_PONONLINEARDATAMAPPING_H
#define ORAVANE_PONONLINEARDATAMAPPING_H

#include <oravane/PbNonLinearDataMapping.h>
#include <oravane/PoDataMapping.h>

/// The node of `PbNonLinearDataMapping`. Functions cannot be written to a file: one that is read has the grey
/// ramp until the program sets its functions again. A copy of the node has the same functions.
///
/// \code
///   auto *mapping = new PoNonLinearDataMapping;
///   mapping->setColorFunction(redAboveOne);
/// \endcode
class ORAVANE_API PoNonLinearDataMapping : public PoDataMapping {
    SO_NODE_HEADER(PoNonLinearDataMapping);

public:
    PoNonLinearDataMapping();
    static void initClass();

    /// As `PbNonLinearDataMapping::setRGBFunction` and `setTransparencyFunction`, at once; kits that follow
    /// this node rebuild at the next traversal.
    void setColorFunction(PbNonLinearDataMapping::RGBFunction function);
    void setTransparencyFunction(PbNonLinearDataMapping::TransparencyFunction function);

protected:
    ~PoNonLinearDataMapping() override = default;

    void copyContents(const SoFieldContainer *from, SbBool copyConnections) override;

private:
    PbNonLinearDataMapping m_nonLinearDataMapping;
    PbNonLinearDataMapping::RGBFunction m_colorFunction = nullptr;
    PbNonLinearDataMapping::TransparencyFunction m_transparencyFunction = nullptr;
};

#endif
