#ifndef KCOMMPROBE_H
#define KCOMMPROBE_H

#include <QJsonArray>
#include <QString>
#include <QStringList>

class KTestAppDir;

// The probe program "commprobe" of the build, copied into a folder of a
// temporary application directory and run there. Every run is a fresh
// process: the helpers' caches are empty, it sees the host as the suite has
// configured it (saved to the suite's profile first), the suite's temporary
// home, and what the suite laid out around it.
class KCommProbe
{
public:
    explicit KCommProbe(const KTestAppDir& appDir, const QString& folder = QString());

    bool isValid() const { return m_valid; }
    // The folder the probe runs from, absolute.
    QString dir() const;

    // One result per operation; empty when the probe did not end cleanly.
    // err receives what the probe wrote to its error output.
    QJsonArray run(const QStringList& operations, QString* err = nullptr) const;
    // The same results as text: texts as they are, other values as compact
    // JSON; a single line saying why when the probe did not end cleanly.
    QStringList runText(const QStringList& operations, QString* err = nullptr) const;

private:
    const KTestAppDir& m_appDir;
    QString m_program;
    bool m_valid = false;
};

#endif // KCOMMPROBE_H
