#include <oravane/PoDebugError.h>

#include "core/ClassTable.h"

#include <cstdarg>
#include <cstdio>
#include <string>

SoErrorCB *PoDebugError::handlerCB = nullptr;
void *PoDebugError::cbData = nullptr;
SoType PoDebugError::classTypeId STATIC_SOTYPE_INIT;

void PoDebugError::initClass() {
    // The type lives as long as the toolkit's database, which a program may finish and start again.
    classTypeId = SoType::createType(SoError::getClassTypeId(), "DebugError");
    setHandlerCallback(nullptr, nullptr);
}

SoType PoDebugError::getClassTypeId() {
    return classTypeId;
}

SoType PoDebugError::getTypeId() const {
    return classTypeId;
}

void PoDebugError::setHandlerCallback(SoErrorCB *callback, void *data) {
    handlerCB = callback ? callback : &SoError::defaultHandlerCB;
    cbData = data;
}

SoErrorCBPtr PoDebugError::getHandler(void *&data) const {
    data = cbData;
    return handlerCB;
}

void PoDebugError::report(Severity severity, const char *methodName, const char *format, va_list arguments) {
    static const char *const prefixes[] = {"Oravane error in ", "Oravane warning in ", "Oravane: in "};
    if (!methodName || !format)
        return;
    va_list measured;
    va_copy(measured, arguments);
    const int length = std::vsnprintf(nullptr, 0, format, measured);
    va_end(measured);
    std::string message(length > 0 ? static_cast<std::size_t>(length) : 0, '\0');
    std::vsnprintf(message.data(), message.size() + 1, format, arguments);
    PoDebugError error;
    error.setDebugString((std::string(prefixes[severity]) + methodName + "():" + message).c_str());
    // Not through handleError(), which calls the handler of SoError whatever getHandler says.
    void *data = nullptr;
    if (SoErrorCB *handler = error.getHandler(data))
        handler(&error, data);
}

void PoDebugError::post(const char *methodName, const char *format, ...) {
    va_list arguments;
    va_start(arguments, format);
    report(SEVERITY_ERROR, methodName, format, arguments);
    va_end(arguments);
}

void PoDebugError::postWarning(const char *methodName, const char *format, ...) {
    va_list arguments;
    va_start(arguments, format);
    report(SEVERITY_WARNING, methodName, format, arguments);
    va_end(arguments);
}

void PoDebugError::postInfo(const char *methodName, const char *format, ...) {
    va_list arguments;
    va_start(arguments, format);
    report(SEVERITY_INFO, methodName, format, arguments);
    va_end(arguments);
}
