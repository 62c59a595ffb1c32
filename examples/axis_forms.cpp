// Axes in their forms: places of the power of ten, sub graduations, margins, paths of texts, reversal, and
// texts instead of numbers.
#include "Sheet.h"

#include <oravane/PoGenAxis.h>
#include <oravane/PoLinearAxis.h>

#include <Inventor/nodes/SoSeparator.h>

#include <array>

namespace {

constexpr float kWidth = 276, kHeight = 190, kLength = 100;

/// A column of axes, from the top of the sheet down.
class Column {
public:
    Column(const Sheet &sheet, float x) : m_sheet(sheet), m_x(x) {}

    /// A place for an axis from `from` to `to` at y = 0.
    SoSeparator *next(const char *caption, float from, float to, float height = 21) {
        m_y -= height;
        m_sheet.addText(m_x, m_y + 12, 3.6f, caption);
        const float low = std::min(from, to), high = std::max(from, to);
        return m_sheet.addPanel(SbBox2f(m_x, m_y + 8, m_x + kLength, m_y + 18), SbBox2f(low, 0, high, 1));
    }

private:
    const Sheet &m_sheet;
    float m_x, m_y = kHeight - 2;
};

/// Along x, in sizes that suit an axis of ten centimetres.
template <class Axis>
Axis *addAxis(SoSeparator *panel, float from, float to) {
    auto *axis = new Axis;
    axis->start.setValue(from, 0, 0);
    axis->end = to;
    axis->gradFontSize = 0.035f;
    axis->titleFontSize = 0.035f;
    panel->addChild(axis);
    return axis;
}

PoLinearAxis *addLinear(Column &column, const char *caption, float from, float to, float height = 21) {
    return addAxis<PoLinearAxis>(column.next(caption, from, to, height), from, to);
}

void addFactors(Column &column) {
    const std::array places{"Power of ten before the start", "Power of ten behind the end",
                            "Power of ten at both ends", "Power of ten in the labels"};
    for (int place = 0; place < 4; ++place)
        addLinear(column, places[static_cast<std::size_t>(place)], 0, 15000)->multFactorPosition = place;
}

void addTickForms(Column &column) {
    PoLinearAxis *parts = addLinear(column, "Four sub ticks, across the axis", 0, 10);
    parts->tickSubDef = PoAxis::NUM_SUB_TICK;
    parts->tickNumOrPeriod = 4;
    parts->tickPosition = PoAxis::TICK_ACROSS_AXIS;
    PoLinearAxis *period = addLinear(column, "Every fifth graduation has a label, margins at the ends", 0, 1);
    period->step = 0.02f;
    period->tickNumOrPeriod = 5;
    period->marginStart = period->marginEnd = 0.07f;
    PoLinearAxis *fit = addLinear(column, "Fitted to the start, with a unit", 0.3f, 5);
    fit->gradFit = PoLinearAxis::GRAD_FIT;
    fit->gradAddString = " km";
    fit->gradFontSize = 0;
    fit->gradAddStringVisibility = TRUE;
    addLinear(column, "Falling, from 0 to -0.0048", 0, -0.0048f);
}

void addTextForms(Column &column) {
    const std::array paths{"Texts to the right, title at the end", "Texts to the left", "Texts upwards",
                           "Texts downwards"};
    for (int path = 0; path < 4; ++path) {
        PoLinearAxis *axis = addLinear(column, paths[static_cast<std::size_t>(path)], 0, 12);
        axis->gradPath = path;
        axis->titlePath = path;
        axis->titleVisibility = PoAxis::VISIBILITY_ON;
        axis->titlePosition = PoAxis::TITLE_END;
        axis->titleString = "h";
    }
    PoLinearAxis *reversed = addLinear(column, "Reversed, to be read from behind", 0, 15000);
    reversed->reverseFlag = PoAxis::AXIS_REVERSE;
}

void addLists(Column &column) {
    const char *months[] = {"JAN", "FEB", "MAR", "APR", "MAY", "JUN",
                            "JUL", "AUG", "SEP", "OCT", "NOV", "DEC"};
    auto *year = addAxis<PoGenAxis>(column.next("Texts at equal distances", 0, 1), 0, 1);
    year->gradList.setValues(0, 12, months);
    year->gradFontSize = 0;
    year->marginStart = year->marginEnd = 0.04f;
    const char *classes[] = {"Lowland and river plains", "Hills", "Mountains with forest", "Rock and ice"};
    auto *lands = addAxis<PoGenAxis>(column.next("Long texts shrink until they fit", 0, 1), 0, 1);
    lands->gradList.setValues(0, 4, classes);
    lands->gradFontSize = 0;
    lands->marginStart = lands->marginEnd = 0.12f;
    lands->arrowVisibility = PoAxis::VISIBILITY_OFF;
    lands->gradPosition = PoAxis::GRAD_BELOW;
}

} // namespace

int main(int argc, char **argv) {
    return oravane::runExample(argc, argv, [](oravane::Example &example) {
        PoBase::init();
        const Sheet sheet(kWidth, kHeight);
        Column left(sheet, 22), right(sheet, 156);
        addFactors(left);
        addTickForms(left);
        addTextForms(right);
        addLists(right);
        sheet.write(example, "axis_forms");
    });
}
