// A directory's manual roaming list, manualroaming.ini, as the cloud client
// finds it (written by anything, damaged or not): the paths it lists are
// each there once and never empty, a path marked is listed, and removing a
// mark removes that path and nothing else.
//
// An input is the path to mark, a line break, and the list file's content.
// The list is reached only through the QComm functions, which read and
// write the file: each input is a file in a scratch folder.

#include "fuzzsupport.h"

#include "qcommmanualroaming.h"

#include <QDir>
#include <QFile>
#include <QSet>

#include <cstddef>
#include <cstdint>

using AuthFuzz::require;

namespace {

QString g_dir;

QByteArray written(QFile& list)
{
    return list.open(QIODevice::ReadOnly) ? list.readAll() : QByteArray();
}

void requireWellFormed(const QStringList& files)
{
    require(!files.contains(QString()), "no listed path is empty");
    require(QSet<QString>(files.cbegin(), files.cend()).size() == files.size(),
            "no path is listed twice");
}

} // namespace

extern "C" int LLVMFuzzerInitialize(int*, char***)
{
    AuthFuzz::silenceQtMessages();
    g_dir = QDir(AuthFuzz::scratchDir()).filePath(QStringLiteral("roaming"));
    require(QDir().mkpath(g_dir), "the list's folder can be made");
    return 0;
}

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size)
{
    const QByteArray input =
        QByteArray::fromRawData(reinterpret_cast<const char*>(data), static_cast<int>(size));
    const int lineEnd = input.indexOf('\n');
    const QByteArray content = lineEnd < 0 ? QByteArray() : input.mid(lineEnd + 1);
    const QString file = QString::fromUtf8(input.left(lineEnd < 0 ? input.size() : lineEnd));
    // A path counts up to its first zero character.
    const QString marked = file.left(file.indexOf(QChar(0)));

    QFile list(g_dir + QLatin1Char('/') + QComm::MANUAL_ROAMING_CONFIG_FILE);
    require(list.open(QIODevice::WriteOnly | QIODevice::Truncate) &&
                list.write(content) == content.size(),
            "the input can be written as a list");
    list.close();

    requireWellFormed(QComm::getManualRoamingFiles(g_dir));
    QComm::addManualRoamingFiles(g_dir, file);
    const QStringList added = QComm::getManualRoamingFiles(g_dir);
    requireWellFormed(added);
    // A list with binary values is left as it is, and reads as empty.
    if (!marked.isEmpty() && !(added.isEmpty() && written(list) == content))
        require(added.contains(marked), "a marked path is listed");

    QComm::delManualRoamingFiles(g_dir, file);
    const QStringList removed = QComm::getManualRoamingFiles(g_dir);
    requireWellFormed(removed);
    // Another key may name the same path (Base64 readers skip what is not
    // Base64), which keeps it listed, possibly elsewhere in the list.
    QSet<QString> expected(added.cbegin(), added.cend());
    if (!removed.contains(marked))
        expected.remove(marked);
    require(QSet<QString>(removed.cbegin(), removed.cend()) == expected,
            "removing a mark leaves the other paths as they were");
    return 0;
}
