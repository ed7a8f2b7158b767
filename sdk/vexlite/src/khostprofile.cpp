#include "khostprofile.h"

#include "vexlite/hostcontrol.h"

#include <QCoreApplication>
#include <QDir>
#include <QFile>
#include <QJsonDocument>
#include <QLocale>
#include <QMutexLocker>
#include <QSaveFile>

#include <cmath>

namespace {

const char kProfileFile[] = "host.json";

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

// JSON numbers arrive as doubles; whole numbers are kept as integers so
// that they read back as "8" and not "8.0" style texts in every conversion.
QVariant fromJson(const QJsonValue& value)
{
    if (value.isDouble()) {
        const double d = value.toDouble();
        const qint64 whole = static_cast<qint64>(d);
        if (static_cast<double>(whole) == d)
            return whole >= INT_MIN && whole <= INT_MAX ? QVariant(static_cast<int>(whole))
                                                        : QVariant(whole);
    }
    return value.toVariant();
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
        qWarning("vexlite: %s", qPrintable(error));
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
    m_displayScale = 0;
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
    m_displayScale = sanitizedDisplayScale(
        root.value(QLatin1String("display")).toObject().value(QLatin1String("scale")).toDouble());
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
    if (m_displayScale > 0)
        root.insert(QLatin1String("display"),
                    QJsonObject{{QLatin1String("scale"), m_displayScale}});

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
        if (value.isNull())
            m_configs[bit].remove(key);
        else
            m_configs[bit].insert(key, value);
        return;
    }
    qWarning("vexlite: %#x is not a single configuration layer", layer);
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
        qWarning("vexlite: no host catalogue for language %s", qPrintable(m_language));
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

void KHostProfile::recordExecutedCommand(const QString& name)
{
    QMutexLocker lock(&m_mutex);
    m_executedCommands.append(name);
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
