#include "tools/oravane/SceneFile.h"

#include "tools/EglContext.h"

#include <oravane/PoBase.h>

#include <Inventor/SbBox3f.h>
#include <Inventor/SoDB.h>
#include <Inventor/SoInput.h>
#include <Inventor/VRMLnodes/SoVRMLLight.h>
#include <Inventor/actions/SoCallbackAction.h>
#include <Inventor/actions/SoGetBoundingBoxAction.h>
#include <Inventor/errors/SoDebugError.h>
#include <Inventor/errors/SoMemoryError.h>
#include <Inventor/errors/SoReadError.h>
#include <Inventor/nodes/SoDirectionalLight.h>
#include <Inventor/nodes/SoPerspectiveCamera.h>
#include <Inventor/nodes/SoSeparator.h>
#include <Inventor/nodes/SoText2.h>

#include <algorithm>
#include <cerrno>
#include <cmath>
#include <cstdlib>
#include <filesystem>
#include <sstream>
#include <stdexcept>
#include <string_view>
#include <utility>

#include <unistd.h>

namespace oravane {

namespace {

namespace fs = std::filesystem;

/// Handlers of the toolkit's errors are functions without an object.
std::vector<std::string> &messages() {
    static std::vector<std::string> list;
    return list;
}

/// The scene that was read last.
std::string &presentFile() {
    static std::string path;
    return path;
}

void replaceAll(std::string &text, std::string_view from, char to) {
    for (std::size_t at = text.find(from); at != std::string::npos; at = text.find(from)) {
        text[at] = to;
        text.erase(at + 1, from.size() - 1);
    }
}

void cutFrom(std::string &text, std::string_view mark) {
    text.resize(std::min(text.find(mark), text.size()));
}

/// A statement of the toolkit in the words and quotes of this program.
std::string reworded(std::string text) {
    replaceAll(text, "``", '"');
    replaceAll(text, "''", '"');
    cutFrom(text, " in any of the following directories");
    cutFrom(text, ". This message will only be shown once");
    while (!text.empty() && (text.back() == '.' || text.back() == ' '))
        text.pop_back();
    constexpr std::string_view kUnknownStart = "Node type ", kUnknownEnd = " not recognized";
    if (text.starts_with(kUnknownStart) && text.ends_with(kUnknownEnd)) {
        text.resize(text.size() - kUnknownEnd.size());
        const std::string name = text.substr(kUnknownStart.size());
        text.assign("Unknown class ").append(name);
    }
    return text;
}

/// "FILE:LINE: " from the end of a reading error, "\tOccurred at line  12 in FILE" or "\tOccurred at position
/// 34 in binary file FILE"; without such an end, the file at hand.
std::string placeIn(std::string_view text) {
    const std::size_t mark = text.rfind("\tOccurred at ");
    if (mark != std::string_view::npos) {
        std::istringstream words{std::string(text.substr(mark))};
        std::string occurred, at, unit, number, in, file;
        words >> occurred >> at >> unit >> number >> in >> std::ws;
        std::getline(words, file);
        if (unit == "line" && !file.empty())
            return file + ":" + number + ": ";
    }
    return presentFile().empty() ? "" : presentFile() + ": ";
}

void addMessage(const std::string &line) {
    if (messages().empty() || messages().back() != line)
        messages().push_back(line);
}

void keepMessage(const SoError *error, void *) {
    const std::string_view whole = error->getDebugString().getString();
    // A reading error about the same image follows.
    if (whole.find("SbImage::readFile") != std::string_view::npos)
        return;
    std::string text(whole.substr(0, whole.find('\n')));
    for (const std::string_view start : {"Coin read error: ", "Coin error in ", "Coin warning in "})
        if (text.starts_with(start))
            text.erase(0, start.size());
    addMessage(placeIn(whole) + reworded(text));
}

[[noreturn]] void fail(const std::string &path, const std::string &reason) {
    throw std::runtime_error(path + ": " + reason);
}

void checkFile(const std::string &path) {
    if (access(path.c_str(), R_OK) != 0)
        fail(path, std::generic_category().message(errno));
    std::error_code ignored;
    if (fs::is_directory(path, ignored))
        fail(path, "is a folder");
    if (fs::is_regular_file(path, ignored) && fs::file_size(path, ignored) == 0)
        fail(path, "the file is empty");
}

/// What a drawing of the scene would meet: kits are brought up to date, switched-off branches left out.
struct Fittings {
    bool hasCamera = false, hasLight = false;
    SbBox3f textPlaces; ///< of texts that are as large at any distance

