#include <oravane/PoSingleHistogram.h>

#include "attributes/MaterialColors.h"
#include "core/ClassTable.h"
#include "core/ShapeGroup.h"
#include "text/DataNumbers.h"
#include "text/TextLayout.h"

#include <oravane/PbDataMapping.h>
#include <oravane/PiText.h>

#include <Inventor/SbRotation.h>
#include <Inventor/nodekits/SoAppearanceKit.h>
#include <Inventor/nodes/SoFont.h>
#include <Inventor/nodes/SoMaterial.h>
#include <Inventor/nodes/SoMaterialBinding.h>
#include <Inventor/nodes/SoMatrixTransform.h>
#include <Inventor/nodes/SoPolygonOffset.h>

#include <algorithm>
#include <cmath>
#include <limits>
#include <string>
#include <vector>

SO_KIT_SOURCE(PoSingleHistogram)

void PoSingleHistogram::initClass() {
    if (oravane::registersNow(classTypeId))
        SO_KIT_INIT_CLASS(PoSingleHistogram, PoHistogram, "PoHistogram");
}

PoSingleHistogram::PoSingleHistogram() {
    init();
}

// Fields that are not set keep their mark as default, and are not written.
PoSingleHistogram::PoSingleHistogram(const SbVec2f &startPoint, float endCoordinate, Type direction, int num,
                                     const float *values, const char *const *names) {
    init();
    if (startPoint != start.getValue())
        start = startPoint;
    if (endCoordinate != end.getValue())
        end = endCoordinate;
    if (direction != type.getValue())
        type = direction;
    if (num > 0 && values)
        value.setValues(0, num, values);
    if (num > 0 && names) {
        name.setNum(num);
        for (int i = 0; i < num; ++i)
            name.set1Value(i, names[i] ? names[i] : "");
    }
}

void PoSingleHistogram::init() {
    SO_KIT_CONSTRUCTOR(PoSingleHistogram);
    SO_KIT_ADD_EMPTY_MFIELD(value);
    SO_KIT_ADD_EMPTY_MFIELD(name);
    SO_KIT_INIT_INSTANCE();
    watchFields({&value, &name});
    setUpConnections(TRUE, TRUE);
}

namespace {

constexpr double maxFloat = std::numeric_limits<float>::max();

bool isFloat(double number) {
    return std::abs(number) <= maxFloat;
}

} // namespace

/// Where the bars stand: in the space of `transform`, which has x as it is, and y from `start` on in the unit
/// of x. The two types differ only in which of a bar's directions is which axis.
class PoSingleHistogram::Row {
public:
    Row(const PoSingleHistogram &kit, double aspect)
        : m_start(kit.start.getValue()), m_acrossX(kit.type.getValue() != Y), m_aspect(aspect),
          m_count(kit.value.getNum()) {
        const int axis = m_acrossX ? 0 : 1;
        const double distance = static_cast<double>(kit.end.getValue()) - m_start[axis];
        const double sign = distance > 0 ? 1 : -1;
        const double slot = sign * distance / m_count;
        const float given = kit.barSpaceValue.getValue();
        const double gap = std::isfinite(given) ? given : 0;
        double width = (1 - gap) * slot;
        if (kit.barSpaceType.getValue() == FIXED_SPACE)
            width = gap > 0 ? std::max(slot - gap, 0.0) : slot;
        m_step = sign * slot;
        m_first = sign * (slot - width) / 2;
        m_width = sign * width;
    }

    int count() const { return m_count; }

    /// Whether the bars and the transform have coordinates.
    bool isFinite() const {
        const double last = m_first + (m_count - 1) * m_step;
        for (const double place : {m_first, m_first + m_width, last, last + m_width})
            if (!isFloat(localX(place, 0)) || !isFloat(localY(place, 0)))
                return false;
        return isFloat(m_start[0]) && isFloat(m_start[1]) && isFloat(1 / m_aspect);
    }

    /// The second corner lies beside the first, the others at the tip; at the base where the tip cannot be
    /// drawn.
    Bar bar(int i, float tip) const {
        const double side = m_first + i * m_step, otherSide = side + m_width;
        double height = static_cast<double>(tip) - m_start[m_acrossX ? 1 : 0];
        if (!std::isfinite(tip) || !isFloat(localY(side, height)))
            height = 0;
        return {corner(side, 0), corner(otherSide, 0), corner(otherSide, height), corner(side, height)};
    }

    SoMatrixTransform *newTransform() const {
        auto *transform = new SoMatrixTransform;
        SbMatrix matrix;
        matrix.setTransform(SbVec3f(0, m_start[1], 0), SbRotation::identity(),
                            SbVec3f(1, static_cast<float>(1 / m_aspect), 1));
        transform->matrix = matrix;
        return transform;
    }

private:
    /// From a place beside `start` and a height above it.
    double localX(double place, double height) const { return m_start[0] + (m_acrossX ? place : height); }
    double localY(double place, double height) const { return m_aspect * (m_acrossX ? height : place); }
    SbVec2f corner(double place, double height) const {
        return {static_cast<float>(localX(place, height)), static_cast<float>(localY(place, height))};
    }

