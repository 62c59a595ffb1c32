#ifndef ORAVANE_PBBASE_H
#define ORAVANE_PBBASE_H

#include <oravane/OravaneApi.h>

#include <vector>

class PoBase;

/// Root of the basic objects: plain data (a mesh, a domain, a data mapping, a list of levels) outside of the
/// scene graph, shared by any number of kits. A basic object does not know what its kits do with it: it tells
/// them that it changed, and they decide.
///
/// \code
///   values[42] = 3.5f;      // data that the mesh shares with the program
///   mesh.touch();           // every kit that shows the mesh rebuilds at its next traversal
/// \endcode
///
/// Lifetime: the application owns a basic object. Connected kits hold its address without owning it; the
/// destructor tells them, so that an object may be deleted while kits still show it, and inside the
/// notification of a setter (but not of an assignment, which goes on afterwards).
class ORAVANE_API PbBase {
public:
    /// What kind of change a notification reports.
    enum ChangeType {
        CHANGE_GENERAL = 0,        ///< values of the object, `touch()`, assignment
        CHANGE_DELETED = 1,        ///< the object is being destroyed: drop the pointer
        CHANGE_MESH_GEOMETRY = 2,  ///< nodes or cells of a mesh
        CHANGE_VALUES_SET = 3,     ///< a scalar set of a mesh was added, replaced or removed
        CHANGE_VECS_SET = 4,       ///< a vector set of a mesh was added, replaced or removed
        CHANGE_TRANSFORM_TYPE = 5, ///< only the transform type of a domain
    };

    /// Tells the connected kits (`CHANGE_DELETED`) and forgets them.
    virtual ~PbBase();

    /// Adds `kit` in front of the kits to be told. A kit that is added twice is told twice; null is ignored.
    void addConnection(const PoBase *kit);

    /// Takes away the latest connection of `kit`. Returns 1, or 0 when there is none. May be called from
    /// inside a notification, also for the kit that is being told.
    int removeConnection(const PoBase *kit);

    /// Reports a change that the object could not see, of data shared with the application
    /// (`CHANGE_GENERAL`).
    void touch();

    /// The change being reported; meaningful only inside `PoBase::basicObjectChange`.
    ChangeType getChangeType() const { return m_changeType; }

    /// 1 while changes are reported. A deletion is always reported.
    int isConnectionEnabled() const { return m_connectionEnabled; }

protected:
    PbBase() = default;
    /// Starts without connections, and notifies nobody.
    PbBase(const PbBase &source);
    /// Keeps this object's own connections and reports `CHANGE_GENERAL` to them; nothing on self-assignment.
    PbBase &operator=(const PbBase &source);

    void setChangeType(ChangeType type) { m_changeType = type; }

    /// Calls `basicObjectChange(this)` on each connected kit, the one connected last first. Returns false
    /// when a kit, or a callback of the program, has deleted this object: touch no member after that.
    bool notifyChange();

    /// `setChangeType(type)` and `notifyChange()`.
    bool notifyChange(ChangeType type);

    void removeAllConnection();

    /// From now on the kits find nothing in the place of this object. For the destructor of a class that
    /// still reports changes: what its children were is gone.
    void beginDeletion() { m_isDying = true; }

private:
    friend class PoConnectionBase;

    void copy(const PbBase &source, int isConstructing);
    void dropRemovedConnections();

    /// In order of connection. A kit removed during a notification leaves a null until the walk has ended.
    std::vector<PoBase *> m_connections;
    int m_notificationDepth = 0;
    bool *m_isGone = nullptr; ///< of the innermost walk under way, for the destructor to set
    int m_connectionEnabled = 1;
    bool m_isDying = false;
    ChangeType m_changeType = CHANGE_GENERAL;
};

#endif
