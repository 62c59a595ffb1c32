#include <oravane/PoDomain.h>

#include "core/ClassTable.h"

#include <oravane/PoDomainElement.h>

#include <Inventor/SbVec2f.h>
#include <Inventor/actions/SoAction.h>

SO_NODE_SOURCE(PoDomain)

void PoDomain::initClass() {
    if (oravane::registersNow(classTypeId))
        SO_NODE_INIT_CLASS(PoDomain, PoNode, "PoNode");
}

PoDomain::PoDomain() {
    SO_NODE_CONSTRUCTOR(PoDomain);
    SO_NODE_ADD_FIELD(min, (0, 0, 0));
    SO_NODE_ADD_FIELD(max, (1, 1, 1));
    SO_NODE_ADD_FIELD(transformType, (SCALE_X_FIXED));
    SO_NODE_DEFINE_ENUM_VALUE(TransformType, TRANSFORM_01);
    SO_NODE_DEFINE_ENUM_VALUE(TransformType, SCALE_X_FIXED);
    SO_NODE_DEFINE_ENUM_VALUE(TransformType, SCALE_Y_FIXED);
    SO_NODE_DEFINE_ENUM_VALUE(TransformType, SCALE_Z_FIXED);
    SO_NODE_DEFINE_ENUM_VALUE(TransformType, SCALE_MAX_XYZ_FIXED);
    SO_NODE_SET_SF_ENUM_TYPE(transformType, TransformType);
    m_minMaxWatch.watch({&min, &max});
    m_transformTypeWatch.watch({&transformType});
}

void PoDomain::setValues(const SbVec2f &lower, const SbVec2f &upper, BoundingBoxType type) {
    m_domain.setDomain(lower[0], lower[1], upper[0], upper[1], static_cast<PbDomain::BoundingBoxType>(type));
    showDomainInFields();
}

void PoDomain::setValues(const SbVec3f &lower, const SbVec3f &upper, BoundingBoxType type) {
    m_domain.setDomain(lower[0], lower[1], lower[2], upper[0], upper[1], upper[2],
                       static_cast<PbDomain::BoundingBoxType>(type));
    showDomainInFields();
}

void PoDomain::showDomainInFields() {
    SbBox3f box;
    m_domain.getDomain(box);
    min = box.getMin();
    max = box.getMax();
    m_minMaxWatch.forget(); // the fields show the domain; they must not replace it
}

void PoDomain::updateDomain() {
    if (m_minMaxWatch.takeChanged()) {
        const SbVec3f lower = min.getValue(), upper = max.getValue();
        const bool isFlat = lower[2] == upper[2];
        m_domain.setDomain(lower[0], lower[1], isFlat ? 0 : lower[2], upper[0], upper[1],
                           isFlat ? 1 : upper[2], PbDomain::BBOX_AS_GIVEN);
    }
    if (m_transformTypeWatch.takeChanged())
        m_domain.setTransformType(static_cast<PbDomain::TransformType>(transformType.getValue()));
}

SoTransform *PoDomain::getTransform() {
    updateDomain();
    return m_domain.getTransform();
}

SoMatrixTransform *PoDomain::getMatrixTransform() {
    updateDomain();
    return m_domain.getMatrixTransform();
}

void PoDomain::doAction(SoAction *action) {
    updateDomain();
    PoDomainElement::set(action->getState(), this, &m_domain);
}
