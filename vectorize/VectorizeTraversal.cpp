#include "vectorize/VectorizeTraversal.h"

#include <oravane/SoAnnoText3.h>

#include <Inventor/SbDPMatrix.h>
#include <Inventor/SbPlane.h>
#include <Inventor/SbViewVolume.h>
#include <Inventor/SoPath.h>
#include <Inventor/SoPrimitiveVertex.h>
#include <Inventor/VRMLnodes/SoVRMLLight.h>
#include <Inventor/VRMLnodes/SoVRMLShape.h>
#include <Inventor/elements/SoAnnoText3CharOrientElement.h>
#include <Inventor/elements/SoAnnoText3FontSizeHintElement.h>
#include <Inventor/elements/SoAnnoText3RenderPrintElement.h>
#include <Inventor/elements/SoClipPlaneElement.h>
#include <Inventor/elements/SoEnvironmentElement.h>
#include <Inventor/elements/SoLazyElement.h>
#include <Inventor/elements/SoNormalElement.h>
#include <Inventor/elements/SoViewportRegionElement.h>
#include <Inventor/nodes/SoCamera.h>
#include <Inventor/nodes/SoDrawStyle.h>
#include <Inventor/nodes/SoIndexedTriangleStripSet.h>
#include <Inventor/nodes/SoLightModel.h>
#include <Inventor/nodes/SoMarkerSet.h>
#include <Inventor/nodes/SoMaterialBinding.h>
#include <Inventor/nodes/SoNormalBinding.h>
#include <Inventor/nodes/SoQuadMesh.h>
#include <Inventor/nodes/SoShape.h>
#include <Inventor/nodes/SoShapeHints.h>
#include <Inventor/nodes/SoText2.h>
#include <Inventor/nodes/SoTriangleStripSet.h>

#include <algorithm>
#include <array>
#include <cmath>

ORAVANE_VECTORIZE_BEGIN

using oravane::ColoredPoints;

namespace {

SbVec4f transformed(const SbMatrix &matrix, const SbVec4f &p) {
    const SbMat &m = matrix.getValue();
    SbVec4f result;
    for (int k = 0; k < 4; ++k)
        result[k] = p[0] * m[0][k] + p[1] * m[1][k] + p[2] * m[2][k] + p[3] * m[3][k];
    return result;
}

SbVec4f homogeneous(const SbVec3f &p) {
    return SbVec4f(p[0], p[1], p[2], 1.0f);
}

const SbVec4f kOrigin(0, 0, 0, 1);

short clampToShort(float value) {
    return static_cast<short>(std::clamp(value, 1.0f, 32767.0f));
}

short imageExtent(int field, short source) {
    return field < 0 ? source : static_cast<short>(std::min(field, 32767));
}

} // namespace

// ---------------------------------------------------------------------------------------------- callbacks

template <auto Member>
SoCallbackAction::Response SoVectorizeAction::Traversal::nodeCallback(void *self, SoCallbackAction *action,
                                                                      const SoNode *node) {
    auto *traversal = static_cast<Traversal *>(self);
    traversal->m_callback = action;
    (traversal->*Member)(node);
    return SoCallbackAction::CONTINUE;
}

void SoVectorizeAction::Traversal::triangleCallback(void *self, SoCallbackAction *action,
                                                    const SoPrimitiveVertex *v0, const SoPrimitiveVertex *v1,
                                                    const SoPrimitiveVertex *v2) {
    auto *traversal = static_cast<Traversal *>(self);
    traversal->m_callback = action;
    const SoPrimitiveVertex *const vertices[] = {v0, v1, v2};
    traversal->drawTriangle(vertices);
}

void SoVectorizeAction::Traversal::lineCallback(void *self, SoCallbackAction *action,
                                                const SoPrimitiveVertex *v0, const SoPrimitiveVertex *v1) {
    auto *traversal = static_cast<Traversal *>(self);
    traversal->m_callback = action;
    traversal->drawLineSegment(*v0, *v1);
}

void SoVectorizeAction::Traversal::pointCallback(void *self, SoCallbackAction *action,
                                                 const SoPrimitiveVertex *v) {
    auto *traversal = static_cast<Traversal *>(self);
    traversal->m_callback = action;
    traversal->drawPoint(*v);
}

