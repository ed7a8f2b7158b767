#include "khostprofile.h"

#include "vexlite/hostcontrol.h"
#include "vexlite/kqtcompat.h"
#include "vexlitelogging.h"

#include <QCoreApplication>
#include <QDir>
#include <QFile>
#include <QJsonArray>
#include <QJsonDocument>
#include <QLocale>
#include <QMutexLocker>
#include <QSaveFile>
#include <QStandardPaths>

#include <cmath>

namespace {

const char kProfileFile[] = "host.json";
// The word processor is the application a shell starts with.
const char kDefaultApp[] = "zento";

// Layer bits in the order the profile names them; the array index is the
// bit number, so a higher index means a layer that takes precedence.
const char* const kLayerNames[] = {"builtin", "machine", "user", "server", "policy"};

QString defaultProfileDir()
{
    const QByteArray fromEnv = qgetenv(krt::hostcontrol::profileEnvironmentVariable());
    if (!fromEnv.isEmpty())
        return QString::fromLocal8Bit(fromEnv);
    if (QCoreApplication::instance())
        return QCoreApplication::applicationDirPath() + QStringLiteral("/profile");
    return QDir::current().absoluteFilePath(QStringLiteral("profile"));
}

QJsonObject toJsonObject(const QHash<QString, QVariant>& values)
{
    QJsonObject object;
    for (auto it = values.cbegin(); it != values.cend(); ++it)
        object.insert(it.key(), QJsonValue::fromVariant(it.value()));
    return object;
}

// Whole numbers are kept as integers, written "1e3" or "1000", so that they
// read back as "1000" and not as a real number's text in every conversion;
// int where it fits. Only real numbers within the 64-bit range can become
// integers (-2^63 is the smallest, 2^63 the first past the largest); other
// numbers stay real.
QVariant fromJson(const QJsonValue& value)
{
    constexpr double kPastLargest = 9223372036854775808.0;
    QVariant number = value.toVariant();
    if (number.userType() == QMetaType::Double) {
        const double d = number.toDouble();
        if (d >= -kPastLargest && d < kPastLargest &&
            static_cast<double>(static_cast<qint64>(d)) == d)
            number = static_cast<qint64>(d);
    }
    if (number.userType() == QMetaType::LongLong) {
        const qint64 whole = number.toLongLong();
        if (whole >= INT_MIN && whole <= INT_MAX)
            number = static_cast<int>(whole);
    }
    return number;
}

// A copy with data of its own. What the host keeps from a plug-in must not
// point into the plug-in's constant data (QStringLiteral), which goes when
// the plug-in is unloaded.
QString ownCopy(const QString& text)
{
    return QString(text.constData(), text.size());
}

// A display scale outside what a screen can sensibly run at (or not a number)
// means that none was set: the screen decides.
qreal sanitizedDisplayScale(double scale)
{
    return std::isfinite(scale) && scale > 0 && scale <= 8 ? scale : 0;
}

} // namespace

KHostProfile& KHostProfile::instance()
{
    static KHostProfile profile;
    return profile;
}

KHostProfile::KHostProfile() = default;

void KHostProfile::ensureLoadedLocked()
{
    if (m_loaded)
        return;
    const QString dir = defaultProfileDir();
    QString error;
    if (!load(dir, &error))
        qCWarning(lcVexLite, "%s", qPrintable(error));
}

void KHostProfile::clearLocked(const QString& dir)
{
    m_loaded = true;
    m_dir = dir;
    m_productStrings.clear();
    m_features.clear();
    m_overseas = false;
    for (auto& layer : m_configs)
        layer.clear();
    m_info = QJsonObject();
    m_language = QStringLiteral("en_US");
    m_activeApp = QLatin1String(kDefaultApp);
    m_accountLogined = false;
    m_accountUserName.clear();
    m_logoutDuetoOffLine = false;
    m_accountEntryCalls.clear();
    m_userInformationFault = krt::hostcontrol::NoUserInformationFault;
    m_displayScale = 0;
    m_commandTrees = QJsonObject();
}

