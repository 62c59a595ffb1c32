#include "tools/oravane/PageFormats.h"

#include <oravane/SoVectorOutput.h>
#include <oravane/SoVectorizeCGMAction.h>
#include <oravane/SoVectorizeHPGLAction.h>
#include <oravane/SoVectorizePSAction.h>

#include <algorithm>
#include <cmath>
#include <cstdio>
#include <cstdlib>
#include <new>
#include <utility>

namespace oravane {

namespace {

using Action = SoVectorizeAction;

std::unique_ptr<Action> newPostScript(const PageOptions &options) {
    auto action = std::make_unique<SoVectorizePSAction>();
    action->getOutput()->setColored(!options.isGrey);
    return action;
}

std::unique_ptr<Action> newMetafile(const PageOptions &options) {
    auto action = std::make_unique<SoVectorizeCGMAction>();
    action->getOutput()->setVersion(options.cgmVersion);
    action->getOutput()->setBinary(options.isBinary);
    action->getOutput()->setIndexed(options.isIndexed);
    return action;
}

std::unique_ptr<Action> newPlot(const PageOptions &) {
    return std::make_unique<SoVectorizeHPGLAction>();
}

std::string points(float millimeters) {
    return std::to_string(std::lround(millimeters * 72 / 25.4));
}

/// Asks the interpreter for a sheet of the page's size, as far as it has a notion of that. In a page for
/// inclusion (.eps) the bounding box says the same.
void requestSheet(std::string &page, const std::string &path, const PageOptions &options) {
    constexpr std::string_view kEndOfComments = "%%EndComments\n";
    const std::size_t at = page.find(kEndOfComments);
    if (path.ends_with(".eps") || path.ends_with(".EPS") || at == std::string::npos)
        return;
    const SbVec2f sheet = options.sheet();
    page.insert(at + kEndOfComments.size(), "/setpagedevice where { pop 1 dict dup /PageSize [ " +
                                                points(sheet[0]) + " " + points(sheet[1]) +
                                                " ] put setpagedevice } if\n");
}

const PageFormat kFormats[] = {
    {"ps", "PostScript", {"ps", "eps"}, {"--grey"}, false, true, newPostScript, requestSheet},
    {"cgm", "CGM", {"cgm"}, {"--binary", "--indexed", "--cgm-version"}, false, false, newMetafile, nullptr},
    {"hpgl", "HP-GL/2", {"hpgl", "plt", "hpg"}, {}, true, true, newPlot, nullptr},
};

void setUp(Action &action, const PageFormat &format, const PageOptions &options) {
    const SbVec2f sheet = options.sheet();
    const bool isWide = sheet[0] > sheet[1];
    action.setOrientation(format.isTurned && isWide ? Action::LANDSCAPE : Action::PORTRAIT);
    action.setHLHSRMode(options.hiddenParts);
    action.enableLighting(options.isLit);
    action.setColorTranslationMethod(options.colors);
    // The action translates these colours like all others: here are those that end as white and black.
    const bool isKept = options.colors == Action::KEEP_COLORS;
    const SbColor paper = isKept ? SbColor(1, 1, 1) : SbColor(0, 0, 0), ink = SbColor(1, 1, 1) - paper;
    if (options.background || !format.hasPaper)
        action.setBackgroundColor(1, options.background.value_or(paper));
    action.setBorder(options.borderWidth, ink);
    action.setNominalWidth(options.lineWidth, Action::MILLIMETER);
    action.setLineEndStyle(options.lineEnds);
    action.setLineJoinsStyle(options.lineJoins);
    action.setPenDescription(static_cast<int>(options.pens.colors.size()), options.pens.colors.data(),
                             options.pens.widths.data(), Action::MILLIMETER);
    action.setColorPriority(!options.pensByWidth);
}

void drawSheet(Action &action, SoNode *scene, const PageOptions &options) {
    action.beginPage(SbVec2f(0, 0), options.sheet(), Action::MILLIMETER);
    action.setStartPosition(options.margin, options.margin, Action::MILLIMETER);
    action.setDrawingDimensions(options.drawing(), Action::MILLIMETER);
    action.apply(scene);
    action.endPage();
}

} // namespace

SbVec2f PageOptions::sheet() const {
    return isLandscape && paper[0] < paper[1] ? SbVec2f(paper[1], paper[0]) : paper;
}

SbVec2f PageOptions::drawing() const {
    return sheet() - SbVec2f(2 * margin, 2 * margin);
}

std::span<const PageFormat> pageFormats() {
    return kFormats;
}

const PageFormat *findPageFormat(std::string_view nameOrExtension) {
    for (const PageFormat &format : kFormats)
        if (std::find(format.extensions.begin(), format.extensions.end(), nameOrExtension) !=
            format.extensions.end())
            return &format;
    return nullptr;
}

std::string drawPage(const PageFormat &format, SoNode *scene, const std::string &path,
                     const PageOptions &options) {
    const std::unique_ptr<Action> action = format.newAction(options);
    setUp(*action, format, options);
    // In memory, so that the file appears when the page is complete, and with the system's reason if not.
    char *memory = nullptr;
    std::size_t size = 0;
    FILE *stream = open_memstream(&memory, &size);
    if (!stream)
        throw std::bad_alloc();
    SoVectorOutput *output = action->getOutput();
    output->setFilePointer(stream);
    drawSheet(*action, scene, options);
    output->closeFile();
    const std::unique_ptr<char, decltype(&std::free)> guard(memory, &std::free);
    if (output->hasWriteError())
        throw std::bad_alloc();
    std::string page(memory, size);
    if (format.finish)
        format.finish(page, path, options);
    return page;
}

} // namespace oravane
