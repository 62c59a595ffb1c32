// Pages of 10 thousand to a million triangles in every format and mode. The growth that is fitted over the
// sizes is printed behind each family; the counters give triangles per second, bytes of the page for each
// triangle, and the memory that a page takes at its peak, beyond that of the scene, for each triangle. With
// gl2ps on the machine its pages of the same triangles follow, and the ratios at the end: how many times
// faster, how many times smaller.

#include "PageScene.h"

#include <oravane/PoBase.h>
#include <oravane/SoVectorOutput.h>
#include <oravane/SoVectorizeCGMAction.h>
#include <oravane/SoVectorizeHPGLAction.h>
#include <oravane/SoVectorizePSAction.h>

#include <Inventor/nodes/SoCoordinate3.h>
#include <Inventor/nodes/SoIndexedFaceSet.h>
#include <Inventor/nodes/SoMaterial.h>
#include <Inventor/nodes/SoMaterialBinding.h>
#include <Inventor/nodes/SoOrthographicCamera.h>
#include <Inventor/nodes/SoQuadMesh.h>
#include <Inventor/nodes/SoSeparator.h>

#include <benchmark/benchmark.h>

#ifdef HAVE_GL2PS
#include <gl2ps.h>
#endif

#include <malloc.h>
#include <sys/stat.h>
#include <sys/wait.h>
#include <unistd.h>

#include <ctime>
#include <fstream>
#include <map>
#include <memory>
#include <string>

