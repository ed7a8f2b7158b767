#include "qcommidentity.h"

#include "commlogging.h"
#include "qcommstores.h"

#include <vexlite/kdcinfocdetail.h>
#include <vexlite/khksoftwaresettings.h>
#include <vexlite/kqtcompat.h>
#include <vexlite/krtinfo.h>
#include <vexlite/kuwpcommonsettings.h>
#include <vexlite/kxuseragentutil.h>

#include <QCoreApplication>
#include <QDeadlineTimer>
#include <QDir>
#include <QFileInfo>
#include <QLockFile>
#include <QRegularExpression>
#include <QSettings>
#include <QSysInfo>
#include <QThread>
#include <QUuid>

namespace {

const QLatin1String kDeviceStorePath("roamingdevice");
const QLatin1String kDeviceIdName("deviceid");
const QLatin1String kLanguageStorePath("Corvane\\Office\\6.0\\Common\\Local");
const QLatin1String kUnknownVersion("0.0.0.0");

// Long enough for any process that holds the lock to read and write the
// store; a lock held longer belongs to a process that hangs.
constexpr int kDeviceLockTimeoutMs = 10000;

QString randomUuidWithout(const char* pattern)
{
    return QUuid::createUuid().toString().remove(QRegularExpression(QLatin1String(pattern)));
}

QString storedDeviceId()
{
    return KHKSoftwareSettings(KHKSoftwareSettings::CurrentUser, kDeviceStorePath)
        .value(kDeviceIdName, QString())
        .toString();
}

// The stored identifier, or a new one stored for every later process.
// Processes that start at the same moment take turns through a lock file
// beside the store, so that all of them end with the identifier the first
// one stored. A store that cannot be written leaves the new identifier to
// this process alone.
QString loadOrCreateDeviceId()
{
    QString id = storedDeviceId();
    if (!id.isEmpty())
        return id;
    const QString storeFile = KHKSoftwareSettings::storeFileName(KHKSoftwareSettings::CurrentUser);
    QDir().mkpath(QFileInfo(storeFile).absolutePath());
    QLockFile lock(storeFile + QStringLiteral(".deviceid.lock"));
    // Without the lock (a folder that cannot be written, a hung process)
    // the identifier is made all the same. The holder needs a few
    // milliseconds: ask often rather than with QLockFile's growing pauses.
    const QDeadlineTimer deadline(kDeviceLockTimeoutMs);
    while (!lock.tryLock(0) && lock.error() == QLockFile::LockFailedError && !deadline.hasExpired())
        QThread::msleep(2);
    id = storedDeviceId();
    if (!id.isEmpty())
        return id;
    id = QStringLiteral("UUID-") + randomUuidWithout("\\{|\\}").toUpper();
    KHKSoftwareSettings store(KHKSoftwareSettings::CurrentUser, kDeviceStorePath);
    store.setValue(kDeviceIdName, id);
    store.sync();
    if (store.status() != QSettings::NoError)
        qCWarning(lcAuthCommon,
                  "cannot store the device identifier in %s; it holds for this process only",
                  qUtf8Printable(storeFile));
    return id;
}

} // namespace

namespace QComm {

QString deviceID()
{
    static const QString id = loadOrCreateDeviceId();
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
    KQtCompat::setIniUtf8(setup);
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
