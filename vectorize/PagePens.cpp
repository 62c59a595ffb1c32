#include "vectorize/PagePens.h"

#include <limits>

namespace oravane {

namespace {

float squaredDistance(const SbColor &a, const SbColor &b) {
    return (a - b).sqrLength();
}

/// The first pen for which `key` is least, among those that `isCandidate` admits; -1 when there is none.
template <class IsCandidate, class Key>
int firstLeast(std::span<const PagePen> pens, IsCandidate isCandidate, Key key) {
    int best = -1;
    float least = std::numeric_limits<float>::infinity();
    for (std::size_t i = 0; i < pens.size(); ++i) {
        if (isCandidate(pens[i]) && key(pens[i]) < least) {
            least = key(pens[i]);
            best = static_cast<int>(i);
        }
    }
    return best;
}

float narrowness(const PagePen &pen) {
    return pen.width;
}

float broadness(const PagePen &pen) {
    return -pen.width;
}

bool any(const PagePen &) {
    return true;
}

} // namespace

int choosePen(std::span<const PagePen> pens, const SbColor &color, float width, bool colorFirst) {
    const auto distance = [&](const PagePen &pen) { return squaredDistance(pen.color, color); };
    const auto notWider = [&](const PagePen &pen) { return pen.width > 0 && pen.width <= width; };
    int best;
    if (colorFirst) {
        const int nearest = firstLeast(pens, any, distance);
        const float least = nearest < 0 ? 0 : distance(pens[nearest]);
        const auto sameColor = [&](const PagePen &pen) { return distance(pen) == least; };
        best = firstLeast(
            pens, [&](const PagePen &pen) { return sameColor(pen) && notWider(pen); }, broadness);
        if (best < 0)
            best = firstLeast(pens, sameColor, narrowness);
    } else {
        int ofWidth = firstLeast(
            pens, [&](const PagePen &pen) { return pen.width <= width; }, broadness);
        if (ofWidth < 0)
            ofWidth = firstLeast(pens, any, narrowness);
        const float chosen = ofWidth < 0 ? 0 : pens[ofWidth].width;
        best = firstLeast(
            pens, [&](const PagePen &pen) { return pen.width == chosen; }, distance);
    }
    return best < 0 ? 0 : best;
}

} // namespace oravane
