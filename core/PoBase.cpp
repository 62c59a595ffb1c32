#include <oravane/PoBase.h>

#include "core/ClassTable.h"

#include <oravane/PoDomainElement.h>

#include <Inventor/SoOutput.h>
#include <Inventor/actions/SoGLRenderAction.h>
#include <Inventor/actions/SoWriteAction.h>
#include <Inventor/caches/SoCache.h>
#include <Inventor/elements/SoGLCacheContextElement.h>
#include <Inventor/misc/SoState.h>
#include <Inventor/nodekits/SoAppearanceKit.h>
#include <Inventor/nodes/SoCallback.h>
#include <Inventor/nodes/SoMatrixTransform.h>
#include <Inventor/nodes/SoSeparator.h>

SO_KIT_SOURCE(PoBase)

PoBase::TextType PoBase::m_textType = PoBase::ANNO_TEXT3_NODE;
PoBase::NodeWriteFormat PoBase::m_nodeWriteFormat = PoBase::WRITE_FIELDS;

namespace {

/// Keeps a node from telling the scene about changes, and leaves it as it was before.
class NotificationGuard {
public:
    explicit NotificationGuard(SoNode *node) : m_node(node), m_before(node->enableNotify(FALSE)) {}
    ~NotificationGuard() { m_node->enableNotify(m_before); }
    NotificationGuard(const NotificationGuard &) = delete;
    NotificationGuard &operator=(const NotificationGuard &) = delete;

private:
    SoNode *m_node;
    SbBool m_before;
};

/// Keeps a node alive while it calls out: a program may take the last reference away in a callback.
class LifeGuard {
public:
    explicit LifeGuard(SoNode *node) : m_node(node), m_wasUnowned(node->getRefCount() == 0) { node->ref(); }
    ~LifeGuard() {
        if (m_wasUnowned)
            m_node->unrefNoDelete();
        else
            m_node->unref();
    }
    LifeGuard(const LifeGuard &) = delete;
    LifeGuard &operator=(const LifeGuard &) = delete;

private:
    SoNode *m_node;
    bool m_wasUnowned;
};

void release(SoCache *&cache) {
    if (cache)
        cache->unref();
    cache = nullptr;
}

} // namespace

void PoBase::initClass() {
    if (!oravane::registersNow(classTypeId))
        return;
    SO_KIT_INIT_CLASS(PoBase, SoBaseKit, "BaseKit");
    prepareWriteAction();
}

// Instantiable although no program makes one: the toolkit's printDiagram() dereferences an instance of every
// ancestor.
PoBase::PoBase(void (*catchAction)(void *, SoAction *))
    : m_catchAction(catchAction ? catchAction : &PoBase::catchActionCB) {
    SO_KIT_CONSTRUCTOR(PoBase);
    SO_KIT_ADD_CATALOG_ENTRY(catchActionCallback, SoCallback, TRUE, this, , TRUE);
    SO_KIT_ADD_CATALOG_ENTRY(alternateRep, SoSeparator, TRUE, this, , TRUE);
    SO_KIT_ADD_CATALOG_ENTRY(catchActionLevel2Callback, SoCallback, TRUE, alternateRep, , TRUE);
    SO_KIT_ADD_CATALOG_ENTRY(appearance, SoAppearanceKit, TRUE, alternateRep, , TRUE);
    SO_KIT_ADD_CATALOG_ENTRY(domainTransform, SoMatrixTransform, TRUE, alternateRep, , TRUE);
    SO_KIT_INIT_INSTANCE();
    // Made here, so that the kit's list of children never changes under a traversal; only that of
    // alternateRep does, before the traversal enters it.
    attachTraversalCallbacks();
    setUpConnections(TRUE, TRUE);
}

PoBase::~PoBase() {
    changeConnection(m_domain, nullptr);
    release(m_cache);
    release(m_domainCache);
}

