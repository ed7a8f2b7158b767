#ifndef KCOMMPROBE_H
#define KCOMMPROBE_H

#include "ktestappdir.h"

#include <QStringList>

// The commprobe program in a temporary application directory. Every run is
// a fresh process that sees the helpers' caches empty, the host as the
// suite has configured it (the host state is saved to the suite's profile
// first) and the suite's temporary home.
class KCommProbe
{
public:
    explicit KCommProbe(const QString& parentDir);

    bool isValid() const { return m_valid; }
    const KTestAppDir& appDir() const { return m_appDir; }

    // The output lines of one run; on failure one line saying why.
    QStringList run(const QStringList& calls, QString* err = nullptr) const;

private:
    KTestAppDir m_appDir;
    bool m_valid;
};

#endif // KCOMMPROBE_H
