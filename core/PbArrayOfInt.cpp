#include <oravane/PbArrayOfInt.h>
#include <oravane/PbArrayOfLong.h>

#include <algorithm>
#include <functional>
#include <limits>
#include <new>

PbIntArrayBase::PbIntArrayBase(int initialCapacity, int step) : m_step(std::max(step, 1)) {
    resize(std::max(initialCapacity, 1));
}

PbIntArrayBase::PbIntArrayBase(const PbIntArrayBase &source)
    : m_data(source.m_capacity > 0 ? new int[source.m_capacity]() : nullptr), m_capacity(source.m_capacity),
      m_last(source.m_last), m_step(source.m_step) {
    if (m_last > 0)
        std::copy_n(source.m_data.get(), m_last, m_data.get());
}

PbIntArrayBase &PbIntArrayBase::operator=(const PbIntArrayBase &source) {
    if (this == &source)
        return *this;
    m_data.reset(source.m_capacity > 0 ? new int[source.m_capacity]() : nullptr);
    m_capacity = source.m_capacity;
    m_last = source.m_last;
    m_step = source.m_step;
    std::copy_n(source.m_data.get(), m_last + 1, m_data.get());
    return *this;
}

int *PbIntArrayBase::resize(std::int64_t newCount) {
    constexpr std::int64_t most = std::numeric_limits<int>::max();
    if (newCount == m_capacity)
        return m_data.get();
    if (newCount > most)
        return nullptr;
    const std::int64_t steps = (newCount - m_capacity - 1) / m_step + 1;
    const auto capacity =
        static_cast<int>(newCount > m_capacity ? std::min(m_capacity + m_step * steps, most) : newCount);
    std::unique_ptr<int[]> block(new (std::nothrow) int[capacity]());
    if (!block)
        return nullptr;
    std::copy_n(m_data.get(), std::min(capacity, m_capacity), block.get());
    m_data = std::move(block);
    m_capacity = capacity;
    return m_data.get();
}

int PbIntArrayBase::add(int value) {
    return add(1, &value);
}

int PbIntArrayBase::add(int count, const int *values) {
    if (count < 1 || !values)
        return m_last;
    const std::int64_t newCount = std::int64_t{getNum()} + count;
    if (newCount > m_capacity && !resize(newCount))
        return m_last;
    std::copy_n(values, count, m_data.get() + m_last + 1);
    m_last += count;
    return m_last;
}

void PbIntArrayBase::append(const PbIntArrayBase &other) {
    const int count = other.getNum();
    const std::int64_t newCount = std::int64_t{getNum()} + count;
    if (count < 1 || (newCount > m_capacity && !resize(newCount)))
        return;
    std::copy_n(other.m_data.get(), count, m_data.get() + m_last + 1);
    m_last += count;
}

int &PbIntArrayBase::reach(int index) {
    static int unreachable;
    index = std::max(index, 0);
    if (index >= m_capacity && !resize(std::int64_t{index} + 1))
        return unreachable = 0;
    m_last = std::max(m_last, index);
    return m_data[index];
}

void PbIntArrayBase::squeeze() {
    resize(m_last + 1);
}

void PbIntArrayBase::increasingSort() {
    std::sort(m_data.get(), m_data.get() + getNum());
}

void PbIntArrayBase::decreasingSort() {
    std::sort(m_data.get(), m_data.get() + getNum(), std::greater<>());
}

PbArrayOfInt &PbArrayOfInt::operator+=(int value) {
    add(value);
    return *this;
}

PbArrayOfInt &PbArrayOfInt::operator+=(const PbArrayOfInt &other) {
    append(other);
    return *this;
}

const int &PbArrayOfInt::operator[](int index) const {
    static const int none = 0;
    return index < 0 || index > last() ? none : data()[index];
}

int PbArrayOfInt::find(int value) const {
    const int *end = data() + getNum();
    const int *found = std::find(data(), end, value);
    return found == end ? -1 : static_cast<int>(found - data());
}

PbArrayOfLong &PbArrayOfLong::operator+=(const PbArrayOfLong &other) {
    append(other);
    return *this;
}
