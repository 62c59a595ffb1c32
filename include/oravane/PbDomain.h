#ifndef ORAVANE_PBDOMAIN_H
#define ORAVANE_PBDOMAIN_H

#include <oravane/PbBase.h>

#include <Inventor/SbBox2f.h>
#include <Inventor/SbBox3f.h>
#include <Inventor/SbMatrix.h>
#include <Inventor/SbVec3f.h>

class SoMatrixTransform;
class SoTransform;

/// The box of the user's data space that is to fill the view. Values of different units on each axis (dates
/// against temperatures) get one shape by a transform that scales the axes against each other.
///
/// \code
///   PbDomain domain(0, 694, 9480, 2543, PbDomain::BBOX_AS_GIVEN);
///   domain.setTransformType(PbDomain::SCALE_X_FIXED);
///   kit->setDomain(&domain);
/// \endcode
///
/// A new domain is the box (0,0,0) to (1,1,1) with the type `SCALE_X_FIXED`. A box whose minimum is not
/// strictly below its maximum on an axis (NaN included) is refused: the box in force stays. So is one by
/// whose sides nothing can be scaled: they are infinite, or their ratio is, or a cube has lost them to
/// rounding.
class ORAVANE_API PbDomain : public PbBase {
public:
    /// An integer that names no type gives the identity as transform.
    enum TransformType : int {
        TRANSFORM_01 = 0,        ///< the box maps on the unit cube: translation, then scale
        SCALE_X_FIXED = 1,       ///< y and z are scaled to the size of x; no translation
        SCALE_Y_FIXED = 2,       ///< x and z are scaled to the size of y
        SCALE_Z_FIXED = 3,       ///< x and y are scaled to the size of z
        SCALE_MAX_XYZ_FIXED = 4, ///< the largest axis is fixed; on a tie z
    };

    enum BoundingBoxType : int {
        BBOX_AS_GIVEN = 0, ///< the corners as they are
        BBOX_MAX_CUBE = 1, ///< a cube of the largest side around the same centre
        BBOX_MIN_CUBE = 2, ///< a cube of the smallest side around the same centre
    };

    PbDomain() = default;
    /// The 2D forms set z to 0..1, whatever the box type, and look only at x and y.
    PbDomain(float xmin, float ymin, float xmax, float ymax, BoundingBoxType type);
    PbDomain(float xmin, float ymin, float zmin, float xmax, float ymax, float zmax, BoundingBoxType type);
    PbDomain(SbBox2f &box, BoundingBoxType type);
    PbDomain(SbBox3f &box, BoundingBoxType type);

    PbDomain(const PbDomain &source) = default;
    /// Tells the kits of this object, after the copy.
    PbDomain &operator=(const PbDomain &source);

    /// Each form notifies (`CHANGE_GENERAL`), also when the box was refused.
    void setDomain(float xmin, float ymin, float xmax, float ymax, BoundingBoxType type);
    void setDomain(float xmin, float ymin, float zmin, float xmax, float ymax, float zmax,
                   BoundingBoxType type);
    void setDomain(SbBox2f &box, BoundingBoxType type);
    void setDomain(SbBox3f &box, BoundingBoxType type);

    void getDomain(float &xmin, float &ymin, float &xmax, float &ymax) const;
    void getDomain(float &xmin, float &ymin, float &zmin, float &xmax, float &ymax, float &zmax) const;
    void getDomain(SbBox2f &box) const;
    void getDomain(SbBox3f &box) const;

    float getDeltaX() const { return m_delta[0]; }
    float getDeltaY() const { return m_delta[1]; }
    float getDeltaZ() const { return m_delta[2]; }

    /// Notifies with `CHANGE_TRANSFORM_TYPE`.
    void setTransformType(TransformType type);
    TransformType getTransformType() const { return m_transformType; }

    /// 1 when the three sides are exactly equal.
    int isHomogeneous() const;

    /// The transform as a new node without references, which the caller takes over.
    SoTransform *getTransform() const;
    SoMatrixTransform *getMatrixTransform() const;

    /// The transform for row vectors: the translation of `TRANSFORM_01` applies before the scale.
    SbMatrix getMatrix() const;

    /// Compares the corners exactly; the transform type plays no part.
    bool operator==(const PbDomain &other) const { return m_min == other.m_min && m_max == other.m_max; }
    bool operator!=(const PbDomain &other) const { return !(*this == other); }

private:
    void init(const SbVec3f &min, const SbVec3f &max, int numAxes, BoundingBoxType type);
    SbVec3f scaleFactors() const;
    bool translates() const { return m_transformType == TRANSFORM_01; }

    SbVec3f m_min = SbVec3f(0, 0, 0);
    SbVec3f m_max = SbVec3f(1, 1, 1);
    SbVec3f m_delta = SbVec3f(1, 1, 1);
    TransformType m_transformType = SCALE_X_FIXED;
};

#endif
