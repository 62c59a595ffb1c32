#ifndef ORAVANE_VECTORIZE_EXTENTBLOCK_H
#define ORAVANE_VECTORIZE_EXTENTBLOCK_H

#include <array>
#include <bit>
#include <cstdint>
#include <limits>

namespace oravane {

/// What a polygon takes up of the view.
struct Extent {
    float xMin, yMin, xMax, yMax, zMin, zMax;
};

/// Eight numbers of four bytes that are compared with another one at once. Compilers turn their vector types
/// into what the processor has.
template <class Value>
class Lanes {
public:
    static constexpr int kWidth = 8, kHalf = 4;
    using Half [[gnu::vector_size(16)]] = Value;
    using HalfMask [[gnu::vector_size(16)]] = std::int32_t;

    Value operator[](int lane) const { return m_halves[lane / kHalf][lane % kHalf]; }
    void set(int lane, Value value) { m_halves[lane / kHalf][lane % kHalf] = value; }
    const Half &half(int h) const { return m_halves[h]; }

private:
    Half m_halves[kWidth / kHalf] = {}; // a template's argument would lose the attribute of the type
};

/// A bit for each lane that passes the test, the lowest for lane 0. `test(h)` gives the mask of half h.
template <class Test>
unsigned lanesThatPass(const Test &test) {
    using Mask = Lanes<std::int32_t>::HalfMask;
    const Mask bits = (test(0) & Mask{1, 2, 4, 8}) | (test(1) & Mask{16, 32, 64, 128});
    const auto pairs = std::bit_cast<std::array<std::uint64_t, 2>>(bits);
    const std::uint64_t both = pairs[0] | pairs[1];
    return static_cast<unsigned>(both | both >> 32) & 0xFF;
}

/// Eight extents, without their z minima.
class ExtentBlock {
public:
    static constexpr int kWidth = Lanes<float>::kWidth;

    /// Nothing meets a lane that was never set.
    ExtentBlock() {
        for (int lane = 0; lane < kWidth; ++lane)
            set(lane, {kInfinity, kInfinity, -kInfinity, -kInfinity, 0, -kInfinity});
    }

    void set(int lane, const Extent &e) {
        m_xMin.set(lane, e.xMin);
        m_yMin.set(lane, e.yMin);
        m_xMax.set(lane, e.xMax);
        m_yMax.set(lane, e.yMax);
        m_zMax.set(lane, e.zMax);
    }
    Extent get(int lane) const {
        return {m_xMin[lane], m_yMin[lane], m_xMax[lane], m_yMax[lane], 0, m_zMax[lane]};
    }

    /// The half `h` of the mask of the lanes whose farthest point `p` reaches in front of while their x-y
    /// boxes meet.
    auto metBy(const Extent &p, int h) const {
        return (p.zMin < m_zMax.half(h)) & (p.xMin <= m_xMax.half(h)) & (m_xMin.half(h) <= p.xMax) &
               (p.yMin <= m_yMax.half(h)) & (m_yMin.half(h) <= p.yMax);
    }

private:
    static constexpr float kInfinity = std::numeric_limits<float>::infinity();

    Lanes<float> m_xMin, m_yMin, m_xMax, m_yMax, m_zMax;
};

} // namespace oravane

#endif