bool KHostProfile::load(const QString& dir, QString* error)
{
    QMutexLocker lock(&m_mutex);
    clearLocked(QDir(dir).absolutePath());
    const bool read = readLocked(error);
    // Once, for whatever language the profile left: a failed read leaves English.
    loadTranslatorLocked();
    return read;
}

bool KHostProfile::readLocked(QString* error)
{
    const QString path = QDir(m_dir).filePath(QLatin1String(kProfileFile));
    QFile file(path);
    if (!file.open(QIODevice::ReadOnly)) {
        if (error)
            *error =
                QStringLiteral("cannot read host profile %1: %2").arg(path, file.errorString());
        return false;
    }
    QJsonParseError parseError;
    const QJsonDocument doc = QJsonDocument::fromJson(file.readAll(), &parseError);
    if (!doc.isObject()) {
        if (error)
            *error = QStringLiteral("host profile %1 is not a JSON object: %2 at offset %3")
                         .arg(path, parseError.errorString())
                         .arg(parseError.offset);
        return false;
    }
    const QJsonObject root = doc.object();

    const QJsonObject product = root.value(QLatin1String("product")).toObject();
    m_overseas = product.value(QLatin1String("overseas")).toBool(false);
    const QJsonObject strings = product.value(QLatin1String("strings")).toObject();
    for (auto it = strings.begin(); it != strings.end(); ++it)
        m_productStrings.insert(it.key(), it.value().toString());
    const QJsonObject features = product.value(QLatin1String("features")).toObject();
    for (auto it = features.begin(); it != features.end(); ++it)
        m_features.insert(it.key(), it.value().toBool());

    const QJsonObject configs = root.value(QLatin1String("configs")).toObject();
    for (int bit = 0; bit < kLayerCount; ++bit) {
        const QJsonObject layer = configs.value(QLatin1String(kLayerNames[bit])).toObject();
        for (auto it = layer.begin(); it != layer.end(); ++it)
            m_configs[bit].insert(it.key(), fromJson(it.value()));
    }

    m_info = root.value(QLatin1String("info")).toObject();
    const QString language =
        root.value(QLatin1String("i18n")).toObject().value(QLatin1String("language")).toString();
    if (!language.isEmpty())
        m_language = language;

    const QJsonObject shell = root.value(QLatin1String("shell")).toObject();
    const QJsonValue activeApp = shell.value(QLatin1String("activeApp"));
    if (activeApp.isString())
        m_activeApp = activeApp.toString();
    const QJsonObject account = shell.value(QLatin1String("account")).toObject();
    m_accountLogined = account.value(QLatin1String("logined")).toBool(false);
    m_accountUserName =
        m_accountLogined ? account.value(QLatin1String("userName")).toString() : QString();
    m_logoutDuetoOffLine = account.value(QLatin1String("logoutDuetoOffLine")).toBool(false);
    m_displayScale = sanitizedDisplayScale(
        root.value(QLatin1String("display")).toObject().value(QLatin1String("scale")).toDouble());
    m_commandTrees = root.value(QLatin1String("commands")).toObject();
    return true;
}

void KHostProfile::reset(const QString& dir)
{
    QMutexLocker lock(&m_mutex);
    clearLocked(dir.isEmpty() ? QString() : QDir(dir).absolutePath());
    loadTranslatorLocked();
}