/// The toolkit would make two triangles of an image, and divides by zero when only one of its extents is set.
SoCallbackAction::Response SoVectorizeAction::Traversal::skipPrimitives(void *, SoCallbackAction *,
                                                                        const SoNode *) {
    return SoCallbackAction::PRUNE;
}

/// Annotation text becomes text on the page, or the polygons of its letters, or both.
SoCallbackAction::Response
SoVectorizeAction::Traversal::annoText3Callback(void *self, SoCallbackAction *action, const SoNode *node) {
    const auto type = SoAnnoText3RenderPrintElement::get(action->getState());
    if (type == SoAnnoText3RenderPrintElement::RENDER3D_PRINT_VECTOR)
        return SoCallbackAction::CONTINUE;
    auto *traversal = static_cast<Traversal *>(self);
    traversal->m_callback = action;
    traversal->drawAnnoText3(*static_cast<const SoAnnoText3 *>(node));
    return type == SoAnnoText3RenderPrintElement::RENDER3D_PRINT_RASTER ? SoCallbackAction::PRUNE
                                                                        : SoCallbackAction::CONTINUE;
}

void SoVectorizeAction::Traversal::registerCallbacks(SoCallbackAction &action) {
    // Labels can be searched and selected unless the scene wants otherwise.
    SoAnnoText3RenderPrintElement::set(action.getState(),
                                       SoAnnoText3RenderPrintElement::RENDER3D_PRINT_RASTER);
    SoAnnoText3CharOrientElement::set(action.getState(), TRUE);
    const SoType shape = SoShape::getClassTypeId();
    action.addPreCallback(SoCamera::getClassTypeId(), nodeCallback<&Traversal::fitCamera>, this);
    action.addTriangleCallback(shape, triangleCallback, this);
    action.addLineSegmentCallback(shape, lineCallback, this);
    action.addPointCallback(shape, pointCallback, this);
    action.addPostCallback(SoText2::getClassTypeId(), nodeCallback<&Traversal::drawText2>, this);
    action.addPostCallback(SoNode::getClassTypeId(), nodeCallback<&Traversal::finishNode>, this);
    action.addPreCallback(SoAnnoText3::getClassTypeId(), annoText3Callback, this);
    action.addPreCallback(SoVRMLLight::getClassTypeId(), nodeCallback<&Traversal::addVrmlLight>, this);
    action.addPreCallback(SoVRMLShape::getClassTypeId(), nodeCallback<&Traversal::openVrmlShape>, this);
    action.addPostCallback(SoVRMLShape::getClassTypeId(), nodeCallback<&Traversal::closeVrmlShape>, this);
    action.addPreCallback(SoImage::getClassTypeId(), skipPrimitives, nullptr);
    action.addPostCallback(SoImage::getClassTypeId(), nodeCallback<&Traversal::drawImage>, this);
}

/// Gives the camera the drawing's aspect: one window pixel a millimetre.
void SoVectorizeAction::Traversal::fitCamera(const SoNode *) {
    SoState *state = m_callback->getState();
    SbViewportRegion region = SoViewportRegionElement::get(state);
    region.setWindowSize(clampToShort(m_action.getWidth()), clampToShort(m_action.getHeight()));
    SoViewportRegionElement::set(state, region);
}

void SoVectorizeAction::Traversal::finishNode(const SoNode *node) {
    const bool isMarkerSet = node->isOfType(SoMarkerSet::getClassTypeId());
    if (m_pending != NOTHING)
        sendPoints(isMarkerSet ? const_cast<SoMarkerSet *>(static_cast<const SoMarkerSet *>(node)) : nullptr);
    m_shapeIsKnown = false;
}

void SoVectorizeAction::Traversal::addVrmlLight(const SoNode *node) {
    m_sceneLights.add(m_callback->getState(), *static_cast<const SoVRMLLight *>(node));
}

/// The toolkit lets the appearance of such a shape leak to what follows it, except in rendering.
void SoVectorizeAction::Traversal::openVrmlShape(const SoNode *) {
    m_callback->getState()->push();
}