    static SoCallbackAction::Response note(void *fittings, SoCallbackAction *action, const SoNode *node) {
        auto *const found = static_cast<Fittings *>(fittings);
        if (node->isOfType(SoCamera::getClassTypeId()))
            found->hasCamera = true;
        else if (node->isOfType(SoLight::getClassTypeId()) || node->isOfType(SoVRMLLight::getClassTypeId()))
            found->hasLight = true;
        else {
            SbVec3f place(0, 0, 0);
            action->getModelMatrix().multVecMatrix(place, place);
            found->textPlaces.extendBy(place);
        }
        return SoCallbackAction::CONTINUE;
    }
};

Fittings fittingsOf(SoNode *scene) {
    Fittings found;
    SoCallbackAction action;
    for (const SoType type : {SoCamera::getClassTypeId(), SoLight::getClassTypeId(),
                              SoVRMLLight::getClassTypeId(), SoText2::getClassTypeId()})
        action.addPreCallback(type, Fittings::note, &found);
    action.apply(scene);
    return found;
}

/// Looks along -z. The front of the box just fits into the drawing, and so does all that is behind it.
void direct(SoPerspectiveCamera &camera, const SbBox3f &box, float aspect) {
    constexpr float kMargin = 1.05f;
    // On an upright drawing the camera takes its angle for that of the width.
    const float tangent = std::tan(camera.heightAngle.getValue() / 2);
    const float across = tangent * std::max(aspect, 1.0f), upwards = across / aspect;
    const SbVec3f center = box.getCenter();
    float width, height, depth;
    box.getSize(width, height, depth);
    // A deep box is seen from farther away, for its far end to be more than a dot.
    float distance = kMargin * std::max({width / 2 / across, height / 2 / upwards, depth / 2});
    if (!(distance > 0))
        distance = 1;
    camera.position.setValue(center[0], center[1], center[2] + depth / 2 + distance);
    camera.focalDistance = distance + depth / 2;
    camera.nearDistance = distance / 2;
    camera.farDistance = (distance + depth) * 2;
}

/// A camera for the scene, as its first child.
void addCamera(SoSeparator &root, const SbBox3f &textPlaces, const SbVec2f &size) {
    constexpr float kLongest = 32767; // sides of a viewport are shorts
    const float scale = std::min(1.0f, kLongest / std::max(size[0], size[1]));
    const auto side = [&](int i) { return static_cast<short>(std::max(1.0f, size[i] * scale)); };
    SoGetBoundingBoxAction action(SbViewportRegion(side(0), side(1)));
    auto *const camera = new SoPerspectiveCamera;
    // How far a text of so many pixels reaches depends on the camera.
    for (int pass = 0; pass < 4; ++pass) {
        action.apply(&root);
        SbBox3f box = action.getBoundingBox();
        box.extendBy(textPlaces);
        if (pass == 0)
            root.insertChild(camera, 0);
        if (box.isEmpty())
            return addMessage(presentFile() + ": nothing is in the scene");
        direct(*camera, box, size[0] / size[1]);
    }
    if (!std::isfinite(camera->farDistance.getValue()))
        addMessage(presentFile() + ": the scene is too large for a camera");
}

} // namespace

void ReleaseScene::operator()(SoSeparator *scene) const {
    scene->unref();
}

void startScenes() {
    static const bool isStarted = [] {
        // By itself the toolkit looks for names that only packages for developers have.
        setenv("COIN_FREETYPE2_LIBNAME", "libfreetype.so.6", 0);
        setenv("COIN_FONTCONFIG_LIBNAME", "libfontconfig.so.1", 0);
        PoBase::init();
        SoReadError::setHandlerCallback(keepMessage, nullptr);
        SoDebugError::setHandlerCallback(keepMessage, nullptr);
        SoMemoryError::setHandlerCallback(keepMessage, nullptr);
        SoError::setHandlerCallback(keepMessage, nullptr);
        useEglForOffscreenRendering(); // the toolkit asks for a context even to divide a NURBS surface
        return true;
    }();
    static_cast<void>(isStarted);
}

std::vector<std::string> takeSceneMessages() {
    return std::exchange(messages(), {});
}

ScenePtr readScene(const std::string &path) {
    checkFile(path);
    presentFile() = path;
    SoInput in;
    if (!in.openFile(path.c_str()) || !in.isValidFile()) {
        takeSceneMessages();
        fail(path, "not an Inventor or VRML file");
    }
    ScenePtr scene(SoDB::readAll(&in));
    if (scene)
        scene->ref();
    // The toolkit may make an empty scene of a damaged file.
    if (!scene || (scene->getNumChildren() == 0 && !messages().empty())) {
        const std::vector<std::string> said = takeSceneMessages();
        // Numbers out of range are replaced, and reading goes on.
        const auto reason = std::find_if(said.begin(), said.end(), [](const std::string &line) {
            return line.find("replacing with") == std::string::npos;
        });
        if (reason == said.end())
            fail(path, "damaged, or not in the form that its first line names");
        throw std::runtime_error(*reason);
    }
    return scene;
}

ScenePtr completeScene(ScenePtr scene, const SbVec2f &size, bool isLit) {
    ScenePtr root(new SoSeparator);
    root->ref();
    root->addChild(scene.get());
    const Fittings fittings = fittingsOf(scene.get());
    if (!fittings.hasCamera)
        addCamera(*root, fittings.textPlaces, size);
    // Ahead of the camera, a light keeps its direction in the view.
    if (isLit && !fittings.hasLight)
        root->insertChild(new SoDirectionalLight, 0);
    return root;
}

} // namespace oravane
