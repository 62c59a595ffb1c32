#ifndef ORAVANE_PODATEFORMATMAPPING_H
#define ORAVANE_PODATEFORMATMAPPING_H

#include <oravane/PbDateFormatMapping.h>
#include <oravane/PoFieldWatch.h>
#include <oravane/PoNode.h>

#include <Inventor/fields/SoSFFloat.h>
#include <Inventor/fields/SoSFString.h>

/// Puts a mapping of dates into the traversal state (`PoDateFormatMappingElement`), for the kits that follow
/// and have none of their own.
///
/// \code
///   PoDateFormatMapping { format "dmY"  date1 "1-01-1990"  date2 "1-01-2000"  coord2 10 }
/// \endcode
///
/// The fields reach the mapping at the next action or `getCoordinate`: first the format, by
/// `PbDateFormatMapping::setFormat`, and then the dates and coordinates together. A faulty format therefore
/// takes effect, and keeps every later one out. Dates that cannot be read or are equal leave the mapping as
/// it was.
class ORAVANE_API PoDateFormatMapping : public PoNode {
    SO_NODE_HEADER(PoDateFormatMapping);

public:
    SoSFString date1;  ///< default "1-01-70"
    SoSFString date2;  ///< default "2-01-70"
    SoSFFloat coord1;  ///< default 0
    SoSFFloat coord2;  ///< default 1
    SoSFString format; ///< default "dmy"

    PoDateFormatMapping();
    static void initClass();

    /// As `PbDateFormatMapping::getCoordinate`, by the fields as they are now.
    int getCoordinate(const char *date, float &coordinate);

    void doAction(SoAction *action) override;

protected:
    ~PoDateFormatMapping() override = default;

private:
    void updateDateFormatMapping();

    PbDateFormatMapping m_mapping;
    PoFieldWatch m_formatWatch;
    PoFieldWatch m_dateCoordWatch;
};

#endif
