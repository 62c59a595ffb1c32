#include "charts/PieChartAttr.h"
#include "charts/PieSlices.h"
#include "core/ClassTable.h"

#include <oravane/PbMiscTextAttr.h>
#include <oravane/PbNumericDisplayFormat.h>
#include <oravane/PiCircleArc2.h>
#include <oravane/PoMiscTextAttrElement.h>
#include <oravane/PoNumericDisplayFormatElement.h>

#include <Inventor/misc/SoTempPath.h>
#include <Inventor/nodekits/SoAppearanceKit.h>
#include <Inventor/nodes/SoAnnotation.h>

#include <algorithm>
#include <limits>

SO_KIT_SOURCE(PoPieChart)

void PoPieChart::initClass() {
    if (oravane::registersNow(classTypeId))
        SO_KIT_INIT_CLASS(PoPieChart, PoKestrava, "PoKestrava");
}

// -------------------------------------------------------------------------------------------- construction

PoPieChart::PoPieChart(int isSolid) {
    init(isSolid);
}

PoPieChart::PoPieChart(int isSolid, float radiusOfDisc, short num, const char **texts, const float *values,
                       int numColors, const SbColor *colors) {
    init(isSolid);
    if (radiusOfDisc != radius.getValue())
        radius = radiusOfDisc;
    if (num > 0 && texts && values) {
        for (int k = 0; k < num; ++k)
            sliceText.set1Value(k, texts[k] ? texts[k] : "");
        sliceValue.setValues(0, num, values);
    }
    sliceColor.setNum(0);
    if (numColors > 0 && colors)
        sliceColor.setValues(0, numColors, colors);
}

PoPieChart::~PoPieChart() = default;

void PoPieChart::init(int isSolid) {
    SO_KIT_CONSTRUCTOR(PoPieChart);
    addParts();
    addFields();
    defineEnums();
    SO_KIT_INIT_INSTANCE();
    generatedParts({&slice, &sliceBorder, &extAnnotBox, &extAnnotBoxBorder, &extAnnotText, &extAnnotValue,
                    &extAnnotPercent, &arrow, &intAnnotBox, &intAnnotBoxBorder, &intAnnotText, &intAnnotValue,
                    &intAnnotPercent});
    setLightModel(SoLightModel::BASE_COLOR);
    if (isSolid)
        set("sliceApp.lightModel", "model PHONG");
    for (const char *box :
         {"extAnnotBoxApp", "extAnnotBoxBorderApp", "intAnnotBoxApp", "intAnnotBoxBorderApp"})
        setDrawStyleAK(box, SoDrawStyle::INVISIBLE);
    m_attr = std::make_unique<PieChartAttr>();
    setUpConnections(TRUE, TRUE);
    setDomainUsedForRebuild(FALSE);
    enableDomainTransform(FALSE); // discs stay round
}

void PoPieChart::addParts() {
    ORAVANE_SHOWN_PART(slice, SoGroup, FALSE);
    ORAVANE_SHOWN_PART(sliceBorder, SoGroup, FALSE);
    ORAVANE_SHOWN_PART(extAnnotBox, SoAnnotation, FALSE);
    ORAVANE_SHOWN_PART(extAnnotBoxBorder, SoAnnotation, FALSE);
    ORAVANE_SHOWN_PART(extAnnotText, SoAnnotation, FALSE);
    ORAVANE_SHOWN_PART(extAnnotValue, SoAnnotation, FALSE);
    ORAVANE_SHOWN_PART(extAnnotPercent, SoAnnotation, FALSE);
    ORAVANE_SHOWN_PART(arrow, SoGroup, FALSE);
    ORAVANE_SHOWN_PART(intAnnotBox, SoAnnotation, FALSE);
    ORAVANE_SHOWN_PART(intAnnotBoxBorder, SoAnnotation, FALSE);
    ORAVANE_SHOWN_PART(intAnnotText, SoAnnotation, FALSE);
    ORAVANE_SHOWN_PART(intAnnotValue, SoAnnotation, FALSE);
    ORAVANE_SHOWN_PART(intAnnotPercent, SoAnnotation, FALSE);
}

void PoPieChart::addFields() {
    SO_KIT_ADD_FIELD(radius, (1));
    SO_KIT_ADD_EMPTY_MFIELD(sliceText);
    SO_KIT_ADD_EMPTY_MFIELD(sliceValue);
    SO_KIT_ADD_FIELD(sliceColor, (SbColor(0, 0, 0)));
    addAnnotFields();
    SO_KIT_ADD_FIELD(arrowVisibility, (TRUE));
    SO_KIT_ADD_FIELD(arrowHeight, (0));
    SO_KIT_ADD_FIELD(arrowWidth, (0));
    SO_KIT_ADD_FIELD(sliceGroupActive, (TRUE));
    SO_KIT_ADD_FIELD(sliceGroupMinValue, (5));
    SO_KIT_ADD_FIELD(sliceGroupFlagMin, (PERCENTAGE));
    SO_KIT_ADD_FIELD(sliceGroupString, ("Others"));
    SO_KIT_ADD_EMPTY_MFIELD(sliceToTranslateNumber);
    SO_KIT_ADD_EMPTY_MFIELD(sliceToTranslateValue);
    SO_KIT_ADD_FIELD(sliceAngleStep, (PiCircleArc2::DEFAULT_STEP));
    watchFields({&radius, &sliceText, &sliceValue, &sliceColor, &arrowVisibility, &arrowHeight, &arrowWidth,
                 &sliceGroupActive, &sliceGroupMinValue, &sliceGroupFlagMin, &sliceGroupString,
                 &sliceToTranslateNumber, &sliceToTranslateValue, &sliceAngleStep});
}

