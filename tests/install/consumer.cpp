// The program of the README, as a program outside of this project: from an array of heights to a page.
#include <oravane/PbIsovaluesList.h>
#include <oravane/PbLinearDataMapping.h>
#include <oravane/PbRegularCartesianGrid2D.h>
#include <oravane/PoMeshFilled.h>
#include <oravane/SoVectorizePSAction.h>

#include <Inventor/nodes/SoOrthographicCamera.h>
#include <Inventor/nodes/SoSeparator.h>

#include <cstdio>
#include <filesystem>
#include <vector>

int main() {
    std::vector<float> values;
    for (int i = 0; i < 317 * 460; ++i)
        values.push_back(694 + static_cast<float>(i % 460) * 4);
    const float *heights = values.data();

    PoBase::init();
    auto *scene = new SoSeparator;
    scene->ref();
    auto *camera = new SoOrthographicCamera;
    camera->position.setValue(4740, 6885, 5000);
    camera->height = 9480;
    camera->nearDistance = 1;
    camera->farDistance = 6000;
    scene->addChild(camera);

    PbRegularCartesianGrid2D terrain(317, 460, 0, 0, 9480, 13770, heights, 0);
    terrain.addValuesSet(0, heights);
    PbLinearDataMapping colours;
    colours.setValues(694, SbColor(0.1f, 0.4f, 0.2f), 2543, SbColor(1, 1, 1));
    PbIsovaluesList levels(600, 2500, 20);
    auto *surface = new PoMeshFilled;
    surface->setMesh(&terrain), surface->setDataMapping(&colours), surface->setIsovaluesList(&levels);
    surface->valuesIndex = 0, surface->coloringType = PoMesh::COLOR_CONTOURING;
    scene->addChild(surface);

    SoVectorizePSAction page;
    page.setHLHSRMode(SoVectorizeAction::HLHSR_Z_SORT);
    page.getOutput()->openFile("terrain.ps");
    page.apply(scene);
    page.getOutput()->closeFile();
    scene->unref();

    const auto size = static_cast<long>(std::filesystem::file_size("terrain.ps"));
    std::printf("terrain.ps: %ld bytes\n", size);
    return size > 100000 ? 0 : 1;
}
