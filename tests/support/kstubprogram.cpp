#include "kstubprogram.h"

#include "kblockingwait.h"
#include "ktestappdir.h"

#include <QDir>
#include <QFile>

#include <algorithm>

namespace AuthTest {

KStubProgram::KStubProgram(const QString& path, const QString& recordDir)
    : m_path(path)
    , m_recordDir(recordDir)
{
    // Each argument ends with a NUL byte; the file appears under its final
    // name only when complete, so a reader never sees half a run.
    QByteArray dir = QFile::encodeName(recordDir).replace('\'', "'\\''");
    const QByteArray script = "#!/bin/sh\nd='" + dir +
                              "'\nt=\"$d/.run-$$\"\n: > \"$t\"\n"
                              "for a in \"$@\"; do printf '%s\\0' \"$a\" >> \"$t\"; done\n"
                              "mv \"$t\" \"$d/run-$$\"\n";
    m_valid = QDir().mkpath(recordDir) && KTestAppDir::write(path, script, true);
}

QList<QStringList> KStubProgram::calls() const
{
    QList<QStringList> result;
    const QDir dir(m_recordDir);
    for (const QString& name : dir.entryList({QStringLiteral("run-*")}, QDir::Files)) {
        QFile file(dir.filePath(name));
        if (!file.open(QIODevice::ReadOnly))
            continue;
        const QByteArray run = file.readAll(); // every argument ends with a NUL byte
        QStringList arguments = QString::fromLocal8Bit(run.constData(), run.size()).split(QChar(0));
        arguments.removeLast(); // what follows the last terminator
        result.append(arguments);
    }
    return sorted(result);
}

QList<QStringList> KStubProgram::sorted(QList<QStringList> calls)
{
    std::sort(calls.begin(), calls.end());
    return calls;
}

bool KStubProgram::waitForCalls(int count, int timeoutMs) const
{
    return blockUntil([&] { return calls().size() >= count; }, timeoutMs, 20);
}

} // namespace AuthTest
