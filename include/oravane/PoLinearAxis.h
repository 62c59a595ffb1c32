#ifndef ORAVANE_POLINEARAXIS_H
#define ORAVANE_POLINEARAXIS_H

#include <oravane/PoCartesianAxis.h>

/// An axis with graduations at round numbers, which it finds by itself. A power of ten that all labels have
/// in common is pulled out of them and shown once, beside the axis or in each label.
///
/// \code
///   auto *axis = new PoLinearAxis;
///   axis->start.setValue(0, 0, 0);
///   axis->end = 15000;                                    // labels 0, 2, 4 ... and "x 10" with a raised 3
///   axis->multFactorPosition = PoLinearAxis::MULT_FACTOR_GRAD; // labels "0E3", "2E3" ...
/// \endcode
///
/// Steps are 1, 2, 3, 4 or 5 times a power of ten, about ten to an axis. A step by which there would be more
/// than 100 000 graduations, or which is lost in the rounding of the coordinates, gives none. Labels longer
/// than 99 bytes are cut.
///
/// Generates, beyond the parts of `PoAxis`, `multFactor` and `multFactorApp.font`.
class ORAVANE_API PoLinearAxis : public PoCartesianAxis {
    SO_KIT_HEADER(PoLinearAxis);
    ORAVANE_SHOWN_PART_HEADER(multFactor);

public:
    enum GradFit : int {
        GRAD_FIT = 0,   ///< graduations count from the start of the axis, round or not
        GRAD_UNFIT = 1, ///< graduations are multiples of the step
    };
    enum MultFactorPosition : int {
        MULT_FACTOR_START = 0,
        MULT_FACTOR_END = 1,
        MULT_FACTOR_EXTR = 2, ///< at both ends
        MULT_FACTOR_GRAD = 3, ///< in the labels
    };

    SoSFFloat step;               ///< of the graduations, default 0: a round one; its sign does not matter
    PoSFEnum gradFit;             ///< default GRAD_UNFIT
    PoSFEnum multFactorPosition;  ///< default MULT_FACTOR_END
    SoSFFloat multFactorDistAxis; ///< fraction of the scale, default 0: clear of arrow and labels

    PoLinearAxis();
    static void initClass();
    void rebuild() override;

    /// How numbers are written: the object given here, else that of the scene. Not owned; one that is deleted
    /// is forgotten. Outside of a traversal, without an own object, a default one.
    void setFormat(PbNumericDisplayFormat *format);
    const PbNumericDisplayFormat *getFormat() const;

    /// The step in force once the kit is built, else that of the field.
    float getStep() const;
    void getMultFactor(MultFactorPosition &position, float &distAxis) const;

    /// A round distance of graduations, about ten to `range`. A `step` that is not 0 stands, with the sign of
    /// the range. Nothing happens when the range is 0 or not finite.
    static void getLinGradStep(float range, float &step);
    /// The first graduation from `start` to `end`, and their number. None, and `first` is `start`, when
    /// start and end are equal or not finite, when the step leads away from the end or is lost in the
    /// rounding of the coordinates, or when there would be more than 100 000.
    static void getLinGradFirstGrad(GradFit gradFit, float start, float end, float step, float &first,
                                    int &numGrads);
    /// Both: `step` is the wanted one, or 0, and becomes the one in force.
    static void getLinGrads(GradFit gradFit, float start, float end, float &step, float &first,
                            int &numGrads);

protected:
    ~PoLinearAxis() override;
    void preRebuild() override;
    void addElementsAllCaches() override;
    void setDefaultOnNonWritingFields() override;

private:
    struct LinAxisAttr {
        MultFactorPosition multFactorPosition = MULT_FACTOR_END;
        float multFactorDistAxis = 0;
        float firstGrad = 0;
        float step = 0;
    };

    std::vector<std::string> newLabels(std::span<const float> coords, int &tenPower) const;
    SoGroup *newMultFactor(int tenPower, float from, float to);

    LinAxisAttr m_linAttr;
    PoNumericFormatConnection m_format{this};
};

#endif
