#ifndef KXPOPUPWEBPAGE_H
#define KXPOPUPWEBPAGE_H

#include <QWebPage>

// The page a window opened by page script gets. Its first navigation is
// handed to the system browser (when the address may go there, see
// kxOpenExternalUrl) and refused, so the window never loads anything.
class KxPopupWebPage : public QWebPage
{
    Q_OBJECT

public:
    explicit KxPopupWebPage(QObject* parent = nullptr);

protected:
    bool acceptNavigationRequest(QWebFrame* frame, const QNetworkRequest& request,
                                 QWebPage::NavigationType type) override;
};

#endif // KXPOPUPWEBPAGE_H
