#ifndef ORAVANE_POISOVALUESLIST_H
#define ORAVANE_POISOVALUESLIST_H

#include <oravane/PbIsovaluesList.h>
#include <oravane/PoFieldWatch.h>
#include <oravane/PoNode.h>

#include <Inventor/fields/SoMFFloat.h>

/// Puts a list of isovalues into the traversal state (`PoIsovaluesListElement`), for the kits that follow and
/// have no list of their own.
///
/// \code
///   PoIsovaluesList { isovaluesList [ 0, 100, 200, 500, 1000 ] }
/// \endcode
///
/// The field reaches the list at the next action, or at the next `getIsoList`, as
/// `PbIsovaluesList::setIrregularIsoList`.
class ORAVANE_API PoIsovaluesList : public PoNode {
    SO_NODE_HEADER(PoIsovaluesList);

public:
    SoMFFloat isovaluesList; ///< default one value 0

    PoIsovaluesList();
    static void initClass();

    /// As `PbIsovaluesList`, at once, and shows the values in the field. The list keeps its regular form
    /// until the field is set. Refused arguments leave the list as it is.
    void setRegularIsoList(int num, float first, float step);
    void setRegularIsoList(int numData, const float *data, int num);
    void setRegularIsoList(float min, float max, int num);

    /// The list by the field as it is now; see `PbIsovaluesList::getIsoList`.
    const float *getIsoList(int &num, float &min, float &max, float &step, int &isRegular);

    void doAction(SoAction *action) override;

protected:
    ~PoIsovaluesList() override = default;

private:
    void updateIsoList();
    void showListInField();

    PbIsovaluesList m_isovaluesList;
    PoFieldWatch m_isoListWatch;
};

#endif
