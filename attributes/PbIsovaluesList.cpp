#include <oravane/PbIsovaluesList.h>

#include <algorithm>
#include <cmath>
#include <iterator>
#include <limits>
#include <optional>
#include <utility>

namespace {

std::optional<std::pair<float, float>> finiteRange(int count, const float *data) {
    float low = std::numeric_limits<float>::infinity(), high = -low;
    for (int i = 0; data && i < count; ++i) {
        if (!std::isfinite(data[i]))
            continue;
        low = std::min(low, data[i]);
        high = std::max(high, data[i]);
    }
    if (low > high)
        return std::nullopt;
    return std::pair(low, high);
}

} // namespace

PbIsovaluesList::PbIsovaluesList() {
    homogIsovalList(1.0f, 10.0f, 10);
}

PbIsovaluesList::PbIsovaluesList(float min, float max, int num) : PbIsovaluesList() {
    homogIsovalList(min, max, num);
}

PbIsovaluesList::PbIsovaluesList(const PbIsovaluesList &source) = default;

PbIsovaluesList &PbIsovaluesList::operator=(const PbIsovaluesList &source) {
    if (this == &source)
        return *this;
    m_minIsovalue = source.m_minIsovalue;
    m_maxIsovalue = source.m_maxIsovalue;
    m_isoList = source.m_isoList;
    m_isoStep = source.m_isoStep;
    m_isoSmallestStep = source.m_isoSmallestStep;
    m_isRegular = source.m_isRegular;
    PbBase::operator=(source); // last, since it notifies
    return *this;
}

void PbIsovaluesList::homogIsovalList(float a, float b, int num) {
    if (!std::isfinite(a) || !std::isfinite(b))
        return;
    m_minIsovalue = std::min(a, b);
    m_maxIsovalue = std::max(a, b);
    num = std::max(num, 0);
    float step = (m_maxIsovalue - m_minIsovalue) / static_cast<float>(num - 1);
    if (num > 1 && !std::isfinite(step)) // the range of nearly all floats
        step = static_cast<float>((double(m_maxIsovalue) - m_minIsovalue) / (num - 1));
    m_isoStep = m_isoSmallestStep = step;
    m_isRegular = 1;
    m_isoList.resize(num);
    float value = m_minIsovalue;
    for (float &isovalue : m_isoList) {
        isovalue = value;
        value += step;
    }
    if (num > 0)
        m_isoList.back() = m_maxIsovalue; // rounding must not lose the upper end
    notifyChange(CHANGE_GENERAL);
}

void PbIsovaluesList::setRegularIsoList(int num, float first, float step) {
    if (!std::isfinite(first) || !std::isfinite(step))
        return;
    num = std::max(num, 0);
    m_isoList.assign(num, 0.0f);
    float value = first;
    if (step < 0.0f) {
        for (int i = num - 1; i > 0; --i, value += step)
            m_isoList[i] = value;
    } else {
        for (int i = 0; i < num; ++i, value += step)
            m_isoList[i] = value;
    }
    m_minIsovalue = num > 0 ? m_isoList.front() : first;
    m_maxIsovalue = num > 0 ? m_isoList.back() : first;
    m_isoStep = m_isoSmallestStep = step;
    m_isRegular = 1;
    notifyChange(CHANGE_GENERAL);
}

void PbIsovaluesList::setRegularIsoList(float min, float max, int num) {
    homogIsovalList(min, max, num);
}

void PbIsovaluesList::setRegularIsoList(float min, float max) {
    homogIsovalList(min, max, count());
}

void PbIsovaluesList::setRegularIsoList(int num) {
    homogIsovalList(m_minIsovalue, m_maxIsovalue, num);
}

void PbIsovaluesList::setRegularIsoList(int numData, const float *data) {
    setRegularIsoList(numData, data, count());
}

void PbIsovaluesList::setRegularIsoList(int numData, const float *data, int num) {
    if (const auto range = finiteRange(numData, data))
        homogIsovalList(range->first, range->second, num);
}

void PbIsovaluesList::setIrregularIsoList(int num, const float *values) {
    if (num > 0 && !values)
        return;
    std::vector<float> list; // a block of its own: `values` may be the list of this object
    std::copy_if(values, values + std::max(num, 0), std::back_inserter(list),
                 [](float value) { return !std::isnan(value); });
    std::sort(list.begin(), list.end());
    m_isoList = std::move(list);
    m_isRegular = 1;
    if (!m_isoList.empty()) {
        m_minIsovalue = m_isoList.front();
        m_maxIsovalue = m_isoList.back();
    }
    if (count() > 1) {
        const float first = m_isoSmallestStep = m_isoList[1] - m_isoList[0];
        for (int i = 1; i < count() - 1; ++i) {
            const float step = m_isoList[i + 1] - m_isoList[i];
            if (step != first)
                m_isRegular = 0;
            if (std::abs(step) < std::abs(m_isoSmallestStep))
                m_isoSmallestStep = step;
        }
    }
    m_isoStep = m_isoSmallestStep;
    notifyChange(CHANGE_GENERAL);
}

const float *PbIsovaluesList::getIsoList(int &num, float &min, float &max, float &step,
                                         int &isRegular) const {
    num = count();
    min = m_minIsovalue;
    max = m_maxIsovalue;
    step = m_isoStep;
    isRegular = m_isRegular;
    return num > 0 ? m_isoList.data() : nullptr;
}

float PbIsovaluesList::getLowerIsovalue(float value) const {
    const auto above = std::upper_bound(m_isoList.begin(), m_isoList.end(), value);
    return above == m_isoList.begin() || std::isnan(value) ? -1e20f : *std::prev(above);
}

float PbIsovaluesList::getUpperIsovalue(float value) const {
    const auto notBelow = std::lower_bound(m_isoList.begin(), m_isoList.end(), value);
    return notBelow == m_isoList.end() || std::isnan(value) ? 1e20f : *notBelow;
}

int PbIsovaluesList::getIndex(float value) const {
    return m_isRegular ? getRegularIndex(value) : getIrregularIndex(value);
}

int PbIsovaluesList::getRegularIndex(float value) const {
    if (m_isoList.empty() || !(value > m_isoList.front()))
        return 0;
    if (value > m_isoList.back())
        return count();
    // The step of a list that was set with a negative one does not belong to its first value.
    const float steps = (value - m_isoList.front()) / m_isoStep;
    int i = 0;
    if (steps >= static_cast<float>(count() - 1))
        i = count() - 1;
    else if (steps > 0.0f)
        i = static_cast<int>(steps);
    return m_isoList[i] == value ? i : i + 1;
}

int PbIsovaluesList::getIrregularIndex(float value) const {
    // A search of its own, since among equal list values it must end at the very one that it ends at. What
    // stands behind the last value counts as above any value.
    int low = 0;
    int high = count();
    while (low <= high) {
        const int middle = low + (high - low) / 2;
        if (middle < count() && m_isoList[middle] == value)
            return middle;
        if (middle < count() && m_isoList[middle] <= value)
            low = middle + 1;
        else
            high = middle - 1;
    }
    return low;
}
