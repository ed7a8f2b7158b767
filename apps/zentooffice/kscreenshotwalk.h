#ifndef KSCREENSHOTWALK_H
#define KSCREENSHOTWALK_H

#include <QObject>
#include <QPointer>
#include <QStringList>
#include <QTextStream>

#include <functional>

class KMainWindow;
class KMenuButton;
class QWidget;

// Walks the host window through the account states a person meets, the way
// they arise: the cloud simulator's state file (signed in, company account,
// signed out, a sync error raised through "emit") and the host's account
// service (signed out because the network went away, through the host
// control API); the mouse is brought to the user-centre button with the
// events the window system would send. After each step it saves the window
// with whatever balloon or menu it shows as one PNG file.
//
// Needs the plug-in loaded and its handler given to the host, and the
// simulator reading statePath (DESKHIVE_STATE), a file the walk may
// overwrite. Works on the offscreen platform.
class KScreenshotWalk : public QObject
{
    Q_OBJECT

public:
    KScreenshotWalk(const QString& dir, const QString& statePath, QTextStream& err);

    // Every step; false (with a message on err) at the first that fails.
    bool run();
    // The files written so far, in order.
    QStringList written() const { return m_written; }

private:
    bool step(const QString& name, const std::function<bool()>& body);
    bool setState(const QByteArray& json);
    bool waitFor(const std::function<bool()>& done, int timeoutMs = 5000);
    bool openWindow(KMainWindow* window);
    KMenuButton* userButton(KMainWindow* window) const;
    bool hover(KMainWindow* window);
    bool showOfflineBalloon(KMainWindow* window);
    bool captureMenu(KMainWindow* window, const QString& name);
    bool save(const QString& name, QWidget* window, const QList<QWidget*>& extras = {});

    QString m_dir;
    QString m_statePath;
    QTextStream& m_err;
    QPointer<QObject> m_client;
    QStringList m_written;
};

#endif // KSCREENSHOTWALK_H
