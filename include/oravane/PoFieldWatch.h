#ifndef ORAVANE_POFIELDWATCH_H
#define ORAVANE_POFIELDWATCH_H

#include <oravane/OravaneApi.h>

#include <initializer_list>
#include <memory>
#include <vector>

class SoField;
class SoFieldSensor;
class SoSensor;

/// Notices that one of several fields was set. An attribute node owns one for each group of fields that it
/// carries into its basic object together, and asks it when the node is used:
///
/// \code
///   if (m_thresholdWatch.takeChanged()) m_mapping.setMinThreshold(minThreshold.getValue());
/// \endcode
class ORAVANE_API PoFieldWatch {
public:
    PoFieldWatch();
    ~PoFieldWatch();
    PoFieldWatch(const PoFieldWatch &) = delete;
    PoFieldWatch &operator=(const PoFieldWatch &) = delete;

    /// Watches these fields from now on; they must outlive the watch or be members of the same node.
    void watch(std::initializer_list<SoField *> fields);

    /// Whether a field was set since the last call of this or of `forget`; forgets it.
    bool takeChanged();

    /// Forgets changes so far.
    void forget() { m_changed = false; }

private:
    static void fieldSet(void *watch, SoSensor *);

    std::vector<std::unique_ptr<SoFieldSensor>> m_sensors;
    bool m_changed = false;
};

#endif
