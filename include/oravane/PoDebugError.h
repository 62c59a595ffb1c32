#ifndef ORAVANE_PODEBUGERROR_H
#define ORAVANE_PODEBUGERROR_H

#include <oravane/OravaneApi.h>

#include <Inventor/errors/SoError.h>

/// Run-time messages of the library, through the error machinery of the toolkit. No report stops the program
/// or changes the caller's state.
///
/// \code
///   PoDebugError::postWarning("PoMyKit", "%d values for %d nodes", numValues, numNodes);
///   // "Oravane warning in PoMyKit():7 values for 9 nodes"
/// \endcode
///
/// A message may have any length.
class ORAVANE_API PoDebugError : public SoError {
public:
    enum Severity { SEVERITY_ERROR = 0, SEVERITY_WARNING = 1, SEVERITY_INFO = 2 };

    PoDebugError() = default;
    ~PoDebugError() override = default;

    /// Reports "Oravane error in METHOD():MESSAGE", with the arguments of `printf`.
    static void post(const char *methodName, const char *format, ...) __attribute__((format(printf, 2, 3)));
    /// Reports "Oravane warning in METHOD():MESSAGE".
    static void postWarning(const char *methodName, const char *format, ...)
        __attribute__((format(printf, 2, 3)));
    /// Reports "Oravane: in METHOD():MESSAGE".
    static void postInfo(const char *methodName, const char *format, ...)
        __attribute__((format(printf, 2, 3)));

    /// Replaces the handler, which gets each report as a `PoDebugError`, and its data. Null brings back the
    /// toolkit's default handler, which prints to the standard error stream.
    static void setHandlerCallback(SoErrorCB *callback, void *data);

    static SoType getClassTypeId();
    SoType getTypeId() const override;
    static void initClass();

protected:
    SoErrorCBPtr getHandler(void *&data) const override;

private:
    static void report(Severity severity, const char *methodName, const char *format,
                       __builtin_va_list arguments);

    static SoErrorCB *handlerCB;
    static void *cbData;
    static SoType classTypeId;
};

#endif
