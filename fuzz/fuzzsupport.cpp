#include "fuzzsupport.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QTemporaryDir>

#include <cstdio>
#include <cstdlib>

namespace AuthFuzz {

void silenceQtMessages()
{
    qInstallMessageHandler([](QtMsgType, const QMessageLogContext&, const QString&) {});
}

QString scratchDir()
{
    static const QString path = [] {
        const QFileInfo shm(QStringLiteral("/dev/shm"));
        const QString base = shm.isDir() && shm.isWritable() ? shm.filePath() : QDir::tempPath();
        static QTemporaryDir dir(base + QStringLiteral("/authfuzz-XXXXXX"));
        require(dir.isValid(), "a scratch folder can be made");
        const QByteArray home = QFile::encodeName(dir.path());
        qputenv("HOME", home);
        qputenv("XDG_CONFIG_HOME", home + "/.config");
        qputenv("XDG_DATA_HOME", home + "/.local/share");
        qputenv("XDG_CACHE_HOME", home + "/.cache");
        return dir.path();
    }();
    return path;
}

void require(bool holds, const char* what)
{
    if (holds)
        return;
    std::fprintf(stderr, "broken: %s\n", what);
    std::abort();
}

} // namespace AuthFuzz
