#ifndef ORAVANE_POBASE_H
#define ORAVANE_POBASE_H

#include <oravane/PbDomain.h>
#include <oravane/PoConnection.h>

#include <Inventor/SoLists.h>
#include <Inventor/nodekits/SoBaseKit.h>
#include <Inventor/nodekits/SoSubKit.h>
#include <Inventor/nodes/SoDrawStyle.h>
#include <Inventor/nodes/SoLightModel.h>
#include <Inventor/sensors/SoFieldSensor.h>

#include <initializer_list>
#include <memory>
#include <vector>

class PbDataMapping;
class SoCache;
class SoGroup;
class SoIndexedFaceSet;
class SoIndexedLineSet;
class SoIndexedTriangleStripSet;
class SoLineSet;
class SoMaterial;
class SoMaterialBinding;
class SoQuadMesh;
class SoState;

/// Root of all kits: node kits that turn data into scene geometry, and keep it up to date.
///
/// A kit does not rebuild when something changes. It marks itself, and rebuilds when a traversal next reaches
/// it, since only then does it see the attributes (domain, data mapping, isovalues) that stand before it in
/// the scene. Ten field changes between two renderings thus cost one rebuild, and an unchanged kit costs two
/// cache tests a traversal.
///
/// \code
///   class PoSquare : public PoKestrava {
///       SO_KIT_HEADER(PoSquare);
///       SO_KIT_CATALOG_ENTRY_HEADER(square);
///   public:
///       SoSFFloat side;
///       PoSquare();                 // declare part and field, watchFields, generatedParts, setUpConnections
///       static void initClass();
///       void rebuild() override;    // preRebuild(); ... setPart("square", group); postRebuild();
///   };
/// \endcode
/// `PoRectangle` is a whole kit on one page, and the model for new ones.
///
/// Parts, in the order of traversal: `catchActionCallback` brings the kit up to date; `alternateRep` holds
/// `catchActionLevel2Callback`, `appearance`, `domainTransform` and then the parts of the child class.
///
/// Files. Under `WRITE_FIELDS` a kit writes its fields and is rebuilt after reading. Under `WRITE_PARTS` it
/// writes its finished parts: a kit that is due for a rebuild gets it before the toolkit counts references,
/// with the attributes that stand before it on the path from the root of its (first) parents. A kit read from
/// such a file shows the parts it was written with until one of its fields or objects changes. Writing
/// changes nothing in a kit. ASCII files describe the kit's fields, so that a program without this library
/// reads them as unknown nodes, and under `WRITE_PARTS` draws their `alternateRep`; binary files need this
/// library.
///
/// Copies. A copy shares the connected basic objects with the original, and its callbacks serve the copy.
class ORAVANE_API PoBase : public SoBaseKit {
    SO_KIT_HEADER(PoBase);
    SO_KIT_CATALOG_ENTRY_HEADER(catchActionCallback);
    SO_KIT_CATALOG_ENTRY_HEADER(alternateRep);
    SO_KIT_CATALOG_ENTRY_HEADER(catchActionLevel2Callback);
    SO_KIT_CATALOG_ENTRY_HEADER(appearance);
    SO_KIT_CATALOG_ENTRY_HEADER(domainTransform);

public:
    enum UpdateMethodType {
        UPDATE_ON_TRAVERSAL = 0, ///< rebuild at the next traversal (default)
        UPDATE_IMMEDIATE = 1,    ///< rebuild inside the setter; attributes of the scene are not seen there
    };
    enum NodeWriteFormat { WRITE_FIELDS = 0, WRITE_PARTS = 1 };
    /// Which node kits use for text.
    enum TextType { TEXT3_NODE = 0, ANNO_TEXT3_NODE = 1 };

    using RebuildCallback = void(void *userData, PoBase *kit);

    /// Sensors for a list of fields; see `createFieldSensorList`.
    struct FieldSensorList {
        int numSensors = 0;
        std::unique_ptr<SoFieldSensor[]> sensors;
    };

    /// Starts the toolkit and registers every class of the library. Call it once before anything else;
    /// further calls do nothing.
    static void init();
    static void initClass();

    /// Generates the parts from fields, connected objects and attributes. Called by the frame; a program need
    /// not.
    virtual void rebuild();

    /// Marks the kit and tells the scene, or rebuilds at once under `UPDATE_IMMEDIATE`.
    void touchKit();

    void setUpdateMethod(UpdateMethodType method) { m_updateMethod = method; }
    UpdateMethodType getUpdateMethod() const { return m_updateMethod; }

    /// 1 between a change and the rebuild that answers it.
    int isModified() const { return m_modified; }
    /// 1 from the first rebuild on.
    int isBuilt() const { return m_built; }

