#include "vectorize/RecordingAction.h"

#include <oravane/SoHLHSRVectorize.h>
#include <oravane/SoPainter.h>

#include <Inventor/SbVec2d.h>

#include <gtest/gtest.h>

#include <algorithm>
#include <array>
#include <cmath>
#include <limits>
#include <memory>
#include <random>

namespace {

using Points = std::vector<SbVec4f>;
using Order = std::vector<int>;

const SbColor kBlack(0, 0, 0);

struct Owned {
    std::vector<std::unique_ptr<Primitive>> primitives;
    PrimitiveList list;

    template <class P>
    P *keep(std::unique_ptr<P> primitive, int priority) {
        P *const kept = primitive.get();
        kept->setPriority(priority);
        list.append(kept);
        primitives.push_back(std::move(primitive));
        return kept;
    }
    PolyGon *add(const Points &points) {
        auto polygon = std::make_unique<PolyGon>();
        const std::vector<SbColor> colors(points.size(), kBlack);
        polygon->setValue(static_cast<int>(points.size()), points.data(), colors.data(), 0, 1, 1, 0xFFFF,
                          PolyGon::FILLED);
        return keep(std::move(polygon), static_cast<int>(primitives.size()));
    }
    void addPoint(float z, int priority) {
        auto text = std::make_unique<Text2D>();
        text->setValue(SbVec4f(0, 0, z, 1), kBlack, "font", 1, 0, nullptr, 1, 1, 0);
        keep(std::move(text), priority);
    }
    Order order() const {
        Order priorities;
        for (int i = 0; i < list.getLength(); ++i)
            priorities.push_back(list[i]->getPriority());
        return priorities;
    }
};

Points square(float x, float y, float size, float z) {
    return {{x, y, z, 1}, {x + size, y, z, 1}, {x + size, y + size, z, 1}, {x, y + size, z, 1}};
}

// A long polygon that dips from far to near below a small one: its farthest point is farther, yet the small
// one lies behind it.
const Points kDipping = {{-1, -1, 0.9f, 1}, {1, -1, -0.9f, 1}, {1, 1, -0.9f, 1}, {-1, 1, 0.9f, 1}};
const Points kSmall = square(0.5f, -0.2f, 0.4f, 0.0f);

TEST(PrimitiveList, SortsAsTheTwoHeapSortsDo) {
    std::mt19937 random(11);
    for (const int n : {0, 1, 2, 3, 10, 1000}) {
        Owned scene;
        std::vector<Primitive *> heap;
        for (int i = 0; i < n; ++i) {
            scene.addPoint(static_cast<float>(random() % 20) / 10 - 1, static_cast<int>(random() % 100000));
            heap.push_back(scene.list[i]);
        }
        scene.list.heapSort(heap.data(), n, PrimitiveList::verifyHeapZmax);
        for (auto run = heap.begin(); run != heap.end();) {
            const auto end = std::find_if(run, heap.end(),
                                          [&](Primitive *p) { return p->getZmax() != (*run)->getZmax(); });
            scene.list.heapSort(&*run, static_cast<int>(end - run), PrimitiveList::verifyHeapPriority);
            run = end;
        }
        scene.list.sortZmax(0);
        for (int i = 0; i < n; ++i) {
            ASSERT_EQ(scene.list[i]->getZmax(), heap[i]->getZmax());
            ASSERT_EQ(scene.list[i]->getPriority(), heap[i]->getPriority());
        }
    }
}

TEST(PrimitiveList, SortsFromAnIndexOnAndTakesNegativeZeroForZero) {
    Owned scene;
    const float depths[] = {-0.5f, -0.0f, 0.0f, 0.5f, std::numeric_limits<float>::infinity()};
    for (int i = 0; i < 5; ++i)
        scene.addPoint(depths[i], i);
    scene.list.sortZmax(1);
    EXPECT_EQ(scene.order(), (Order{0, 4, 3, 1, 2}));
    scene.list.sortZmax(-3);
    EXPECT_EQ(scene.order(), (Order{4, 3, 1, 2, 0}));
    scene.list.sortZmax(99);
    scene.list.remove(0);
    scene.list.remove(17);
    scene.list.swap(0, 3);
    scene.list.swap(0, 4);
    EXPECT_EQ(scene.order(), (Order{0, 1, 2, 3}));
    EXPECT_EQ(scene.list[4], nullptr);
}

TEST(PolyGon, PlaneFacesTheViewerAndEdgesAreOutside) {
    Owned scene;
    Points points = square(0, 0, 1, 0.25f);
    for (int turn = 0; turn < 2; ++turn) {
        PolyGon &polygon = *scene.add(points);
        EXPECT_EQ(polygon.getPlane()->getNormal(), SbVec3f(0, 0, -1));
        EXPECT_TRUE(polygon.isPointInnerXYPlane(SbVec2f(0.5f, 0.9f)));
        for (const SbVec2f &outside : {SbVec2f(0.5f, 1), SbVec2f(0.5f, 0), SbVec2f(1.5f, 0.5f)})
            EXPECT_FALSE(polygon.isPointInnerXYPlane(outside)) << outside[0] << " " << outside[1];
        for (const int none : {40, -1})
            EXPECT_EQ(polygon.getPoint(none), SbVec3f(0, 0, 0));
        std::reverse(points.begin(), points.end());
    }
    PolyGon &segment = *scene.add({{0, 0, 0, 1}, {1, 1, 0.5f, 1}});
    EXPECT_EQ(segment.getPlane(), nullptr);
    EXPECT_FALSE(segment.isPointInnerXYPlane(SbVec2f(0.5f, 0.5f)));
    EXPECT_EQ(segment.getAverageZ(), 0.25f);
    PolyGon &needle = *scene.add({{0, 0, 0, 1}, {1, 1, 0, 1}, {2, 2, 0, 1}});
    EXPECT_EQ(needle.getPlane()->getNormal(), SbVec3f(0, 0, 0));
    EXPECT_EQ(scene.add({})->getColor(), kBlack);
}

// The exchange pass as it is defined, word by word: all pairs, with the polygons' own planes.

bool isPEntirelySameSideQ(const PolyGon &p, PolyGon &q, bool side) {
    const SbPlane *plane = q.getPlane();
    for (int i = 0; plane && i < p.getNum(); ++i)
        if (static_cast<bool>(plane->isInHalfSpace(p.getPoint(i))) != side)
            return false;
    return true;
}

using Segment = std::array<SbVec2d, 2>;

double side(const Segment &s, const SbVec2d &p) {
    const SbVec2d along = s[1] - s[0], to = p - s[0];
    return along[0] * to[1] - along[1] * to[0];
}

bool isApart(const Segment &s, const Segment &t) {
    const double u = side(s, t[0]), v = side(s, t[1]);
    return std::min(std::fabs(u), std::fabs(v)) >= 1e-20 && u * v > 0;
}

bool crossProperly(const Segment &s, const Segment &t) {
    for (int axis = 0; axis < 2; ++axis)
        if (std::max(s[0][axis], s[1][axis]) < std::min(t[0][axis], t[1][axis]) ||
            std::max(t[0][axis], t[1][axis]) < std::min(s[0][axis], s[1][axis]))
            return false;
    const SbVec2d d = s[1] - s[0], e = t[1] - t[0];
    return !isApart(s, t) && !isApart(t, s) && std::fabs(d[0] * e[1] - d[1] * e[0]) >= 1e-20;
}

bool isPOverlapQInXYPlane(const PolyGon &p, const PolyGon &q) {
    const auto edge = [](const PolyGon &polygon, int i) {
        const SbVec3f a = polygon.getPoint(i), b = polygon.getPoint((i + 1) % polygon.getNum());
        return Segment{SbVec2d(a[0], a[1]), SbVec2d(b[0], b[1])};
    };
    const auto hasFirstPointOf = [](const PolyGon &outer, const PolyGon &inner) {
        return outer.isPointInnerXYPlane(SbVec2f(inner.getPoint(0)[0], inner.getPoint(0)[1]));
    };
    for (int i = 0; i < p.getNum(); ++i)
        for (int j = 0; j < q.getNum(); ++j)
            if (crossProperly(edge(p, i), edge(q, j)))
                return true;
    return hasFirstPointOf(p, q) || hasFirstPointOf(q, p);
}

bool mustExchange(Primitive &first, Primitive &second) {
    auto *const p = dynamic_cast<PolyGon *>(&first);
    auto *const q = dynamic_cast<PolyGon *>(&second);
    return p && q && p->getZmin() < q->getZmax() && p->getBBox().intersect(q->getBBox()) &&
           !isPEntirelySameSideQ(*p, *q, false) && !isPEntirelySameSideQ(*q, *p, true) &&
           isPOverlapQInXYPlane(*p, *q) &&
           (isPEntirelySameSideQ(*q, *p, false) || isPEntirelySameSideQ(*p, *q, true));
}

int exchangeByAllPairs(PrimitiveList &list) {
    int numExchanges = 0;
    list.sortZmax(0);
    for (int i = 0; i < list.getLength(); ++i)
        for (int j = i + 1; j < list.getLength(); ++j)
            if (mustExchange(*list[i], *list[j])) {
                list.swap(i, j);
                ++numExchanges;
            }
    return numExchanges;
}

/// A kind of scene: polygons of 1 to `maxCorners` corners about a random centre.
struct Mix {
    const char *name;
    float width, depth; ///< half the size of the region of the centres
    float size, thickness;
    int big;     ///< each so many-th is 20 times as large; 0 for none
    float steps; ///< coordinates are multiples of 1 / steps, so that depths, planes and edges coincide
    int maxCorners;
    int minExchanges; ///< in the longest list, so that the rows do what they are for
};

const Mix kMixes[] = {
    {"triangles", 1, 1, 0.3f, 0.5f, 0, 1e6f, 3, 10000},
    {"flat scraps", 1, 1, 0.1f, 0.1f, 0, 1e6f, 5, 100},
    {"a pile", 0.01f, 1, 1, 0.5f, 0, 1e6f, 4, 300},
    {"coincident", 1, 1, 0.5f, 0.5f, 0, 4, 4, 10000},
    {"big and small", 1, 1, 0.05f, 0.1f, 9, 1e6f, 4, 10000},
    {"all of one z", 1, 0, 0.5f, 0, 0, 1e6f, 4, 0},
};

Points randomPoints(const Mix &mix, int index, std::mt19937 &random) {
    std::uniform_real_distribution<float> uniform(-1, 1);
    const float factor = mix.big && index % mix.big == 0 ? 20.0f : 1.0f;
    const auto snapped = [&](float x) { return std::round(x * mix.steps) / mix.steps; };
    const SbVec3f center =
        SbVec3f(mix.width * uniform(random), mix.width * uniform(random), mix.depth * uniform(random));
    const int n = random() % 20 ? mix.maxCorners : 1 + static_cast<int>(random() % mix.maxCorners);
    const float turn = 3 * uniform(random), a = mix.thickness * uniform(random),
                b = mix.thickness * uniform(random);
    Points points;
    for (int k = 0; k < n; ++k) { // on an ellipse in a slanted plane
        const float t = turn + 6.2831853f * static_cast<float>(k) / static_cast<float>(n);
        const float c = factor * std::cos(t), s = factor * std::sin(t);
        points.emplace_back(snapped(center[0] + mix.size * c), snapped(center[1] + mix.size * s),
                            snapped(center[2] + a * c + b * s), 1.0f);
    }
    return points;
}

TEST(SoPainter, FindsThePairsThatAllPairsFind) {
    std::mt19937 random(5);
    for (const Mix &mix : kMixes)
        for (const int n : {0, 1, 2, 7, 8, 9, 65, 300, 1500}) {
            Owned scene, oracle;
            for (int i = 0; i < n; ++i) {
                const Points points = randomPoints(mix, i, random);
                for (Owned *owned : {&scene, &oracle})
                    if (i % 16 == 5)
                        owned->addPoint(points[0][2], i);
                    else
                        owned->add(points);
            }
            SoPainter(&scene.list, nullptr, 0).apply();
            const int numExchanges = exchangeByAllPairs(oracle.list);
            ASSERT_EQ(scene.order(), oracle.order()) << mix.name << ", " << n;
            EXPECT_GE(numExchanges, n == 1500 ? mix.minExchanges : 0) << mix.name;
        }
}

TEST(SoHLHSRVectorize, DrawsInOrderAndDropsWhatIsNotFinite) {
    oravane_test::RecordingAction action;
    SoHLHSRVectorize hlhsr(&action, SoHLHSRVectorize::Z_SORT);
    const SbString lines[] = {"far", "and near"};
    const auto storeText = [&](float z, int n) {
        hlhsr.storeText2D(SbVec4f(0, 0, z, 1), kBlack, "font", 2, n, lines, 1, 1, 0);
    };
    storeText(0, 1); // no batch yet
    hlhsr.endHLHSR();
    hlhsr.startHLHSR();
    hlhsr.endHLHSR();
    EXPECT_TRUE(action.drawn.empty());

    hlhsr.startHLHSR();
    const SbVec4f line[] = {{-1, -1, 0.5f, 1}, {1, 1, 0.5f, 1}};
    const SbColor colors[] = {kBlack, kBlack};
    storeText(-0.5f, 2);
    hlhsr.storePolyLine(line, 2, colors, 0, 3, 0x00FF);
    hlhsr.storePolyMark(line, 2, colors, 0, 4, nullptr);
    storeText(0.5f, 1);
    storeText(std::numeric_limits<float>::quiet_NaN(), 1);
    hlhsr.storePolygon(line, 0, colors, 0, 1, 1, 0xFFFF, PolyGon::FILLED);
    hlhsr.storePolygon(nullptr, 3, colors, 0, 1, 1, 0xFFFF, PolyGon::FILLED);
    hlhsr.endHLHSR();
    EXPECT_EQ(action.kinds(), "line2 marks2 text1 text1 text1 ");
    EXPECT_EQ(action.drawn[0].points[1], SbVec4f(100, 100, 0.5f, 1)) << "in mm on the page";
    EXPECT_EQ(action.drawn[0].pattern, 0x00FF);
    EXPECT_NEAR(action.drawn[3].points[0][1] - action.drawn[4].points[0][1], 2 * 0.3527778f, 1e-5);
}

TEST(SoHLHSRVectorize, FullSortExchanges) {
    for (const auto mode : {SoHLHSRVectorize::Z_SORT, SoHLHSRVectorize::FULL_SORT}) {
        oravane_test::RecordingAction action;
        SoHLHSRVectorize hlhsr(&action, mode);
        hlhsr.startHLHSR();
        const std::vector<SbColor> colors(4, kBlack);
        for (const Points *points : {&kDipping, &kSmall})
            hlhsr.storePolygon(points->data(), 4, colors.data(), 0, 1, 1, 0xFFFF, PolyGon::FILLED);
        hlhsr.endHLHSR();
        ASSERT_EQ(action.kinds(), "polygon4 polygon4 ");
        const bool smallFirst = mode == SoHLHSRVectorize::FULL_SORT;
        EXPECT_EQ(action.drawn[0].points[0][0] > 50, smallFirst);
    }
}

} // namespace
