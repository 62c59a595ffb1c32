// How a kit is written, read and copied.

#include <oravane/PoBase.h>

#include "core/FieldDescriptions.h"

#include <Inventor/SoOutput.h>
#include <Inventor/SoPath.h>
#include <Inventor/actions/SoCallbackAction.h>
#include <Inventor/actions/SoSearchAction.h>
#include <Inventor/actions/SoWriteAction.h>

#include <algorithm>

namespace {

/// Brings the kits below a node up to date, each with the attributes that stand before it, switched-off
/// branches included.
void updateKitsBelow(SoNode *root) {
    const SbBool isSearchingKits = SoBaseKit::isSearchingChildren();
    SoBaseKit::setSearchingChildren(TRUE); // kits stand in other kits, too
    root->ref(); // search paths hold their head, and would take a node without references with them
    {
        SoSearchAction search;
        search.setType(PoBase::getClassTypeId());
        search.setInterest(SoSearchAction::ALL);
        search.setSearchingAll(TRUE);
        search.apply(root);
        for (int i = 0; i < search.getPaths().getLength(); ++i) {
            SoCallbackAction update;
            update.apply(search.getPaths()[i]);
        }
    }
    root->unrefNoDelete();
    SoBaseKit::setSearchingChildren(isSearchingKits);
}

// The toolkit counts references before it traverses anything, so finished parts must exist before the
// counting begins; this is the first that a write action does with the node or path it is applied to.
void writeUpToDate(SoAction *action, SoNode *node) {
    const bool isCounting =
        static_cast<SoWriteAction *>(action)->getOutput()->getStage() == SoOutput::COUNT_REFS;
    if (isCounting && PoBase::getNodeWriteFormat() == PoBase::WRITE_PARTS)
        updateKitsBelow(node);
    SoNode::writeS(action, node);
}

} // namespace

void PoBase::prepareWriteAction() {
    SoWriteAction::addMethod(SoNode::getClassTypeId(), &writeUpToDate);
}

void PoBase::addWriteReference(SoOutput *out, SbBool isFromField) {
    // A class that calls itself built in has readable binary files; one that does not describes its fields in
    // ASCII files, for readers that lack this library.
    isBuiltIn = out->isBinary();
    // A kit that no traversal has reached, in a field of some node, say, at least has parts; the attributes
    // of the scene are for its next traversal.
    if (m_nodeWriteFormat == WRITE_PARTS && !isFromField && (!m_built || m_modified)) {
        rebuildSilently();
        m_modified = 1;
    }
    SoBaseKit::addWriteReference(out, isFromField);
}

void PoBase::write(SoWriteAction *action) {
    m_writeAction = action;
    isBuiltIn = action->getOutput()->isBinary();
    SoBaseKit::write(action);
    if (action->getOutput()->getStage() == SoOutput::WRITE) {
        restoreDefaultMarks();
        m_writeAction = nullptr; // the action may be gone at the next writing
    }
}

void PoBase::setDefaultOnNonWritingFields() {
    if (m_defaultMarks.empty()) {
        SoFieldList fields;
        getFields(fields);
        for (int i = 0; i < fields.getLength(); ++i)
            m_defaultMarks.push_back({fields[i], fields[i]->isDefault()});
    }
    if (m_writeAction)
        setState(m_writeAction);
    SoBaseKit::setDefaultOnNonWritingFields();
    for (SoField *field : {&callbackList, &catchActionLevel2Callback, &catchActionCallback})
        field->setDefault(TRUE);
    if (m_nodeWriteFormat == WRITE_FIELDS) {
        alternateRep.setDefault(TRUE);
        appearance.setDefault(TRUE);
        for (SoField *part : m_generatedParts)
            part->setDefault(TRUE);
    } else {
        for (const auto &watched : m_watched)
            setListFieldsDefault(watched->fields);
        // What a reader without this library can draw; it shares the nodes that the part fields hold.
        if (!isBuiltIn && alternateRep.getValue())
            alternateRep.setDefault(FALSE);
    }
}

void PoBase::setListFieldsDefault(const SoFieldList &fields) {
    for (int i = 0; i < fields.getLength(); ++i)
        fields[i]->setDefault(TRUE);
}

void PoBase::skipGeneratedInFile(const SoSFNode &appearanceKit, const char *partName) {
    SoNode *kit = appearanceKit.getValue();
    if (kit && getNodeWriteFormat() == WRITE_FIELDS)
        skipInFile(kit->getField(partName));
}

void PoBase::skipInFile(SoField *field) {
    m_defaultMarks.push_back({field, field->isDefault()});
    field->setDefault(TRUE);
}

// Backwards, since a field marked twice must get its first mark.
void PoBase::restoreDefaultMarks() {
    for (auto mark = m_defaultMarks.rbegin(); mark != m_defaultMarks.rend(); ++mark)
        mark->field->setDefault(mark->isDefault);
    m_defaultMarks.clear();
}

SbBool PoBase::readInstance(SoInput *in, unsigned short flags) {
    oravane::skipFieldDescriptions(in);
    if (!SoBaseKit::readInstance(in, flags))
        return FALSE;
    m_showsPartsOfFile = std::any_of(m_generatedParts.begin(), m_generatedParts.end(), [](SoField *part) {
        return !part->isDefault() && static_cast<SoSFNode *>(part)->getValue();
    });
    if (m_showsPartsOfFile) {
        m_built = 1;
        m_modified = 0;
    }
    attachTraversalCallbacks(); // a file may hold parts of its own for them
    return TRUE;
}

SoNode *PoBase::copy(SbBool copyConnections) const {
    auto *copied = static_cast<PoBase *>(SoBaseKit::copy(copyConnections));
    if (copied->m_updateMethod == UPDATE_ON_TRAVERSAL && !copied->m_showsPartsOfFile)
        copied->rebuildOnce();
    return copied;
}

// Runs for every copied kit, also below a copied group, where copy() does not.
void PoBase::copyContents(const SoFieldContainer *from, SbBool copyConnections) {
    SoBaseKit::copyContents(from, copyConnections);
    const auto *source = static_cast<const PoBase *>(from);
    attachTraversalCallbacks();
    m_updateMethod = source->m_updateMethod;
    m_domainTransformEnabled = source->m_domainTransformEnabled;
    m_preRebuildCB = source->m_preRebuildCB;
    m_preRebuildData = source->m_preRebuildData;
    m_postRebuildCB = source->m_postRebuildCB;
    m_postRebuildData = source->m_postRebuildData;
    if (source->m_domain != &source->m_defaultDomain)
        setDomain(source->m_domain);
    for (std::size_t i = 0; i < m_connections.size() && i < source->m_connections.size(); ++i)
        m_connections[i]->connect(source->m_connections[i]->m_object);
    m_showsPartsOfFile = source->m_showsPartsOfFile;
    m_built = source->m_built;
    m_modified = !m_showsPartsOfFile;
}