bool KHostProfile::save(const QString& dir, QString* error)
{
    QMutexLocker lock(&m_mutex);
    ensureLoadedLocked();

    QJsonObject strings;
    for (auto it = m_productStrings.cbegin(); it != m_productStrings.cend(); ++it)
        strings.insert(it.key(), it.value());
    QJsonObject features;
    for (auto it = m_features.cbegin(); it != m_features.cend(); ++it)
        features.insert(it.key(), it.value());
    QJsonObject product;
    product.insert(QLatin1String("overseas"), m_overseas);
    product.insert(QLatin1String("strings"), strings);
    product.insert(QLatin1String("features"), features);

    QJsonObject configs;
    for (int bit = 0; bit < kLayerCount; ++bit)
        configs.insert(QLatin1String(kLayerNames[bit]), toJsonObject(m_configs[bit]));

    QJsonObject root;
    root.insert(QLatin1String("product"), product);
    root.insert(QLatin1String("configs"), configs);
    root.insert(QLatin1String("info"), m_info);
    root.insert(QLatin1String("i18n"), QJsonObject{{QLatin1String("language"), m_language}});
    const QJsonObject account{{QLatin1String("logined"), m_accountLogined},
                              {QLatin1String("userName"), m_accountUserName},
                              {QLatin1String("logoutDuetoOffLine"), m_logoutDuetoOffLine}};
    root.insert(QLatin1String("shell"), QJsonObject{{QLatin1String("activeApp"), m_activeApp},
                                                    {QLatin1String("account"), account}});
    if (m_displayScale > 0)
        root.insert(QLatin1String("display"),
                    QJsonObject{{QLatin1String("scale"), m_displayScale}});

    if (!m_commandTrees.isEmpty())
        root.insert(QLatin1String("commands"), m_commandTrees);

    if (!QDir().mkpath(dir)) {
        if (error)
            *error = QStringLiteral("cannot create profile directory %1").arg(dir);
        return false;
    }
    QSaveFile file(QDir(dir).filePath(QLatin1String(kProfileFile)));
    if (!file.open(QIODevice::WriteOnly) || file.write(QJsonDocument(root).toJson()) < 0 ||
        !file.commit()) {
        if (error)
            *error = QStringLiteral("cannot write %1: %2").arg(file.fileName(), file.errorString());
        return false;
    }
    return true;
}

QString KHostProfile::dir()
{
    QMutexLocker lock(&m_mutex);
    ensureLoadedLocked();
    return m_dir;
}

IKAuthorizationHandler* KHostProfile::handler()
{
    QMutexLocker lock(&m_mutex);
    return m_handler;
}

void KHostProfile::setHandler(IKAuthorizationHandler* handler)
{
    QMutexLocker lock(&m_mutex);
    m_handler = handler;
}

QString KHostProfile::productString(const QString& key)
{
    QMutexLocker lock(&m_mutex);
    ensureLoadedLocked();
    return m_productStrings.value(key);
}

void KHostProfile::setProductString(const QString& key, const QString& value)
{
    QMutexLocker lock(&m_mutex);
    ensureLoadedLocked();
    m_productStrings.insert(key, value);
}

bool KHostProfile::isFeatureSupported(const QString& feature)
{
    QMutexLocker lock(&m_mutex);
    ensureLoadedLocked();
    return m_features.value(feature, false);
}

void KHostProfile::setFeatureSupported(const QString& feature, bool supported)
{
    QMutexLocker lock(&m_mutex);
    ensureLoadedLocked();
    m_features.insert(feature, supported);
}

bool KHostProfile::isOverseas()
{
    QMutexLocker lock(&m_mutex);
    ensureLoadedLocked();
    return m_overseas;
}

void KHostProfile::setOverseas(bool overseas)
{
    QMutexLocker lock(&m_mutex);
    ensureLoadedLocked();
    m_overseas = overseas;
}

QVariant KHostProfile::configValue(const QString& key, unsigned mask)
{
    QMutexLocker lock(&m_mutex);
    ensureLoadedLocked();
    for (int bit = kLayerCount - 1; bit >= 0; --bit) {
        if (!(mask & (1u << bit)))
            continue;
        const auto found = m_configs[bit].constFind(key);
        if (found != m_configs[bit].cend())
            return found.value();
    }
    return QVariant();
}

