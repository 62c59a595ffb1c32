#include "tools/HeadlessRenderer.h"
#include "tools/Picture.h"
#include "tools/oravane/CommandLine.h"
#include "tools/oravane/Commands.h"
#include "tools/oravane/FileJobs.h"
#include "tools/oravane/OptionValues.h"
#include "tools/oravane/SceneFile.h"

#include <Inventor/nodes/SoSeparator.h>

#include <algorithm>
#include <array>
#include <memory>

namespace oravane {

namespace {

constexpr int kMostSamples = 8;
constexpr int kMostPixels = 32767; ///< of a side of what is rendered, before it is averaged

struct PictureCommand {
    FileOptions files;
    std::array<int, 2> size{800, 600};
    int samples = 4;
    SbColor background{1, 1, 1};

    void addTo(CLI::App &app);
    std::string draw(const FileJob &job, HeadlessRenderer &renderer) const;
    bool run() const;
};

void PictureCommand::addTo(CLI::App &app) {
    files.addTo(app, "picture");
    app.option_defaults()->group("Picture");
    addOption(app, "--size", size, parsePixelSize, "WIDTHxHEIGHT in pixels")
        ->type_name("SIZE")
        ->default_str("800x600");
    const auto parseSamples = [](const std::string &text) { return parseCount(text, 1, kMostSamples); };
    addOption(app, "--antialias", samples, parseSamples,
              "Smooth edges by N x N samples a pixel, 1 to 8; 1 for none")
        ->type_name("N")
        ->default_str("4");
    addOption(app, "--background", background, parseColor, "Behind the scene")
        ->type_name("COLOR")
        ->default_str("white");
}

std::string PictureCommand::draw(const FileJob &job, HeadlessRenderer &renderer) const {
    const SbVec2f pixels(static_cast<float>(size[0]), static_cast<float>(size[1]));
    const ScenePtr scene = completeScene(readScene(job.input), pixels, true);
    return encodePng(renderer.render(scene.get(), size[0], size[1]));
}

bool PictureCommand::run() const {
    const std::string extension = files.extension();
    if (!extension.empty() && extension != "png")
        throw UsageError("pictures are PNG files: let the name " + files.output + " end with .png");
    if (std::max(size[0], size[1]) > kMostPixels / samples)
        throw UsageError("--size: with --antialias " + std::to_string(samples) + " a side has at most " +
                         std::to_string(kMostPixels / samples) + " pixels");
    const FilePlan plan = planJobs(files.inputs, files.output, "png");
    startScenes();
    HeadlessRenderer renderer(samples);
    renderer.setBackground(background);
    return runJobs(plan, files.isQuiet, [&](const FileJob &job) { return draw(job, renderer); });
}

} // namespace

std::function<bool()> addPictureCommand(CLI::App &program) {
    auto command = std::make_shared<PictureCommand>();
    CLI::App *app = program.add_subcommand("picture", "Render scenes as PNG pictures, without a window.");
    command->addTo(*app);
    app->footer("Example: all scenes of a folder\n"
                "  oravane picture models/*.iv -o pictures/ --size 1600x1200");
    return [command] { return command->run(); };
}

} // namespace oravane
