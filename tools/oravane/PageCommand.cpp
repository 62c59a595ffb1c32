#include "tools/oravane/CommandLine.h"
#include "tools/oravane/Commands.h"
#include "tools/oravane/FileJobs.h"
#include "tools/oravane/PageFormats.h"
#include "tools/oravane/SceneFile.h"

#include <Inventor/nodes/SoSeparator.h>

#include <iterator>
#include <memory>

namespace oravane {

namespace {

using Action = SoVectorizeAction;

constexpr Choice<Action::HLHSRMode> kHiddenParts[] = {
    {"none", Action::HLHSR_NONE},
    {"sort", Action::HLHSR_Z_SORT},
    {"full", Action::HLHSR_FULL_SORT},
    {"lines", Action::HLHSR_LINE_REMOVAL},
};
constexpr Choice<Action::ColorTranslationMethod> kColors[] = {
    {"keep", Action::KEEP_COLORS},
    {"swap", Action::SWAP_BLACK_WHITE},
    {"complement", Action::COMPLEMENT_COLORS},
};
constexpr Choice<Action::EndLineStyle> kLineEnds[] = {
    {"butt", Action::BUTT_END},
    {"square", Action::SQUARE_END},
    {"triangle", Action::TRIANGULAR_END},
    {"round", Action::ROUND_END},
};
constexpr Choice<Action::JoinLineStyle> kLineJoins[] = {
    {"none", Action::NO_JOIN},
    {"miter", Action::MITER_JOIN},
    {"miter-bevel", Action::MITER_BEVEL_JOIN},
    {"bevel", Action::BEVEL_JOIN},
    {"triangle", Action::TRIANGULAR_JOIN},
    {"round", Action::ROUND_JOIN},
};
constexpr Choice<bool> kPensBy[] = {{"color", false}, {"width", true}};
constexpr Choice<int> kCgmVersions[] = {{"1", 1}, {"3", 3}};

constexpr float kLongest = 1000; ///< of margins and widths, in mm

struct PageCommand {
    CLI::App *app = nullptr;
    FileOptions files;
    std::string formatName;
    PageOptions options;

    void addFormat();
    void addSheet();
    void addDrawing();
    void addLines();
    void addFormatOptions();

