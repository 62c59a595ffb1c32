#ifndef ORAVANE_TOOLS_ORAVANE_PAGEFORMATS_H
#define ORAVANE_TOOLS_ORAVANE_PAGEFORMATS_H

#include "tools/oravane/OptionValues.h"

#include <oravane/SoVectorizeAction.h>

#include <memory>
#include <optional>
#include <span>
#include <string>
#include <string_view>
#include <vector>

namespace oravane {

/// All that the command line says about pages. Lengths are in millimetres.
struct PageOptions {
    SbVec2f paper{210, 297};
    float margin = 10;
    bool isLandscape = false; ///< the longer side of the paper across
    SoVectorizeAction::HLHSRMode hiddenParts = SoVectorizeAction::HLHSR_Z_SORT;
    bool isLit = false;
    SoVectorizeAction::ColorTranslationMethod colors = SoVectorizeAction::KEEP_COLORS;
    std::optional<SbColor> background;
    float borderWidth = 0;
    PenList pens;
    bool pensByWidth = false;
    float lineWidth = 25.4f / 72;
    SoVectorizeAction::EndLineStyle lineEnds = SoVectorizeAction::BUTT_END;
    SoVectorizeAction::JoinLineStyle lineJoins = SoVectorizeAction::NO_JOIN;
    bool isGrey = false;   ///< PostScript
    bool isBinary = false; ///< CGM, and the next two
    bool isIndexed = false;
    int cgmVersion = 1;

    /// The paper as it lies before the viewer.
    SbVec2f sheet() const;
    /// The sheet without its margins.
    SbVec2f drawing() const;
};

/// A language that pages are written in.
struct PageFormat {
    const char *name;  ///< of --format, and the first of the extensions
    const char *title; ///< for people
    std::vector<std::string_view> extensions;
    std::vector<std::string_view> ownOptions; ///< of the command line, for this format only
    /// Whether a sheet that is wider than high lies turned on the device.
    bool isTurned;
    /// Whether what is not drawn on is sure to be white. Where it is not, a page without a background gets a
    /// white one.
    bool hasPaper;
    std::unique_ptr<SoVectorizeAction> (*newAction)(const PageOptions &options);
    /// What the finished page needs for this path and these options; may be null.
    void (*finish)(std::string &page, const std::string &path, const PageOptions &options);
};

/// One row for each format.
std::span<const PageFormat> pageFormats();

/// The format with this name or extension; null when there is none.
const PageFormat *findPageFormat(std::string_view nameOrExtension);

/// The page of a complete scene, as the content of the file `path`.
std::string drawPage(const PageFormat &format, SoNode *scene, const std::string &path,
                     const PageOptions &options);

} // namespace oravane

#endif
