#include "vectorize/PageFixture.h"

#include <unistd.h>

namespace {

using namespace oravane_test;

const char *const kFrontCamera = "OrthographicCamera { position 0 0 5 nearDistance 1 farDistance 9 height 2 "
                                 "viewportMapping LEAVE_ALONE aspectRatio 1 }\n";
const char *const kTriangle = "Coordinate3 { point [ -1 -1 0, 1 -1 0, 0 1 0 ] } FaceSet { }\n";

std::string withCamera(const std::string &nodes) {
    return std::string("Separator { ") + kFrontCamera + nodes + " }";
}

TEST(SoVectorizePSAction, PageOfASimpleScene) {
    const Scene scene(
        withCamera(std::string("LightModel { model BASE_COLOR } BaseColor { rgb 1 0.5 0 }") + kTriangle));
    SoVectorizePSAction action;
    const std::string page = pageOf(action, scene);
    EXPECT_EQ(bodyOf(page), R"(2.834646 2.834646 scale
/linecap 0 def
linecap setlinecap
2 setlinejoin
1.50 setmiterlimit
0.35 ps
0.35 ep
[] 0 tl
10.00 10.00 translate
newpath
0.00 0.00 moveto
190.00 0.00 lineto
190.00 277.00 lineto
0.00 277.00 lineto
0.00 0.00 lineto
closepath
gsave
clip
1 0.5 0 gc
0.00 0.00 pfabeg
95 277 190 0
2 pfaend
1 pfa
grestore
newpath
0 0 moveto
190.00 0 lineto
190.00 277.000000 lineto
0 277.00 lineto
0 0 lineto
closepath
gsave
clip
0.71 ep
0 0 0 gc
0 0 0 277 190 277 190 0 0 0
5 ppl
grestore
showpage
)");
    EXPECT_EQ(complaints(page), "");
}

} // namespace
