#ifndef KSIMULATORSTATEEDITOR_H
#define KSIMULATORSTATEEDITOR_H

#include <QCoreApplication>
#include <QJsonObject>
#include <QString>

#include <functional>

class QColor;

// Changes the cloud simulator's account the way a careful person editing
// its state file would: it reads the file as the simulator does (comments
// and trailing commas allowed), rewrites only the values of the members it
// changes, in place, and adds missing ones after the last member; every
// other byte (comments, members a person added, numbers of any length)
// stays as it was. A file it cannot read that way is never replaced: the
// write fails and errorString() says why. The simulator watches the file
// and signals what changed.
//
// Every write empties "emit" (if there) except raise(), which puts just
// its one signal there, so a signal is raised once per call: the simulator
// raises the entries each time the file's content changes, and a serial
// number ("emitSerial") makes the same request twice in a row a change.
class KSimulatorStateEditor
{
    Q_DECLARE_TR_FUNCTIONS(KSimulatorStateEditor)

public:
    explicit KSimulatorStateEditor(const QString& path);

    QString path() const { return m_path; }
    // The file's object as the simulator reads it; empty when it is missing
    // or not such a file.
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
    class Text;
    // Reads the file, applies changes to its text, empties or sets "emit"
    // and writes the result back whole.
    bool edit(const std::function<void(Text&)>& changes, const QString& signal = QString());

    QString m_path;
    QString m_error;
};

#endif // KSIMULATORSTATEEDITOR_H
