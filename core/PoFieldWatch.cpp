#include <oravane/PoFieldWatch.h>

#include <Inventor/fields/SoField.h>
#include <Inventor/sensors/SoFieldSensor.h>

#include <utility>

PoFieldWatch::PoFieldWatch() = default;
PoFieldWatch::~PoFieldWatch() = default;

void PoFieldWatch::watch(std::initializer_list<SoField *> fields) {
    for (SoField *field : fields) {
        auto sensor = std::make_unique<SoFieldSensor>(&PoFieldWatch::fieldSet, this);
        sensor->setPriority(0); // runs inside the setter
        sensor->attach(field);
        m_sensors.push_back(std::move(sensor));
    }
}

bool PoFieldWatch::takeChanged() {
    return std::exchange(m_changed, false);
}

void PoFieldWatch::fieldSet(void *watch, SoSensor *) {
    static_cast<PoFieldWatch *>(watch)->m_changed = true;
}
