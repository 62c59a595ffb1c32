#include <oravane/PoMeshContouring.h>

#include "attributes/MaterialColors.h"
#include "core/ClassTable.h"
#include "core/ShapeGroup.h"
#include "meshrep/ContourLabels.h"
#include "meshrep/FiniteRuns.h"
#include "text/TextLayout.h"

#include <oravane/PbDataMapping.h>
#include <oravane/PbIsovaluesList.h>
#include <oravane/PbMesh2D.h>
#include <oravane/PbMiscTextAttr.h>
#include <oravane/PbNumericDisplayFormat.h>
#include <oravane/PiContouringLines.h>
#include <oravane/PiNumericFormat.h>
#include <oravane/PiText.h>
#include <oravane/PlanarPolygons.h>
#include <oravane/PoDataMappingElement.h>
#include <oravane/PoIsovaluesListElement.h>
#include <oravane/PoMiscTextAttrElement.h>
#include <oravane/PoNumericDisplayFormatElement.h>

#include <Inventor/nodekits/SoAppearanceKit.h>
#include <Inventor/nodes/SoCoordinate3.h>
#include <Inventor/nodes/SoFaceSet.h>
#include <Inventor/nodes/SoFont.h>
#include <Inventor/nodes/SoLineSet.h>
#include <Inventor/nodes/SoMaterial.h>
#include <Inventor/nodes/SoMaterialBinding.h>
#include <Inventor/nodes/SoMatrixTransform.h>
#include <Inventor/nodes/SoSeparator.h>

#include <algorithm>
#include <cmath>

SO_KIT_SOURCE(PoMeshContouring)

using oravane::ContourLabel;
using oravane::ContourLabels;
using oravane::ContourLine;
using oravane::LabelRules;

void PoMeshContouring::initClass() {
    if (oravane::registersNow(classTypeId))
        SO_KIT_INIT_CLASS(PoMeshContouring, PoMesh2D, "PoMesh2D");
}

PoMeshContouring::PoMeshContouring() {
    SO_KIT_CONSTRUCTOR(PoMeshContouring);
    SO_KIT_ADD_CATALOG_ENTRY(transform, SoMatrixTransform, TRUE, alternateRep, , TRUE);
    ORAVANE_SHOWN_PART(majorContourLine, SoGroup, FALSE);
    ORAVANE_SHOWN_PART(minorContourLine, SoGroup, FALSE);
    ORAVANE_SHOWN_PART(annotBackground, SoGroup, FALSE);
    ORAVANE_SHOWN_PART(annotBackgroundBorder, SoGroup, FALSE);
    ORAVANE_SHOWN_PART(annotText, SoGroup, FALSE);
    SO_KIT_ADD_FIELD(majorPeriod, (3));
    SO_KIT_ADD_FIELD(firstMajor, (1));
    SO_KIT_ADD_FIELD(annotIsVisible, (FALSE));
    SO_KIT_ADD_FIELD(annotPath, (TANGENTIAL_PATH));
    SO_KIT_ADD_FIELD(annotCrossStatus, (CROSS_CONTOUR));
    SO_KIT_ADD_FIELD(annotIsBackground, (FALSE));
    SO_KIT_ADD_FIELD(annotIsContourClip, (FALSE));
    SO_KIT_ADD_FIELD(annotGap, (1));
    SO_KIT_ADD_FIELD(annotClippingPolygon, (SbVec2f(0, 0)));
    SO_KIT_ADD_FIELD(annotFontSize, (0));
    SO_KIT_DEFINE_ENUM_VALUE(AnnotPath, TANGENTIAL_PATH);
    SO_KIT_DEFINE_ENUM_VALUE(AnnotPath, HORIZONTAL_PATH);
    SO_KIT_DEFINE_ENUM_VALUE(AnnotPath, VERTICAL_PATH);
    SO_KIT_SET_SF_ENUM_TYPE(annotPath, AnnotPath);
    SO_KIT_DEFINE_ENUM_VALUE(AnnotCrossStatus, CROSS_CONTOUR);
    SO_KIT_DEFINE_ENUM_VALUE(AnnotCrossStatus, CROSS_MINOR_CONTOUR);
    SO_KIT_DEFINE_ENUM_VALUE(AnnotCrossStatus, DONT_CROSS_CONTOUR);
    SO_KIT_SET_SF_ENUM_TYPE(annotCrossStatus, AnnotCrossStatus);
    SO_KIT_INIT_INSTANCE();
    watchFields({&majorPeriod, &firstMajor, &annotIsVisible, &annotPath, &annotCrossStatus,
                 &annotIsBackground, &annotIsContourClip, &annotGap, &annotClippingPolygon, &annotFontSize});
    generatedParts({&transform, &majorContourLine, &minorContourLine, &annotBackground,
                    &annotBackgroundBorder, &annotText});
    setDomainUsedForRebuild(TRUE);
    setUpConnections(TRUE, TRUE);
    setLightModel(SoLightModel::PHONG);
    set("annotTextApp.lightModel", "model BASE_COLOR");
    set("annotBackgroundApp.lightModel", "model BASE_COLOR");
}

