#ifndef KXWEBENGINEPOPUPPAGE_H
#define KXWEBENGINEPOPUPPAGE_H

#include <QWebEnginePage>

// The page a window opened by page script gets on QtWebEngine. It loads
// nothing: it tells the first real address the window is given (handed()),
// for its opener to hand to the system browser, and to free it.
class KxWebEnginePopupPage : public QWebEnginePage
{
    Q_OBJECT

public:
    KxWebEnginePopupPage(QWebEngineProfile* profile, QObject* parent);

signals:
    // The window's first address, empty where it has none to follow (a
    // form sent into it, or it closed first). Told once.
    void handed(const QUrl& url);

protected:
    bool acceptNavigationRequest(const QUrl& url, QWebEnginePage::NavigationType type,
                                 bool isMainFrame) override;

private:
    void hand(const QUrl& url, QWebEnginePage::NavigationType type);

    bool m_navigated = false;
};

#endif // KXWEBENGINEPOPUPPAGE_H