void SoVectorizeAction::Traversal::closeVrmlShape(const SoNode *) {
    m_callback->getState()->pop();
}

// ---------------------------------------------------------------------------------- what a shape stands in

void SoVectorizeAction::Traversal::openStore() {
    const HLHSRMode mode = m_action.getHLHSRMode();
    if (mode != HLHSR_NONE)
        m_store =
            std::make_unique<SoHLHSRVectorize>(&m_action, static_cast<SoHLHSRVectorize::HLHSRMode>(mode - 1));
}

void SoVectorizeAction::Traversal::closeStore() {
    if (m_store)
        m_store->endHLHSR();
    m_store.reset();
}

/// Each view of a page has a clip of its own and is sorted by itself.
void SoVectorizeAction::Traversal::enterView() {
    const SbViewportRegion &region = m_callback->getViewportRegion();
    if (!m_action.m_viewportKnown || !(region == m_action.m_viewport)) {
        if (m_store && m_action.m_viewportKnown)
            m_store->endHLHSR();
        if (m_store)
            m_store->startHLHSR();
        m_action.m_viewport = region;
        m_action.setHardwareClip();
    }
    m_action.m_viewportKnown = 1;
}

/// The state of the shape being drawn, or null when it is invisible.
const SoVectorizeAction::Traversal::Shape *SoVectorizeAction::Traversal::visibleShape() {
    if (!m_shapeIsKnown) {
        enterView();
        readShape();
        m_shapeIsKnown = true;
    }
    return m_shape.drawStyle == SoDrawStyle::INVISIBLE ? nullptr : &m_shape;
}

void SoVectorizeAction::Traversal::readShape() {
    SoCallbackAction &action = *m_callback;
    Shape &s = m_shape;
    s.viewToClip = action.getProjectionMatrix();
    s.modelToView = action.getModelMatrix();
    s.modelToView.multRight(action.getViewingMatrix());
    s.modelToClip = s.modelToView;
    s.modelToClip.multRight(s.viewToClip);
    const float nearDistance = action.getViewVolume().getNearDist();
    s.nearLimit = nearDistance < 0 ? nearDistance : transformed(s.viewToClip, {0, 0, -nearDistance, 1})[2];
    s.drawStyle = action.getDrawStyle();
    s.lineWidth = action.getLineWidth();
    s.linePattern = action.getLinePattern();
    s.pointSize = action.getPointSize();
    readFaceBindings();
    readPlanes();
    readMaterials();
    s.isLit = m_action.isLightingEnabled() && action.getLightModel() == SoLightModel::PHONG;
    if (s.isLit)
        readLighting();
}

/// The toolkit's primitives have slips where quad meshes and triangle strips are bound by face.
void SoVectorizeAction::Traversal::readFaceBindings() {
    const SoNode *node = m_callback->getCurPathTail();
    const auto isA = [&](SoType type) { return node && node->isOfType(type); };
    const bool isQuadMesh = isA(SoQuadMesh::getClassTypeId());
    const auto colors = m_callback->getMaterialBinding();
    m_shape.quadRow = 0;
    if (isQuadMesh &&
        (colors == SoMaterialBinding::PER_FACE || colors == SoMaterialBinding::PER_FACE_INDEXED))
        m_shape.quadRow = static_cast<const SoQuadMesh *>(node)->verticesPerRow.getValue();
    const auto normals = m_callback->getNormalBinding();
    m_shape.faceNormals = Shape::BY_VERTEX;
    m_shape.numTriangles = 0;
    if (normals == SoNormalBinding::PER_FACE || normals == SoNormalBinding::PER_FACE_INDEXED)
        m_shape.faceNormals =
            isQuadMesh ? Shape::OF_QUADS
            : isA(SoTriangleStripSet::getClassTypeId()) || isA(SoIndexedTriangleStripSet::getClassTypeId())
                ? Shape::OF_LAST_VERTEX
                : Shape::BY_VERTEX;
}