PoMeshContouring::~PoMeshContouring() = default;

void PoMeshContouring::setFormat(PbNumericDisplayFormat *format) {
    m_format.set(format);
}

void PoMeshContouring::setMiscTextAttr(PbMiscTextAttr *attributes) {
    m_miscTextAttr.set(attributes);
}

const PbNumericDisplayFormat *PoMeshContouring::getFormat() const {
    return m_format.inForce();
}

const PbMiscTextAttr *PoMeshContouring::getMiscTextAttr() const {
    return m_miscTextAttr.inForce();
}

void PoMeshContouring::preRebuild() {
    PoMesh2D::preRebuild();
    addColoringElements();
    addElementCache(PoIsovaluesListElement::getClassStackIndex());
    if (annotIsVisible.getValue()) {
        m_miscTextAttr.addToCache();
        m_format.addToCache();
    }
    if (!isStateValid() && !getIsovaluesList())
        rebuildAtNextTraversal();
}

void PoMeshContouring::addElementsAllCaches() {
    PoMesh2D::addElementsAllCaches();
    PoIsovaluesListElement::get(getState());
    PoDataMappingElement::get(getState());
    m_miscTextAttr.readElement();
    m_format.readElement();
}

void PoMeshContouring::setDefaultOnNonWritingFields() {
    PoMesh2D::setDefaultOnNonWritingFields();
    skipGeneratedInFile(annotTextApp, "font");
}

/// What a rebuild makes; null for what is not needed.
struct PoMeshContouring::Parts {
    SoNode *transform = nullptr;
    SoNode *majorContourLine = nullptr;
    SoNode *minorContourLine = nullptr;
    SoNode *annotBackground = nullptr;
    SoNode *annotBackgroundBorder = nullptr;
    SoNode *annotText = nullptr;
    SoNode *font = nullptr;
};

void PoMeshContouring::rebuild() {
    preRebuild();
    const PbMesh2D *mesh = resolvedMesh();
    const float *values = mesh ? valuesOf(*mesh) : nullptr;
    Parts parts;
    if (values && resolved().isovaluesList)
        drawContourLines(values, zOf(*mesh), parts);
    // All are made before the first is set, which tells the scene: a sensor of the program may then delete
    // the mesh, the mapping and the levels.
    setPart("majorContourLine", parts.majorContourLine);
    setPart("minorContourLine", parts.minorContourLine);
    setPart("annotBackground", parts.annotBackground);
    setPart("annotBackgroundBorder", parts.annotBackgroundBorder);
    setPart("transform", parts.transform);
    setPart("annotText", parts.annotText);
    if (parts.font)
        setPart("annotTextApp.font", parts.font);
    postRebuild();
}

