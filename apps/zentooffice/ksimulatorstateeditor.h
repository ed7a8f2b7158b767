#ifndef KSIMULATORSTATEEDITOR_H
#define KSIMULATORSTATEEDITOR_H

#include <QJsonObject>
#include <QString>

class QColor;

// Changes the cloud simulator's account the way a person editing its state
// file would: reads the file, changes members, writes it back whole (other
// members a person added stay). The simulator watches the file and signals
// what changed.
//
// Every write leaves "emit" empty except raise(), which puts just its one
// signal there, so a signal is raised once per call: the simulator raises
// the entries each time the file's content changes, and a serial number
// ("emitSerial") makes the same request twice in a row a change.
class KSimulatorStateEditor
{
public:
    explicit KSimulatorStateEditor(const QString& path);

    QString path() const { return m_path; }
    // The file's object; empty when it is missing or not a JSON object.
    QJsonObject read() const;

    // Signing in keeps the user the file names, or brings the demo user
    // (name, id, the demo picture) where it names none.
    bool setSignedIn(bool signedIn);
    bool setCompanyAccount(bool company);
    bool setAvatar(const QString& imagePath);
    // One of "failedToLaunchCloudsvrProcess", "cloudsvrExitWithErrors:<text>",
    // "occurIpcErrorsWhenGetUserInf", "occurRpcErrorsWhenGetUserInf".
    bool raise(const QString& signal);

    // A round picture with the initials of name on colour, written into the
    // state file's folder as avatar-<tag>.png; its path, or empty on failure.
    QString makeInitialsAvatar(const QString& tag, const QString& name, const QColor& colour) const;

    // What went wrong with the last write.
    QString errorString() const { return m_error; }

private:
    bool write(QJsonObject state, const QString& signal = QString());

    QString m_path;
    QString m_error;
};

#endif // KSIMULATORSTATEEDITOR_H
