#ifndef ORAVANE_TOOLS_EGLCONTEXT_H
#define ORAVANE_TOOLS_EGLCONTEXT_H

namespace oravane {

/// Makes the toolkit take its off-screen contexts from EGL without a window system. Once is enough; further
/// calls do nothing.
void useEglForOffscreenRendering();

} // namespace oravane

#endif
