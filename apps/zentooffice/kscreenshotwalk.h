#ifndef KSCREENSHOTWALK_H
#define KSCREENSHOTWALK_H

#include <QObject>
#include <QPointer>
#include <QStringList>
#include <QTextStream>

#include <functional>

class KMainWindow;
class KMenuButton;
class KZentoOfficeHost;
class KZentoOfficeWindow;
class QDialog;
class QWidget;

// Walks the host window through the states a person meets, the way they
// arise: the cloud simulator's state file (signed in, company account,
// signed out, a sync error raised through "emit"), the host's account
// service (signed out because the network went away), the Welcome page in
// the plug-in's web dialog (from the local service pages, and its offline
// fallback when the pages cannot be reached), the bridge page, the
// developer panel, and the interface in Chinese. The mouse is brought to the user-centre button
// with the events the window system would send. After each step it saves
// the window with whatever balloon, menu or dialog it shows as one PNG
// file, host-<step>.png.
//
// Needs the plug-in loaded and its handler given to the host, the host's
// commands registered and its web module loaded, and the simulator reading
// statePath (DESKHIVE_STATE), a file the walk may overwrite. Works on the
// offscreen platform and on a display.
class KScreenshotWalk : public QObject
{
    Q_OBJECT

public:
    KScreenshotWalk(KZentoOfficeHost* host, const QString& dir, const QString& statePath,
                    QTextStream& err);

    // Every step; false (with a message on err) at the first that fails.
    bool run();
    // The files written so far, in order.
    QStringList written() const { return m_written; }

private:
    bool accountSteps(KZentoOfficeWindow* window);
    bool webSteps(KZentoOfficeWindow* window);
    bool chineseSteps(KZentoOfficeWindow* window);
    bool step(const QString& name, const std::function<bool()>& body);
    bool setState(const QByteArray& json);
    bool waitFor(const std::function<bool()>& done, int timeoutMs = 5000);
    bool openWindow(KMainWindow* window);
    KMenuButton* userButton(KMainWindow* window) const;
    bool showsUser(KMainWindow* window, const QString& name) const;
    bool hover(KMainWindow* window);
    bool showOfflineBalloon(KMainWindow* window);
    bool captureMenu(KMainWindow* window, const QString& name);
    bool captureWebDialog(KZentoOfficeWindow* window, const QString& name,
                          void (KZentoOfficeWindow::*open)(),
                          const std::function<bool(QDialog*)>& ready = nullptr);
    bool save(const QString& name, QWidget* window, const QList<QWidget*>& extras = {});

    KZentoOfficeHost* m_host;
    QString m_dir;
    QString m_statePath;
    QTextStream& m_err;
    QPointer<QObject> m_client;
    QStringList m_written;
};

#endif // KSCREENSHOTWALK_H