void SoVectorizeAction::Traversal::readMaterials() {
    const SoLazyElement *materials = SoLazyElement::getInstance(m_callback->getState());
    const bool isPlain = !materials->isPacked() && materials->getNumTransparencies() == 1;
    m_shape.numDiffuse = materials->getNumDiffuse();
    m_shape.diffuse = isPlain && m_shape.numDiffuse > 0 ? materials->getDiffusePointer() : nullptr;
    m_shape.transparency = isPlain ? materials->getTransparencyPointer()[0] : 0.0f;
}

void SoVectorizeAction::Traversal::readLighting() {
    SoState *state = m_callback->getState();
    // Normals keep standing on their surface under a scaling that differs by direction.
    m_shape.normalToView = m_shape.modelToView.inverse().transpose();
    m_shape.environment.ambient =
        SoEnvironmentElement::getAmbientColor(state) * SoEnvironmentElement::getAmbientIntensity(state);
    // The toolkit names the factor of the squared distance first.
    const SbVec3f attenuation = m_callback->getLightAttenuation();
    m_shape.environment.attenuation.setValue(attenuation[2], attenuation[1], attenuation[0]);
    m_shape.environment.isTwoSided = m_callback->getVertexOrdering() != SoShapeHints::UNKNOWN_ORDERING &&
                                     m_callback->getShapeType() != SoShapeHints::SOLID;
    m_sceneLights.read(state, m_lights);
}

/// What is cut away by planes of the scene is not on the page either.
void SoVectorizeAction::Traversal::readPlanes() {
    const SoClipPlaneElement *element = SoClipPlaneElement::getInstance(m_callback->getState());
    std::vector<SbVec4f> planes;
    // Far from the eye the clip coordinates of a point differ by little: floats would not do.
    SbDPMatrix toClip(m_callback->getViewingMatrix());
    toClip.multRight(SbDPMatrix(m_callback->getProjectionMatrix()));
    const SbDPMatrix toWorld = element->getNum() > 0 ? toClip.inverse() : SbDPMatrix::identity();
    for (int i = 0; i < element->getNum(); ++i) {
        const SbPlane &plane = element->get(i);
        const SbVec3f &normal = plane.getNormal();
        const double world[] = {normal[0], normal[1], normal[2], -plane.getDistanceFromOrigin()};
        SbVec4f inClip;
        for (int row = 0; row < 4; ++row) {
            double sum = 0;
            for (int k = 0; k < 4; ++k)
                sum += toWorld[row][k] * world[k];
            inClip[row] = static_cast<float>(sum);
        }
        planes.push_back(inClip);
    }
    m_clipper.setPlanes(planes);
}

// ------------------------------------------------------------------------------------------------- colours

int SoVectorizeAction::Traversal::materialIndex(const SoPrimitiveVertex &vertex) const {
    int index = vertex.getMaterialIndex();
    if (m_shape.quadRow > 1 && index >= 0) {
        // The toolkit counts the faces of a quad mesh as if each row had one more, and from 1 in each row.
        const int n = m_shape.quadRow;
        index = index / n * (n - 1) + index % n - 1;
    }
    return std::clamp(index, 0, std::max(m_shape.numDiffuse - 1, 0));
}

SoVectorizeAction::Traversal::Color SoVectorizeAction::Traversal::colorOf(int index) {
    if (m_shape.diffuse)
        return {m_action.translateColor(m_shape.diffuse[index]), m_shape.transparency == 1.0f};
    SoState *state = m_callback->getState();
    return {m_action.translateColor(SoLazyElement::getDiffuse(state, index)),
            SoLazyElement::getTransparency(state, index) == 1.0f};
}

/// The normal of the triangle's vertex `k`: that of the face, under a binding by face.
SbVec3f SoVectorizeAction::Traversal::normalOf(const SoPrimitiveVertex *const vertices[3], int k) const {
    if (m_shape.faceNormals == Shape::BY_VERTEX)
        return vertices[k]->getNormal();
    if (m_shape.faceNormals == Shape::OF_LAST_VERTEX)
        return vertices[2]->getNormal(); // the others still have those of the triangles before
    const int face = (m_shape.numTriangles - 1) / 2;
    const SoNormalElement *normals = SoNormalElement::getInstance(m_callback->getState());
    if (face < normals->getNum())
        return normals->get(face);
    const SbVec3f &first = vertices[0]->getPoint();
    const SbVec3f normal = (vertices[2]->getPoint() - first).cross(vertices[1]->getPoint() - first);
    return m_callback->getVertexOrdering() == SoShapeHints::CLOCKWISE ? -normal : normal;
}

