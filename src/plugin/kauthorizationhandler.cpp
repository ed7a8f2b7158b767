#include "kauthorizationhandler.h"

#include "authinfokeys.h"
#include "pluginlogging.h"

#include <vexlite/kqtcompat.h>
#include <vexlite/krtconfigs.h>

namespace {

// Source mask for host configuration answering keys nobody else did.
constexpr unsigned kDefaultInfoSources = 0x1F;

} // namespace

QVariant KAuthorizationHandler::getInfo(const QString& key)
{
    if (key.isEmpty())
        return QVariant();

    const auto cached = m_infoCache.constFind(key);
    if (cached != m_infoCache.cend())
        return cached.value();

    const QLatin1String separator(KEY_SEPARATOR);
    const int at = key.indexOf(separator);
    const QString group = key.left(at);
    const QString name = key.mid(at < 0 ? 0 : at + separator.size());

    QVariant result;
    if (group == QLatin1String(GROUP_AUTH))
        result = authInfo(key, group, name);
    else if (group == QLatin1String(GROUP_PRODUCT))
        result = productInfo(key, group, name);
    else if (group == QLatin1String(GROUP_SERVER))
        result = serverInfo(key, group, name);

    if (KQtCompat::isNull(result))
        result = defaultInfo(key, group, name);

    if (KQtCompat::isNull(result)) {
        if (m_unknownKeys < kMaxUnknownKeys) {
            // The cached null keeps the warning to once per key.
            qWarning("The info %s was not found, the key must be handled!",
                     key.toLocal8Bit().constData());
            m_infoCache.insert(key, QVariant());
        } else if (m_unknownKeys == kMaxUnknownKeys) {
            qCWarning(lcAuthPlugin, "%d info keys were not found; later ones are not remembered",
                      kMaxUnknownKeys);
        }
        m_unknownKeys = qMin(m_unknownKeys + 1, kMaxUnknownKeys + 1);
        return QVariant();
    }
    return result;
}

bool KAuthorizationHandler::prehook(const QString& name, bool flag, void* data)
{
    bool copy = flag;
    return prehook(name, static_cast<void*>(&copy), data);
}

bool KAuthorizationHandler::prehook(const QString& /*name*/, void* /*data*/, void* /*extra*/)
{
    return true;
}

QVariant KAuthorizationHandler::productInfo(const QString&, const QString&, const QString&)
{
    return QVariant();
}

QVariant KAuthorizationHandler::authInfo(const QString& /*key*/, const QString& /*group*/,
                                         const QString& name)
{
    if (name == QLatin1String("StartupSplashFileName"))
        return QStringLiteral("");
    return QVariant();
}

QVariant KAuthorizationHandler::serverInfo(const QString&, const QString&, const QString&)
{
    return QVariant();
}

QVariant KAuthorizationHandler::defaultInfo(const QString& key, const QString& group,
                                            const QString& /*name*/)
{
    const QVariant configured = krt::configs::getValue(key, kDefaultInfoSources);
    if (!KQtCompat::isNull(configured)) {
        qCDebug(lcAuthPlugin, "info %s answered by the host configuration", qUtf8Printable(key));
        m_infoCache.insert(key, configured);
        return configured;
    }
    if (group == QLatin1String(GROUP_SUPPORT) || group == QLatin1String(GROUP_PATENT)) {
        const QVariant off(false);
        m_infoCache.insert(key, off);
        return off;
    }
    return QVariant();
}

void KAuthorizationHandler::insertStaticInfo(const QString& key, const QVariant& value)
{
    m_infoCache.insert(key, value);
}