void KHostProfile::setConfigValue(unsigned layer, const QString& key, const QVariant& value)
{
    QMutexLocker lock(&m_mutex);
    ensureLoadedLocked();
    for (int bit = 0; bit < kLayerCount; ++bit) {
        if (layer != (1u << bit))
            continue;
        if (KQtCompat::isNull(value))
            m_configs[bit].remove(key);
        else
            m_configs[bit].insert(key, value);
        return;
    }
    qCWarning(lcVexLite, "%#x is not a single configuration layer", layer);
}

QString KHostProfile::infoString(const QString& key)
{
    QMutexLocker lock(&m_mutex);
    ensureLoadedLocked();
    return m_info.value(key).toString();
}

void KHostProfile::setInfoString(const QString& key, const QString& value)
{
    QMutexLocker lock(&m_mutex);
    ensureLoadedLocked();
    m_info.insert(key, value);
}

QVariant KHostProfile::infoValue(const QString& key)
{
    QMutexLocker lock(&m_mutex);
    ensureLoadedLocked();
    const auto found = m_info.constFind(key);
    return found == m_info.constEnd() ? QVariant() : fromJson(found.value());
}

void KHostProfile::removeInfo(const QString& key)
{
    QMutexLocker lock(&m_mutex);
    ensureLoadedLocked();
    m_info.remove(key);
}

QString KHostProfile::uwpInfoKey(const QString& key)
{
    if (key.isEmpty())
        return QString();
    return QStringLiteral("uwp") + key.at(0).toUpper() + key.mid(1);
}

QString KHostProfile::language()
{
    QMutexLocker lock(&m_mutex);
    ensureLoadedLocked();
    return m_language;
}

void KHostProfile::setLanguage(const QString& language)
{
    QMutexLocker lock(&m_mutex);
    ensureLoadedLocked();
    if (language == m_language)
        return;
    m_language = language;
    loadTranslatorLocked();
}

void KHostProfile::loadTranslatorLocked()
{
    m_trCache.clear();
    // An English interface needs no catalogue: the source texts are English.
    // Other languages fall back from "zh_CN" to "zh" the way QTranslator does.
    if (!m_translator.load(QLocale(m_language), QStringLiteral("vex"), QStringLiteral("_"),
                           QStringLiteral(":/vexlite/i18n")) &&
        !m_language.startsWith(QLatin1String("en"))) {
        qCWarning(lcVexLite, "no host catalogue for language %s", qPrintable(m_language));
    }
}

QString KHostProfile::translate(const char* context, const char* sourceText, const char* id, int n)
{
    QMutexLocker lock(&m_mutex);
    ensureLoadedLocked();
    QByteArray cacheKey(context ? context : "");
    cacheKey += '\x1f';
    cacheKey += (id && *id) ? id : (sourceText ? sourceText : "");
    cacheKey += '\x1f';
    cacheKey += QByteArray::number(n);
    const auto cached = m_trCache.constFind(cacheKey);
    if (cached != m_trCache.cend())
        return cached.value();

    QString text = m_translator.isEmpty() ? QString()
                                          : m_translator.translate(context, sourceText, nullptr, n);
    if (text.isEmpty())
        text = QString::fromUtf8(sourceText);
    m_trCache.insert(cacheKey, text);
    return text;
}

qreal KHostProfile::displayScale()
{
    QMutexLocker lock(&m_mutex);
    ensureLoadedLocked();
    return m_displayScale;
}

void KHostProfile::setDisplayScale(qreal scale)
{
    QMutexLocker lock(&m_mutex);
    ensureLoadedLocked();
    m_displayScale = sanitizedDisplayScale(scale);
}

QVariantList KHostProfile::commandTree(const QString& id)
{
    QMutexLocker lock(&m_mutex);
    ensureLoadedLocked();
    return m_commandTrees.value(id).toArray().toVariantList();
}

void KHostProfile::setCommandTree(const QString& id, const QVariantList& tree)
{
    QMutexLocker lock(&m_mutex);
    ensureLoadedLocked();
    if (tree.isEmpty())
        m_commandTrees.remove(id);
    else
        m_commandTrees.insert(id, QJsonArray::fromVariantList(tree));
}

