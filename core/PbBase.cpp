#include <oravane/PbBase.h>
#include <oravane/PoBase.h>

#include <algorithm>
#include <utility>

PbBase::~PbBase() {
    beginDeletion();
    notifyChange(CHANGE_DELETED);
    if (m_isGone)
        *m_isGone = true;
}

PbBase::PbBase(const PbBase &source) {
    copy(source, 1);
}

PbBase &PbBase::operator=(const PbBase &source) {
    if (this != &source)
        copy(source, 0);
    return *this;
}

void PbBase::copy(const PbBase &source, int isConstructing) {
    m_connectionEnabled = source.m_connectionEnabled;
    m_changeType = source.m_changeType;
    if (!isConstructing)
        notifyChange(CHANGE_GENERAL);
}

void PbBase::addConnection(const PoBase *kit) {
    if (kit)
        m_connections.push_back(const_cast<PoBase *>(kit));
}

int PbBase::removeConnection(const PoBase *kit) {
    const auto latest = std::find(m_connections.rbegin(), m_connections.rend(), kit);
    if (!kit || latest == m_connections.rend())
        return 0;
    if (m_notificationDepth > 0)
        *latest = nullptr; // a walk is under way: its indices must keep their meaning
    else
        m_connections.erase(std::next(latest).base());
    return 1;
}

void PbBase::removeAllConnection() {
    if (m_notificationDepth > 0)
        std::fill(m_connections.begin(), m_connections.end(), nullptr);
    else
        m_connections.clear();
}

void PbBase::dropRemovedConnections() {
    m_connections.erase(std::remove(m_connections.begin(), m_connections.end(), nullptr),
                        m_connections.end());
}

void PbBase::touch() {
    notifyChange(CHANGE_GENERAL);
}

bool PbBase::notifyChange(ChangeType type) {
    setChangeType(type);
    return notifyChange();
}

bool PbBase::notifyChange() {
    if (m_changeType != CHANGE_DELETED && !m_connectionEnabled)
        return true;
    const ChangeType type = m_changeType;
    bool isGone = false;
    bool *const outer = std::exchange(m_isGone, &isGone);
    ++m_notificationDepth;
    // Kits that connect during the walk stand behind its start, and are not told of a change they have seen.
    for (std::size_t i = m_connections.size(); i-- > 0;) {
        m_changeType = type; // a kit may have caused another change of this object
        if (m_connections[i])
            m_connections[i]->basicObjectChange(this);
        if (isGone) {
            if (outer)
                *outer = true;
            return false;
        }
    }
    m_isGone = outer;
    if (--m_notificationDepth == 0)
        dropRemovedConnections();
    return true;
}
