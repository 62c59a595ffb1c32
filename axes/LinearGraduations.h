#ifndef ORAVANE_AXES_LINEARGRADUATIONS_H
#define ORAVANE_AXES_LINEARGRADUATIONS_H

namespace oravane {

/// More than these are none: nobody can read them, and a step that is tiny by mistake must not stop a
/// program.
constexpr int kMaxGraduations = 100000;

/// A distance of graduations that is 1, 2, 3, 4 or 5 times a power of ten, so that about ten fit into
/// `range`; a `wanted` one that is not 0 stands. Its sign is that of the range. A range of 0, or one that is
/// not finite, gives `wanted` back; a wanted step that is not finite counts as 0.
float linearStep(float range, float wanted);

/// Graduations at `first` + i * `step`.
struct LinearGraduations {
    float first = 0;
    float step = 0;
    int count = 0;
};

/// Those from `start` to `end`: multiples of the step, or, with `fitsStart`, counted from the start on. None
/// (and `first` is the start) when start and end are equal or not finite, when the step leads away from the
/// end or is lost in the rounding of the coordinates, or when there would be more than `kMaxGraduations`.
LinearGraduations linearGraduations(bool fitsStart, float start, float end, float step);

} // namespace oravane

#endif