void KHostProfile::recordExecutedCommand(const QString& name)
{
    std::function<void(const QString&)> runner;
    {
        QMutexLocker lock(&m_mutex);
        m_executedCommands.append(ownCopy(name));
        runner = m_commandRunner;
    }
    // Unlocked: the runner may call back into krt.
    if (runner)
        runner(name);
}

QStringList KHostProfile::executedCommands()
{
    QMutexLocker lock(&m_mutex);
    return m_executedCommands;
}

void KHostProfile::clearExecutedCommands()
{
    QMutexLocker lock(&m_mutex);
    m_executedCommands.clear();
}

void KHostProfile::setCommandRunner(std::function<void(const QString&)> runner)
{
    QMutexLocker lock(&m_mutex);
    m_commandRunner = std::move(runner);
}

QString KHostProfile::activeApp()
{
    QMutexLocker lock(&m_mutex);
    ensureLoadedLocked();
    return m_activeApp;
}

void KHostProfile::setActiveApp(const QString& name)
{
    QMutexLocker lock(&m_mutex);
    ensureLoadedLocked();
    m_activeApp = name;
}

bool KHostProfile::accountLogined()
{
    QMutexLocker lock(&m_mutex);
    ensureLoadedLocked();
    return m_accountLogined;
}

QString KHostProfile::accountUserName()
{
    QMutexLocker lock(&m_mutex);
    ensureLoadedLocked();
    return m_accountUserName;
}

void KHostProfile::setAccount(bool logined, const QString& userName)
{
    QMutexLocker lock(&m_mutex);
    ensureLoadedLocked();
    m_accountLogined = logined;
    m_accountUserName = logined ? userName : QString();
}

bool KHostProfile::logoutDuetoOffLine()
{
    QMutexLocker lock(&m_mutex);
    ensureLoadedLocked();
    return m_logoutDuetoOffLine;
}

void KHostProfile::setLogoutDuetoOffLine(bool offline)
{
    QMutexLocker lock(&m_mutex);
    ensureLoadedLocked();
    m_logoutDuetoOffLine = offline;
}

void KHostProfile::recordAccountEntry(int code, const QString& first, const QString& second)
{
    const krt::hostcontrol::AccountEntryCall call{code, ownCopy(first), ownCopy(second)};
    std::function<void(const krt::hostcontrol::AccountEntryCall&)> observer;
    {
        QMutexLocker lock(&m_mutex);
        m_accountEntryCalls.append(call);
        observer = m_accountEntryObserver;
    }
    if (observer)
        observer(call);
}

QList<krt::hostcontrol::AccountEntryCall> KHostProfile::accountEntryCalls()
{
    QMutexLocker lock(&m_mutex);
    return m_accountEntryCalls;
}

void KHostProfile::clearAccountEntryCalls()
{
    QMutexLocker lock(&m_mutex);
    m_accountEntryCalls.clear();
}

void KHostProfile::setAccountEntryObserver(
    std::function<void(const krt::hostcontrol::AccountEntryCall&)> observer)
{
    QMutexLocker lock(&m_mutex);
    m_accountEntryObserver = std::move(observer);
}

krt::hostcontrol::UserInformationFault KHostProfile::userInformationFault()
{
    QMutexLocker lock(&m_mutex);
    return m_userInformationFault;
}

void KHostProfile::setUserInformationFault(krt::hostcontrol::UserInformationFault fault)
{
    QMutexLocker lock(&m_mutex);
    m_userInformationFault = fault;
}

QString KHostProfile::infoCollectFile()
{
    QString root = dir();
    // Like the settings stores: somewhere the user owns, never the working
    // directory, when the host has no profile directory.
    if (root.isEmpty())
        root = QStandardPaths::writableLocation(QStandardPaths::GenericDataLocation) +
               QStringLiteral("/zento-host");
    return QDir(root).filePath(QStringLiteral("userdata/infocollect.jsonl"));
}
