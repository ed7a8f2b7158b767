#ifndef KCOMMPROBE_H
#define KCOMMPROBE_H

#include <QJsonArray>
#include <QString>
#include <QStringList>

class KTestAppDir;

// The probe program "commprobe" of the build, copied into a folder of a
// temporary application directory and run there.
class KCommProbe
{
public:
    KCommProbe(const KTestAppDir& appDir, const QString& folder);

    bool isValid() const { return m_valid; }
    // The folder the probe runs from, absolute.
    QString dir() const;

    // Runs the operations; one result per operation, or nothing (with a
    // warning saying why) when the probe did not end cleanly.
    QJsonArray run(const QStringList& operations) const;

private:
    const KTestAppDir& m_appDir;
    QString m_program;
    bool m_valid = false;
};

#endif // KCOMMPROBE_H
