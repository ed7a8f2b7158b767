#ifndef KXWEBENGINEPOPUPPAGE_H
#define KXWEBENGINEPOPUPPAGE_H

#include <QWebEnginePage>

// The page a window opened by page script gets on QtWebEngine. It loads
// nothing: the first real address the window is given goes to the system
// browser (under the rules of kxOpenExternalUrl), and the page goes.
class KxWebEnginePopupPage : public QWebEnginePage
{
    Q_OBJECT

public:
    KxWebEnginePopupPage(QWebEngineProfile* profile, QObject* parent);

protected:
    bool acceptNavigationRequest(const QUrl& url, QWebEnginePage::NavigationType type,
                                 bool isMainFrame) override;

private:
    bool m_navigated = false;
};

#endif // KXWEBENGINEPOPUPPAGE_H
