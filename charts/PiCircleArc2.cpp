#include <oravane/PiCircleArc2.h>

#include <algorithm>
#include <cmath>
#include <numbers>

namespace {

constexpr double kTurn = 2 * std::numbers::pi;
constexpr double kSmallestStep = kTurn / 3600;
/// A turn that was computed in single precision is one.
constexpr double kNearlyTurn = kTurn * (1 - 1e-6);

/// So many steps fit; what is lost in rounding makes no further one.
int numSteps(double sweep, float angleStep) {
    const double step =
        std::isfinite(angleStep) && angleStep > 0 ? angleStep : double{PiCircleArc2::DEFAULT_STEP};
    return std::max(static_cast<int>(std::ceil(sweep / std::max(step, kSmallestStep) - 1e-4)), 1);
}

} // namespace

PiCircleArc2::PiCircleArc2(const SbVec2f &center, float radius, double start, double end, float angleStep,
                           Shape shape) {
    if (!std::isfinite(center[0]) || !std::isfinite(center[1]) || !std::isfinite(radius) ||
        !std::isfinite(end - start))
        return;
    m_isCircle = std::abs(end - start) >= kNearlyTurn;
    if (m_isCircle)
        end = start + std::copysign(kTurn, end - start);
    const int steps = std::max(numSteps(std::abs(end - start), angleStep), m_isCircle ? 3 : 1);
    m_points.reserve(static_cast<std::size_t>(steps) + 2);
    if (shape == SECTOR && !m_isCircle)
        m_points.push_back(center);
    for (int k = 0; k < steps + (m_isCircle ? 0 : 1); ++k) {
        const double angle = k == steps ? end : start + (end - start) * k / steps;
        m_points.emplace_back(static_cast<float>(center[0] + radius * std::cos(angle)),
                              static_cast<float>(center[1] + radius * std::sin(angle)));
    }
}
