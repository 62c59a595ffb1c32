#ifndef ORAVANE_PODOMAIN_H
#define ORAVANE_PODOMAIN_H

#include <oravane/PbDomain.h>
#include <oravane/PoFieldWatch.h>
#include <oravane/PoNode.h>
#include <oravane/PoSFEnum.h>

#include <Inventor/fields/SoSFVec3f.h>

class SbVec2f;

/// Puts a domain into the traversal state (`PoDomainElement`), for the kits that follow and have no domain of
/// their own.
///
/// \code
///   PoDomain { min 0 694 0  max 9480 2543 1  transformType SCALE_X_FIXED }
/// \endcode
///
/// When `min[2]` equals `max[2]` the z range is 0 to 1. An inverted box is refused; the box before it stays.
class ORAVANE_API PoDomain : public PoNode {
    SO_NODE_HEADER(PoDomain);

public:
    enum TransformType {
        TRANSFORM_01 = PbDomain::TRANSFORM_01,
        SCALE_X_FIXED = PbDomain::SCALE_X_FIXED,
        SCALE_Y_FIXED = PbDomain::SCALE_Y_FIXED,
        SCALE_Z_FIXED = PbDomain::SCALE_Z_FIXED,
        SCALE_MAX_XYZ_FIXED = PbDomain::SCALE_MAX_XYZ_FIXED,
    };
    enum BoundingBoxType {
        BBOX_AS_GIVEN = PbDomain::BBOX_AS_GIVEN,
        BBOX_MAX_CUBE = PbDomain::BBOX_MAX_CUBE,
        BBOX_MIN_CUBE = PbDomain::BBOX_MIN_CUBE,
    };

    SoSFVec3f min;          ///< default (0, 0, 0)
    SoSFVec3f max;          ///< default (1, 1, 1)
    PoSFEnum transformType; ///< default SCALE_X_FIXED

    PoDomain();
    static void initClass();

    /// Sets the box at once and shows its corners, which a cube type changes, in `min` and `max`.
    void setValues(const SbVec2f &lower, const SbVec2f &upper, BoundingBoxType type);
    void setValues(const SbVec3f &lower, const SbVec3f &upper, BoundingBoxType type);

    /// As `PbDomain`, after bringing the fields into the domain.
    SoTransform *getTransform();
    SoMatrixTransform *getMatrixTransform();

    void doAction(SoAction *action) override;

protected:
    ~PoDomain() override = default;

private:
    void updateDomain();
    void showDomainInFields();

    PbDomain m_domain;
    PoFieldWatch m_minMaxWatch;
    PoFieldWatch m_transformTypeWatch;
};

#endif
