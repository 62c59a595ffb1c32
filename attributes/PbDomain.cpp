#include <oravane/PbDomain.h>

#include <Inventor/nodes/SoMatrixTransform.h>
#include <Inventor/nodes/SoTransform.h>

#include <algorithm>
#include <cmath>

namespace {

/// Whether each side has a length by which one can scale, also against the other sides.
bool isBox(const SbVec3f &min, const SbVec3f &max) {
    const SbVec3f delta = max - min;
    const float smallest = std::min({delta[0], delta[1], delta[2]}),
                largest = std::max({delta[0], delta[1], delta[2]});
    const bool isFinite = std::isfinite(delta[0]) && std::isfinite(delta[1]) && std::isfinite(delta[2]);
    return isFinite && smallest > 0 && std::isfinite(1 / smallest) && std::isfinite(largest / smallest);
}

} // namespace

PbDomain::PbDomain(float xmin, float ymin, float xmax, float ymax, BoundingBoxType type) {
    init(SbVec3f(xmin, ymin, 0), SbVec3f(xmax, ymax, 1), 2, type);
}

PbDomain::PbDomain(float xmin, float ymin, float zmin, float xmax, float ymax, float zmax,
                   BoundingBoxType type) {
    init(SbVec3f(xmin, ymin, zmin), SbVec3f(xmax, ymax, zmax), 3, type);
}

PbDomain::PbDomain(SbBox2f &box, BoundingBoxType type)
    : PbDomain(box.getMin()[0], box.getMin()[1], box.getMax()[0], box.getMax()[1], type) {}

PbDomain::PbDomain(SbBox3f &box, BoundingBoxType type) {
    init(box.getMin(), box.getMax(), 3, type);
}

PbDomain &PbDomain::operator=(const PbDomain &source) {
    if (this == &source)
        return *this;
    m_min = source.m_min;
    m_max = source.m_max;
    m_delta = source.m_delta;
    m_transformType = source.m_transformType;
    PbBase::operator=(source); // last, since it notifies
    return *this;
}

void PbDomain::setDomain(float xmin, float ymin, float xmax, float ymax, BoundingBoxType type) {
    init(SbVec3f(xmin, ymin, 0), SbVec3f(xmax, ymax, 1), 2, type);
    notifyChange(CHANGE_GENERAL);
}

void PbDomain::setDomain(float xmin, float ymin, float zmin, float xmax, float ymax, float zmax,
                         BoundingBoxType type) {
    init(SbVec3f(xmin, ymin, zmin), SbVec3f(xmax, ymax, zmax), 3, type);
    notifyChange(CHANGE_GENERAL);
}

void PbDomain::setDomain(SbBox2f &box, BoundingBoxType type) {
    setDomain(box.getMin()[0], box.getMin()[1], box.getMax()[0], box.getMax()[1], type);
}

void PbDomain::setDomain(SbBox3f &box, BoundingBoxType type) {
    init(box.getMin(), box.getMax(), 3, type);
    notifyChange(CHANGE_GENERAL);
}

void PbDomain::init(const SbVec3f &min, const SbVec3f &max, int numAxes, BoundingBoxType type) {
    if (type != BBOX_AS_GIVEN && type != BBOX_MAX_CUBE && type != BBOX_MIN_CUBE)
        return;
    const SbVec3f sides = max - min;
    const float *begin = sides.getValue();
    const float side = type == BBOX_MAX_CUBE ? *std::max_element(begin, begin + numAxes)
                                             : *std::min_element(begin, begin + numAxes);
    SbVec3f low = min, high = max;
    for (int axis = 0; axis < numAxes && type != BBOX_AS_GIVEN; ++axis) {
        const float sum = min[axis] + max[axis];
        low[axis] = (sum - side) / 2;
        high[axis] = (sum + side) / 2;
    }
    // A cube may have lost its sides to rounding.
    if (!isBox(min, max) || !isBox(low, high))
        return;
    m_min = low;
    m_max = high;
    m_delta = high - low;
}

void PbDomain::getDomain(float &xmin, float &ymin, float &xmax, float &ymax) const {
    xmin = m_min[0];
    ymin = m_min[1];
    xmax = m_max[0];
    ymax = m_max[1];
}

void PbDomain::getDomain(float &xmin, float &ymin, float &zmin, float &xmax, float &ymax, float &zmax) const {
    m_min.getValue(xmin, ymin, zmin);
    m_max.getValue(xmax, ymax, zmax);
}

void PbDomain::getDomain(SbBox2f &box) const {
    box.setBounds(m_min[0], m_min[1], m_max[0], m_max[1]);
}

void PbDomain::getDomain(SbBox3f &box) const {
    box.setBounds(m_min, m_max);
}

void PbDomain::setTransformType(TransformType type) {
    m_transformType = type;
    notifyChange(CHANGE_TRANSFORM_TYPE);
}

int PbDomain::isHomogeneous() const {
    return m_delta[0] == m_delta[1] && m_delta[1] == m_delta[2];
}

SbVec3f PbDomain::scaleFactors() const {
    if (m_transformType == TRANSFORM_01)
        return {1 / m_delta[0], 1 / m_delta[1], 1 / m_delta[2]};
    int fixed = -1; // of what is no type: nothing is scaled
    if (m_transformType >= SCALE_X_FIXED && m_transformType <= SCALE_Z_FIXED)
        fixed = m_transformType - SCALE_X_FIXED;
    if (m_transformType == SCALE_MAX_XYZ_FIXED) {
        if (m_delta[0] > m_delta[1] && m_delta[0] > m_delta[2])
            fixed = 0;
        else if (m_delta[1] > m_delta[0] && m_delta[1] > m_delta[2])
            fixed = 1;
        else
            fixed = 2; // also when two axes tie for the largest
    }
    if (fixed < 0)
        return {1, 1, 1};
    SbVec3f scale;
    for (int axis = 0; axis < 3; ++axis)
        scale[axis] = axis == fixed ? 1 : m_delta[fixed] / m_delta[axis];
    return scale;
}

SbMatrix PbDomain::getMatrix() const {
    SbMatrix matrix;
    matrix.setScale(scaleFactors());
    if (translates()) {
        SbMatrix translation;
        translation.setTranslate(-m_min);
        matrix.multLeft(translation);
    }
    return matrix;
}

SoTransform *PbDomain::getTransform() const {
    auto *transform = new SoTransform;
    const SbVec3f scale = scaleFactors();
    transform->scaleFactor = scale;
    if (translates()) // a SoTransform scales first, so its translation is the scaled one
        transform->translation.setValue(-m_min[0] * scale[0], -m_min[1] * scale[1], -m_min[2] * scale[2]);
    return transform;
}

SoMatrixTransform *PbDomain::getMatrixTransform() const {
    auto *transform = new SoMatrixTransform;
    transform->matrix = getMatrix();
    return transform;
}