namespace {

/// A list of levels taken apart.
struct Levels {
    explicit Levels(const PbIsovaluesList &list) {
        float min = 0, max = 0, step = 0;
        int isRegular = 0;
        values = list.getIsoList(count, min, max, step, isRegular);
    }
    float first() const { return count > 0 ? values[0] : 0; }
    float last() const { return count > 0 ? values[count - 1] : 0; }
    /// Index of the level; -1 when it is not in the list.
    int rankOf(float value) const {
        const float *end = values + count, *found = std::lower_bound(values, end, value);
        return found != end && *found == value ? static_cast<int>(found - values) : -1;
    }

    const float *values = nullptr;
    int count = 0;
};

/// The levels whose lines can come close to those of another, and the levels that no label is wanted for.
class Thresholds {
public:
    /// The bounds are those of the list, or of lines beyond them on the side of a threshold in force; the
    /// value of the first line is deliberately not looked at.
    Thresholds(const PbDataMapping *mapping, const Levels &levels, std::span<const ContourLine> lines)
        : m_levels(levels), m_low(levels.first()), m_high(levels.last()) {
        if (mapping)
            mapping->thresholdsEnabled(m_hasMin, m_hasMax);
        for (std::size_t k = 1; k < lines.size(); ++k) {
            if (m_hasMin)
                m_low = std::min(m_low, lines[k].isovalue);
            if (m_hasMax)
                m_high = std::max(m_high, lines[k].isovalue);
        }
    }

    bool isOutside(float value) const {
        return (m_hasMin && value < m_levels.first()) || (m_hasMax && value > m_levels.last());
    }

    /// The levels `distance` away in the list. Beyond its ends stands the bound of a threshold in force,
    /// otherwise the list goes round.
    std::array<float, 2> neighbours(float value, int distance) const {
        const int rank = m_levels.rankOf(value), count = m_levels.count;
        if (rank < 0)
            return {value, value};
        const int below = rank - distance, above = rank + distance;
        return {below < 0 && m_hasMin ? m_low : m_levels.values[(below % count + count) % count],
                above >= count && m_hasMax ? m_high : m_levels.values[above % count]};
    }

private:
    const Levels &m_levels;
    int m_hasMin = 0, m_hasMax = 0;
    float m_low, m_high;
};

} // namespace

bool PoMeshContouring::isMajor(float isovalue) const {
    const int period = std::max<int>(majorPeriod.getValue(), 1);
    return (resolved().isovaluesList->getIndex(isovalue) + 1 - firstMajor.getValue()) % period == 0;
}

SoGroup *PoMeshContouring::newLineGroup(const std::vector<Ppoint_list3> &lines,
                                        const std::vector<float> &values) const {
    auto *group = new SoGroup;
    if (resolved().coloring != COLOR_INHERITED) {
        auto *material = new SoMaterial;
        oravane::colorMaterial(*resolved().dataMapping, values, *material);
        auto *binding = new SoMaterialBinding;
        binding->value = SoMaterialBinding::PER_FACE;
        group->addChild(material);
        group->addChild(binding);
    }
    auto *coordinates = new SoCoordinate3;
    auto *lineSet = new SoLineSet;
    std::size_t numPoints = 0;
    for (const Ppoint_list3 &line : lines)
        numPoints += static_cast<std::size_t>(line.numPoints);
    coordinates->point.setNum(static_cast<int>(numPoints));
    lineSet->numVertices.setNum(static_cast<int>(lines.size()));
    SbVec3f *point = coordinates->point.startEditing();
    std::int32_t *count = lineSet->numVertices.startEditing();
    for (const Ppoint_list3 &line : lines) {
        for (int k = 0; k < line.numPoints; ++k)
            (point++)->setValue(line.points[k].x, line.points[k].y, line.points[k].z);
        *count++ = line.numPoints;
    }
    coordinates->point.finishEditing();
    lineSet->numVertices.finishEditing();
    group->addChild(coordinates);
    group->addChild(lineSet);
    return group;
}

/// What the annotations of one rebuild see: all coordinates in the space in which labels keep their shape.
struct PoMeshContouring::Drawing {
    std::vector<ContourLine> lines;
    Ppoint_list_list3 limits{0, nullptr};
    std::vector<Ppoint> clippingPolygon;
    bool is3D = false;
    bool isScaled = false;
    bool isClipped = false;