    const PageFormat &format() const;
    void check(const PageFormat &format) const;
    std::string draw(const PageFormat &format, const FileJob &job) const;
    bool run() const;
};

auto millimeters(float least) {
    return [least](const std::string &text) { return parseNumber(text, least, kLongest); };
}

std::string formatNames(const char *separator) {
    std::string names;
    for (const PageFormat &format : pageFormats())
        names += (names.empty() ? "" : separator) + std::string(format.name);
    return names;
}

void PageCommand::addFormat() {
    app->add_option("--format", formatName, "Language of the page; by default as its name says, else ps")
        ->type_name(formatNames("|"));
}

void PageCommand::addSheet() {
    app->option_defaults()->group("Sheet");
    addOption(*app, "--size", options.paper, parsePaperSize,
              "Paper: " + paperNames() + ", or WIDTHxHEIGHT in mm")
        ->type_name("PAPER")
        ->default_str("A4");
    addOption(*app, "--margin", options.margin, millimeters(0), "Left empty on each side of the sheet")
        ->type_name("MM")
        ->default_str("10");
    app->add_flag("--landscape", options.isLandscape, "The longer side of the paper across");
    addOption(*app, "--border", options.borderWidth, millimeters(0),
              "Frame around the drawing, as a multiple of the line width; 0 for none")
        ->type_name("WIDTH")
        ->default_str("0");
    addOption(*app, "--background", options.background, parseColor, "Fills the drawing first")
        ->type_name("COLOR");
}

void PageCommand::addDrawing() {
    app->option_defaults()->group("Drawing");
    addChoice(*app, "--hidden-lines", options.hiddenParts, kHiddenParts,
              "What hides what: nothing, in the order of the scene; far to near; that with a look at each "
              "overlap; or lines and outlines only, and of them what is visible");
    app->add_flag("--lighting", options.isLit, "Light the surfaces; a scene without lights gets a headlight");
    addChoice(*app, "--colors", options.colors, kColors,
              "Colours as they are, black and white exchanged (a scene for a dark screen), or complements");
}

void PageCommand::addLines() {
    app->option_defaults()->group("Lines");
    addOption(*app, "--line-width", options.lineWidth, millimeters(0.001f),
              "Unit of line widths, point and font sizes")
        ->type_name("MM")
        ->default_str("0.353");
    addChoice(*app, "--line-ends", options.lineEnds, kLineEnds, "Form of the ends of lines");
    addChoice(*app, "--line-joins", options.lineJoins, kLineJoins, "Form of the corners of lines");
    addOption(
        *app, "--pens", options.pens, parsePens,
        "Draw with these pens only: colours with widths in mm, as in black:0.35,red:0.5,#00ff00:0.7, or "
        "the first N (2 to 8) of white, black, red, green, yellow, blue, magenta, cyan")
        ->type_name("PENS");
    addChoice(*app, "--pens-by", options.pensByWidth, kPensBy, "What counts first in the choice of a pen")
        ->needs("--pens");
}

void PageCommand::addFormatOptions() {
    app->option_defaults()->group("Formats");
    app->add_flag("--grey", options.isGrey, "ps: grey levels in place of colours");
    app->add_flag("--binary", options.isBinary, "cgm: the binary encoding in place of clear text");
    app->add_flag("--indexed", options.isIndexed, "cgm: a table of 256 colours in place of any colours");
    addChoice(*app, "--cgm-version", options.cgmVersion, kCgmVersions,
              "cgm: version of the metafile; 3 has line ends, joins and dashes as they are, and transparent "
              "pixels of images");
}

/// As the command line says, or as the name of the page does.
const PageFormat &PageCommand::format() const {
    if (!formatName.empty()) {
        if (const PageFormat *named = findPageFormat(formatName); named && named->name == formatName)
            return *named;
        throw UsageError("--format: \"" + formatName + "\" is none of " + formatNames("|"));
    }
    const std::string extension = files.extension();
    if (extension.empty())
        return pageFormats().front();
    const PageFormat *meant = findPageFormat(extension);
    if (!meant)
        throw UsageError("the name " + files.output +
                         " does not say which language the page is to have: give --format " +
                         formatNames(", "));
    return *meant;
}

void PageCommand::check(const PageFormat &format) const {
    for (const PageFormat &other : pageFormats())
        for (const std::string_view option : other.ownOptions)
            if (&other != &format && app->count(std::string(option)) > 0)
                throw UsageError(std::string(option) + " is for pages in " + other.title + ", and this is " +
                                 format.title);
    const SbVec2f drawing = options.drawing();
    if (drawing[0] < 1 || drawing[1] < 1)
        throw UsageError("--margin leaves nothing of the paper");
}

std::string PageCommand::draw(const PageFormat &format, const FileJob &job) const {
    const SbVec2f pixels = options.drawing() / options.lineWidth;
    const ScenePtr scene = completeScene(readScene(job.input), pixels, options.isLit);
    return drawPage(format, scene.get(), job.output, options);
}

bool PageCommand::run() const {
    const PageFormat &chosen = format();
    check(chosen);
    return runJobs(planJobs(files.inputs, files.output, chosen.name), files.isQuiet,
                   [&](const FileJob &job) { return draw(chosen, job); });
}

} // namespace

std::function<bool()> addPageCommand(CLI::App &program) {
    auto command = std::make_shared<PageCommand>();
    command->app = program.add_subcommand("page", "Print scenes as pages of polygons, lines and text.");
    command->files.addTo(*command->app, "page");
    command->addFormat();
    command->addSheet();
    command->addDrawing();
    command->addLines();
    command->addFormatOptions();
    command->app->footer("Example: a model on a landscape sheet, lit, with a frame\n"
                         "  oravane page model.iv -o model.ps --landscape --lighting --border 2");
    return [command] { return command->run(); };
}

} // namespace oravane