void PoPieChart::addAnnotFields() {
    SO_KIT_ADD_FIELD(intAnnotPosition, (HOR_INT_POS));
    SO_KIT_ADD_FIELD(intAnnotAlignment, (CENTER_ALIGN));
    SO_KIT_ADD_FIELD(intAnnotTextVisibility, (FALSE));
    SO_KIT_ADD_FIELD(intAnnotValueVisibility, (TRUE));
    SO_KIT_ADD_FIELD(intAnnotPercentVisibility, (FALSE));
    SO_KIT_ADD_FIELD(intAnnotAddStringVisibility, (FALSE));
    SO_KIT_ADD_FIELD(intAnnotTextFontName, (""));
    SO_KIT_ADD_FIELD(intAnnotValueFontName, (""));
    SO_KIT_ADD_FIELD(intAnnotPercentFontName, (""));
    SO_KIT_ADD_FIELD(intAnnotTextFontSize, (0));
    SO_KIT_ADD_FIELD(intAnnotValueFontSize, (0));
    SO_KIT_ADD_FIELD(intAnnotPercentFontSize, (0));
    SO_KIT_ADD_FIELD(intAnnotAddString, (""));
    SO_KIT_ADD_FIELD(intAnnotDistance, (0));
    SO_KIT_ADD_FIELD(extAnnotPosition, (HOR_INT_POS));
    SO_KIT_ADD_FIELD(extAnnotAlignment, (INWARDS_ALIGN));
    SO_KIT_ADD_FIELD(extAnnotTextVisibility, (TRUE));
    SO_KIT_ADD_FIELD(extAnnotValueVisibility, (FALSE));
    SO_KIT_ADD_FIELD(extAnnotPercentVisibility, (FALSE));
    SO_KIT_ADD_FIELD(extAnnotAddStringVisibility, (FALSE));
    SO_KIT_ADD_FIELD(extAnnotTextFontName, (""));
    SO_KIT_ADD_FIELD(extAnnotValueFontName, (""));
    SO_KIT_ADD_FIELD(extAnnotPercentFontName, (""));
    SO_KIT_ADD_FIELD(extAnnotTextFontSize, (0));
    SO_KIT_ADD_FIELD(extAnnotValueFontSize, (0));
    SO_KIT_ADD_FIELD(extAnnotPercentFontSize, (0));
    SO_KIT_ADD_FIELD(extAnnotAddString, (""));
    SO_KIT_ADD_FIELD(extAnnotDistance1, (0));
    SO_KIT_ADD_FIELD(extAnnotDistance2, (0));
    SO_KIT_ADD_FIELD(extAnnotDistance3, (0));
    watchFields({&intAnnotPosition,          &intAnnotAlignment,
                 &intAnnotTextVisibility,    &intAnnotValueVisibility,
                 &intAnnotPercentVisibility, &intAnnotAddStringVisibility,
                 &intAnnotTextFontName,      &intAnnotValueFontName,
                 &intAnnotPercentFontName,   &intAnnotTextFontSize,
                 &intAnnotValueFontSize,     &intAnnotPercentFontSize,
                 &intAnnotAddString,         &intAnnotDistance,
                 &extAnnotPosition,          &extAnnotAlignment,
                 &extAnnotTextVisibility,    &extAnnotValueVisibility,
                 &extAnnotPercentVisibility, &extAnnotAddStringVisibility,
                 &extAnnotTextFontName,      &extAnnotValueFontName,
                 &extAnnotPercentFontName,   &extAnnotTextFontSize,
                 &extAnnotValueFontSize,     &extAnnotPercentFontSize,
                 &extAnnotAddString,         &extAnnotDistance1,
                 &extAnnotDistance2,         &extAnnotDistance3});
}

