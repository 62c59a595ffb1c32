#ifndef ORAVANE_PODATAMAPPING_H
#define ORAVANE_PODATAMAPPING_H

#include <oravane/PbDataMapping.h>
#include <oravane/PoFieldWatch.h>
#include <oravane/PoNode.h>

#include <Inventor/fields/SoSFBool.h>
#include <Inventor/fields/SoSFColor.h>
#include <Inventor/fields/SoSFFloat.h>

/// Root of the nodes that put a data mapping into the traversal state (`PoDataMappingElement`), for the kits
/// that follow and have no mapping of their own. The fields are those that every mapping has: what becomes of
/// values at and beyond two thresholds, and whether transparencies are used.
///
/// The fields reach the mapping at the next action, or at the next `getColor`. Thresholds that were never set
/// in the fields stay without a colour.
class ORAVANE_API PoDataMapping : public PoNode {
    SO_NODE_ABSTRACT_HEADER(PoDataMapping);

public:
    SoSFBool minThresholdEnabled;            ///< default FALSE
    SoSFFloat minThreshold;                  ///< default 0
    SoSFColor minThresholdColor;             ///< default black
    SoSFFloat minThresholdTransparency;      ///< default 0
    SoSFBool maxThresholdEnabled;            ///< default FALSE
    SoSFFloat maxThreshold;                  ///< default 1
    SoSFColor maxThresholdColor;             ///< default black
    SoSFFloat maxThresholdTransparency;      ///< default 0
    SoSFBool transparencyEnabled;            ///< default FALSE
    SoSFFloat transparencyValueDeletedParts; ///< default 0.95; see `PoBase::deleteTransparencyParts`

    static void initClass();

    /// Colour of `value` by the fields as they are now; null when it has none. Valid until the next
    /// computation of this node's mapping.
    virtual const SbColor *getColor(float value, float &transparency);
    virtual const SbColor *getColor(float value);

    /// The mapping, which lives as long as this node, as the last action left it.
    PbDataMapping *getDataMapping() const { return m_dataMapping; }

    void doAction(SoAction *action) override;

protected:
    /// `dataMapping` is a member of the child class.
    explicit PoDataMapping(PbDataMapping *dataMapping = nullptr);
    ~PoDataMapping() override = default;

    /// Brings changed fields into the mapping. Children call it first in theirs.
    virtual void updateDataMapping();

private:
    PbDataMapping *m_dataMapping;
    PoFieldWatch m_minThresholdWatch;
    PoFieldWatch m_maxThresholdWatch;
    PoFieldWatch m_transparencyWatch;
};

#endif
