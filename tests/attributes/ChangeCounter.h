#ifndef ORAVANE_TESTS_ATTRIBUTES_CHANGECOUNTER_H
#define ORAVANE_TESTS_ATTRIBUTES_CHANGECOUNTER_H

#include <oravane/PbBase.h>
#include <oravane/PoBase.h>

#include <gtest/gtest.h>

#include <functional>

/// Connects a kit to a basic object for its own lifetime, and counts what the kit is told; each time it calls
/// `onChange`, from inside the notification.
class ChangeCounter {
public:
    explicit ChangeCounter(
        PbBase &object, std::function<void()> onChange = [] {})
        : m_object(object), m_kit(new Kit) {
        m_kit->ref();
        m_kit->onChange = std::move(onChange);
        object.addConnection(m_kit);
    }
    ~ChangeCounter() {
        m_object.removeConnection(m_kit);
        m_kit->unref();
    }
    ChangeCounter(const ChangeCounter &) = delete;
    ChangeCounter &operator=(const ChangeCounter &) = delete;

    int changes() const { return m_kit->count; }

private:
    struct Kit : PoBase {
        int count = 0;
        std::function<void()> onChange;

        void basicObjectChange(PbBase *object) override {
            EXPECT_EQ(object->getChangeType(), PbBase::CHANGE_GENERAL);
            ++count;
            onChange();
        }
    };

    PbBase &m_object;
    Kit *m_kit;
};

#endif
