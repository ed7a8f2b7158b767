#ifndef KFILETAIL_H
#define KFILETAIL_H

#include <QByteArray>
#include <QList>
#include <QString>

// The lines appended to a file since it was last read, for a list that
// follows a log as it grows: each read starts where the last one ended,
// and never takes more than the last maxRead bytes, so a huge file costs
// no more than a small one. Files that are not regular (a pipe, a device)
// are never opened.
class KFileTail
{
public:
    explicit KFileTail(const QString& path, qint64 maxRead = qint64(256) * 1024);

    QString path() const { return m_path; }

    // The complete lines added since the last call, without their line
    // feeds; a line still being written waits for its end. restarted tells
    // that the file went, or shrank (cleared or replaced): what was read
    // before is no longer in it, and reading began anew.
    QList<QByteArray> readNewLines(bool* restarted);

private:
    QString m_path;
    qint64 m_maxRead;
    qint64 m_offset = 0;
    QByteArray m_partial;
};

#endif // KFILETAIL_H