void PoBase::attachTraversalCallbacks() {
    auto *update = static_cast<SoCallback *>(getAnyPart("catchActionCallback", TRUE));
    update->setCallback(m_catchAction, this);
    auto *level2 = static_cast<SoCallback *>(getAnyPart("catchActionLevel2Callback", TRUE));
    level2->setCallback(&PoBase::catchActionLevel2CB, this);
}

void PoBase::watchFields(std::initializer_list<SoField *> fields) {
    auto watched = std::make_unique<WatchedFields>();
    for (SoField *field : fields)
        watched->fields.append(field);
    createFieldSensorList(static_cast<int>(fields.size()), &watched->sensors);
    m_watched.push_back(std::move(watched));
}

void PoBase::generatedParts(std::initializer_list<SoField *> parts) {
    m_generatedParts.insert(m_generatedParts.end(), parts);
}

void PoBase::setLightModel(SoLightModel::Model model) {
    auto *node = new SoLightModel;
    node->model = model;
    setPart("appearance.lightModel", node);
}

void PoBase::setDrawStyleAK(const char *appearanceKitPart, SoDrawStyle::Style style) {
    auto *node = new SoDrawStyle;
    node->style = style;
    setPart(SbName((SbString(appearanceKitPart) + ".drawStyle").getString()), node);
}

// ---- the rebuild cycle

void PoBase::rebuild() {}

void PoBase::preRebuild() {
    if (m_preRebuildCB)
        m_preRebuildCB(m_preRebuildData, this);
}

void PoBase::postRebuild() {
    m_built = 1;
    m_modified = 0;
    m_fieldChangePending = 0;
    if (m_postRebuildCB)
        m_postRebuildCB(m_postRebuildData, this);
}

void PoBase::addPreRebuildCallback(RebuildCallback *function, void *userData) {
    m_preRebuildCB = function;
    m_preRebuildData = userData;
}

void PoBase::addPostRebuildCallback(RebuildCallback *function, void *userData) {
    m_postRebuildCB = function;
    m_postRebuildData = userData;
}

void PoBase::markModified() {
    m_showsPartsOfFile = false;
    if (m_updateMethod == UPDATE_IMMEDIATE)
        rebuildOnce();
    else
        m_modified = 1;
}

// What a rebuild itself causes, in a callback of the program, belongs to it and starts no other.
void PoBase::rebuildOnce() {
    if (m_isRebuilding)
        return;
    const LifeGuard life(this);
    m_isRebuilding = true;
    rebuild();
    m_isRebuilding = false;
    m_modified = 0;
    // In the setter of a field, sensors of others wait until the one of that field has returned.
    for (const auto &watched : m_watched)
        for (int i = 0; i < watched->sensors.numSensors; ++i)
            if (watched->sensors.sensors[i].isScheduled())
                watched->sensors.sensors[i].unschedule();
}

void PoBase::touchKit() {
    const LifeGuard life(this);
    markModified();
    if (m_updateMethod != UPDATE_IMMEDIATE)
        touch();
}

void PoBase::setState(SoAction *action) {
    m_state = action->getState();
}

void PoBase::addElementsAllCaches() {
    PoDomainElement::get(getState());
}

void PoBase::rebuildCache(SoCache **cache) {
    // A cache records only elements of a smaller depth than the state had when it was made: hence the push.
    m_state->push();
    release(*cache);
    *cache = new SoCache(m_state);
    (*cache)->ref();
    m_state->pop();
}

void PoBase::addElementCache(int stackIndex) {
    if (m_stateValid && !m_cacheValid && m_cache)
        m_cache->addElement(m_state->getConstElement(stackIndex));
}

void PoBase::rebuildAtNextTraversal() {
    release(m_cache);
}

void PoBase::rebuildSilently() {
    const LifeGuard life(this);
    const NotificationGuard guard(this);
    rebuildOnce();
}

