#include "vectorize/RecordingAction.h"

#include "vectorize/PainterOrder.h"

#include <oravane/SoHLHSRVectorize.h>
#include <oravane/SoPainter.h>

#include <gtest/gtest.h>

#include <algorithm>
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
// one lies behind it. A half of it lies beside the small one, though within its bounds.
const Points kDipping = {{-1, -1, 0.9f, 1}, {1, -1, -0.9f, 1}, {1, 1, -0.9f, 1}, {-1, 1, 0.9f, 1}};
const Points kAside = {kDipping[0], kDipping[1], kDipping[3]};
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
        for (const int none : {4, -1})
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

TEST(SoPainter, LeavesPolygonsApartAndOtherPrimitivesInDepthOrder) {
    Owned apart;
    apart.add(kAside);
    apart.add(kSmall);
    apart.addPoint(-0.5f, 2);
    apart.add({{-1, -1, -0.4f, 1}, {1, 1, -0.7f, 1}});
    SoPainter(&apart.list, nullptr, 0).apply();
    EXPECT_EQ(apart.order(), (Order{0, 1, 3, 2}));
}

void exchangeByAllPairs(PrimitiveList &list) {
    list.sortZmax(0);
    for (int i = 0; i < list.getLength(); ++i)
        for (int j = i + 1; j < list.getLength(); ++j) {
            auto *p = static_cast<PolyGon *>(list[i]);
            auto *q = static_cast<PolyGon *>(list[j]);
            if (p->getZmin() < q->getZmax() && p->getBBox().intersect(q->getBBox()) &&
                oravane::mustExchange(*p, *q))
                list.swap(i, j);
        }
}

TEST(SoPainter, EndsTheWalkEarlyWithTheResultOfAllPairs) {
    std::mt19937 random(5);
    std::uniform_real_distribution<float> uniform(-1, 1);
    int numChanged = 0;
    for (int round = 0; round < 40; ++round) {
        Owned scene, oracle;
        const float thickness = round % 2 ? 1.0f : 0.15f;
        for (int i = 0; i < 120; ++i) {
            const float x = uniform(random), y = uniform(random), z = uniform(random);
            Points triangle;
            for (int k = 0; k < 3; ++k)
                triangle.emplace_back(x + 0.5f * uniform(random), y + 0.5f * uniform(random),
                                      z + thickness * uniform(random), 1.0f);
            scene.add(triangle);
            oracle.add(triangle);
        }
        scene.list.sortZmax(0);
        const Order byDepth = scene.order();
        SoPainter(&scene.list, nullptr, 0).apply();
        exchangeByAllPairs(oracle.list);
        ASSERT_EQ(scene.order(), oracle.order());
        numChanged += scene.order() != byDepth;
    }
    EXPECT_GT(numChanged, 30) << "the scenes must put the exchange to work";
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
