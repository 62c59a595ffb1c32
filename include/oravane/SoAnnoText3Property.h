#ifndef ORAVANE_SOANNOTEXT3PROPERTY_H
#define ORAVANE_SOANNOTEXT3PROPERTY_H

#include <oravane/OravaneApi.h>
#include <oravane/PoSFEnum.h>

#include <Inventor/elements/SoAnnoText3FontSizeHintElement.h>
#include <Inventor/elements/SoAnnoText3RenderPrintElement.h>
#include <Inventor/fields/SoSFBool.h>
#include <Inventor/nodes/SoNode.h>
#include <Inventor/nodes/SoSubNode.h>

/// How the annotation texts (`SoAnnoText3`) that follow go to a page of vector output. It changes nothing on
/// the screen.
///
/// \code
///   SoAnnoText3Property { renderPrintType RENDER3D_PRINT_VECTOR }   # letters as polygons
/// \endcode
///
/// Without this node a page holds text proper, which can be searched and selected. It draws text along a
/// straight line at one size: what the screen shows of text that faces the viewer. Text in perspective keeps
/// its place, size and direction at its origin.
class ORAVANE_API SoAnnoText3Property : public SoNode {
    SO_NODE_HEADER(SoAnnoText3Property);

public:
    enum RenderPrintType {
        /// Letters as polygons: exactly what the screen shows, whatever fonts the reader of the page has.
        RENDER3D_PRINT_VECTOR = SoAnnoText3RenderPrintElement::RENDER3D_PRINT_VECTOR,
        /// Text proper, in the font of the same name at the reader of the page.
        RENDER3D_PRINT_RASTER = SoAnnoText3RenderPrintElement::RENDER3D_PRINT_RASTER,
        /// Text proper, and the polygons of the letters over it.
        RENDER2D_PRINT_RASTER = SoAnnoText3RenderPrintElement::RENDER2D_PRINT_RASTER,
    };
    enum FontSizeHint {
        /// Text proper has the largest of the sizes that the font's has on the page along x, y and z.
        ANNOTATION = SoAnnoText3FontSizeHintElement::ANNOTATION,
        /// The smaller of the sizes along x and y.
        FIT_TEXT_VECTOR = SoAnnoText3FontSizeHintElement::FIT_TEXT_VECTOR,
    };

    PoSFEnum renderPrintType; ///< default RENDER3D_PRINT_RASTER
    PoSFEnum fontSizeHint;    ///< default FIT_TEXT_VECTOR
    SoSFBool isOriented;      ///< text proper follows the direction of x on the page; default TRUE

    SoAnnoText3Property();
    static void initClass();

    void doAction(SoAction *action) override;
    void callback(SoCallbackAction *action) override;
    void GLRender(SoGLRenderAction *action) override;
    void write(SoWriteAction *action) override;
    void addWriteReference(SoOutput *out, SbBool isFromField = FALSE) override;

protected:
    ~SoAnnoText3Property() override = default;
    SbBool readInstance(SoInput *in, unsigned short flags) override;
};

#endif
