#include "qcommidentity.h"

#include "commlogging.h"
#include "qcommstores.h"

#include <vexlite/kdcinfocdetail.h>
#include <vexlite/khksoftwaresettings.h>
#include <vexlite/krtinfo.h>
#include <vexlite/kuwpcommonsettings.h>
#include <vexlite/kxuseragentutil.h>

#include <QCoreApplication>
#include <QRegularExpression>
#include <QSettings>
#include <QSysInfo>
#include <QUuid>

namespace {

const QLatin1String kDeviceStorePath("roamingdevice");
const QLatin1String kDeviceIdName("deviceid");
const QLatin1String kLanguageStorePath("Corvane\\Office\\6.0\\Common\\Local");
const QLatin1String kUnknownVersion("0.0.0.0");

QString randomUuidWithout(const char* pattern)
{
    return QUuid::createUuid().toString().remove(QRegularExpression(QLatin1String(pattern)));
}

} // namespace

namespace QComm {

QString deviceID()
{
    static QString id;
    if (!id.isEmpty())
        return id;
    KHKSoftwareSettings store(KHKSoftwareSettings::CurrentUser, kDeviceStorePath);
    id = store.value(kDeviceIdName, QString()).toString();
    if (id.isEmpty()) {
        id = QStringLiteral("UUID-") + randomUuidWithout("\\{|\\}").toUpper();
        // Should this write fail, the next process makes another identifier.
        store.setValue(kDeviceIdName, id);
    }
    return id;
}

QString createUuid()
{
    return randomUuidWithout("\\{|\\}|\\-");
}

int langID()
{
    const int stored = KHKSoftwareSettings(KHKSoftwareSettings::CurrentUser, kLanguageStorePath)
                           .value(QStringLiteral("UILanguage"), 0)
                           .toInt();
    if (stored != 0)
        return stored;
    return getNimboCfgsValue(QStringLiteral("Local/UILanguage"), 2052).toInt();
}

QVariant getNimboCfgsValue(const QString& key, const QVariant& defaultValue)
{
    qCDebug(lcAuthCommon, "func getNimboCfgsValue mac not impl!");
    QSettings setup(QCoreApplication::applicationDirPath() + QStringLiteral("/cfgs/setup.cfg"),
                    QSettings::IniFormat);
    setup.setIniCodec("UTF-8");
    return setup.value(key, defaultValue);
}

QString zentoUUID()
{
    return KDcInfoCDetail::getUuid();
}

QString zentoHDID()
{
    return KDcInfoCDetail::getHdid();
}

QString zentoGUID()
{
    const QString guid = readZentoCommonRegValue(QStringLiteral("infoGUID"), QString());
    if (!guid.isEmpty())
        return guid;
    return krt::KUWPCommonSettings().value(QStringLiteral("infoGUID"), QVariant()).toString();
}

QString zentoVersion()
{
    const QString version = krt::info::version();
    return version == kUnknownVersion ? QStringLiteral("8.1.0.X") : version;
}

QString nimboVersion()
{
    return zentoVersion();
}

QString zentoDistSrc()
{
    return readZentoCommonRegValue(QStringLiteral("DistSrc"), QString());
}

QString zentoInstallPath()
{
    return readZentoCommonRegValue(QStringLiteral("InstallRoot"), QString());
}

QString userLevel()
{
    return readNimboRegValue(QStringLiteral("usertype"), QStringLiteral("-1"));
}

void setUserLevel(const QString& level)
{
    writeNimboRegValue(QStringLiteral("usertype"), level);
}

QString getOperationVersion()
{
    // The label's shape is "<system> <version>" on every platform, so the
    // user agents built from it parse alike.
    QString label = QStringLiteral("Windows");
#ifdef Q_OS_MACOS
    label = QStringLiteral("macOS %1").arg(QSysInfo::productVersion());
#else
    label = QStringLiteral("Linux %1").arg(QSysInfo::productVersion());
#endif
    return label;
}

QString getWebKitUserAgent(bool nimboPrefix, const QString& language, const QString& webKitVersion)
{
    static QString userAgent;
    if (userAgent.isEmpty()) {
        const QString version = nimboPrefix ? nimboVersion() : zentoVersion();
        userAgent = (nimboPrefix ? QStringLiteral("nimbo/") : QStringLiteral("zento/")) + version +
                    QStringLiteral(" (") + getOperationVersion() + QStringLiteral(";") +
                    QStringLiteral("U;") + language + QStringLiteral(") ") +
                    QStringLiteral("QtWebkit/") + webKitVersion + QStringLiteral(" Version/") +
                    version;
    }
    return userAgent;
}

QString getUserAgent(const QString&)
{
    static QString userAgent;
    if (userAgent.isEmpty())
        userAgent = KxUserAgentUtil::getUserAgent();
    return userAgent;
}

QString userComputerName()
{
    qWarning("func userComputerName mac not impl!");
    return QString();
}

QString vexlaunchPath()
{
    qWarning("func vexlaunchPath not impl");
    return QString();
}

QString photolaunchPath()
{
    qWarning("func photolaunchPath not impl");
    return QString();
}

QString zentoCenterPath()
{
    return vexlaunchPath();
}

} // namespace QComm