void PoPieChart::defineEnums() {
    SO_KIT_DEFINE_ENUM_VALUE(AnnotPosPieChart, RADIAL_INT_POS);
    SO_KIT_DEFINE_ENUM_VALUE(AnnotPosPieChart, HOR_INT_POS);
    SO_KIT_DEFINE_ENUM_VALUE(AnnotPosPieChart, RADIAL_EXT_POS);
    SO_KIT_DEFINE_ENUM_VALUE(AnnotPosPieChart, HOR_EXT_POS);
    SO_KIT_DEFINE_ENUM_VALUE(AnnotPosPieChart, HOR_ALIGNED_EXT_POS);
    SO_KIT_DEFINE_ENUM_VALUE(AnnotPosPieChart, VERT_ALIGNED_EXT_POS);
    SO_KIT_DEFINE_ENUM_VALUE(AnnotPosPieChart, SQUARE_ALIGNED_EXT_POS);
    SO_KIT_SET_SF_ENUM_TYPE(intAnnotPosition, AnnotPosPieChart);
    SO_KIT_SET_SF_ENUM_TYPE(extAnnotPosition, AnnotPosPieChart);
    SO_KIT_DEFINE_ENUM_VALUE(AnnotAlignPieChart, LEFT_ALIGN);
    SO_KIT_DEFINE_ENUM_VALUE(AnnotAlignPieChart, CENTER_ALIGN);
    SO_KIT_DEFINE_ENUM_VALUE(AnnotAlignPieChart, RIGHT_ALIGN);
    SO_KIT_DEFINE_ENUM_VALUE(AnnotAlignPieChart, INWARDS_ALIGN);
    SO_KIT_DEFINE_ENUM_VALUE(AnnotAlignPieChart, OUTWARDS_ALIGN);
    SO_KIT_SET_SF_ENUM_TYPE(intAnnotAlignment, AnnotAlignPieChart);
    SO_KIT_SET_SF_ENUM_TYPE(extAnnotAlignment, AnnotAlignPieChart);
    SO_KIT_DEFINE_ENUM_VALUE(SliceGroupFlag, ABSOLUTE);
    SO_KIT_DEFINE_ENUM_VALUE(SliceGroupFlag, PERCENTAGE);
    SO_KIT_SET_SF_ENUM_TYPE(sliceGroupFlagMin, SliceGroupFlag);
}

// ------------------------------------------------------------------------------------ attributes and files

void PoPieChart::setFormat(PbNumericDisplayFormat *format) {
    m_format.set(format);
}

const PbNumericDisplayFormat *PoPieChart::getFormat() const {
    return m_format.inForce();
}

void PoPieChart::setMiscTextAttr(PbMiscTextAttr *attributes) {
    m_miscTextAttr.set(attributes);
}

const PbMiscTextAttr *PoPieChart::getMiscTextAttr() const {
    return m_miscTextAttr.inForce();
}

void PoPieChart::preRebuild() {
    PoKestrava::preRebuild();
    m_format.addToCache();
    m_miscTextAttr.addToCache();
}

void PoPieChart::addElementsAllCaches() {
    PoKestrava::addElementsAllCaches();
    m_format.readElement();
    m_miscTextAttr.readElement();
}

void PoPieChart::setDefaultOnNonWritingFields() {
    PoKestrava::setDefaultOnNonWritingFields();
    for (const SoSFNode *texts : {&extAnnotTextApp, &extAnnotValueApp, &extAnnotPercentApp, &intAnnotTextApp,
                                  &intAnnotValueApp, &intAnnotPercentApp})
        skipGeneratedInFile(*texts, "font");
}

// --------------------------------------------------------------------------------------- slices by number

int PoPieChart::getPickedSliceNumber(const SoPath *path, int &isGroup) const {
    isGroup = FALSE;
    if (!path)
        return 0;
    // Paths hide what is below a kit; a copy of this kind does not.
    auto *full = new SoTempPath(path->getLength());
    full->ref();
    static_cast<SoPath &>(*full) = *path;
    oravane::PieSliceName name;
    const int kit = full->findNode(this);
    for (int k = full->getLength() - 1; kit >= 0 && k > kit && name.number == 0; --k)
        name = oravane::parseSliceName(full->getNode(k)->getName().getString());
    full->unref();
    isGroup = name.isGroup;
    return name.number;
}

namespace {

/// Place of a slice among the first `count` entries; `count` when it has none.
int entryOf(const SoMFShort &numbers, int slice, int count) {
    const short *first = numbers.getValues(0);
    return static_cast<int>(std::find(first, first + count, slice) - first);
}

} // namespace

void PoPieChart::setSliceToTranslate(int number, float distance) {
    if (number < 1 || number > std::numeric_limits<short>::max())
        return;
    const int count = std::min(sliceToTranslateNumber.getNum(), sliceToTranslateValue.getNum());
    const int entry = entryOf(sliceToTranslateNumber, number, count);
    if (entry == count)
        sliceToTranslateNumber.set1Value(entry, static_cast<short>(number));
    sliceToTranslateValue.set1Value(entry, distance);
}

float PoPieChart::getSliceToTranslate(int number) const {
    const int count = std::min(sliceToTranslateNumber.getNum(), sliceToTranslateValue.getNum());
    const int entry = entryOf(sliceToTranslateNumber, number, count);
    return entry < count ? sliceToTranslateValue[entry] : 0;
}
