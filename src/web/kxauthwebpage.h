#ifndef KXAUTHWEBPAGE_H
#define KXAUTHWEBPAGE_H

#include <QWebPage>

// The page of the library's web dialogs. Page script may open windows
// (window.open), but none appears inside the application: each gets a
// KxPopupWebPage, which hands its address to the system browser.
class KxAuthWebPage : public QWebPage
{
    Q_OBJECT

public:
    explicit KxAuthWebPage(QObject* parent = nullptr);

protected:
    // A new KxPopupWebPage, whatever the type. It has no parent and is never
    // shown; it goes when this page goes.
    QWebPage* createWindow(QWebPage::WebWindowType type) override;
};

#endif // KXAUTHWEBPAGE_H
