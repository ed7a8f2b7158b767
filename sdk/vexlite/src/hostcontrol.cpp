#include "vexlite/hostcontrol.h"

#include "khostprofile.h"
#include "vexlite/khksoftwaresettings.h"
#include "vexlite/kqtcompat.h"

#include <QFile>
#include <QJsonDocument>
#include <QJsonObject>

#include <utility>

namespace {

const char kUserInfoStorePath[] = "Corvane\\Office\\6.0\\Common\\UserInfo";
const char kUserNameValue[] = "UserName";

} // namespace

namespace krt {
namespace hostcontrol {

const char* profileEnvironmentVariable()
{
    return "ZENTO_HOST_PROFILE";
}

bool loadProfile(const QString& dir, QString* error)
{
    return KHostProfile::instance().load(dir, error);
}

void resetProfile(const QString& dir)
{
    KHostProfile::instance().reset(dir);
}

bool saveProfile(const QString& dir, QString* error)
{
    return KHostProfile::instance().save(dir, error);
}

QString profileDir()
{
    return KHostProfile::instance().dir();
}

void setHandler(IKAuthorizationHandler* handler)
{
    KHostProfile::instance().setHandler(handler);
}

IKAuthorizationHandler* handler()
{
    return KHostProfile::instance().handler();
}

void setProductString(const QString& key, const QString& value)
{
    KHostProfile::instance().setProductString(key, value);
}

void setFeatureSupported(const QString& feature, bool supported)
{
    KHostProfile::instance().setFeatureSupported(feature, supported);
}

void setOverseasVersion(bool overseas)
{
    KHostProfile::instance().setOverseas(overseas);
}

void setConfigValue(ConfigLayer layer, const QString& key, const QVariant& value)
{
    KHostProfile::instance().setConfigValue(layer, key, value);
}

void setLanguage(const QString& language)
{
    KHostProfile::instance().setLanguage(language);
}

QString language()
{
    return KHostProfile::instance().language();
}

void setVersion(const QString& version)
{
    KHostProfile::instance().setInfoString(QStringLiteral("version"), version);
}

void setInstallUuid(const QString& uuid)
{
    KHostProfile::instance().setInfoString(QStringLiteral("installUuid"), uuid);
}

void setHardwareId(const QString& hdid)
{
    KHostProfile::instance().setInfoString(QStringLiteral("hdid"), hdid);
}

void setDistributionChannel(const QString& channel)
{
    KHostProfile::instance().setInfoString(QStringLiteral("mc"), channel);
}

void setUserAgent(const QString& userAgent)
{
    KHostProfile::instance().setInfoString(QStringLiteral("userAgent"), userAgent);
}

void setUwpCommonValue(const QString& key, const QVariant& value)
{
    const QString name = KHostProfile::uwpInfoKey(key);
    if (name.isEmpty())
        return;
    if (KQtCompat::isNull(value))
        KHostProfile::instance().removeInfo(name);
    else
        KHostProfile::instance().setInfoString(name, value.toString());
}

void setDisplayScale(qreal scale)
{
    KHostProfile::instance().setDisplayScale(scale);
}

qreal displayScale()
{
    return KHostProfile::instance().displayScale();
}

QVariantList commandTree(const QString& id)
{
    return KHostProfile::instance().commandTree(id);
}

void setCommandTree(const QString& id, const QVariantList& tree)
{
    KHostProfile::instance().setCommandTree(id, tree);
}

QStringList executedCommands()
{
    return KHostProfile::instance().executedCommands();
}

void clearExecutedCommands()
{
    KHostProfile::instance().clearExecutedCommands();
}

void setCommandRunner(std::function<void(const QString&)> runner)
{
    KHostProfile::instance().setCommandRunner(std::move(runner));
}

void setActiveApp(const QString& name)
{
    KHostProfile::instance().setActiveApp(name);
}

void setAccountLogined(bool logined, const QString& userName)
{
    KHostProfile::instance().setAccount(logined, userName);
}

void setLogoutDuetoOffLine(bool offline)
{
    KHostProfile::instance().setLogoutDuetoOffLine(offline);
}

QList<AccountEntryCall> accountEntryCalls()
{
    return KHostProfile::instance().accountEntryCalls();
}

void clearAccountEntryCalls()
{
    KHostProfile::instance().clearAccountEntryCalls();
}

void setAccountEntryObserver(std::function<void(const AccountEntryCall&)> observer)
{
    KHostProfile::instance().setAccountEntryObserver(std::move(observer));
}

QString suiteUserName()
{
    return KHKSoftwareSettings(KHKSoftwareSettings::CurrentUser, QLatin1String(kUserInfoStorePath))
        .value(QLatin1String(kUserNameValue))
        .toString();
}

void setSuiteUserName(const QString& name)
{
    KHKSoftwareSettings(KHKSoftwareSettings::CurrentUser, QLatin1String(kUserInfoStorePath))
        .setValue(QLatin1String(kUserNameValue), name);
}

void setUserInformationFault(UserInformationFault fault)
{
    KHostProfile::instance().setUserInformationFault(fault);
}

UserInformationFault userInformationFault()
{
    return KHostProfile::instance().userInformationFault();
}

QString infoCollectFile()
{
    return KHostProfile::instance().infoCollectFile();
}

QList<QVariantMap> recordedEvents()
{
    QList<QVariantMap> events;
    QFile file(infoCollectFile());
    if (!file.open(QIODevice::ReadOnly))
        return events;
    while (!file.atEnd()) {
        const QJsonDocument line = QJsonDocument::fromJson(file.readLine());
        if (line.isObject())
            events.append(line.object().toVariantMap());
    }
    return events;
}

void clearRecordedEvents()
{
    QFile::remove(infoCollectFile());
}

} // namespace hostcontrol
} // namespace krt