    // Copies of points, where they are scaled.
    std::vector<std::vector<Ppoint3>> points;
    std::vector<Ppoint_list3> limitLists;

    void scale(const SbVec3f &offset, const SbVec3f &factor);
};

void PoMeshContouring::Drawing::scale(const SbVec3f &offset, const SbVec3f &factor) {
    const auto scaled = [&](Ppoint_list3 &line) {
        std::vector<Ppoint3> &copied = points.emplace_back(line.points, line.points + line.numPoints);
        for (Ppoint3 &point : copied)
            point = {(point.x - offset[0]) * factor[0], (point.y - offset[1]) * factor[1],
                     (point.z - offset[2]) * factor[2]};
        line.points = copied.data();
    };
    for (ContourLine &line : lines)
        scaled(line.points);
    limitLists.assign(limits.lists, limits.lists + limits.numLists);
    for (Ppoint_list3 &limit : limitLists)
        scaled(limit);
    limits.lists = limitLists.data();
    for (Ppoint &corner : clippingPolygon)
        corner = {(corner.x - offset[0]) * factor[0], (corner.y - offset[1]) * factor[1]};
    isScaled = true;
}

void PoMeshContouring::drawContourLines(const float *values, const float *z, Parts &parts) {
    PiContouringLines &engine = contouringLines();
    engine.setMesh(resolvedMesh(), z);
    engine.setDataMapping(resolved().dataMapping);
    engine.setIsovaluesList(resolved().isovaluesList);
    Tisoline_list made{nullptr, nullptr, 0};
    engine.getLines(values, z, &made);
    if (made.numLines < 1)
        return;
    Drawing drawing;
    drawing.is3D = z != nullptr;
    for (int k = 0; k < made.numLines; ++k) {
        Ppoint3 *points = made.lines[k].points;
        const auto isSound = [points](std::size_t i) {
            return std::isfinite(points[i].x) && std::isfinite(points[i].y) && std::isfinite(points[i].z);
        };
        const auto add = [&](std::size_t first, std::size_t length) {
            drawing.lines.push_back(
                {{static_cast<int>(length), points + first}, made.isovalues[k], isMajor(made.isovalues[k])});
        };
        oravane::forEachRun(static_cast<std::size_t>(made.lines[k].numPoints), isSound, add);
    }
    if (annotIsVisible.getValue())
        drawAnnotated(drawing, parts);
    else
        drawLines(drawing, parts);
}

void PoMeshContouring::drawLines(const Drawing &drawing, Parts &parts) const {
    for (const bool major : {true, false}) {
        if (!major && majorPeriod.getValue() <= 1)
            continue;
        std::vector<Ppoint_list3> lines;
        std::vector<float> isovalues;
        for (const ContourLine &line : drawing.lines)
            if (line.isMajor == major) {
                lines.push_back(line.points);
                isovalues.push_back(line.isovalue);
            }
        if (!major && lines.empty() && drawing.isClipped)
            continue;
        (major ? parts.majorContourLine : parts.minorContourLine) = newLineGroup(lines, isovalues);
    }
}

namespace {

/// Scale and offset by which a domain takes its box to the space of its transform.
struct DomainSpace {
    explicit DomainSpace(const PbDomain &domain) {
        const SbMatrix matrix = domain.getMatrix();
        factor.setValue(matrix[0][0], matrix[1][1], matrix[2][2]);
        if (domain.getTransformType() == PbDomain::TRANSFORM_01) {
            SbBox3f box;
            domain.getDomain(box);
            offset = box.getMin();
        }
    }

    /// Undoes the scaling. The offset in y is scaled as that in x: the required form.
    SbMatrix inverse() const {
        SbMatrix moved, scaled;
        moved.setTranslate(SbVec3f(offset[0] * factor[0], offset[1] * factor[0], offset[2] * factor[2]));
        scaled.setScale(SbVec3f(1 / factor[0], 1 / factor[1], 1 / factor[2]));
        return moved.multRight(scaled);
    }