namespace {

using page_scene::Mesh;

constexpr float kPageMillimeters = 1000 * 25.4f / 72; // 1000 points

const Mesh &meshOf(int numTriangles) {
    static std::map<int, Mesh> meshes;
    Mesh &mesh = meshes[numTriangles];
    if (mesh.corners.empty())
        mesh = page_scene::make(numTriangles);
    return mesh;
}

std::string pageFile() {
    const char *folder = std::getenv("TMPDIR");
    return std::string(folder ? folder : "/tmp") + "/bench_page_" + std::to_string(getpid());
}

double sizeOf(const std::string &file) {
    struct stat info {};
    return stat(file.c_str(), &info) == 0 ? static_cast<double>(info.st_size) : 0;
}

/// Seconds and bytes of the last page of each kind and size, for the ratios.
struct Measured {
    double seconds = 0, bytes = 0;
};
std::map<std::pair<std::string, int>, Measured> &results() {
    static std::map<std::pair<std::string, int>, Measured> all;
    return all;
}

/// A figure of this process in bytes, from the kernel; 0 where it does not tell.
double ownMemory(const std::string &name) {
    std::ifstream status("/proc/self/status");
    for (std::string word; status >> word;) {
        double kilobytes = 0;
        if (word == name && status >> kilobytes)
            return kilobytes * 1024;
    }
    return 0;
}

/// How far the resident memory rises while `work` runs: in a child process, where nothing else adds to it.
template <class Work>
double peakBytes(Work work) {
    int ends[2];
    if (pipe(ends) != 0)
        return 0;
    if (const pid_t child = fork(); child == 0) {
        work(); // what comes once: pages of the program, streams
        malloc_trim(0);
        std::ofstream("/proc/self/clear_refs") << "5"; // the peak counts from here
        const double before = ownMemory("VmRSS:");     // what was freed before is not there to live on
        work();
        const double rise = ownMemory("VmHWM:") - before;
        _exit(write(ends[1], &rise, sizeof rise) == sizeof rise ? 0 : 1);
    } else {
        waitpid(child, nullptr, 0);
    }
    double rise = 0;
    close(ends[1]);
    if (read(ends[0], &rise, sizeof rise) != sizeof rise)
        rise = 0;
    close(ends[0]);
    return rise;
}

/// Runs `writePage` for each iteration and reports.
template <class WritePage>
void measure(benchmark::State &state, const std::string &kind, const Mesh &mesh, WritePage writePage) {
    // The processor's time, so that what else runs on the machine changes the ratios little.
    const auto now = [] { return static_cast<double>(std::clock()) / CLOCKS_PER_SEC; };
    const std::string file = pageFile();
    writePage(file); // fills the caches that a scene keeps
    double least = 1e30;
    for (auto _ : state) {
        const double start = now();
        writePage(file);
        least = std::min(least, now() - start);
    }
    const double bytes = sizeOf(file);
    const auto triangles = static_cast<double>(mesh.numTriangles());
    state.counters["peak/triangle"] = peakBytes([&] { writePage(file); }) / triangles;
    unlink(file.c_str());
    state.counters["bytes/triangle"] = bytes / triangles;
    state.counters["triangles"] =
        benchmark::Counter(triangles, benchmark::Counter::kIsIterationInvariantRate);
    state.SetComplexityN(static_cast<benchmark::IterationCount>(triangles));
    results()[{kind, static_cast<int>(state.range(0))}] = {least, bytes};
}

// ------------------------------------------------------------------------------------------------- Oravane

SoShape *shapeOf(const Mesh &mesh, bool asQuads) {
    if (asQuads) {
        auto *quads = new SoQuadMesh;
        quads->verticesPerRow = mesh.side + 1;
        quads->verticesPerColumn = mesh.side + 1;
        return quads;
    }
    auto *faces = new SoIndexedFaceSet;
    std::vector<int32_t> indices;
    for (std::size_t i = 0; i < mesh.corners.size(); ++i) {
        indices.push_back(mesh.corners[i]);
        if (i % 3 == 2)
            indices.push_back(-1);
    }
    faces->coordIndex.setValues(0, static_cast<int>(indices.size()), indices.data());
    return faces;
}

SoSeparator *sceneOf(const Mesh &mesh, bool asQuads) {
    auto *root = new SoSeparator;
    root->ref();
    auto *camera = new SoOrthographicCamera;
    camera->position.setValue(500, 500, 1);
    camera->height = 1000;
    camera->nearDistance = 1;
    camera->farDistance = 2;
    auto *coordinates = new SoCoordinate3;
    auto *material = new SoMaterial;
    auto *binding = new SoMaterialBinding;
    binding->value = asQuads ? SoMaterialBinding::PER_VERTEX : SoMaterialBinding::PER_VERTEX_INDEXED;
    std::vector<SbVec3f> points;
    std::vector<SbColor> colors;
    for (const page_scene::Vertex &v : mesh.nodes) {
        points.emplace_back(v.x, v.y, -v.z);
        colors.emplace_back(v.r, v.g, v.b);
    }
    coordinates->point.setValues(0, static_cast<int>(points.size()), points.data());
    material->diffuseColor.setValues(0, static_cast<int>(colors.size()), colors.data());
    for (SoNode *node : std::initializer_list<SoNode *>{camera, coordinates, material, binding})
        root->addChild(node);
    root->addChild(shapeOf(mesh, asQuads));
    return root;
}

struct Format {
    const char *name;
    std::unique_ptr<SoVectorizeAction> (*make)();
};

/// A driver that draws nothing: what is left is what all formats share.
class NoFormat : public SoVectorizeAction {
public:
    NoFormat() { setOutput(&m_output); }

protected:
    void writeHeader() override {}
    void writeFooter() override {}
    void setHardwareClip() override {}
    void printBorder() override {}
    void printBackground() override {}
    void printPolygon(const SbVec4f *, int, const SbColor *) override {}
    void printPolyLine(const SbVec4f *, int, const SbColor *, int, float, unsigned short) override {}

private:
    SoVectorOutput m_output;
};

template <class Action>
std::unique_ptr<SoVectorizeAction> make() {
    return std::make_unique<Action>();
}

template <int isBinary>
std::unique_ptr<SoVectorizeAction> makeCgm() {
    auto action = std::make_unique<SoVectorizeCGMAction>();
    action->getOutput()->setBinary(isBinary);
    return action;
}

const Format kFormats[] = {
    {"postscript", make<SoVectorizePSAction>}, {"cgm-text", makeCgm<0>},    {"cgm-binary", makeCgm<1>},
    {"hpgl", make<SoVectorizeHPGLAction>},     {"nothing", make<NoFormat>},
};

void oravanePage(benchmark::State &state, const std::string &kind, const Format &format,
                 SoVectorizeAction::HLHSRMode mode, bool asQuads) {
    const Mesh &mesh = meshOf(static_cast<int>(state.range(0)));
    SoSeparator *scene = sceneOf(mesh, asQuads);
    measure(state, kind, mesh, [&](const std::string &file) {
        const auto action = format.make();
        action->setDrawingDimensions(kPageMillimeters, kPageMillimeters, SoVectorizeAction::MILLIMETER);
        action->setHLHSRMode(mode);
        action->getOutput()->openFile(file.c_str());
        action->apply(scene);
        action->getOutput()->closeFile();
    });
    scene->unref();
}

// --------------------------------------------------------------------------------------------------- gl2ps

#ifdef HAVE_GL2PS
void addToGl2ps(const Mesh &mesh, bool isFlat) {
    for (std::size_t i = 0; i + 2 < mesh.corners.size(); i += 3) {
        GL2PSvertex vertices[3];
        for (int k = 0; k < 3; ++k) {
            const page_scene::Vertex &p = mesh.nodes[mesh.corners[i + k]];
            const page_scene::Vertex &c = isFlat ? mesh.nodes[mesh.corners[i]] : p;
            const float point[] = {p.x, p.y, p.z * 1000}; // as gl2ps scales the depth of a window
            const float color[] = {c.r, c.g, c.b, 1};
            std::copy_n(point, 3, vertices[k].xyz);
            std::copy_n(color, 4, vertices[k].rgba);
        }
        gl2psAddPolyPrimitive(GL2PS_TRIANGLE, 3, vertices, 0, 0, 0, 0xffff, 1, 1, 0, 0, 0);
    }
}

void gl2psPage(benchmark::State &state, const std::string &kind, int sort, bool isFlat) {
    const Mesh &mesh = meshOf(static_cast<int>(state.range(0)));
    measure(state, kind, mesh, [&](const std::string &file) {
        FILE *stream = std::fopen(file.c_str(), "wb");
        GLint viewport[4] = {0, 0, 1000, 1000};
        const GLint options = GL2PS_SILENT | GL2PS_NO_OPENGL_CONTEXT | GL2PS_NO_BLENDING |
                              (sort == GL2PS_BSP_SORT ? GL2PS_BEST_ROOT : 0);
        gl2psBeginPage("page", "bench", viewport, GL2PS_PS, sort, options, GL_RGBA, 0, nullptr, 0, 0, 0,
                       1000000, stream, file.c_str());
        addToGl2ps(mesh, isFlat);
        gl2psEndPage();
        std::fclose(stream);
    });
}
#endif

// -------------------------------------------------------------------------------------------- registration

template <class Function>
void family(const std::string &kind, Function function, std::initializer_list<int> sizes) {
    auto *family = benchmark::RegisterBenchmark(kind.c_str(), function);
    for (const int size : sizes)
        family->Arg(size);
    family->Unit(benchmark::kMillisecond)->MinTime(2)->Complexity(); // the least of several counts
}

void registerAll() {
    using Action = SoVectorizeAction;
    const auto all = {10000, 100000, 1000000};
    const auto few = {10000, 100000};
    const auto add = [](const Format &format, const char *name, Action::HLHSRMode mode, bool asQuads,
                        std::initializer_list<int> sizes) {
        const std::string kind = std::string(format.name) + "/" + name;
        family(
            kind, [=, &format](benchmark::State &state) { oravanePage(state, kind, format, mode, asQuads); },
            sizes);
    };
    for (const Format &format : kFormats) {
        add(format, "no-sort", Action::HLHSR_NONE, false, all);
        add(format, "z-sort", Action::HLHSR_Z_SORT, false, all);
        add(format, "full-sort", Action::HLHSR_FULL_SORT, false, all);
        add(format, "lines", Action::HLHSR_LINE_REMOVAL, false, all);
    }
    add(kFormats[0], "z-sort-quad-mesh", Action::HLHSR_Z_SORT, true, all);
#ifdef HAVE_GL2PS
    const auto peer = [](const std::string &kind, int sort, bool isFlat, std::initializer_list<int> sizes) {
        family(
            kind, [=](benchmark::State &state) { gl2psPage(state, kind, sort, isFlat); }, sizes);
    };
    peer("gl2ps/no-sort", GL2PS_NO_SORT, false, all);
    peer("gl2ps/simple-sort", GL2PS_SIMPLE_SORT, false, all);
    peer("gl2ps/simple-sort-flat-colours", GL2PS_SIMPLE_SORT, true, all);
    peer("gl2ps/bsp-sort", GL2PS_BSP_SORT, false, few);
#endif
}

void printRatio(const std::string &ours, const std::string &theirs) {
    for (const int size : {10000, 100000, 1000000}) {
        const auto a = results().find({ours, size}), b = results().find({theirs, size});
        if (a != results().end() && b != results().end())
            std::printf("%s against %s, %d triangles: %.2f times as fast, %.2f times as small\n",
                        ours.c_str(), theirs.c_str(), size, b->second.seconds / a->second.seconds,
                        b->second.bytes / a->second.bytes);
    }
}

void printRatios() {
    printRatio("postscript/no-sort", "gl2ps/no-sort");
    printRatio("postscript/z-sort", "gl2ps/simple-sort");
    printRatio("postscript/z-sort", "gl2ps/simple-sort-flat-colours");
    printRatio("postscript/full-sort", "gl2ps/bsp-sort");
    for (const Format &format : kFormats)
        for (const std::string mode : {"/no-sort", "/z-sort"})
            if (format.make != kFormats[0].make && format.make != make<NoFormat>)
                printRatio(format.name + mode, kFormats[0].name + mode);
}

} // namespace

int main(int argc, char **argv) {
    PoBase::init();
    benchmark::Initialize(&argc, argv);
    if (benchmark::ReportUnrecognizedArguments(argc, argv))
        return 1;
    registerAll();
    benchmark::RunSpecifiedBenchmarks();
    printRatios();
    return 0;
}
