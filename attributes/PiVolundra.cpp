#include <oravane/PiVolundra.h>

#include "attributes/IsovalueAdjustment.h"

#include <oravane/PbIsovaluesList.h>

#include <algorithm>

PiVolundra::PiVolundra() : m_isovalues(100, 0.0f) {}

void PiVolundra::adjustIsoval(int num, const float *data, float &isovalue) {
    adjustIsovalMultiple(num, data, 0, nullptr, 0, nullptr, isovalue);
}

void PiVolundra::adjustIsovalMultiple(int num1, const float *data1, int num2, const float *data2, int num3,
                                      const float *data3, float &isovalue) {
    const oravane::NodeValues values(num1, data1, num2, data2, num3, data3);
    m_isAdjusted = oravane::adjustIsovalues(values, {&isovalue, 1});
}

void PiVolundra::adjustIsovalList(int num1, const float *data1, int num2, const float *data2, int num3,
                                  const float *data3) {
    m_numIsovalues = 0;
    m_isAdjusted = 0;
    if (!m_isovaluesList)
        return;
    float min, max, step;
    int isRegular;
    const float *list = m_isovaluesList->getIsoList(m_numIsovalues, min, max, step, isRegular);
    if (m_isovalues.size() < static_cast<std::size_t>(m_numIsovalues))
        m_isovalues.resize(m_numIsovalues);
    std::copy_n(list, m_numIsovalues, m_isovalues.begin());
    const oravane::NodeValues values(num1, data1, num2, data2, num3, data3);
    m_isAdjusted = oravane::adjustIsovalues(values, {m_isovalues.data(), std::size_t(m_numIsovalues)});
}
