#include "kcommonauthhandler.h"

bool KCommonAuthHandler::prehook(const QString& name, void* data)
{
    // The base form is called directly: a handler further down must not be
    // asked again through the table.
    return KAuthorizationHandler::prehook(name, data, nullptr);
}
