#include "vectorize/ExchangePass.h"

#include "vectorize/CallUp.h"
#include "vectorize/PainterShapes.h"
#include "vectorize/PlaceTree.h"

#include <algorithm>
#include <bit>
#include <cstdint>
#include <functional>
#include <vector>

namespace oravane {

namespace {

PolyGon *polygonOf(Primitive *primitive) {
    if (primitive->getTypeId() != PolyGon::getClassTypeId())
        return nullptr;
    auto *polygon = static_cast<PolyGon *>(primitive);
    return polygon->getPlane() ? polygon : nullptr;
}

Extent extentOf(PolyGon &polygon) {
    Extent e;
    polygon.getBBox().getBounds(e.xMin, e.yMin, e.xMax, e.yMax);
    e.zMin = polygon.getZmin();
    e.zMax = polygon.getZmax();
    return e;
}

/// The polygons of a list, their places, and the order in which the tree needs them.
struct Polygons {
    explicit Polygons(const PrimitiveList &list) {
        const int n = list.getLength();
        extents.reserve(n);
        places.reserve(n);
        for (int place = 0; place < n; ++place) {
            callUpAhead(list, place, n, std::identity());
            if (PolyGon *polygon = polygonOf(list[place])) {
                extents.push_back(extentOf(*polygon));
                places.push_back(place);
            }
        }
        order = orderForTree(extents);
    }

    std::vector<Extent> extents;
    std::vector<int> places, order;
};

/// A polygon by its number in tree and shapes.
struct Item {
    int number = -1; ///< -1 where there is no polygon
    Extent extent{};
};

/// What stands at the places of the list, in the order of the places.
class Slots {
public:
    explicit Slots(int numPlaces) : m_blocks((numPlaces + kWidth - 1) / kWidth), m_numbers(numPlaces, -1) {}

    void set(int place, const Item &item) {
        m_blocks[place / kWidth].set(place % kWidth, item.extent);
        m_numbers[place] = item.number;
    }
    /// Without its z minimum.
    Item get(int place) const { return {m_numbers[place], m_blocks[place / kWidth].get(place % kWidth)}; }

    /// The first place from `first` to below `end` of an item before whose farthest point `p` reaches, and
    /// for which `isWanted(item)` holds; `end` if there is none.
    template <class IsWanted>
    int scan(const Extent &p, int first, int end, const IsWanted &isWanted) const {
        unsigned behind = ~0u << first % kWidth;
        for (int block = first / kWidth; block * kWidth < end; ++block, behind = ~0u)
            for (unsigned lanes = met(block, p) & behind; lanes; lanes &= lanes - 1) {
                const int place = block * kWidth + std::countr_zero(lanes);
                if (place >= end)
                    return end;
                if (isWanted(m_numbers[place]))
                    return place;
            }
        return end;
    }

private:
    static constexpr int kWidth = ExtentBlock::kWidth;

    unsigned met(int block, const Extent &p) const {
        return lanesThatPass([&](int h) { return m_blocks[block].metBy(p, h); });
    }

    std::vector<ExtentBlock> m_blocks;
    std::vector<int> m_numbers;
};

class ExchangePass {
public:
    explicit ExchangePass(PrimitiveList &list) : ExchangePass(list, Polygons(list)) {}
    void run();

private:
    ExchangePass(PrimitiveList &list, const Polygons &polygons);
    int numPlaces() const { return m_list.getLength(); }
    Item itemAt(int place) const;
    int firstPartner(const Item &p, int after);
    int nextPartner(const Item &p, int after);

    PrimitiveList &m_list;
    Slots m_slots;
    PlaceTree m_tree;
    PainterShapes m_shapes;
    std::vector<float> m_zMins; ///< by number
    std::int64_t m_scanLength = 0;
};

ExchangePass::ExchangePass(PrimitiveList &list, const Polygons &polygons)
    : m_list(list), m_slots(list.getLength()), m_tree(polygons.extents, polygons.places, polygons.order) {
    m_shapes.reserve(polygons.order.size());
    m_zMins.reserve(polygons.order.size());
    const int numItems = static_cast<int>(polygons.order.size());
    const auto placeOf = [&](int item) { return polygons.places[polygons.order[item]]; };
    for (int item = 0; item < numItems; ++item) {
        callUpAhead(list, item, numItems, placeOf);
        const Extent &extent = polygons.extents[polygons.order[item]];
        m_slots.set(placeOf(item), {item, extent});
        m_shapes.add(static_cast<PolyGon &>(*list[placeOf(item)]));
        m_zMins.push_back(extent.zMin);
    }
}

void ExchangePass::run() {
    for (int i = 0; i < numPlaces(); ++i) {
        Item p = itemAt(i);
        int j = p.number >= 0 ? firstPartner(p, i) : numPlaces();
        if (j == numPlaces())
            continue;
        for (; j < numPlaces(); j = nextPartner(p, j)) {
            const Item q = itemAt(j);
            m_slots.set(j, p);
            m_tree.move(p.number, j, i + 1);
            m_list.swap(i, j);
            p = q;
        }
        // Not before the walk has ended: until then the tree finds it, if at all, at a place that was passed.
        m_tree.move(p.number, i, i + 1);
    }
}

Item ExchangePass::itemAt(int place) const {
    Item item = m_slots.get(place);
    if (item.number >= 0)
        item.extent.zMin = m_zMins[item.number];
    return item;
}

/// The first place beyond `after` whose polygon must change places with `p`.
int ExchangePass::firstPartner(const Item &p, int after) {
    constexpr int kPlacesForVisited = 2 * ExtentBlock::kWidth;
    int numVisited = 0;
    const int place = m_tree.firstPlace(
        p.extent, after, numPlaces(), [&](int q) { return m_shapes.mustExchange(p.number, q); }, numVisited);
    m_scanLength = std::int64_t{kPlacesForVisited} * numVisited;
    return place;
}

/// The same behind an exchange. There the next partner may stand near by: about as many places are scanned
/// first as the last search of the tree has cost, so that a pass of many exchanges costs little more than
/// scans alone.
int ExchangePass::nextPartner(const Item &p, int after) {
    const int end = static_cast<int>(std::min<std::int64_t>(numPlaces(), after + 1 + m_scanLength));
    const int place =
        m_slots.scan(p.extent, after + 1, end, [&](int q) { return m_shapes.mustExchange(p.number, q); });
    return place < end ? place : firstPartner(p, end - 1);
}

} // namespace

void exchangePass(PrimitiveList &list) {
    ExchangePass(list).run();
}

} // namespace oravane