    /// Gives the kit a domain of its own, which wins over the one of the traversal; null takes it back. Not
    /// owned; a domain that is deleted is forgotten.
    void setDomain(PbDomain *domain);
    /// The kit's own domain; without one the domain of the traversal, or, outside of a traversal, a default
    /// domain.
    const PbDomain *getDomain() const;
    /// Whether the kit applies the transform of its domain (default 1).
    void enableDomainTransform(int onOff) { m_domainTransformEnabled = onOff; }

    /// One callback each, run at the start and at the end of every rebuild; a second call replaces the first.
    /// Null takes it away. A callback may change the kit and its objects, delete the objects, and apply
    /// actions: what it changes belongs to the rebuild under way and starts no other, so that changes of the
    /// second one show at the next rebuild. It must not change the groups above the kit: they may be under
    /// traversal.
    void addPreRebuildCallback(RebuildCallback *function, void *userData);
    void addPostRebuildCallback(RebuildCallback *function, void *userData);

    static void setTextType(TextType type) { m_textType = type; }
    static TextType getTextType() { return m_textType; }
    static void setNodeWriteFormat(NodeWriteFormat format) { m_nodeWriteFormat = format; }
    static NodeWriteFormat getNodeWriteFormat() { return m_nodeWriteFormat; }

    /// Called by a connected object that changed or dies.
    virtual void basicObjectChange(PbBase *object);

    /// Removes geometry that the mapping makes almost invisible. Every face, cell or line run of the shapes
    /// below `group` whose transparency reaches `mapping->getTransparencyValueDeletedParts()` leaves the
    /// geometry: each shape is replaced by a new one without it, and `binding` gets the value that fits the
    /// new shape. Afterwards the transparencies of `material` are removed when none is both above 0 and below
    /// the limit. Nothing happens when the mapping or the material is null, or the material has fewer
    /// transparencies than colours. A line set without indices stays as it is.
    void deleteTransparencyParts(const PbDataMapping *mapping, SoMaterial *material,
                                 SoMaterialBinding *binding, SoGroup *group);
    /// The same for one shape, child `childIndex` of `parent`. The transparencies of the material stay.
    void deleteTransparencyParts(const PbDataMapping *mapping, SoMaterial *material,
                                 SoMaterialBinding *binding, SoQuadMesh *shape, SoGroup *parent,
                                 int childIndex);
    void deleteTransparencyParts(const PbDataMapping *mapping, SoMaterial *material,
                                 SoMaterialBinding *binding, SoIndexedTriangleStripSet *shape,
                                 SoGroup *parent, int childIndex);
    void deleteTransparencyParts(const PbDataMapping *mapping, SoMaterial *material,
                                 SoMaterialBinding *binding, SoIndexedFaceSet *shape, SoGroup *parent,
                                 int childIndex);
    void deleteTransparencyParts(const PbDataMapping *mapping, SoMaterial *material,
                                 SoMaterialBinding *binding, SoIndexedLineSet *shape, SoGroup *parent,
                                 int childIndex);
    void deleteTransparencyParts(const PbDataMapping *mapping, SoMaterial *material,
                                 SoMaterialBinding *binding, SoLineSet *shape, SoGroup *parent,
                                 int childIndex);

    SoNode *copy(SbBool copyConnections = FALSE) const override;
    SbBool affectsState() const override { return FALSE; }
    void write(SoWriteAction *action) override;
    void addWriteReference(SoOutput *out, SbBool isFromField = FALSE) override;

protected:
    /// `catchAction` replaces the whole traversal logic of the kit; null takes the usual one.
    explicit PoBase(void (*catchAction)(void *, SoAction *) = nullptr);
    ~PoBase() override;

    // ---- what a kit class states in its constructor

    /// Fields whose change marks the kit, and which are not written under `WRITE_PARTS`.
    void watchFields(std::initializer_list<SoField *> fields);
    /// Part fields that `rebuild` generates, and which are not written under `WRITE_FIELDS`.
    void generatedParts(std::initializer_list<SoField *> parts);
    /// 0 for a kit whose geometry does not depend on the domain: a change of the domain then moves its
    /// transform only.
    void setDomainUsedForRebuild(int onOff) { m_domainUsedForRebuild = onOff; }
    void setLightModel(SoLightModel::Model model);
    /// Sets the draw style in an appearance kit part ("appearance", or a kit's own).
    void setDrawStyleAK(const char *appearanceKitPart, SoDrawStyle::Style style);

    // ---- the rebuild cycle

    /// A child calls its parent's first, then `addElementCache` for each element that this rebuild reads.
    virtual void preRebuild();
    /// The last step of every `rebuild`.
    virtual void postRebuild();
    /// A child calls its parent's first, then reads each element that its rebuild may read with
    /// `get(getState())`, so that every cache open above the kit depends on it too.
    virtual void addElementsAllCaches();

