#include "kfiletail.h"

#include <QFile>
#include <QFileInfo>

KFileTail::KFileTail(const QString& path, qint64 maxRead)
    : m_path(path)
    , m_maxRead(maxRead)
{}

QList<QByteArray> KFileTail::readNewLines(bool* restarted)
{
    *restarted = false;
    const QFileInfo info(m_path);
    const qint64 size = info.isFile() ? info.size() : 0;
    if (size < m_offset || (!info.isFile() && m_offset > 0)) {
        *restarted = true;
        m_offset = 0;
        m_partial.clear();
    }
    QFile file(m_path);
    if (size == m_offset || !file.open(QIODevice::ReadOnly))
        return {};

    // Only the end of a long stretch: its first line is likely cut.
    bool cut = false;
    if (size - m_offset > m_maxRead) {
        m_offset = size - m_maxRead;
        m_partial.clear();
        cut = true;
    }
    if (!file.seek(m_offset))
        return {};
    const QByteArray appended = file.read(m_maxRead);
    m_offset += appended.size();

    QList<QByteArray> lines = (m_partial + appended).split('\n');
    m_partial = lines.takeLast();
    if (m_partial.size() > m_maxRead)
        m_partial.clear(); // no line of a log is that long
    if (cut && !lines.isEmpty())
        lines.removeFirst();
    return lines;
}
