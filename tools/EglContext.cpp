#include "tools/EglContext.h"

#include <EGL/egl.h>
#include <EGL/eglext.h>
#include <Inventor/C/glue/gl.h>
#include <Inventor/errors/SoDebugError.h>

#include <array>
#include <memory>
#include <string_view>

namespace oravane {

namespace {

/// One context with its drawing surface. The toolkit takes the pointer for a structure of its own and looks
/// at an integer at byte 64, which has to be zero, or it calls into GLX: hence the tail.
struct Context {
    EGLDisplay display = EGL_NO_DISPLAY;
    EGLContext context = EGL_NO_CONTEXT;
    EGLSurface surface = EGL_NO_SURFACE;
    EGLDisplay previousDisplay = EGL_NO_DISPLAY;
    EGLContext previousContext = EGL_NO_CONTEXT;
    EGLSurface previousDraw = EGL_NO_SURFACE;
    EGLSurface previousRead = EGL_NO_SURFACE;
    std::array<char, 128> zeros{};

    Context() = default;
    Context(const Context &) = delete;
    Context &operator=(const Context &) = delete;
    ~Context() {
        if (surface != EGL_NO_SURFACE)
            eglDestroySurface(display, surface);
        if (context != EGL_NO_CONTEXT)
            eglDestroyContext(display, context);
    }
};

EGLDisplay surfacelessDisplay() {
    static const EGLDisplay display = [] {
        const EGLDisplay found =
            eglGetPlatformDisplay(EGL_PLATFORM_SURFACELESS_MESA, EGL_DEFAULT_DISPLAY, nullptr);
        return found != EGL_NO_DISPLAY && eglInitialize(found, nullptr, nullptr) ? found : EGL_NO_DISPLAY;
    }();
    return display;
}

EGLConfig chooseConfig(EGLDisplay display) {
    const EGLint wanted[] = {EGL_SURFACE_TYPE,
                             EGL_PBUFFER_BIT,
                             EGL_RENDERABLE_TYPE,
                             EGL_OPENGL_BIT,
                             EGL_RED_SIZE,
                             8,
                             EGL_GREEN_SIZE,
                             8,
                             EGL_BLUE_SIZE,
                             8,
                             EGL_ALPHA_SIZE,
                             8,
                             EGL_DEPTH_SIZE,
                             24,
                             EGL_STENCIL_SIZE,
                             8,
                             EGL_NONE};
    EGLConfig config = nullptr;
    EGLint count = 0;
    return eglChooseConfig(display, wanted, &config, 1, &count) && count > 0 ? config : nullptr;
}

void *createContext(unsigned int width, unsigned int height) {
    auto made = std::make_unique<Context>();
    made->display = surfacelessDisplay();
    if (made->display == EGL_NO_DISPLAY || !eglBindAPI(EGL_OPENGL_API))
        return nullptr;
    const EGLConfig config = chooseConfig(made->display);
    if (config == nullptr)
        return nullptr;
    const EGLint size[] = {EGL_WIDTH, static_cast<EGLint>(width), EGL_HEIGHT, static_cast<EGLint>(height),
                           EGL_NONE};
    made->surface = eglCreatePbufferSurface(made->display, config, size);
    made->context = eglCreateContext(made->display, config, EGL_NO_CONTEXT, nullptr);
    if (made->surface == EGL_NO_SURFACE || made->context == EGL_NO_CONTEXT)
        return nullptr;
    return made.release();
}

SbBool makeCurrent(void *context) {
    auto *const ours = static_cast<Context *>(context);
    ours->previousDisplay = eglGetCurrentDisplay();
    ours->previousContext = eglGetCurrentContext();
    ours->previousDraw = eglGetCurrentSurface(EGL_DRAW);
    ours->previousRead = eglGetCurrentSurface(EGL_READ);
    eglBindAPI(EGL_OPENGL_API);
    return eglMakeCurrent(ours->display, ours->surface, ours->surface, ours->context) ? TRUE : FALSE;
}

void reinstatePrevious(void *context) {
    const auto *const ours = static_cast<Context *>(context);
    if (ours->previousDisplay == EGL_NO_DISPLAY)
        eglMakeCurrent(ours->display, EGL_NO_SURFACE, EGL_NO_SURFACE, EGL_NO_CONTEXT);
    else
        eglMakeCurrent(ours->previousDisplay, ours->previousDraw, ours->previousRead, ours->previousContext);
}

void destroyContext(void *context) {
    delete static_cast<Context *>(context);
}

SoErrorCB *previousHandler = nullptr;
void *previousHandlerData = nullptr;

// The toolkit asks GLX about each context before it knows that the context is none of GLX's.
void dropGlxWarning(const SoError *error, void *) {
    const std::string_view text = error->getDebugString().getString();
    if (text.find("glxglue_isdirect") == std::string_view::npos && previousHandler != nullptr)
        previousHandler(error, previousHandlerData);
}

} // namespace

void useEglForOffscreenRendering() {
    static bool done = false;
    if (done)
        return;
    done = true;
    static cc_glglue_offscreen_cb_functions functions = {createContext, makeCurrent, reinstatePrevious,
                                                         destroyContext};
    cc_glglue_context_set_offscreen_cb_functions(&functions);
    previousHandler = SoDebugError::getHandlerCallback();
    previousHandlerData = SoDebugError::getHandlerData();
    SoDebugError::setHandlerCallback(dropGlxWarning, nullptr);
}

} // namespace oravane