SoVectorizeAction::Traversal::Color SoVectorizeAction::Traversal::litColorOf(const SoPrimitiveVertex &vertex,
                                                                             const SbVec3f &faceNormal,
                                                                             const SbVec4f &viewPoint) {
    oravane::LightMaterial material;
    float transparency = 0;
    m_callback->getMaterial(material.ambient, material.diffuse, material.specular, material.emission,
                            material.shininess, transparency, materialIndex(vertex));
    if (transparency == 1.0f)
        return {SbColor(0, 0, 0), true};
    SbVec3f normal;
    m_shape.normalToView.multDirMatrix(faceNormal, normal);
    if (normal.length() > 0)
        normal.normalize();
    const SbVec3f point(viewPoint[0], viewPoint[1], viewPoint[2]);
    SbColor color = oravane::litColor(material, point, normal, m_lights, m_shape.environment);
    if (m_action.getColorTranslationMethod() == SWAP_BLACK_WHITE && color == SbColor(1, 1, 1))
        color[2] = 0.9999f; // a bright surface must not turn black
    return {m_action.translateColor(color), false};
}

/// Transforms the points to clip coordinates and colours them; false when all of them are transparent.
bool SoVectorizeAction::Traversal::colorTriangle(const SoPrimitiveVertex *const vertices[3], SbVec4f *points,
                                                 SbColor *colors) {
    bool isVisible = false;
    ++m_shape.numTriangles;
    const SbMatrix &first = m_shape.isLit ? m_shape.modelToView : m_shape.modelToClip;
    for (int k = 0; k < 3; ++k) {
        points[k] = transformed(first, homogeneous(vertices[k]->getPoint()));
        const Color c = m_shape.isLit ? litColorOf(*vertices[k], normalOf(vertices, k), points[k])
                                      : colorOf(materialIndex(*vertices[k]));
        colors[k] = c.color;
        isVisible = isVisible || !c.isTransparent;
    }
    if (m_shape.isLit) {
        const SbColor mean = (colors[0] + colors[1] + colors[2]) / 3.0f;
        std::fill_n(colors, 3, mean);
        for (int k = 0; k < 3; ++k)
            points[k] = transformed(m_shape.viewToClip, points[k]);
    }
    return isVisible;
}

// ---------------------------------------------------------------------------------------------- primitives

void SoVectorizeAction::Traversal::drawTriangle(const SoPrimitiveVertex *const vertices[3]) {
    const Shape *shape = visibleShape();
    std::array<SbVec4f, 3> points;
    std::array<SbColor, 3> colors;
    if (shape && colorTriangle(vertices, points.data(), colors.data()))
        emitPolygon(m_clipper.polygon(points, colors, shape->nearLimit), oravane::isMulticolor(colors));
}

void SoVectorizeAction::Traversal::drawLineSegment(const SoPrimitiveVertex &from,
                                                   const SoPrimitiveVertex &to) {
    if (!visibleShape())
        return;
    const SbVec4f start = homogeneous(from.getPoint());
    const SbVec4f end = homogeneous(to.getPoint());
    const Color endColor = colorOf(materialIndex(to));
    if (m_run.size() > 0 && start == m_run.points.back()) {
        if (!endColor.isTransparent)
            m_run.add(end, endColor.color);
        return;
    }
    sendPoints(nullptr);
    const Color startColor = colorOf(materialIndex(from));
    if (startColor.isTransparent && endColor.isTransparent)
        return;
    m_run.add(start, startColor.color);
    m_run.add(end, endColor.color);
    m_pending = LINES;
}

void SoVectorizeAction::Traversal::drawPoint(const SoPrimitiveVertex &vertex) {
    if (!visibleShape())
        return;
    const Color color = colorOf(materialIndex(vertex));
    if (color.isTransparent)
        return;
    m_run.add(homogeneous(vertex.getPoint()), color.color);
    m_pending = POINTS;
}