    SbVec3f factor, offset{0, 0, 0};
};

bool needsScaling(const PbDomain &domain, bool is3D) {
    const auto differ = [](float a, float b) { return std::abs(a - b) >= 1e-20f; };
    return differ(domain.getDeltaX(), domain.getDeltaY()) ||
           (is3D && differ(domain.getDeltaX(), domain.getDeltaZ()));
}

/// The length that `annotGap` and `annotFontSize` are factors of.
float referenceLength(const PbDomain &domain, const std::vector<Ppoint> &polygon, bool isScaled) {
    if (polygon.size() > 2) {
        Plimit box{};
        pcomputePolygonBBox2D(polygon.data(), static_cast<int>(polygon.size()), &box);
        return std::max(box.xmax - box.xmin, box.ymax - box.ymin);
    }
    const float x = domain.getDeltaX(), y = domain.getDeltaY(), z = domain.getDeltaZ();
    if (!isScaled)
        return x;
    switch (domain.getTransformType()) {
    case PbDomain::TRANSFORM_01:
        return 1;
    case PbDomain::SCALE_Y_FIXED:
        return y;
    case PbDomain::SCALE_Z_FIXED:
        return z;
    case PbDomain::SCALE_MAX_XYZ_FIXED:
        return std::max({x, y, z});
    case PbDomain::SCALE_X_FIXED:
        break;
    }
    return x;
}

SbVec3f vectorOf(const Ppoint3 &point) {
    return {point.x, point.y, point.z};
}

/// Writes isovalues, and measures and builds their texts; one text for each level.
class ValueTexts {
public:
    ValueTexts(const PbNumericDisplayFormat *format, const PbMiscTextAttr *attributes, const Levels &levels,
               float fontSize, bool hasBackground)
        : m_hasBackground(hasBackground) {
        if (levels.count < 2)
            m_format.setFormat(format, levels.first(), levels.first(), 1, 0);
        else
            m_format.setFormat(format, levels.first(), levels.last(),
                               (levels.last() - levels.first()) / static_cast<float>(levels.count - 1), 0);
        m_text.setPath(PiText::TEXT_PATH_RIGHT);
        m_text.setAlignment(PiText::HOR_CENTER, PiText::VERT_HALF);
        m_text.setFontSize(fontSize);
        m_text.setTextAttributes(attributes);
    }

    /// Of the label's box: a background leaves some room around the text.
    void measure(float isovalue, float &width, float &height) const {
        char string[PiNumericFormat::STRING_SIZE];
        m_format.getString(isovalue, string);
        m_text.getStringSizes(string, width, height);
        if (m_hasBackground) {
            width += height / 2;
            height += height / 2;
        }
    }

    void build(const ContourLabel &label, SoGroup *group) {
        char string[PiNumericFormat::STRING_SIZE];
        m_format.getString(label.isovalue, string);
        const SbVec3f directions[] = {vectorOf(label.box[3]) - vectorOf(label.box[0]),
                                      vectorOf(label.box[1]) - vectorOf(label.box[0])};
        m_text.setGroup(group);
        m_text.setDirectionVectors(directions);
        m_text.setOrigin(vectorOf(label.middle));
        m_text.setString(string);
        m_text.build();
    }

private:
    PiNumericFormat m_format;
    PiText m_text;
    bool m_hasBackground;
};

/// One shape over the given corners of all labels.
template <class Shape>
SoGroup *newBoxes(std::span<const ContourLabel> labels, std::initializer_list<int> corners) {
    std::vector<SbVec3f> points;
    for (const ContourLabel &label : labels)
        for (const int corner : corners)
            points.push_back(vectorOf(label.box[corner]));
    return oravane::newUniformShapeGroup<Shape>(points, corners.size());
}

} // namespace

