#ifndef ORAVANE_POMESH_H
#define ORAVANE_POMESH_H

#include <oravane/PoSFEnum.h>
#include <oravane/PoVolundra.h>

#include <Inventor/fields/SoSFInt32.h>

#include <memory>
#include <vector>

class PbDataMapping;
class PbIsovaluesList;
class PbMesh;
class PiContouringFilled;
class PiContouringLines;
class SoCoordinate3;
class SoShapeHints;

/// Base of all representations of a mesh: which mesh is drawn, which of its value sets colours it, and how.
///
/// A mesh, a data mapping and a list of isovalues that are set directly win over those of the traversal
/// state; null takes them back. They are not owned: a change of one marks the kit, and one that is deleted is
/// forgotten.
///
/// What colours are in force is decided at each rebuild. COLOR_CONTOURING without isovalues falls to
/// COLOR_MAPPING, and any colouring without a data mapping, or without the value set that `valuesIndex`
/// names, to COLOR_INHERITED.
class ORAVANE_API PoMesh : public PoVolundra {
    SO_KIT_HEADER(PoMesh);

public:
    enum ColoringType : int {
        COLOR_INHERITED = 0,  ///< the colour of the scene, or of the `appearance` part
        COLOR_AVERAGE = 1,    ///< one colour for each cell, of the mean of its nodes' values
        COLOR_MAPPING = 2,    ///< one colour for each node, interpolated between
        COLOR_CONTOURING = 3, ///< cells cut at the isovalues, one colour for each band
    };

    SoSFInt32 valuesIndex; ///< value set that colours the mesh, default -1: none
    SoSFInt32 vecsIndex;   ///< vector set, default -1: none
    PoSFEnum coloringType; ///< default COLOR_INHERITED

    static void initClass();

    void setMesh(PbMesh *mesh);
    const PbMesh *getMesh() const;
    void setDataMapping(PbDataMapping *mapping);
    const PbDataMapping *getDataMapping() const;
    /// The mapping for what a module of its own colours (arrows, stream lines); otherwise the one of the
    /// scene.
    void setModuleDataMapping(PbDataMapping *mapping);
    const PbDataMapping *getModuleDataMapping() const;
    void setIsovaluesList(PbIsovaluesList *list);
    const PbIsovaluesList *getIsovaluesList() const;

protected:
    PoMesh();
    ~PoMesh() override;

    /// What one rebuild works with.
    struct Resolved {
        const PbDataMapping *dataMapping = nullptr;
        const PbDataMapping *moduleDataMapping = nullptr;
        const PbIsovaluesList *isovaluesList = nullptr;
        const PbMesh *mesh = nullptr;
        ColoringType coloring = COLOR_INHERITED;
    };

    /// Valid from `preRebuild` to the end of the rebuild.
    const Resolved &resolved() const { return m_resolved; }

    /// The mesh that a rebuild draws, or null. A child class with meshes of a kind of its own gives one of
    /// these.
    virtual const PbMesh *meshToDraw() const { return getMesh(); }

    PiContouringFilled &contouringFilled();
    PiContouringLines &contouringLines();

    /// Move isovalues off the values of a field, as `PiVolundra` does; `isIsovalueAdjusted` tells whether the
    /// last call moved one. The list is that of the rebuild under way, and its adjusted values are valid
    /// until the next call.
    void adjustIsoval(int num, const float *data, float &isovalue);
    void adjustIsovalMultiple(int num1, const float *data1, int num2, const float *data2, int num3,
                              const float *data3, float &isovalue);
    const std::vector<float> &adjustIsovalList(int num1, const float *data1, int num2, const float *data2,
                                               int num3, const float *data3);
    int isIsovalueAdjusted() const;

    /// Room for at least `count` vectors; grows and never shrinks. Valid until the next call.
    SbVec3f *newSbVec3f(int count);

    void preRebuild() override;
    void addElementsAllCaches() override;
    /// Makes the rebuild depend on the mapping and the isovalues of the scene, as far as its colouring uses
    /// them.
    void addColoringElements();
    void setDefaultOnNonWritingFields() override;

    SoCoordinate3 *m_coordinate3 = nullptr; ///< of the rebuild under way, as are the next four
    SoMaterial *m_material = nullptr;
    SoMaterialBinding *m_materialBinding = nullptr;
    SoGroup *m_group = nullptr;
    SoShapeHints *m_shapeHints = nullptr;

private:
    class IsovalueAdjuster;

    /// The colouring in force, of what `m_resolved` holds already.
    ColoringType resolveColoring() const;

    PoConnection<PbMesh> m_mesh{this};
    PoConnection<PbDataMapping> m_dataMapping{this};
    PoConnection<PbDataMapping> m_moduleDataMapping{this};
    PoConnection<PbIsovaluesList> m_isovaluesList{this};
    Resolved m_resolved;
    std::unique_ptr<IsovalueAdjuster> m_adjuster;
    std::unique_ptr<PiContouringFilled> m_contouringFilled;
    std::unique_ptr<PiContouringLines> m_contouringLines;
    std::vector<SbVec3f> m_vectors;
};

#endif
