#ifndef KXPOPUPWEBPAGE_H
#define KXPOPUPWEBPAGE_H

#include <QWebPage>

// The page a window opened by page script gets. It loads nothing: every
// navigation is refused. Its first one but about:blank, the address
// window.open or a clicked link names, is handed to the system browser
// (when the address may go there, see kxOpenExternalUrl), and the page then
// frees itself; form submissions never leave it.
class KxPopupWebPage : public QWebPage
{
    Q_OBJECT

public:
    explicit KxPopupWebPage(QObject* parent = nullptr);

protected:
    bool acceptNavigationRequest(QWebFrame* frame, const QNetworkRequest& request,
                                 QWebPage::NavigationType type) override;

private:
    bool m_navigated = false;
};

#endif // KXPOPUPWEBPAGE_H
