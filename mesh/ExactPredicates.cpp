#include "mesh/ExactPredicates.h"

#include <algorithm>
#include <array>
#include <bit>
#include <cstddef>
#include <cstdint>
#include <optional>
#include <utility>

namespace oravane {

namespace {

/// An unevaluated sum of two doubles: `value` is rounded, `error` what the rounding took away.
struct TwoPart {
    double value, error;
};

TwoPart twoSum(double a, double b) {
    const double sum = a + b;
    const double bRounded = sum - a;
    return {sum, (a - (sum - bRounded)) + (b - bRounded)};
}

TwoPart twoDifference(double a, double b) {
    return twoSum(a, -b);
}

TwoPart twoProduct(double a, double b) {
    // Halves of 26 bits, whose products are exact.
    const auto split = [](double v) {
        const double shifted = v * (0x1p27 + 1);
        const double high = shifted - (shifted - v);
        return std::pair(high, v - high);
    };
    const auto [aHigh, aLow] = split(a);
    const auto [bHigh, bLow] = split(b);
    const double product = a * b;
    return {product, aLow * bLow - (((product - aHigh * bHigh) - aLow * bHigh) - aHigh * bLow)};
}

/// An exact number: the sum of doubles in ascending order of magnitude whose bits do not overlap, none of
/// them 0. The type of a sum or product has room for the longest result, so that nothing is allocated.
template <std::size_t Capacity>
struct Expansion {
    std::array<double, Capacity> parts;
    std::size_t count = 0;

    Expansion() {} // the parts stay unset: there may be thousands of them, of which few are used
    explicit Expansion(TwoPart sum) {
        append(sum.error);
        append(sum.value);
    }
    void append(double part) {
        if (part != 0)
            parts[count++] = part;
    }
    /// The largest part outweighs the rest.
    double signedMagnitude() const { return count > 0 ? parts[count - 1] : 0; }

    Expansion operator-() const {
        Expansion result;
        for (std::size_t i = 0; i < count; ++i)
            result.append(-parts[i]);
        return result;
    }
};

/// Sets `result` to a + b; it is neither of them.
template <class A, class B, class Result>
void setSum(const A &a, const B &b, Result &result) {
    result.count = 0;
    double carry = 0;
    for (std::size_t i = 0, j = 0; i < a.count || j < b.count;) {
        const bool takesA = j == b.count || (i < a.count && std::abs(a.parts[i]) < std::abs(b.parts[j]));
        const TwoPart sum = twoSum(carry, takesA ? a.parts[i++] : b.parts[j++]);
        result.append(sum.error);
        carry = sum.value;
    }
    result.append(carry);
}

template <std::size_t A, std::size_t B>
Expansion<A + B> operator+(const Expansion<A> &a, const Expansion<B> &b) {
    Expansion<A + B> result;
    setSum(a, b, result);
    return result;
}

template <std::size_t A, std::size_t B>
Expansion<A + B> operator-(const Expansion<A> &a, const Expansion<B> &b) {
    return a + -b;
}

template <std::size_t A>
Expansion<2 * A> scaled(const Expansion<A> &a, double factor) {
    Expansion<2 * A> result;
    double carry = 0;
    for (std::size_t i = 0; i < a.count; ++i) {
        const TwoPart product = twoProduct(a.parts[i], factor);
        const TwoPart low = twoSum(carry, product.error);
        const TwoPart high = twoSum(product.value, low.value);
        result.append(low.error);
        result.append(high.error);
        carry = high.value;
    }
    result.append(carry);
    return result;
}

template <std::size_t A, std::size_t B>
Expansion<2 * A * B> operator*(const Expansion<A> &a, const Expansion<B> &b) {
    Expansion<2 * A * B> buffers[2];
    Expansion<2 *A *B> *sum = &buffers[0], *next = &buffers[1];
    for (std::size_t i = 0; i < b.count; ++i) {
        setSum(*sum, scaled(a, b.parts[i]), *next);
        std::swap(sum, next);
    }
    return *sum;
}

/// Writes numbers of a similar size as multiples of one power of two, each below 2^bits; none when one of
/// them is rounded or takes more bits. Points of a lattice or of one neighbourhood mostly differ by such
/// numbers.
template <int bits, std::size_t N>
std::optional<std::array<std::int64_t, N>> asIntegers(const std::array<TwoPart, N> &numbers) {
    double largest = 0, error = 0;
    for (const TwoPart &number : numbers) {
        largest = std::max(largest, std::abs(number.value));
        error = std::max(error, std::abs(number.error));
    }
    if (error != 0 || largest == 0)
        return std::nullopt;
    // The scale is a power of two, made from the bits of the exponent of `largest`, which is a normal number.
    constexpr std::uint64_t bias = 1023;
    const std::uint64_t exponent = std::bit_cast<std::uint64_t>(largest) >> 52;
    const auto scale = std::bit_cast<double>((2 * bias + bits - 1 - exponent) << 52);
    std::array<std::int64_t, N> integers;
    bool areWhole = true;
    for (std::size_t i = 0; i < N; ++i) {
        const double multiple = numbers[i].value * scale;
        integers[i] = static_cast<std::int64_t>(multiple);
        areWhole = areWhole && static_cast<double>(integers[i]) == multiple;
    }
    return areWhole ? std::optional(integers) : std::nullopt;
}

__extension__ using Int128 = __int128;

double signOf(Int128 value) {
    return static_cast<double>((value > 0) - (value < 0));
}

} // namespace

double orientationExactly(Site a, Site b, Site c) {
    const std::array differences{twoDifference(a.x, c.x), twoDifference(a.y, c.y), //
                                 twoDifference(b.x, c.x), twoDifference(b.y, c.y)};
    if (const auto whole = asIntegers<62>(differences)) {
        const auto &[ax, ay, bx, by] = *whole;
        return signOf(Int128{ax} * by - Int128{ay} * bx);
    }
    const Expansion<2> ax(differences[0]), ay(differences[1]), bx(differences[2]), by(differences[3]);
    return (ax * by - ay * bx).signedMagnitude();
}

double inCircleExactly(Site a, Site b, Site c, Site p) {
    const std::array differences{twoDifference(a.x, p.x), twoDifference(a.y, p.y), //
                                 twoDifference(b.x, p.x), twoDifference(b.y, p.y), //
                                 twoDifference(c.x, p.x), twoDifference(c.y, p.y)};
    const auto determinant = [](const auto &ax, const auto &ay, const auto &bx, const auto &by,
                                const auto &cx, const auto &cy, auto widened) {
        return widened(ax * ax + ay * ay) * (bx * cy - cx * by) +
               widened(bx * bx + by * by) * (cx * ay - ax * cy) +
               widened(cx * cx + cy * cy) * (ax * by - bx * ay);
    };
    // With 30 bits in each difference the second factors have 61 and the sum of products less than 124.
    if (const auto whole = asIntegers<30>(differences)) {
        const auto &[ax, ay, bx, by, cx, cy] = *whole;
        return signOf(determinant(ax, ay, bx, by, cx, cy, [](std::int64_t lift) { return Int128{lift}; }));
    }
    const Expansion<2> ax(differences[0]), ay(differences[1]), bx(differences[2]), by(differences[3]),
        cx(differences[4]), cy(differences[5]);
    return determinant(ax, ay, bx, by, cx, cy, [](const auto &lift) { return lift; }).signedMagnitude();
}

} // namespace oravane
