#ifndef AUTHPLUGIN_KXWEBDLG_H
#define AUTHPLUGIN_KXWEBDLG_H

#include <kxauthglobal.h>
#include <kxnimbocustomframedlg.h>

#include <QString>
#include <QUrl>

#include <memory>

// A modal dialog that shows one web page in the library's frame dialog and
// offers the page a script bridge, "zentoctx": page script sizes, moves and
// closes the dialog, keeps small values, reads host and installation facts,
// sends usage events, signs the user in and asks about the signed-in user.
//
// exec() loads the page and shows the dialog once the page has loaded, or
// after one second if it is still loading; a failed load switches once to
// the fallback page (a local page of the library, see kxGetWebResMuiFile).
//
// What a page can do is limited:
// - only pages of the dialog's own origins get the bridge (see
//   KxWebBridgeOrigins); any other page the dialog reaches has no
//   "zentoctx";
// - the registry-like reads and writes address keys of the user's settings
//   store, never files;
// - links, pop-up windows and openUrl() hand only http, https and mailto
//   addresses to the system.
//
// The bridge methods are virtual, so a derived dialog can change single
// operations; the page reaches them through a bridge object that offers
// exactly these methods and nothing else of the dialog.
//
// Everything else the dialog keeps, the web engine's view and page among
// them, lives in its private part: modules built against this header keep
// working when that changes, and no web engine type appears here.
class KXAUTH_EXPORT KxWebDlg : public KxNimboCustomFrameDlg
{
    Q_OBJECT

public:
    // url gets the query items "distsrc", "lang" (language format 1),
    // "version" and "hId"; fallbackUrl gets none and may be empty.
    explicit KxWebDlg(const QUrl& url, QWidget* parent = nullptr, const QUrl& fallbackUrl = QUrl());
    ~KxWebDlg() override;

    // Loads the page, waits for it (holding back user input), then runs the
    // dialog modally once; returns that run's result.
    int exec() override;

public slots:
    // The script bridge, in the order pages see it.
    virtual void resize(int contentWidth, int contentHeight);
    virtual void moveTo(int x, int y);
    void accept() override;
    void reject() override;
    virtual QString get(const QString& key);
    virtual void set(const QString& key, const QString& value);
    virtual void experiment(const QString& expId, const QString& expVar);
    virtual void postEvent(const QString& eventName, const QString& eventCategory,
                           const QString& eventLable = QString(), int eventValue = 0,
                           const QString& viewName = QString());
    virtual void postPageView(const QString& viewName, const QString& viewCategory);
    virtual QString distSrc();
    virtual QString lang();
    virtual QString version();
    virtual QString hdid();
    void setVisible(bool visible) override;
    virtual QString readStrReg(const QString& key, const QString& valueName);
    virtual int readIntReg(const QString& key, const QString& valueName);
    virtual void writeStrReg(const QString& key, const QString& valueName, const QString& value);
    virtual void writeIntReg(const QString& key, const QString& valueName, int value);
    virtual QString readProductConfig(const QString& key);
    virtual bool isFileExist(const QString& file);
    virtual void login(const QString& onSuccess);
    virtual void openAutoLoginUrl(const QString& url);
    virtual bool isLogined();
    virtual QString loginedUserId();
    virtual bool isMimeTypeAvailable(const QString& type);
    virtual QString availableMimeTypes();
    virtual bool openUrl(const QString& url);
    virtual bool isSupportWindowOpen();
    virtual void setOnCloseCallback(const QString& callback);
    virtual void setOnEscPressCallback(const QString& callback);

protected slots:
    void on_linkClicked(const QUrl& url);
    void populateJavaScriptWindowObject();
    void on_loadFinished(bool ok);
    void on_loadTimedOut();
    void on_LoginStatusChange();

protected:
    void closeEvent(QCloseEvent* event) override;
    void keyPressEvent(QKeyEvent* event) override;

private:
    struct Private;
    std::unique_ptr<Private> d;
};

#endif // AUTHPLUGIN_KXWEBDLG_H
