#include <oravane/PbDateFormatMapping.h>

#include "text/DateTime.h"

#include <algorithm>
#include <cmath>
#include <cstring>
#include <iterator>
#include <utility>

namespace {

const char *orDefault(const char *format) {
    return format ? format : "dmy";
}

/// 0 for a sound format, or the place of the first letter at fault, from 1.
int checkDateFormat(const char *format) {
    static const char *const elements[] = {"\"", "'", "D", "d", "hH", "mM", "yY"};
    bool isUsed[std::size(elements)] = {};
    for (const char *letter = format; *letter; ++letter) {
        const auto *const element =
            std::find_if(std::begin(elements), std::end(elements),
                         [=](const char *e) { return std::strchr(e, *letter) != nullptr; });
        if (element == std::end(elements) || std::exchange(isUsed[element - elements], true))
            return static_cast<int>(letter - format) + 1;
    }
    return 0;
}

} // namespace

PbDateFormatMapping::PbDateFormatMapping() = default;

PbDateFormatMapping::PbDateFormatMapping(const char *date1, const char *date2, float coord1, float coord2,
                                         const char *format)
    : m_format(orDefault(format)) {
    setDateMapping(date1, date2, coord1, coord2);
}

PbDateFormatMapping::PbDateFormatMapping(const PbDateFormatMapping &source) = default;

PbDateFormatMapping &PbDateFormatMapping::operator=(const PbDateFormatMapping &source) {
    if (this == &source)
        return *this;
    m_origin = source.m_origin;
    m_minCoord = source.m_minCoord;
    m_maxCoord = source.m_maxCoord;
    m_lengthSeconds = source.m_lengthSeconds;
    m_format = source.m_format;
    std::copy(std::begin(source.m_dateStrings), std::end(source.m_dateStrings), m_dateStrings);
    PbBase::operator=(source); // tells the kits, of the values that are in place by now
    return *this;
}

int PbDateFormatMapping::setFormat(const char *format) {
    const int fault = checkDateFormat(m_format.getString());
    if (fault != 0)
        return fault;
    m_format = SbString(orDefault(format)); // a copy first: the text may be a part of this one
    notifyChange(CHANGE_GENERAL);
    return 0;
}

int PbDateFormatMapping::setDateMapping(const char *date1, const char *date2, float coord1, float coord2) {
    PiDate first, second;
    if (!date1 || first.setDateString(date1, m_format.getString()) != 0)
        return 1;
    if (!date2 || second.setDateString(date2, m_format.getString()) != 0)
        return 2;
    if (first == second)
        return 3;
    if (!storeMapping(first, second, coord1, coord2))
        return 4;
    SbString texts[] = {date1, date2};
    if (!(m_minCoord < m_maxCoord))
        std::swap(texts[0], texts[1]);
    std::copy(std::begin(texts), std::end(texts), m_dateStrings);
    notifyChange(CHANGE_GENERAL);
    return 0;
}

int PbDateFormatMapping::setDateMappingP(const PiDate &date1, const PiDate &date2, float coord1,
                                         float coord2) {
    if (!storeMapping(date1, date2, coord1, coord2))
        return 4;
    notifyChange(CHANGE_GENERAL);
    return 0;
}

bool PbDateFormatMapping::storeMapping(const PiDate &date1, const PiDate &date2, float coord1, float coord2) {
    if (!std::isfinite(coord1) || !std::isfinite(coord2))
        return false;
    const double seconds = oravane::secondsBetween(date2, date1);
    m_origin = seconds < 0 ? date2 : date1;
    m_lengthSeconds = std::abs(seconds);
    m_minCoord = std::min(coord1, coord2);
    m_maxCoord = std::max(coord1, coord2);
    return true;
}

void PbDateFormatMapping::getDateMapping(SbString &date1, SbString &date2, float &minCoord,
                                         float &maxCoord) const {
    date1 = m_dateStrings[0];
    date2 = m_dateStrings[1];
    minCoord = m_minCoord;
    maxCoord = m_maxCoord;
}

int PbDateFormatMapping::getCoordinate(const char *date, float &coordinate) const {
    PiDate read;
    if (!date || read.setDateString(date, m_format.getString()) != 0)
        return 0;
    coordinate = getCoordinateP(read);
    return 1;
}

float PbDateFormatMapping::getCoordinateP(const PiDate &date) const {
    if (!(m_lengthSeconds > 0))
        return m_minCoord;
    const double length = static_cast<double>(m_maxCoord) - m_minCoord;
    const double seconds = oravane::secondsBetween(date, m_origin);
    return static_cast<float>(m_minCoord + length * seconds / m_lengthSeconds);
}

PiDate PbDateFormatMapping::getDateP(float coordinate) const {
    PiDate date = m_origin;
    if (std::isfinite(coordinate) && m_minCoord < m_maxCoord) {
        const double length = static_cast<double>(m_maxCoord) - m_minCoord;
        oravane::stepSeconds(date, (static_cast<double>(coordinate) - m_minCoord) * m_lengthSeconds / length);
    }
    return date;
}