void SoVectorizeAction::Traversal::sendPoints(SoMarkerSet *markerSet) {
    const Pending kind = m_pending;
    m_pending = NOTHING;
    if (kind != NOTHING && visibleShape()) {
        for (SbVec4f &p : m_run.points)
            p = transformed(m_shape.modelToClip, p);
        if (kind == POINTS || markerSet)
            sendMarks(markerSet);
        else
            sendPolyline();
    }
    m_run.clear();
}

void SoVectorizeAction::Traversal::sendPolyline() {
    const int multicolor = oravane::isMulticolor(m_run.colors);
    for (const ColoredPoints &part : m_clipper.polyline(m_run.points, m_run.colors, m_shape.nearLimit)) {
        if (m_shape.drawStyle == SoDrawStyle::POINTS)
            emitMarks(part.points.data(), part.size(), part.colors.data(), multicolor, nullptr);
        else if (part.size() > 1)
            emitPolyline(part.points.data(), part.size(), part.colors.data(), multicolor);
    }
}

/// Points outside are left out, but the colours stay where they were.
void SoVectorizeAction::Traversal::sendMarks(SoMarkerSet *markerSet) {
    const int multicolor = oravane::isMulticolor(m_run.colors);
    const int n = m_clipper.marks(m_run.points, m_shape.nearLimit);
    emitMarks(m_run.points.data(), n, m_run.colors.data(), multicolor, markerSet);
}

void SoVectorizeAction::Traversal::drawText2(const SoNode *node) {
    const auto &text = *static_cast<const SoText2 *>(node);
    drawText(text.string, text.spacing.getValue(), text.justification.getValue(), m_callback->getFontSize(),
             0);
}

void SoVectorizeAction::Traversal::drawAnnoText3(const SoText3 &text) {
    if (!visibleShape())
        return;
    const TextView view = computeFontSizeAngleViewing(m_callback->getFontSize());
    drawText(text.string, text.spacing.getValue(), text.justification.getValue(), view.size, view.angle);
}

/// The size, in nominal widths, and the direction that a font of `size` has on the page at the origin of the
/// node's space.
SoVectorizeAction::Traversal::TextView
SoVectorizeAction::Traversal::computeFontSizeAngleViewing(float size) const {
    constexpr float kLargest = 64; // mm
    SoState *state = m_callback->getState();
    std::array<SbVec4f, 4> points{SbVec4f(0, 0, 0, 1), SbVec4f(size, 0, 0, 1), SbVec4f(0, size, 0, 1),
                                  SbVec4f(0, 0, size, 1)};
    for (SbVec4f &point : points) {
        point = transformed(m_shape.modelToClip, point);
        point /= point[3];
    }
    TextView view{0, 0};
    // The direction on the page: in the coordinates of the view, a drawing that is not square would turn
    // labels off the lines that they follow.
    m_action.projectPoints(points.data(), static_cast<int>(points.size()));
    if (SoAnnoText3CharOrientElement::get(state))
        view.angle = std::atan2(points[1][1] - points[0][1], points[1][0] - points[0][0]);
    const auto lengthTo = [&](int i) {
        return std::hypot(points[i][0] - points[0][0], points[i][1] - points[0][1]);
    };
    if (SoAnnoText3FontSizeHintElement::get(state) == SoAnnoText3FontSizeHintElement::ANNOTATION)
        view.size = std::max({lengthTo(1), lengthTo(2), lengthTo(3)});
    else
        view.size = std::min(lengthTo(1), lengthTo(2));
    view.size = view.size > 0 ? std::min(view.size, kLargest) : 1;
    const float nominal = m_action.getNominalMillimeters();
    view.size = nominal > 0 ? view.size / nominal : 0;
    return std::isfinite(view.angle) ? view : TextView{view.size, 0};
}

