#ifndef ORAVANE_CHARTS_PIECHARTATTR_H
#define ORAVANE_CHARTS_PIECHARTATTR_H

#include "charts/PieAnnotations.h"
#include "charts/PieShapes.h"
#include "charts/PieSlices.h"

#include <oravane/PoPieChart.h>

/// \file
/// What a rebuild of a pie chart works with.

namespace oravane {

template <class T>
using PerPieLine = std::array<T, PieLabel::NUM_LINES>;

/// The lines of an annotation, from top to bottom.
enum PieLine : std::size_t { PIE_TEXT, PIE_VALUE, PIE_PERCENT };
constexpr PerPieLine<const char *> kPieLineNames{"Text", "Value", "Percent"};

/// Annotations inside and outside have fields of the same kinds.
struct PieAnnotFields {
    const PoSFEnum &position, &alignment;
    PerPieLine<const SoSFBool *> visibility;
    const SoSFBool &addStringVisibility;
    PerPieLine<const SoSFString *> fontName;
    PerPieLine<const SoSFFloat *> fontSize;
    const SoSFString &addString;
};

/// Their values, with what stands for those that are not given.
struct PieAnnotAttr {
    PieLabelRules rules;
    PerPieLine<bool> isVisible{};
    PerPieLine<SbString> fontName;
    PerPieLine<float> fontSize{};
    bool hasAddString = false;
    SbString addString;
};

/// What a rebuild makes of annotations; null for what is not needed.
struct PieAnnotParts {
    SoNode *box = nullptr, *boxBorder = nullptr;
    PerPieLine<SoNode *> lines{}, fonts{};
};

} // namespace oravane

struct PoPieChart::PieChartAttr {
    oravane::PieDisc disc{SbVec2f(0, 0), 0, 0, 0, 0};
    oravane::PieAnnotAttr external, internal;
    float arrowHeight = 0, arrowWidth = 0;

    std::size_t numSlices = 0; ///< that could be, if all values were above 0
    std::vector<oravane::PieSlice> slices;
    std::vector<float> translations; ///< of each slice, as all that follows
    std::vector<SbName> names;
    std::vector<std::string> texts;
    std::vector<float> values;
    std::vector<std::string> percents;

    std::vector<oravane::PlacedPieLabel> arrows; ///< labels that have one

    SoNode *slicePart = nullptr, *borderPart = nullptr, *arrowPart = nullptr;
    oravane::PieAnnotParts externalParts, internalParts;
};

#endif
