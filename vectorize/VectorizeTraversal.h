#ifndef ORAVANE_VECTORIZETRAVERSAL_H
#define ORAVANE_VECTORIZETRAVERSAL_H

#include <oravane/SoHLHSRVectorize.h>
#include <oravane/SoVectorizeAction.h>

#include "vectorize/PageClipper.h"
#include "vectorize/PageLighting.h"
#include "vectorize/SceneLights.h"

#include <Inventor/SbMatrix.h>
#include <Inventor/actions/SoCallbackAction.h>

#include <vector>

class SoMFString;
class SoPrimitiveVertex;
class SoText3;

ORAVANE_VECTORIZE_BEGIN

/// What a vectorize action does between the start and the end of one traversal: it catches primitives,
/// transforms, clips and colours them, and hands them to the print operations or to the store.
class SoVectorizeAction::Traversal {
public:
    explicit Traversal(SoVectorizeAction &action) : m_action(action) {}

    void registerCallbacks(SoCallbackAction &action);

    void openStore();
    void closeStore();

private:
    /// What is the same for all primitives of one shape at one place of the scene. Millions of primitives ask
    /// for it, so it is worked out at the first of them and dropped when the node is done.
    struct Shape {
        SbMatrix modelToClip, modelToView, viewToClip, normalToView;
        float nearLimit;
        int drawStyle;
        float lineWidth, pointSize;
        unsigned short linePattern;
        bool isLit;
        /// Where a vertex' normal comes from.
        enum FaceNormals { BY_VERTEX, OF_LAST_VERTEX, OF_QUADS } faceNormals;
        int numTriangles;
        int quadRow; ///< vertices in a row of a quad mesh with a material per face, else 0
        /// The materials: one transparency for all, or null colours where the toolkit must be asked for each.
        const SbColor *diffuse;
        int numDiffuse;
        float transparency;
        oravane::LightEnvironment environment;
    };
    enum Pending { NOTHING, LINES, POINTS };

    template <auto Member>
    static SoCallbackAction::Response nodeCallback(void *self, SoCallbackAction *action, const SoNode *node);
    static SoCallbackAction::Response skipPrimitives(void *, SoCallbackAction *, const SoNode *);
    static SoCallbackAction::Response annoText3Callback(void *self, SoCallbackAction *action,
                                                        const SoNode *node);
    static void triangleCallback(void *self, SoCallbackAction *action, const SoPrimitiveVertex *v0,
                                 const SoPrimitiveVertex *v1, const SoPrimitiveVertex *v2);
    static void lineCallback(void *self, SoCallbackAction *action, const SoPrimitiveVertex *v0,
                             const SoPrimitiveVertex *v1);
    static void pointCallback(void *self, SoCallbackAction *action, const SoPrimitiveVertex *v);

    void fitCamera(const SoNode *node);
    void finishNode(const SoNode *node);
    void addVrmlLight(const SoNode *node);
    void openVrmlShape(const SoNode *node);
    void closeVrmlShape(const SoNode *node);
    void drawText2(const SoNode *node);
    void drawAnnoText3(const SoText3 &text);
    void drawText(const SoMFString &strings, float spacing, int justification, float size, float angle);
    struct TextView {
        float size, angle;
    };
    TextView computeFontSizeAngleViewing(float size) const;
    void drawImage(const SoNode *node);
    void drawTriangle(const SoPrimitiveVertex *const vertices[3]);
    void drawLineSegment(const SoPrimitiveVertex &from, const SoPrimitiveVertex &to);
    void drawPoint(const SoPrimitiveVertex &vertex);

    const Shape *visibleShape();
    void readShape();
    void readMaterials();
    void readLighting();
    void readFaceBindings();
    void readPlanes();
    void enterView();

    struct Color {
        SbColor color;
        bool isTransparent;
    };
    int materialIndex(const SoPrimitiveVertex &vertex) const;
    Color colorOf(int materialIndex);
    SbVec3f normalOf(const SoPrimitiveVertex *const vertices[3], int k) const;
    Color litColorOf(const SoPrimitiveVertex &vertex, const SbVec3f &faceNormal, const SbVec4f &viewPoint);
    bool colorTriangle(const SoPrimitiveVertex *const vertices[3], SbVec4f *points, SbColor *colors);

    void sendPoints(SoMarkerSet *markerSet);
    void sendPolyline();
    void sendMarks(SoMarkerSet *markerSet);
    void emitPolygon(const oravane::ColoredPoints &polygon, int multicolor);
    void emitPolyline(const SbVec4f *points, int n, const SbColor *colors, int multicolor);
    void emitMarks(const SbVec4f *points, int n, const SbColor *colors, int multicolor,
                   SoMarkerSet *markerSet);
    const SbVec4f *project(const SbVec4f *points, int n);

    SoVectorizeAction &m_action;
    SoCallbackAction *m_callback = nullptr;
    std::unique_ptr<SoHLHSRVectorize> m_store;
    Shape m_shape;
    bool m_shapeIsKnown = false;
    oravane::SceneLights m_sceneLights;
    std::vector<oravane::Light> m_lights;
    oravane::PageClipper m_clipper;
    Pending m_pending = NOTHING;
    oravane::ColoredPoints m_run; ///< the pending run, in the shape's coordinates
    oravane::ColoredPoints m_outline;
    std::vector<SbVec4f> m_projected;
};

ORAVANE_VECTORIZE_END

#endif