void PoMeshContouring::drawAnnotated(Drawing &drawing, Parts &parts) {
    getMeshLimit(drawing.limits);
    if (annotClippingPolygon.getNum() > 2)
        for (int k = 0; k < annotClippingPolygon.getNum(); ++k)
            drawing.clippingPolygon.push_back({annotClippingPolygon[k][0], annotClippingPolygon[k][1]});
    const PbDomain &domain = *getDomain();
    if (needsScaling(domain, drawing.is3D)) {
        const DomainSpace space(domain);
        drawing.scale(space.offset, space.factor);
        auto *undo = new SoMatrixTransform;
        undo->matrix = space.inverse();
        parts.transform = undo;
    }
    drawLabels(drawing, referenceLength(domain, drawing.clippingPolygon, drawing.isScaled), parts);
}

namespace {

/// The lines without what lies under labels. `cut` holds points of theirs, and has to live as long.
std::vector<ContourLine> clipLines(std::span<const ContourLine> lines, const ContourLabels &labels,
                                   std::vector<std::vector<Ppoint3>> &cut) {
    std::vector<ContourLine> clipped;
    clipped.reserve(lines.size());
    for (std::size_t k = 0; k < lines.size(); ++k) {
        const std::vector<std::size_t> numbers = labels.labelsNear(k);
        if (numbers.empty()) {
            clipped.push_back(lines[k]);
            continue;
        }
        oravane::LineCut line(lines[k].points);
        for (const std::size_t number : numbers)
            line.cutAt(labels.all()[number].outer);
        for (const Ppoint_list3 &part : line.parts(cut))
            clipped.push_back({part, lines[k].isovalue, lines[k].isMajor});
    }
    return clipped;
}

} // namespace

void PoMeshContouring::drawLabels(Drawing &drawing, float referenceLength, Parts &parts) const {
    const Levels levels(*resolved().isovaluesList);
    const Thresholds thresholds(resolved().dataMapping, levels, drawing.lines);
    const float wanted = annotFontSize.getValue();
    const float size = (wanted > 0 && std::isfinite(wanted) ? wanted : 0.04f) * referenceLength;
    const float fontSize = std::isfinite(size) ? size : 0; // of a polygon without bounds: no labels
    std::erase_if(drawing.lines, [&](const ContourLine &line) {
        return line.isMajor && thresholds.isOutside(line.isovalue);
    });
    LabelRules rules;
    rules.path = static_cast<AnnotPath>(annotPath.getValue());
    rules.crossStatus = static_cast<AnnotCrossStatus>(annotCrossStatus.getValue());
    rules.is3D = drawing.is3D;
    rules.gap = annotGap.getValue() * referenceLength;
    rules.fontSize = fontSize;
    rules.clippingPolygon = {static_cast<int>(drawing.clippingPolygon.size()),
                             drawing.clippingPolygon.data()};
    rules.limits = drawing.limits;
    const int distance =
        rules.crossStatus == DONT_CROSS_CONTOUR ? 1 : std::max<int>(majorPeriod.getValue(), 1);
    rules.neighbours = [&](float value) { return thresholds.neighbours(value, distance); };

    ContourLabels labels(rules, drawing.lines);
    ValueTexts texts(getFormat(), getMiscTextAttr(), levels, fontSize, annotIsBackground.getValue());
    for (std::size_t k = 0; k < drawing.lines.size(); ++k)
        if (drawing.lines[k].isMajor) {
            float width = 0, height = 0;
            texts.measure(drawing.lines[k].isovalue, width, height);
            labels.placeOn(k, width, height);
        }

    drawing.isClipped = annotIsContourClip.getValue() && !annotIsBackground.getValue();
    if (drawing.isClipped)
        drawing.lines = clipLines(drawing.lines, labels, drawing.points);
    drawLines(drawing, parts);
    if (annotIsBackground.getValue()) {
        parts.annotBackground = newBoxes<SoFaceSet>(labels.all(), {0, 1, 2, 3});
        parts.annotBackgroundBorder = newBoxes<SoLineSet>(labels.all(), {0, 1, 1, 2, 2, 3, 3, 0});
    }
    parts.font = oravane::newFont(getMiscTextAttr()->getFontName(), fontSize);
    auto *group = new SoGroup;
    for (const ContourLabel &label : labels.all())
        texts.build(label, group);
    parts.annotText = group;
}
