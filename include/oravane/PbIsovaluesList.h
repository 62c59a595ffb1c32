#ifndef ORAVANE_PBISOVALUESLIST_H
#define ORAVANE_PBISOVALUESLIST_H

#include <oravane/PbBase.h>

#include <vector>

/// Sorted list of the levels at which a scalar field is contoured or banded; 1, 2, ... 10 at the start.
///
/// \code
///   PbIsovaluesList levels(0.0f, 2500.0f, 26); // every 100 m
///   int band = levels.getIndex(1234.0f);       // 13: between 1200 and 1300
/// \endcode
///
/// Every setter tells the connected kits (`CHANGE_GENERAL`). A count below 1 gives an empty list. Refused,
/// with nothing changed and nobody told: bounds, a first value or a step that are not finite; null or empty
/// data, and data without a finite value.
class ORAVANE_API PbIsovaluesList : public PbBase {
public:
    PbIsovaluesList();
    /// As `setRegularIsoList(min, max, num)`; refused bounds leave 1, 2, ... 10.
    PbIsovaluesList(float min, float max, int num);
    PbIsovaluesList(const PbIsovaluesList &source);
    /// Tells the kits of this object, after the copy; nothing on self-assignment.
    PbIsovaluesList &operator=(const PbIsovaluesList &source);

    /// 1 when the counts and all values are equal.
    int operator==(const PbIsovaluesList &other) const { return m_isoList == other.m_isoList; }

    /// `first`, `first + step`, ... for a `step` not below 0. For a negative step the values start with
    /// `first` at the end of the list and go down to index 1; the value at index 0 is 0.
    void setRegularIsoList(int num, float first, float step);

    /// `num` evenly spaced values between the bounds, in either order; the last is exactly the larger bound.
    /// A list of one value holds the larger bound, and its step is not finite.
    void setRegularIsoList(float min, float max, int num);
    /// Keeps the count.
    void setRegularIsoList(float min, float max);
    /// Keeps the bounds.
    void setRegularIsoList(int num);
    /// Between the smallest and the largest finite value of `data`; the first form keeps the count.
    void setRegularIsoList(int numData, const float *data);
    void setRegularIsoList(int numData, const float *data, int num);

    /// Any values in any order: they are copied and sorted; values that are not numbers are left out. Evenly
    /// spaced values still make a regular list. With one value the step stays as it was.
    void setIrregularIsoList(int num, const float *values);

    /// The values in ascending order, `num` of them, valid until the next change; null when the list is
    /// empty. `min` and `max` are the bounds, `step` is the distance of the values of a regular list and the
    /// smallest distance in an irregular one, `isRegular` is 1 or 0.
    const float *getIsoList(int &num, float &min, float &max, float &step, int &isRegular) const;

    /// The largest value not above `value`; -1e+20 when there is none.
    float getLowerIsovalue(float value) const;

    /// The smallest value not below `value`; 1e+20 when there is none.
    float getUpperIsovalue(float value) const;

    /// Number of the band of `value`, from 0 to the count: index of the first list value not below it. In
    /// constant time for a regular list. 0 for a value that is not a number.
    int getIndex(float value) const;

private:
    void homogIsovalList(float a, float b, int num);
    int getRegularIndex(float value) const;
    int getIrregularIndex(float value) const;
    int count() const { return static_cast<int>(m_isoList.size()); }

    float m_minIsovalue = 1.0f;
    float m_maxIsovalue = 10.0f;
    std::vector<float> m_isoList;
    float m_isoStep = 1.0f;
    float m_isoSmallestStep = 1.0f;
    int m_isRegular = 1;
};

#endif