void PoBase::catchActionCB(void *data, SoAction *action) {
    auto *kit = static_cast<PoBase *>(data);
    SoState *state = action->getState();
    // An action that knows nothing of our elements (a count of primitives, say) cannot bring a kit up to
    // date.
    if (!state || !state->isElementEnabled(PoDomainElement::getClassStackIndex()))
        return;
    if (action->isOfType(SoWriteAction::getClassTypeId()) &&
        static_cast<SoWriteAction *>(action)->getOutput()->getStage() == SoOutput::COUNT_REFS)
        return;
    // An action that a callback of the rebuild applies meets the parts as they are.
    if (kit->m_showsPartsOfFile || kit->m_isRebuilding)
        return;
    const LifeGuard life(kit);
    kit->setState(action);
    kit->m_stateValid = 1;
    kit->bringUpToDate();
    kit->m_stateValid = 0;
}

void PoBase::bringUpToDate() {
    // First, so that caches open above this kit depend on the elements also when there is nothing to do
    // below.
    addElementsAllCaches();
    m_cacheValid = m_cache && m_cache->isValid(m_state);
    const bool domainValid = m_domainCache && m_domainCache->isValid(m_state);
    if (!m_modified && m_cacheValid && domainValid)
        return;
    if (!domainValid)
        followDomain();
    if (!domainValid && !m_domainUsedForRebuild && !m_modified && m_cacheValid)
        return;
    // Recorded anew by every rebuild: a field that changed may make it read other elements than the last one
    // did.
    rebuildCache(&m_cache);
    m_cacheValid = 0;
    rebuildSilently();
    m_cacheValid = 1;
}

void PoBase::followDomain() {
    {
        const NotificationGuard guard(this);
        setDomainTransform(getDomain());
    }
    rebuildCache(&m_domainCache);
    m_domainCache->addElement(m_state->getConstElement(PoDomainElement::getClassStackIndex()));
}

void PoBase::catchActionLevel2CB(void *, SoAction *action) {
    if (action->isOfType(SoGLRenderAction::getClassTypeId()))
        SoGLCacheContextElement::shouldAutoCache(action->getState(), SoGLCacheContextElement::DO_AUTO_CACHE);
}

// ---- the domain

void PoBase::setDomain(PbDomain *domain) {
    changeConnection(m_domain, domain);
    m_domain = domain ? domain : &m_defaultDomain;
    m_showsPartsOfFile = false;
    setDomainTransform(domain);
    forgetDomainCache();
    if (isDomainUsedForRebuild())
        touchKit();
    else
        touch(); // the domain of the scene may be in force again, and no part has changed
}

const PbDomain *PoBase::getDomain() const {
    if (m_domain == &m_defaultDomain && m_stateValid)
        return PoDomainElement::get(m_state);
    return m_domain;
}

void PoBase::forgetDomainCache() {
    release(m_domainCache);
}

void PoBase::setDomainTransform(const PbDomain *domain) {
    if (!isDomainTransformEnabled())
        return;
    const bool isIdentity =
        !domain || (domain->isHomogeneous() && domain->getTransformType() != PbDomain::TRANSFORM_01);
    if (!isIdentity)
        setPart("domainTransform", domain->getMatrixTransform());
    else if (domainTransform.getValue()) // setting a null part to null would make it first
        setPart("domainTransform", nullptr);
}

// ---- connections and sensors

void PoBase::changeConnection(const PbBase *oldObject, const PbBase *newObject) const {
    if (oldObject)
        const_cast<PbBase *>(oldObject)->removeConnection(this);
    if (newObject)
        const_cast<PbBase *>(newObject)->addConnection(this);
}

