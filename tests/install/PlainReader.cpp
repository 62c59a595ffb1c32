// A program of the toolkit that knows nothing of this library: it reads a scene, and the toolkit loads the
// classes of its nodes by their names.
#include <Inventor/SoDB.h>
#include <Inventor/SoInput.h>
#include <Inventor/SoInteraction.h>
#include <Inventor/actions/SoGetBoundingBoxAction.h>
#include <Inventor/nodes/SoSeparator.h>

#include <cstdio>
#include <cstring>

int main() {
    SoDB::init();
    SoInteraction::init();
    const char scene[] = "#Inventor V2.1 ascii\nSeparator { PoDomain { max 4 2 4 } PoRectangle { q 4 5 } }";
    SoInput in;
    in.setBuffer(scene, std::strlen(scene));
    SoSeparator *root = SoDB::readAll(&in);
    if (!root)
        return 1;
    root->ref();
    SoGetBoundingBoxAction action(SbViewportRegion(10, 10));
    action.apply(root);
    const SbVec3f size = action.getBoundingBox().getSize();
    std::printf("%g by %g\n", size[0], size[1]);
    root->unref();
    return size == SbVec3f(4, 10, 0) ? 0 : 1;
}
