#include "attributes/SelectionOrder.h"

#include <functional>
#include <numeric>
#include <queue>

namespace oravane {

namespace {

struct Candidate {
    float value;
    int place;
    int index;

    /// The queue gives the greatest: the smallest value, at equal values the first place.
    bool operator<(const Candidate &other) const {
        return value != other.value ? value > other.value : place > other.place;
    }
};

} // namespace

std::vector<int> selectionOrder(std::span<const float> values) {
    std::vector<int> order(values.size());
    std::iota(order.begin(), order.end(), 0);
    std::vector<Candidate> all;
    all.reserve(values.size());
    for (int i : order)
        all.push_back({values[i], i, i});
    std::priority_queue<Candidate> rest(std::less<Candidate>(), std::move(all));
    for (int place = 0; place < static_cast<int>(order.size()); ++place) {
        // A value that was swapped away has left its old entry behind.
        while (rest.top().place < place || order[rest.top().place] != rest.top().index)
            rest.pop();
        const Candidate smallest = rest.top();
        rest.pop();
        if (smallest.place == place)
            continue;
        order[smallest.place] = order[place];
        rest.push({values[order[place]], smallest.place, order[place]});
        order[place] = smallest.index;
    }
    return order;
}

} // namespace oravane
