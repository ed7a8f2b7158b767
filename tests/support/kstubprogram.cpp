#include "kstubprogram.h"

#include <QDeadlineTimer>
#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QThread>

#include <algorithm>

namespace {

QByteArray shellQuoted(const QString& text)
{
    QByteArray quoted = QFile::encodeName(text);
    quoted.replace('\'', "'\\''");
    return '\'' + quoted + '\'';
}

} // namespace

KStubProgram::KStubProgram(const QString& path, const QString& recordDir)
    : m_path(path)
    , m_recordDir(recordDir)
{
    // Each argument ends with a NUL byte; the file appears under its final
    // name only when complete, so a reader never sees half a run.
    const QByteArray script = "#!/bin/sh\n"
                              "d=" +
                              shellQuoted(recordDir) +
                              "\n"
                              "t=\"$d/.run-$$\"\n"
                              ": > \"$t\"\n"
                              "for a in \"$@\"; do printf '%s\\0' \"$a\" >> \"$t\"; done\n"
                              "mv \"$t\" \"$d/run-$$\"\n";
    QFile file(path);
    m_valid = QDir().mkpath(recordDir) && QDir().mkpath(QFileInfo(path).absolutePath()) &&
              file.open(QIODevice::WriteOnly | QIODevice::Truncate) &&
              file.write(script) == script.size();
    file.close();
    m_valid = m_valid && file.setPermissions(file.permissions() | QFile::ExeOwner |
                                             QFile::ExeGroup | QFile::ExeOther);
}

QList<QStringList> KStubProgram::calls() const
{
    QList<QStringList> result;
    const QDir dir(m_recordDir);
    for (const QString& name : dir.entryList({QStringLiteral("run-*")}, QDir::Files, QDir::Name)) {
        QFile file(dir.filePath(name));
        if (!file.open(QIODevice::ReadOnly))
            continue;
        QList<QByteArray> parts = file.readAll().split('\0');
        parts.removeLast(); // what follows the last terminator
        QStringList arguments;
        for (const QByteArray& part : parts)
            arguments.append(QFile::decodeName(part));
        result.append(arguments);
    }
    return sorted(result);
}

QList<QStringList> KStubProgram::sorted(QList<QStringList> calls)
{
    std::sort(calls.begin(), calls.end(), [](const QStringList& a, const QStringList& b) {
        return a.join(QChar(0)) < b.join(QChar(0));
    });
    return calls;
}

bool KStubProgram::waitForCalls(int count, int timeoutMs) const
{
    const QDeadlineTimer deadline(timeoutMs);
    while (calls().size() < count) {
        if (deadline.hasExpired())
            return false;
        QThread::msleep(20);
    }
    return true;
}