void PoBase::basicObjectChange(PbBase *object) {
    if (!object)
        return;
    const LifeGuard life(this);
    if (object == m_domain) {
        const bool isDeleted = object->getChangeType() == PbBase::CHANGE_DELETED;
        const bool isOnlyTransform = object->getChangeType() == PbBase::CHANGE_TRANSFORM_TYPE;
        setDomainTransform(isDeleted ? nullptr : m_domain);
        if (isDeleted) {
            m_domain = &m_defaultDomain;
            forgetDomainCache(); // the domain of the traversal is in force again
        }
        m_showsPartsOfFile = false;
        if (!isOnlyTransform && isDomainUsedForRebuild())
            touchKit();
        else
            touch();
    }
    for (PoConnectionBase *connection : m_connections)
        if (connection->m_object == object)
            manageBasicObjectChange(object, &connection->m_object);
}

void PoBase::manageBasicObjectChange(PbBase *object, PbBase **member) {
    if (object->getChangeType() == PbBase::CHANGE_DELETED) {
        if (!*member)
            return;
        *member = nullptr;
    }
    touchKit();
}

SbBool PoBase::setUpConnections(SbBool onOff, SbBool doItAlways) {
    if (!doItAlways && connectionsSetUp == onOff)
        return onOff;
    // No sensor may fire while the parts are being reconnected.
    if (onOff) {
        SoBaseKit::setUpConnections(onOff, doItAlways);
        fieldSensorCB(this, nullptr);
        for (const auto &watched : m_watched)
            attachFieldSensorList(watched->sensors, watched->fields);
    } else {
        for (const auto &watched : m_watched)
            detachFieldSensorList(watched->sensors);
        SoBaseKit::setUpConnections(onOff, doItAlways);
    }
    return !(connectionsSetUp = onOff);
}

void PoBase::createFieldSensorList(int numSensors, FieldSensorList *list) {
    list->numSensors = numSensors > 0 ? numSensors : 0;
    list->sensors = std::make_unique<SoFieldSensor[]>(static_cast<std::size_t>(list->numSensors));
    for (int i = 0; i < list->numSensors; ++i) {
        list->sensors[i].setFunction(&PoBase::fieldSensorCB);
        list->sensors[i].setData(this);
        list->sensors[i].setPriority(0); // runs inside the setter
    }
}

void PoBase::deleteFieldSensorList(FieldSensorList *list) {
    list->sensors.reset();
    list->numSensors = 0;
}

void PoBase::attachFieldSensorList(const FieldSensorList &list, const SoFieldList &fields) {
    for (int i = 0; i < list.numSensors && i < fields.getLength(); ++i)
        list.sensors[i].attach(fields[i]);
}

void PoBase::detachFieldSensorList(const FieldSensorList &list) {
    for (int i = 0; i < list.numSensors; ++i)
        if (list.sensors[i].getAttachedField())
            list.sensors[i].detach();
}

void PoBase::fieldSensorCB(void *data, SoSensor *sensor) {
    auto *kit = static_cast<PoBase *>(data);
    if (kit->m_storeFieldsChanged && sensor)
        kit->m_fieldsChanged.append(static_cast<SoFieldSensor *>(sensor)->getAttachedField());
    kit->m_fieldChangePending = 1;
    kit->markModified();
}

int PoBase::isFieldHasChanged(const SoField *field) const {
    return m_fieldsChanged.find(const_cast<SoField *>(field)) >= 0;
}

PoConnectionBase::PoConnectionBase(PoBase *kit) : m_kit(kit) {
    kit->m_connections.push_back(this);
}

PoConnectionBase::~PoConnectionBase() {
    m_kit->changeConnection(m_object, nullptr);
}

PbBase *PoConnectionBase::object() const {
    return m_object && !m_object->m_isDying ? m_object : nullptr;
}

void PoConnectionBase::connect(PbBase *object) {
    m_kit->changeConnection(m_object, object);
    m_object = object;
    m_kit->touchKit();
}

SoState *PoConnectionBase::traversalState() const {
    return m_kit->isStateValid() ? m_kit->getState() : nullptr;
}

void PoConnectionBase::dependOn(int stackIndex) {
    m_kit->addElementCache(stackIndex);
    if (!m_kit->isStateValid() && !object())
        m_kit->rebuildAtNextTraversal();
}
