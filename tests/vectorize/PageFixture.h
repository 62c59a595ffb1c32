#ifndef ORAVANE_TESTS_PAGEFIXTURE_H
#define ORAVANE_TESTS_PAGEFIXTURE_H

#include <oravane/SoVectorizePSAction.h>

#include "TemporaryFolder.h"
#include "TestScene.h"

#include <Inventor/elements/SoViewportRegionElement.h>
#include <Inventor/nodes/SoCallback.h>

#include <gtest/gtest.h>

#include <cstdlib>
#include <fstream>
#include <iterator>
#include <string>

namespace oravane_test {

inline std::string readFile(const std::string &path) {
    std::ifstream in(path, std::ios::binary);
    return {std::istreambuf_iterator<char>(in), {}};
}

inline std::string expectedFile(const std::string &name) {
    return readFile(ORAVANE_SOURCE_DIR "/tests/vectorize/data/" + name);
}

const std::string kCamera = "OrthographicCamera { position 0 0 5 nearDistance 1 farDistance 9 height 2 "
                            "viewportMapping LEAVE_ALONE aspectRatio 1 } ";
const std::string kPlain = "LightModel { model BASE_COLOR } ";
const std::string kTriangle = "Coordinate3 { point [ -1 -1 0, 1 -1 0, 0 1 0 ] } FaceSet { } ";

/// Something of each kind that a page can hold.
const std::string kEverything =
    "Font { name \"Helvetica\" size 14 } LightModel { model BASE_COLOR } "
    "Separator { BaseColor { rgb .8 .4 .1 } Translation { translation -0.5 0.4 0 } Cube { width .5 } } "
    "Separator { BaseColor { rgb 0 0 1 } Translation { translation 0.5 0.4 -0.3 } Sphere { radius 0.3 } } "
    "Separator { DrawStyle { style LINES lineWidth 2 linePattern 0xF0F0 } Cone { height .6 } } "
    "Separator { BaseColor { rgb [ 1 .5 0, 0 .5 1 ] } MaterialBinding { value PER_VERTEX } Coordinate3 { "
    "point [ -.8 -.8 0, -.6 -.6 0 ] } MarkerSet { markerIndex [ 10, 40 ] } LineSet { } PointSet { } } "
    "Separator { Translation { translation -.9 .8 .5 } Text2 { string [ \"Depth (m)\", \"it's\" ] } } "
    "Separator { Translation { translation .6 -.8 0 } Image { image 2 2 4 0xff0000ff 0xff00ff 0xff 0 "
    "width 20 height 20 } } ";

/// `nodes` under a camera that looks at the square from (-1, -1) to (1, 1).
inline std::string view(const std::string &nodes) {
    return "Separator { " + kCamera + nodes + " }";
}

/// A scene from its text in the toolkit's file format, without the header line.
class Scene : public test::Ref<SoSeparator> {
public:
    explicit Scene(const std::string &text) : Ref(test::readBack("#Inventor V2.1 ascii\n" + text)) {
        EXPECT_TRUE(*this) << text;
    }
    operator SoSeparator *() const { return get(); }

    /// The descendant that `indices` lead to.
    template <class Node, class... Indices>
    Node *child(Indices... indices) const {
        SoNode *node = get();
        ((node = static_cast<SoGroup *>(node)->getChild(indices)), ...);
        return static_cast<Node *>(node);
    }
};

/// `nodes` in two views: the whole window, then the middle of its right half.
inline Scene twoViews(const std::string &nodes) {
    const std::string part = kCamera + nodes;
    Scene scene("Separator { Separator { " + part + "} Separator { Callback { } " + part + "} }");
    const auto enter = [](void *, SoAction *action) {
        SbViewportRegion region = SoViewportRegionElement::get(action->getState());
        region.setViewport(0.5f, 0.25f, 0.5f, 0.5f);
        SoViewportRegionElement::set(action->getState(), region);
    };
    scene.child<SoCallback>(1, 0)->setCallback(enter);
    return scene;
}

/// A file that is removed at the end.
class TemporaryFile {
public:
    explicit TemporaryFile(const std::string &suffix = ".ps") : m_path(m_folder.path("page" + suffix)) {}
    const std::string &path() const { return m_path; }
    const char *name() const { return m_path.c_str(); }

private:
    TemporaryFolder m_folder;
    std::string m_path;
};

/// All that `write` writes to `output`.
template <class Write>
std::string writtenTo(SoVectorOutput *output, Write write) {
    const TemporaryFile file;
    EXPECT_TRUE(output->openFile(file.name()));
    write();
    output->closeFile();
    EXPECT_FALSE(output->hasWriteError());
    return readFile(file.path());
}

/// The complete page that `action`, a driver of any format, makes of `scene`.
inline std::string pageOf(SoVectorizeAction &action, SoNode *scene) {
    return writtenTo(action.getOutput(), [&] { action.apply(scene); });
}

/// The page behind its prolog.
inline std::string bodyOf(const std::string &page) {
    const std::size_t end = page.find("% end\n");
    return end == std::string::npos ? page : page.substr(end + 6);
}

inline int count(const std::string &text, const std::string &what) {
    int n = 0;
    for (std::size_t at = text.find(what); at != std::string::npos; at = text.find(what, at + what.size()))
        ++n;
    return n;
}

/// What Ghostscript has to complain about, empty for a good page.
inline std::string complaints(const std::string &page) {
    const TemporaryFile file, log(".log");
    std::ofstream(file.path(), std::ios::binary) << page;
    const std::string command = "timeout 60 gs -q -dSAFER -dBATCH -dNOPAUSE -sDEVICE=nullpage " +
                                file.path() + " > " + log.path() + " 2>&1";
    const int status = std::system(command.c_str());
    const std::string said = readFile(log.path());
    return status == 0 && said.empty() ? "" : "gs exits with " + std::to_string(status) + ": " + said;
}

} // namespace oravane_test

#endif
