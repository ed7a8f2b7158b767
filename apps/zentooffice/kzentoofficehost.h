#ifndef KZENTOOFFICEHOST_H
#define KZENTOOFFICEHOST_H

#include "klocalserviceserver.h"
#include "ksimulatorstateeditor.h"

#include <QHash>
#include <QLibrary>
#include <QList>
#include <QObject>
#include <QTranslator>
#include <QUrl>

class IKHostWeb;
class KDocumentRequest;
class KZentoOfficeWindow;

// The reference host's application state beside the plug-in: its windows,
// its web module, the local service pages, and what the developer panel
// switches (interface language, display scale, network, where the service
// pages come from, product features). Every main window and panel works
// through it, so all of them show the same state.
//
// It is also the host's side of the plug-in's requests: the named commands
// the handler lets go on (it opens the enterprise centre for
// "OpenEnterpriseCenter", as the suite does) and the calls of the active
// application's account service, both told to the panels.
class KZentoOfficeHost : public QObject
{
    Q_OBJECT

public:
    // Where the product's service pages (the jump base "JumpUrl") and the
    // centres ("PersonalCenterUrl", "EnterpriseCenterUrl") point.
    enum ServicePages {
        InternetPages,    // the profile's own addresses
        LocalPages,       // the local server (KLocalServiceServer)
        UnreachablePages, // port 0 of the loopback interface, which nobody can serve
    };

    explicit KZentoOfficeHost(QObject* parent = nullptr);
    ~KZentoOfficeHost() override;

    // The web module (libhostweb) at path; without it the Welcome page is
    // unavailable and webModuleError() says why.
    bool loadWebModule(const QString& path);
    IKHostWeb* webModule() const { return m_web; }
    QString webModuleError() const { return m_webError; }

    KLocalServiceServer* serviceServer() { return &m_server; }
    KSimulatorStateEditor* simulatorState() { return &m_state; }

    // A new main window (deleted when closed), with the developer panel
    // shown or hidden; the caller shows it.
    KZentoOfficeWindow* newWindow(bool withPanel = false);
    // The window the user works in: the most recently activated one.
    KZentoOfficeWindow* activeWindow() const;
    QList<KZentoOfficeWindow*> windows() const;

    // The most documents one request (the command line, or what one later
    // start hands over) opens; the rest are left out, and the window says
    // how many.
    static constexpr int kMaxDocumentsAtOnce = 100;

    // Opens each document (up to the limit) in a new tab of the active
    // window (a new window if there is none) and brings the window to the
    // front; notes, where not empty, go to its status bar.
    void openDocuments(const QList<KDocumentRequest>& requests, QStringList notes = {});

    ServicePages servicePages() const { return m_pages; }
    void setServicePages(ServicePages pages);
    // "en_US" or "zh_CN": the host's language, the host's own texts, the
    // plug-in's (its commands are made anew in every window).
    void setLanguage(const QString& language);
    // The display scale the host's style works at; the title areas are
    // built anew at it.
    void setDisplayScale(qreal scale);
    // Signed out because the network went away (the active application's
    // account service), and the plug-in's network monitor told of it.
    void setOffline(bool offline);
    bool isOffline() const { return m_offline; }
    // A product feature (krt::product::isSupported) on or off; every
    // window's commands follow at once.
    void setFeatureSupported(const QString& feature, bool supported);

    // The local server's page that calls every method of the web dialog's
    // bridge; the server starts listening if it does not yet. Empty when it
    // cannot listen.
    QUrl bridgePageUrl();

    // Addresses the desktop was asked to open while the service pages were
    // not the internet's, oldest first.
    QList<QUrl> caughtUrls() const { return m_caught; }

public slots:
    // The desktop's URL handler for http and https while the service pages
    // are local or unreachable: no browser is needed, the address is kept.
    void catchUrl(const QUrl& url);

    // What another process handed over (KSingleInstance): its document
    // addresses and paths are opened (up to the limit; the arguments past
    // it are not looked at), anything else is reported in the status bar;
    // with none, the active window comes to the front.
    void onArgumentsReceived(const QStringList& arguments);

signals:
    // Language, display scale, network, service pages or features changed.
    void stateChanged();
    void urlCaught(const QUrl& url);
    // A named command went on past the plug-in's handler to the host.
    void commandRun(const QString& name);
    // The account service's entry operation was called.
    void accountEntered(int code, const QString& first, const QString& second);

private:
    void installTranslator();
    void rebuildTitleAreas();
    void updateWindowCommands();
    void runCommand(const QString& name);

    QLibrary m_webLibrary;
    IKHostWeb* m_web = nullptr;
    QString m_webError;
    KLocalServiceServer m_server;
    KSimulatorStateEditor m_state;
    QTranslator m_translator;
    bool m_translatorInstalled = false;
    ServicePages m_pages = InternetPages;
    QHash<QString, QString> m_profileAddresses;
    bool m_offline = false;
    QList<QUrl> m_caught;
};

#endif // KZENTOOFFICEHOST_H