/// Draws strings at the origin of the node's space; they are kept or dropped as a whole.
void SoVectorizeAction::Traversal::drawText(const SoMFString &strings, float spacing, int justification,
                                            float size, float angle) {
    const Shape *shape = visibleShape();
    if (!shape)
        return;
    const Color color = colorOf(0);
    SbVec4f point = transformed(shape->modelToClip, kOrigin);
    if (color.isTransparent || !m_clipper.point(point, shape->nearLimit, true))
        return;
    const char *font = m_callback->getFontName().getString();
    const int count = strings.getNum();
    if (m_store)
        m_store->storeText2D(point, color.color, font, size, count, strings.getValues(0), spacing,
                             justification, angle);
    else
        m_action.printTextLines(*project(&point, 1), color.color, font, size, count, strings.getValues(0),
                                spacing, justification, angle);
}

void SoVectorizeAction::Traversal::drawImage(const SoNode *node) {
    const Shape *shape = visibleShape();
    const auto &image = *static_cast<const SoImage *>(node);
    SbVec4f point = transformed(m_shape.modelToClip, kOrigin);
    m_shapeIsKnown = false; // this callback is the last of its node
    if (!shape || !m_clipper.point(point, shape->nearLimit, false))
        return;
    SbVec2s source;
    int components = 0;
    const unsigned char *pixels = image.image.getValue(source, components);
    SbVec2s size(imageExtent(image.width.getValue(), source[0]),
                 imageExtent(image.height.getValue(), source[1]));
    const auto horizontal = static_cast<SoImage::HorAlignment>(image.horAlignment.getValue());
    const auto vertical = static_cast<SoImage::VertAlignment>(image.vertAlignment.getValue());
    if (m_store)
        m_store->storeImage(point, pixels, size, source, components, horizontal, vertical);
    else
        m_action.printImage(*project(&point, 1), pixels, size, source, components, horizontal, vertical);
}

// ---------------------------------------------------------------------------------------- print or store

const SbVec4f *SoVectorizeAction::Traversal::project(const SbVec4f *points, int n) {
    m_projected.assign(points, points + n);
    m_action.projectPoints(m_projected.data(), n);
    return m_projected.data();
}

void SoVectorizeAction::Traversal::emitPolygon(const ColoredPoints &polygon, int multicolor) {
    const int n = polygon.size();
    if (n == 0)
        return;
    const Shape &s = m_shape;
    if (s.drawStyle == SoDrawStyle::LINES) {
        m_outline = polygon;
        m_outline.add(polygon.points[0], polygon.colors[0]);
        if (m_store)
            m_store->storePolygon(m_outline.points.data(), n + 1, m_outline.colors.data(), multicolor,
                                  s.lineWidth, s.pointSize, s.linePattern, PolyGon::LINES);
        else
            emitPolyline(m_outline.points.data(), n + 1, m_outline.colors.data(), multicolor);
    } else if (m_store) {
        const auto style = s.drawStyle == SoDrawStyle::POINTS ? PolyGon::POINTS : PolyGon::FILLED;
        m_store->storePolygon(polygon.points.data(), n, polygon.colors.data(), multicolor, s.lineWidth,
                              s.pointSize, s.linePattern, style);
    } else if (s.drawStyle == SoDrawStyle::POINTS) {
        emitMarks(polygon.points.data(), n, polygon.colors.data(), multicolor, nullptr);
    } else {
        m_action.printPolygon(project(polygon.points.data(), n), n, polygon.colors.data());
    }
}

void SoVectorizeAction::Traversal::emitPolyline(const SbVec4f *points, int n, const SbColor *colors,
                                                int multicolor) {
    if (m_store)
        m_store->storePolyLine(points, n, colors, multicolor, m_shape.lineWidth, m_shape.linePattern);
    else
        m_action.printPolyLine(project(points, n), n, colors, multicolor, m_shape.lineWidth,
                               m_shape.linePattern);
}

void SoVectorizeAction::Traversal::emitMarks(const SbVec4f *points, int n, const SbColor *colors,
                                             int multicolor, SoMarkerSet *markerSet) {
    if (n < 1)
        return;
    if (m_store)
        m_store->storePolyMark(points, n, colors, multicolor, m_shape.pointSize, markerSet);
    else if (markerSet)
        m_action.printPolyMark(project(points, n), n, colors, multicolor, markerSet);
    else
        m_action.printPolyMark(project(points, n), n, colors, multicolor, m_shape.pointSize);
}

ORAVANE_VECTORIZE_END
