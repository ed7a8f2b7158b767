#ifndef KXAUTHWEBPAGE_H
#define KXAUTHWEBPAGE_H

#include <QList>
#include <QPointer>
#include <QWebPage>

class KxPopupWebPage;

// The page of the library's web dialogs. Page script of a document that
// gets the bridge may open windows (window.open), but none appears inside
// the application: each gets a KxPopupWebPage, which hands its address to
// the system browser and goes. Any other document opens none.
class KxAuthWebPage : public QWebPage
{
    Q_OBJECT

public:
    // Pop-up pages alive at a time; window.open gives null beyond them.
    static constexpr int kMaxPopups = 4;

    explicit KxAuthWebPage(QObject* parent = nullptr);
    ~KxAuthWebPage() override;

    // Whether script of the document shown now may open windows; false
    // until the dialog says otherwise for each new document.
    void setScriptWindowsAllowed(bool allowed);
    int popupCount() const;
    // The frames, at any depth, whose origin is not the main frame's.
    QList<QWebFrame*> framesOfOtherOrigins() const;

protected:
    // A new KxPopupWebPage, whatever the type, when windows are allowed,
    // fewer than kMaxPopups live and no frame of another origin than the
    // main frame's is in the page; otherwise null, so no window opens. The
    // pop-up has no parent and is never shown; at the latest it goes when
    // this page goes.
    QWebPage* createWindow(QWebPage::WebWindowType type) override;

private:
    bool m_windowsAllowed = false;
    QList<QPointer<KxPopupWebPage>> m_popups;
};

#endif // KXAUTHWEBPAGE_H
