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

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

namespace {

// A state file is a handful of members; anything larger is not one.
constexpr qint64 kMaxStateFileSize = qint64(1024) * 1024;
constexpr int kSettleMs = 50;

// The start of the file at path, one byte past what a state file can hold,
// if it is a regular file. Opened without blocking and checked before
// reading: a named pipe would hold the host in open() until some writer
// came, and a device could be read forever. special says it was not one.
QByteArray readRegularFile(const QString& path, bool* special)
{
    *special = false;
    const int fd = ::open(QFile::encodeName(path).constData(), O_RDONLY | O_NONBLOCK | O_CLOEXEC);
    if (fd < 0)
        return QByteArray();
    struct stat info;
    if (::fstat(fd, &info) != 0 || !S_ISREG(info.st_mode)) {
        *special = true;
        ::close(fd);
        return QByteArray();
    }
    QFile file;
    if (!file.open(fd, QIODevice::ReadOnly, QFileDevice::AutoCloseHandle)) {
        ::close(fd);
        return QByteArray();
    }
    return file.read(kMaxStateFileSize + 1);
}

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
    bool special = false;
    const QByteArray content = readRegularFile(m_path, &special);
    if (special)
        qCWarning(lcDeskhiveSimulator, "%s is not a regular file; nobody is signed in",
                  qUtf8Printable(m_path));
    if (content != m_content) {
        m_content = content;
        m_state = parse(content, m_path, &m_requests);
        emit contentChanged();
    }
    emit reloaded();
}

QByteArray KDeskhiveStateFile::serialize(const KDeskhiveState& state)
{
    Json::StreamWriterBuilder builder;
    builder["indentation"] = "    ";
    return QByteArray::fromStdString(Json::writeString(builder, state.userInfo()) + '\n');
}

bool KDeskhiveStateFile::write(const KDeskhiveState& state)
{
    const QByteArray content = serialize(state);

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

KDeskhiveState KDeskhiveStateFile::parse(const QByteArray& content, const QString& path,
                                         QStringList* requests)
{
    if (requests)
        requests->clear();
    if (content.trimmed().isEmpty())
        return KDeskhiveState();

    const QByteArray pathText = path.toUtf8();
    const char* name = pathText.constData();
    if (content.size() > kMaxStateFileSize) {
        qCWarning(lcDeskhiveSimulator, "%s is too large for a state file; nobody is signed in",
                  name);
        return KDeskhiveState();
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
        return KDeskhiveState();
    }
    if (!root.isObject()) {
        qCWarning(lcDeskhiveSimulator, "%s does not hold a JSON object; nobody is signed in", name);
        return KDeskhiveState();
    }

    const KDeskhiveState state = KDeskhiveState::fromJson(root, QFileInfo(path).absolutePath());
    const Json::Value& asked = root["emit"];
    if (!requests || asked.isNull())
        return state;
    if (!asked.isArray()) {
        qCWarning(lcDeskhiveSimulator, "\"emit\" in %s is not a list of signal names", name);
        return state;
    }
    for (const Json::Value& request : asked) {
        if (request.isString())
            requests->append(QString::fromStdString(request.asString()));
        else
            qCWarning(lcDeskhiveSimulator, "\"emit\" in %s holds a value that is not a signal name",
                      name);
    }
    return state;
}

void KDeskhiveStateFile::watch()
{
    const QString dir = QFileInfo(m_path).absolutePath();
    if (!m_watcher.directories().contains(dir) && QFileInfo::exists(dir))
        m_watcher.addPath(dir);
    if (!m_watcher.files().contains(m_path) && QFileInfo::exists(m_path))
        m_watcher.addPath(m_path);
}