    SbVec2f m_start;
    bool m_acrossX;
    double m_aspect;
    int m_count;
    double m_step, m_first, m_width;
};

void PoSingleHistogram::rebuild() {
    preRebuild();
    m_parts = {};
    if (value.getNum() > 0) {
        setDefaultAttr();
        const bool isX = type.getValue() != Y;
        if (m_valueStyle.position == POS_DEPEND)
            m_valueStyle.position = isX ? POS_TOP_OUT : POS_RIGHT_OUT;
        if (m_nameStyle.position == POS_DEPEND)
            m_nameStyle.position = isX ? POS_BOTTOM_OUT : POS_LEFT_OUT;
        const Row row(*this, m_aspect);
        if (row.isFinite())
            build(row);
    }
    setParts();
    postRebuild();
}

void PoSingleHistogram::build(const Row &row) {
    std::vector<Bar> bars;
    std::vector<SbVec3f> corners;
    bars.reserve(static_cast<std::size_t>(row.count()));
    corners.reserve(4 * bars.capacity());
    for (int i = 0; i < row.count(); ++i)
        for (const SbVec2f &corner : bars.emplace_back(row.bar(i, value[i])))
            corners.emplace_back(corner[0], corner[1], 0.0f);
    SoGroup *group = oravane::newUniformShapeGroup<SoFaceSet>(corners, 4);
    colorBars(group);
    m_parts.transform = row.newTransform();
    m_parts.bar = group;
    if (valueVisibility.getValue() == VISIBILITY_ON) {
        m_parts.valueFont = oravane::newFont(m_valueStyle.fontName, m_valueStyle.fontSize);
        m_parts.valueText = newValueTexts(bars);
    }
    if (nameVisibility.getValue() == VISIBILITY_ON && name.getNum() == value.getNum()) {
        m_parts.nameFont = oravane::newFont(m_nameStyle.fontName, m_nameStyle.fontSize);
        m_parts.nameText = newNameTexts(bars);
    }
}

void PoSingleHistogram::colorBars(SoGroup *bars) {
    m_parts.barMaterial = newBarMaterial();
    if (!m_parts.barMaterial)
        return;
    auto *binding = new SoMaterialBinding;
    binding->value = SoMaterialBinding::PER_FACE;
    bars->insertChild(binding, 0);
}

SoMaterial *PoSingleHistogram::newBarMaterial() const {
    const auto count = static_cast<std::size_t>(value.getNum());
    const PbDataMapping *mapping = getDataMapping();
    if (coloring.getValue() == DATA_MAPPING && mapping) {
        auto *material = new SoMaterial;
        oravane::colorMaterial(*mapping, {value.getValues(0), count}, *material);
        return material;
    }
    if (coloring.getValue() == COLOR_LIST && color.getNum() == value.getNum()) {
        auto *material = new SoMaterial;
        material->diffuseColor = color;
        return material;
    }
    return nullptr;
}

template <class StringOf>
SoGroup *PoSingleHistogram::newTexts(std::span<const Bar> bars, const TextStyle &style, StringOf stringOf) {
    auto *group = new SoGroup;
    if (isOnBar(style.position)) { // in the plane of the bars, but to show from all directions
        auto *nearer = new SoPolygonOffset;
        nearer->factor = -1;
        nearer->units = -1;
        group->addChild(nearer);
    }
    PiText text;
    text.setGroup(group);
    text.setFont(style.fontName, style.fontSize);
    text.setMultiLinesEnable(FALSE);
    computeTextAlignPath(style.position, style.path, &text);
    for (std::size_t i = 0; i < bars.size(); ++i) {
        SbVec2f origin;
        computeTextPos(bars[i].data(), style.position, style.fontSize, origin);
        const bool isPlaced = std::isfinite(origin.dot(origin)); // else the builder stays where it is
        text.setOrigin(origin);
        text.setString(isPlaced ? stringOf(static_cast<int>(i)) : "");
        text.build();
    }
    return group;
}

SoGroup *PoSingleHistogram::newValueTexts(std::span<const Bar> bars) const {
    const std::string unit = valueAddString.getValue().getString();
    const std::vector<std::string> texts =
        oravane::dataTexts(*getFormat(), {value.getValues(0), bars.size()},
                           valueAddStringVisibility.getValue() ? unit.c_str() : nullptr);
    return newTexts(bars, m_valueStyle, [&](int i) { return texts[static_cast<std::size_t>(i)].c_str(); });
}

SoGroup *PoSingleHistogram::newNameTexts(std::span<const Bar> bars) const {
    return newTexts(bars, m_nameStyle, [this](int i) { return name[i].getString(); });
}
