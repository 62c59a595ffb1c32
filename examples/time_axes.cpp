// One kind of axis for all spans of time: levels of labels and steps follow the span. And the same month in
// four languages, and with levels of one's own.
#include "Sheet.h"

#include <oravane/PoDateFormatMapping.h>
#include <oravane/PoMiscTextAttr.h>
#include <oravane/PoTimeAxis.h>

#include <Inventor/nodes/SoSeparator.h>

namespace {

constexpr float kWidth = 276, kHeight = 190, kLength = 106;

struct Span {
    const char *caption, *start, *end;
};

const Span kSpans[] = {
    {"62 years", "1958-01-01 00:00:00", "2020-01-01 00:00:00"},
    {"Nine years", "2011-04-01 00:00:00", "2020-04-01 00:00:00"},
    {"One year", "2019-01-01 00:00:00", "2020-01-01 00:00:00"},
    {"One month, with a leap day", "2020-02-01 00:00:00", "2020-03-03 00:00:00"},
    {"Three days, over the end of a year", "2019-12-30 18:00:00", "2020-01-02 18:00:00"},
    {"Five hours", "2020-02-28 21:40:00", "2020-02-29 02:40:00"},
    {"Ten minutes", "2020-06-30 23:55:00", "2020-07-01 00:05:00"},
    {"Forty seconds", "2020-06-30 23:59:40", "2020-07-01 00:00:20"},
};

/// An axis over the whole of a panel that is as long as its mapping of dates.
PoTimeAxis *addAxis(const Sheet &sheet, float x, float y, const Span &span) {
    sheet.addText(x, y + 4, 3.6f, span.caption);
    SoSeparator *panel = sheet.addPanel(SbBox2f(x, y, x + kLength, y + 10), SbBox2f(0, 0, 1, 1));
    auto *dates = new PoDateFormatMapping;
    dates->format = "Ymdh'\"";
    dates->date1 = span.start;
    dates->date2 = span.end;
    panel->addChild(dates);
    auto *text = new PoMiscTextAttr;
    text->fontName = "Times-Roman";
    text->endLineChar = '|'; // between the levels of a description
    panel->addChild(text);
    auto *axis = new PoTimeAxis;
    axis->startDate = span.start;
    axis->endDate = span.end;
    axis->gradFontSize = 0.028f;
    axis->tickMainLength = 0.012f;
    axis->arrowLength = 0.03f;
    axis->arrowHeight = 0.02f;
    panel->addChild(axis);
    return axis;
}

void addLanguages(const Sheet &sheet, float x, float y) {
    const char *captions[] = {"English", "French", "German", "Spanish"};
    for (int language = 0; language < 4; ++language, y -= 22) {
        PoTimeAxis *axis =
            addAxis(sheet, x, y, {captions[language], "2019-12-02 00:00:00", "2019-12-16 00:00:00"});
        axis->language = language;
        axis->gradRep = "1 DAY D 2 | 7 DAY D '. ' M 12 ' ' Y 4";
    }
}

} // namespace

int main(int argc, char **argv) {
    return oravane::runExample(argc, argv, [](oravane::Example &example) {
        PoBase::init();
        const Sheet sheet(kWidth, kHeight);
        float y = 174;
        for (const Span &span : kSpans) {
            addAxis(sheet, 14, y, span);
            y -= 22.5f;
        }
        addLanguages(sheet, 146, 174);
        PoTimeAxis *own =
            addAxis(sheet, 146, 84, {"Levels of one's own", "2018-01-01 00:00:00", "2020-01-01 00:00:00"});
        own->gradRep = "1 MON M 1 | 6 MON M 12 | 1 YEA Y 4";
        PoTimeAxis *fromBehind =
            addAxis(sheet, 146, 56, {"Backwards", "2020-01-01 00:00:00", "2019-01-01 00:00:00"});
        fromBehind->language = PoTimeAxis::DEUTSCH;
        sheet.write(example, "time_axes");
    });
}
