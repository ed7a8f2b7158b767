#ifndef KDESKHIVESTATEFILE_H
#define KDESKHIVESTATEFILE_H

#include "kdeskhivestate.h"

#include <QByteArray>
#include <QFileSystemWatcher>
#include <QObject>
#include <QStringList>
#include <QTimer>

// The JSON file the simulator keeps its account in, watched so that a person
// or a test can change the account while a host runs:
//   { "IsLogined": true, "Name": "...", "Id": "...",
//     "UserAvatarImagePath": "avatar.png", "IsCompanyAccount": false,
//     "emit": ["failedToLaunchCloudsvrProcess", "cloudsvrExitWithErrors:text",
//              "occurIpcErrorsWhenGetUserInf", "occurRpcErrorsWhenGetUserInf"] }
// A missing, empty or malformed file means nobody is signed in, and so does
// anything that is not a regular file (a pipe, a device, a directory). "emit"
// asks for signals; it is acted on once each time the file's content changes.
class KDeskhiveStateFile : public QObject
{
    Q_OBJECT

public:
    // The file named by $DESKHIVE_STATE, else "state.json" in
    // "addons/deskhive" beside the application.
    static QString defaultPath();

    explicit KDeskhiveStateFile(const QString& path, QObject* parent = nullptr);

    QString path() const { return m_path; }
    KDeskhiveState state() const { return m_state; }
    // The signal requests of the content last read.
    QStringList requests() const { return m_requests; }

    // Reads the file now; contentChanged() follows if it differs from what
    // was read or written last.
    void reload();
    // Replaces the file with state (without signal requests). The content
    // written counts as read, so it does not come back as a change.
    bool write(const KDeskhiveState& state);

    // What content says: the account, and the signal requests when requests
    // is given. Problems are warned about, naming path; content that is not
    // a state file means signed out.
    static KDeskhiveState parse(const QByteArray& content, const QString& path,
                                QStringList* requests = nullptr);
    // What write() puts in the file for state.
    static QByteArray serialize(const KDeskhiveState& state);

signals:
    void contentChanged();
    // After every read, changed or not.
    void reloaded();

private slots:
    void onWatchedPathChanged();
    void onSettled();

private:
    void watch();

    QString m_path;
    QByteArray m_content;
    KDeskhiveState m_state;
    QStringList m_requests;
    QFileSystemWatcher m_watcher;
    // Editors write in steps (truncate, write, rename); read once they settle.
    QTimer m_settle;
};

#endif // KDESKHIVESTATEFILE_H
