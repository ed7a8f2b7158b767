#include "kdeskhivestatefile.h"

#include "simulatorlogging.h"

#include <QCoreApplication>
#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QSaveFile>

#include <json/reader.h>
#include <json/writer.h>

#include <exception>
#include <memory>

namespace {

// A state file is a handful of members; anything larger is not one.
constexpr qint64 kMaxStateFileSize = qint64(1024) * 1024;
constexpr int kSettleMs = 50;

} // namespace

QString KDeskhiveStateFile::defaultPath()
{
    const QString named = qEnvironmentVariable("DESKHIVE_STATE");
    if (!named.isEmpty())
        return named;
    return QCoreApplication::applicationDirPath() + QStringLiteral("/addons/deskhive/state.json");
}

KDeskhiveStateFile::KDeskhiveStateFile(const QString& path, QObject* parent)
    : QObject(parent)
    , m_path(QFileInfo(path).absoluteFilePath())
{
    m_settle.setSingleShot(true);
    m_settle.setInterval(kSettleMs);
    connect(&m_settle, SIGNAL(timeout()), this, SLOT(onSettled()));
    connect(&m_watcher, SIGNAL(fileChanged(QString)), this, SLOT(onWatchedPathChanged()));
    connect(&m_watcher, SIGNAL(directoryChanged(QString)), this, SLOT(onWatchedPathChanged()));
    watch();

    // What the file asks for at start-up is the state to start in; its signal
    // requests are old news that nobody could have been listening for.
    reload();
    m_requests.clear();
}

void KDeskhiveStateFile::reload()
{
    QByteArray content;
    QFile file(m_path);
    if (file.open(QIODevice::ReadOnly))
        content = file.read(kMaxStateFileSize + 1);
    if (content != m_content) {
        parse(content);
        emit contentChanged();
    }
    emit reloaded();
}

bool KDeskhiveStateFile::write(const KDeskhiveState& state)
{
    Json::StreamWriterBuilder builder;
    builder["indentation"] = "    ";
    const QByteArray content =
        QByteArray::fromStdString(Json::writeString(builder, state.userInfo()) + '\n');

    // Replaced in one step, so a host watching the file never reads half of it.
    QSaveFile file(m_path);
    if (!file.open(QIODevice::WriteOnly) || file.write(content) != content.size() ||
        !file.commit()) {
        qCWarning(lcDeskhiveSimulator,
                  "cannot write %s (%s); the change holds until the host exits",
                  qUtf8Printable(m_path), qUtf8Printable(file.errorString()));
        return false;
    }
    m_content = content;
    m_state = state;
    m_requests.clear();
    watch();
    return true;
}

void KDeskhiveStateFile::onWatchedPathChanged()
{
    m_settle.start();
}

void KDeskhiveStateFile::onSettled()
{
    // An editor that saves by replacing the file leaves the watch on the old
    // one; the directory's change brings the new file back under watch.
    watch();
    reload();
}

void KDeskhiveStateFile::parse(const QByteArray& content)
{
    m_content = content;
    m_state = KDeskhiveState();
    m_requests.clear();
    if (content.trimmed().isEmpty())
        return;

    const QByteArray path = m_path.toUtf8();
    const char* name = path.constData();
    if (content.size() > kMaxStateFileSize) {
        qCWarning(lcDeskhiveSimulator, "%s is too large for a state file; nobody is signed in",
                  name);
        return;
    }

    Json::Value root;
    std::string errors;
    bool parsed = false;
    try {
        const std::unique_ptr<Json::CharReader> reader(Json::CharReaderBuilder().newCharReader());
        parsed = reader->parse(content.constData(), content.constData() + content.size(), &root,
                               &errors);
    } catch (const std::exception& e) {
        // The reader gives up on very deep nesting by throwing.
        errors = e.what();
    }
    if (!parsed) {
        qCWarning(lcDeskhiveSimulator, "%s is not valid JSON; nobody is signed in: %s", name,
                  QString::fromStdString(errors).simplified().toUtf8().constData());
        return;
    }
    if (!root.isObject()) {
        qCWarning(lcDeskhiveSimulator, "%s does not hold a JSON object; nobody is signed in", name);
        return;
    }

    m_state = KDeskhiveState::fromJson(root, QFileInfo(m_path).absolutePath());
    const Json::Value& requests = root["emit"];
    if (requests.isNull())
        return;
    if (!requests.isArray()) {
        qCWarning(lcDeskhiveSimulator, "\"emit\" in %s is not a list of signal names", name);
        return;
    }
    for (const Json::Value& request : requests) {
        if (request.isString())
            m_requests.append(QString::fromStdString(request.asString()));
        else
            qCWarning(lcDeskhiveSimulator, "\"emit\" in %s holds a value that is not a signal name",
                      name);
    }
}

void KDeskhiveStateFile::watch()
{
    const QString dir = QFileInfo(m_path).absolutePath();
    if (!m_watcher.directories().contains(dir) && QFileInfo::exists(dir))
        m_watcher.addPath(dir);
    if (!m_watcher.files().contains(m_path) && QFileInfo::exists(m_path))
        m_watcher.addPath(m_path);
}
