#include "kauthpluginloader.h"

#include <vexlite/ikauthorizationhandler.h>

KAuthPluginLoader::KAuthPluginLoader(const QString& path)
    : m_library(path)
{}

QString KAuthPluginLoader::fileName() const
{
    return m_library.fileName();
}

IKAuthorizationHandler* KAuthPluginLoader::load()
{
    if (!m_library.load()) {
        m_error = m_library.errorString();
        return nullptr;
    }
    auto entry =
        reinterpret_cast<GetAuthorizationHandlerFunc>(m_library.resolve("GetAuthorizationHandler"));
    if (!entry) {
        m_error = QStringLiteral("it does not export GetAuthorizationHandler");
        m_library.unload();
        return nullptr;
    }
    IKAuthorizationHandler* handler = entry();
    if (!handler)
        m_error = QStringLiteral("GetAuthorizationHandler returned no handler");
    return handler;
}
