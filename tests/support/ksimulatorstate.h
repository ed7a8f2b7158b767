#ifndef KSIMULATORSTATE_H
#define KSIMULATORSTATE_H

#include "ktestappdir.h"

#include "kdeskhivelib.h"

#include <deskhive/nimboclient.h>

#include <QSignalSpy>

namespace AuthTest {

// The cloud simulator's account as the suites set it: through its state
// file, each write awaited until the simulator has read it (and so
// signalled what changed).
class KSimulatorState
{
public:
    // A file in dir, named to the simulator before it is first used.
    explicit KSimulatorState(const QString& dir)
        : m_path(dir + QStringLiteral("/state.json"))
    {
        KTestAppDir::write(m_path, "{}");
        qputenv("DESKHIVE_STATE", m_path.toUtf8());
    }

    QString folder() const { return QFileInfo(m_path).absolutePath(); }

    // False when the simulator did not read it in time. The same content
    // again is no change, and raises no "emit" again.
    bool set(const QByteArray& json)
    {
        if (json == m_state)
            return true;
        QSignalSpy read(KDeskhiveLib::instance()->nimboClientInstance(), SIGNAL(stateFileRead()));
        m_state = json;
        return KTestAppDir::write(m_path, json) && read.wait(5000);
    }

private:
    QString m_path;
    QByteArray m_state = "{}";
};

} // namespace AuthTest

#endif // KSIMULATORSTATE_H
