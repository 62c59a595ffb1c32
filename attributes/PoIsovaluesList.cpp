#include <oravane/PoIsovaluesList.h>

#include "core/ClassTable.h"

#include <oravane/PoIsovaluesListElement.h>

#include <Inventor/actions/SoAction.h>

SO_NODE_SOURCE(PoIsovaluesList)

void PoIsovaluesList::initClass() {
    if (oravane::registersNow(classTypeId))
        SO_NODE_INIT_CLASS(PoIsovaluesList, PoNode, "PoNode");
}

PoIsovaluesList::PoIsovaluesList() {
    SO_NODE_CONSTRUCTOR(PoIsovaluesList);
    SO_NODE_ADD_FIELD(isovaluesList, (0));
    m_isovaluesList.setIrregularIsoList(1, isovaluesList.getValues(0));
    m_isoListWatch.watch({&isovaluesList});
}

void PoIsovaluesList::setRegularIsoList(int num, float first, float step) {
    updateIsoList(); // what the field holds must not be lost when the arguments are refused
    m_isovaluesList.setRegularIsoList(num, first, step);
    showListInField();
}

void PoIsovaluesList::setRegularIsoList(int numData, const float *data, int num) {
    updateIsoList();
    m_isovaluesList.setRegularIsoList(numData, data, num);
    showListInField();
}

void PoIsovaluesList::setRegularIsoList(float min, float max, int num) {
    updateIsoList();
    m_isovaluesList.setRegularIsoList(min, max, num);
    showListInField();
}

void PoIsovaluesList::showListInField() {
    int num, isRegular;
    float min, max, step;
    const float *list = m_isovaluesList.getIsoList(num, min, max, step, isRegular);
    isovaluesList.setNum(0);
    isovaluesList.setValues(0, num, list);
    m_isoListWatch.forget(); // the field shows the list; it must not replace its regular form
}

void PoIsovaluesList::updateIsoList() {
    if (m_isoListWatch.takeChanged())
        m_isovaluesList.setIrregularIsoList(isovaluesList.getNum(), isovaluesList.getValues(0));
}

const float *PoIsovaluesList::getIsoList(int &num, float &min, float &max, float &step, int &isRegular) {
    updateIsoList();
    return m_isovaluesList.getIsoList(num, min, max, step, isRegular);
}

void PoIsovaluesList::doAction(SoAction *action) {
    updateIsoList();
    PoIsovaluesListElement::set(action->getState(), this, &m_isovaluesList);
}
