#include "kdeskhivelib.h"

#include "usercenterlogging.h"

#include <QCoreApplication>
#include <QDir>
#include <QFileInfo>
#include <QLibrary>

namespace {

template <typename Func>
Func resolve(QLibrary* library, const char* symbol)
{
    const auto function = reinterpret_cast<Func>(library->resolve(symbol));
    if (!function)
        qCDebug(lcAuthUserCenter, "the cloud library does not export %s", symbol);
    return function;
}

} // namespace

KDeskhiveLib* KDeskhiveLib::instance()
{
    static KDeskhiveLib lib;
    return &lib;
}

QString KDeskhiveLib::pluginDirectory()
{
    return QCoreApplication::applicationDirPath() + QDir::separator() +
           QStringLiteral("addons/deskhive");
}

KDeskhiveLib::KDeskhiveLib()
{
    const QString dir = pluginDirectory();
    if (!QFileInfo::exists(dir)) {
        qCDebug(lcAuthUserCenter, "no cloud library: %s does not exist", qUtf8Printable(dir));
        return;
    }

    // QLibrary adds the platform's prefix and suffix to the bare name.
    m_library = new QLibrary(QDir(dir).absolutePath() + QStringLiteral("/deskhive"));
    if (!m_library->load()) {
        qCDebug(lcAuthUserCenter, "no cloud library: %s", qUtf8Printable(m_library->errorString()));
        return;
    }
    qCDebug(lcAuthUserCenter, "cloud library loaded from %s",
            qUtf8Printable(m_library->fileName()));

    m_localPushMessageDispatchInstance = resolve<LocalPushMessageDispatchInstanceFunc>(
        m_library, "LocalPushMessageDispatchInstance");
    m_nimboClientInstance = resolve<NimboClientInstanceFunc>(m_library, "NimboClientInstance");
    m_liveStateUpdateCacheInstance =
        resolve<LiveStateUpdateCacheInstanceFunc>(m_library, "LiveStateUpdateCacheInstance");
    m_deskhivePluginController =
        resolve<DeskhivePluginControllerFunc>(m_library, "DeskhivePluginController");
}

KDeskhiveLib::~KDeskhiveLib()
{
    if (m_library) {
        m_library->unload();
        delete m_library;
    }
}

bool KDeskhiveLib::isLoaded() const
{
    return m_library && m_library->isLoaded();
}

QString KDeskhiveLib::fileName() const
{
    return m_library ? m_library->fileName() : QString();
}

QString KDeskhiveLib::errorString() const
{
    return m_library && !m_library->isLoaded() ? m_library->errorString() : QString();
}

QObject* KDeskhiveLib::localPushMessageDispatchInstance() const
{
    return m_localPushMessageDispatchInstance ? m_localPushMessageDispatchInstance() : nullptr;
}

INimboClient* KDeskhiveLib::nimboClientInstance() const
{
    return m_nimboClientInstance ? m_nimboClientInstance() : nullptr;
}

ILiveStateUpdateCache* KDeskhiveLib::liveStateUpdateCacheInstance() const
{
    return m_liveStateUpdateCacheInstance ? m_liveStateUpdateCacheInstance() : nullptr;
}

QObject* KDeskhiveLib::deskhivePluginController() const
{
    return m_deskhivePluginController ? m_deskhivePluginController() : nullptr;
}
