#ifndef KXWEBENGINEAUTHPAGE_H
#define KXWEBENGINEAUTHPAGE_H

#include <QElapsedTimer>
#include <QList>
#include <QPointer>
#include <QWebEnginePage>

#include <functional>

class KxWebEnginePopupPage;
class QWebChannel;

// The page of the library's web dialogs on QtWebEngine. Every link the user
// clicks, in any frame, is announced (linkClicked) and not followed. The
// engine calls a navigation that page script starts a link click too: one
// that follows the user's last click or key press closely is taken for a
// click, any other is followed as QtWebKit follows script's. The
// channel that carries the bridge is given to a main-frame document only
// when trusted accepts its address, decided as each main-frame navigation
// (a redirect among them) starts, so no other document ever gets the
// channel's transport. Page script of a document that gets the bridge may
// open windows, but none appears inside the application: each gets a
// KxWebEnginePopupPage, which hands its address to the system browser and
// goes. Any other document opens none.
class KxWebEngineAuthPage : public QWebEnginePage
{
    Q_OBJECT

public:
    // Pop-up pages alive at a time; window.open gives null beyond them.
    static constexpr int kMaxPopups = 4;

    KxWebEngineAuthPage(QWebEngineProfile* profile, QObject* parent);
    ~KxWebEngineAuthPage() override;

    void setBridgeChannel(QWebChannel* channel, const std::function<bool(const QUrl&)>& trusted);
    // Whether script of the document shown now may open windows; false
    // until the dialog says otherwise for each new document.
    void setScriptWindowsAllowed(bool allowed);
    int popupCount() const;
    // The user clicked or pressed a key in the page now.
    void noteUserInput();

    // What the bridge's stubs write to the console when they refuse the
    // bridge to a document whose domain was relaxed.
    static QString refusalMessage();

signals:
    void linkClicked(const QUrl& url);
    // The stubs refused the bridge (refusalMessage()).
    void bridgeRefused();

protected:
    bool acceptNavigationRequest(const QUrl& url, QWebEnginePage::NavigationType type,
                                 bool isMainFrame) override;
    QWebEnginePage* createWindow(QWebEnginePage::WebWindowType type) override;
    // Into the library's log category, not the engine's, which a host hears.
    void javaScriptConsoleMessage(QWebEnginePage::JavaScriptConsoleMessageLevel level,
                                  const QString& message, int lineNumber,
                                  const QString& sourceId) override;

private:
    QPointer<QWebChannel> m_channel;
    std::function<bool(const QUrl&)> m_trusted;
    bool m_windowsAllowed = false;
    QElapsedTimer m_userInput;
    QList<QPointer<KxWebEnginePopupPage>> m_popups;
};

#endif // KXWEBENGINEAUTHPAGE_H
