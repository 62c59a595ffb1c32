#ifndef ORAVANE_TOOLS_ORAVANE_SCENEFILE_H
#define ORAVANE_TOOLS_ORAVANE_SCENEFILE_H

#include <Inventor/SbVec2f.h>

#include <memory>
#include <string>
#include <vector>

class SoSeparator;

namespace oravane {

struct ReleaseScene {
    void operator()(SoSeparator *scene) const;
};
using ScenePtr = std::unique_ptr<SoSeparator, ReleaseScene>;

/// Starts the toolkit with all classes of the library, and keeps what both have to say from standard error:
/// it is for `takeSceneMessages`. Further calls do nothing.
void startScenes();

/// What the toolkit and the library said since the last call: a line each, "scene.iv:12: Unknown class
/// "Foo"", the file and the line where they are known; no line twice in a row.
std::vector<std::string> takeSceneMessages();

/// All nodes of an Inventor or VRML file: text or binary, packed by gzip or not. Files that it names are
/// looked for beside it. Throws `std::runtime_error` with one line that names the file, and the line where
/// the reading ended; messages that did not end it stay for `takeSceneMessages`.
ScenePtr readScene(const std::string &path);

/// What a scene lacks for being drawn is put before it: for one without a camera a camera that sees all of
/// it from the front; for one without a light, if `isLit`, a light that shines the way the viewer looks. The
/// drawing is `size` pixels wide and high: some texts and images have their size by that. A scene in which
/// there is nothing to direct a camera at is drawn all the same, with a line for `takeSceneMessages`.
ScenePtr completeScene(ScenePtr scene, const SbVec2f &size, bool isLit);

} // namespace oravane

#endif