    SoState *getState() const { return m_state; }
    void setState(SoAction *action);
    /// Non-zero while `getState()` may be used, that is inside a traversal callback.
    int isStateValid() const { return m_stateValid; }
    int isCacheValid() const { return m_cacheValid; }
    /// 1: every rebuild records anew the elements on which it depends.
    int isCacheAlwaysRebuild() const { return 1; }
    void rebuildCache(SoCache **cache);
    /// Makes the rebuild under way depend on an element of the state. Does nothing outside of a traversal.
    void addElementCache(int stackIndex);
    /// For a rebuild outside of a traversal that had to do without an attribute of the scene: the next
    /// traversal rebuilds the kit once more.
    void rebuildAtNextTraversal();

    void setDomainTransform(const PbDomain *domain);
    int isDomainTransformEnabled() const { return m_domainTransformEnabled; }
    int isDomainUsedForRebuild() const { return m_domainUsedForRebuild; }

    // ---- connections and sensors

    void changeConnection(const PbBase *oldObject, const PbBase *newObject) const;
    /// Answers a change of `object`, held in `*member`: forgets a deleted one, and touches the kit.
    virtual void manageBasicObjectChange(PbBase *object, PbBase **member);

    SbBool setUpConnections(SbBool onOff, SbBool doItAlways = FALSE) override;
    void createFieldSensorList(int numSensors, FieldSensorList *list);
    void deleteFieldSensorList(FieldSensorList *list);
    /// Attaches sensor i to field i.
    void attachFieldSensorList(const FieldSensorList &list, const SoFieldList &fields);
    void detachFieldSensorList(const FieldSensorList &list);
    static void fieldSensorCB(void *kit, SoSensor *sensor);
    /// Whether to keep a list of the fields that changed (default 0), and that list.
    void storeFieldsChanged(int onOff) { m_storeFieldsChanged = onOff; }
    int isFieldHasChanged(const SoField *field) const;
    void emptyListFieldsChanged() { m_fieldsChanged.truncate(0); }

    // ---- files and copies

    void setDefaultOnNonWritingFields() override;
    void setListFieldsDefault(const SoFieldList &fields);
    /// Leaves a field out of the file being written; its mark is put back afterwards.
    void skipInFile(SoField *field);
    /// Under `WRITE_FIELDS`, leaves out what `rebuild` generates inside of an appearance kit part.
    void skipGeneratedInFile(const SoSFNode &appearanceKit, const char *partName);
    SbBool readInstance(SoInput *in, unsigned short flags) override;
    /// A child with plain members of its own copies them after calling its parent's.
    void copyContents(const SoFieldContainer *from, SbBool copyConnections) override;

private:
    friend class PoConnectionBase;

    /// Fields that one class of the kit's ancestry watches, with their sensors.
    struct WatchedFields {
        SoFieldList fields;
        FieldSensorList sensors;
    };
    struct DefaultMark {
        SoField *field;
        SbBool isDefault;
    };

    static void catchActionCB(void *kit, SoAction *action);
    static void catchActionLevel2CB(void *kit, SoAction *action);
    void bringUpToDate();
    void followDomain();
    void rebuildOnce();
    void rebuildSilently();
    static void prepareWriteAction();
    void markModified();
    void forgetDomainCache();
    void restoreDefaultMarks();
    void attachTraversalCallbacks();

    SoFieldList m_fieldsChanged;
    int m_storeFieldsChanged = 0;
    int m_stateValid = 0;
    UpdateMethodType m_updateMethod = UPDATE_ON_TRAVERSAL;
    int m_modified = 0;
    int m_built = 0;
    int m_domainTransformEnabled = 1;
    int m_domainUsedForRebuild = 1;
    int m_fieldChangePending = 0;
    PbDomain m_defaultDomain;
    PbDomain *m_domain = &m_defaultDomain;
    SoState *m_state = nullptr;
    SoCache *m_cache = nullptr;
    SoCache *m_domainCache = nullptr;
    int m_cacheValid = 0;
    SoWriteAction *m_writeAction = nullptr;
    RebuildCallback *m_preRebuildCB = nullptr;
    RebuildCallback *m_postRebuildCB = nullptr;
    void *m_preRebuildData = nullptr;
    void *m_postRebuildData = nullptr;

    void (*m_catchAction)(void *, SoAction *);
    std::vector<std::unique_ptr<WatchedFields>> m_watched;
    std::vector<SoField *> m_generatedParts;
    std::vector<PoConnectionBase *>
        m_connections; ///< in order of construction; the same for every kit of a class
    std::vector<DefaultMark> m_defaultMarks;
    bool m_showsPartsOfFile = false;
    bool m_isRebuilding = false;

    static TextType m_textType;
    static NodeWriteFormat m_nodeWriteFormat;
};

#endif
