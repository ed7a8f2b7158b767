#ifndef KXWEBDLGENGINE_H
#define KXWEBDLGENGINE_H

#include <QObject>
#include <QUrl>
#include <QVariant>

#include <functional>

class QSize;
class QWidget;

// What the web dialog asks of a web engine: a view to lay out in the
// dialog, the page it shows, and a way to hand that page the bridge. The
// dialog is written once against this interface; each engine has its own
// implementation, chosen when the library is built (KxWebKitDlgEngine on
// QtWebKit, KxWebEngineDlgEngine on QtWebEngine), so changing the engine
// changes nothing that modules built against KxWebDlg see.
class KxWebDlgEngine : public QObject
{
    Q_OBJECT

public:
    // The engine this build uses, its view a child of dialog.
    static KxWebDlgEngine* create(QWidget* dialog);

    // The page's view; the engine owns nothing of the dialog but this.
    virtual QWidget* view() const = 0;

    virtual void load(const QUrl& url) = 0;
    // The main frame's address: the one it shows or, while a load is under
    // way or has failed, the one it was asked for. Invokable, as evaluate():
    // a host's tests reach the page through the meta-object.
    Q_INVOKABLE virtual QUrl url() const = 0;
    // The address of the document the main frame shows, once its script
    // world exists (scriptWorldCleared); empty while a new load is replacing
    // the old document.
    virtual QUrl documentUrl() const = 0;
    // The size pages are laid out at while the view is hidden.
    virtual void setViewportSize(const QSize& size) = 0;
    // How many of the view's pixels a page's pixel takes.
    virtual void setZoomFactor(qreal factor) = 0;

    // The object pages get as name, and which documents may get it (by
    // their address), set once before the first load. An engine whose
    // pages need the bridge before their script runs decides from trusted
    // as a main-frame navigation starts; the dialog still decides for each
    // document whether its calls run.
    virtual void setBridge(const QString& name, QObject* object,
                           const std::function<bool(const QUrl& page)>& trusted) = 0;
    // Hands the bridge to the main frame's document, and keeps that
    // document from relaxing document.domain, the one way a frame of another
    // origin could reach its script.
    virtual void publishBridge() = 0;
    // Whether a frame of another origin than the main frame's, and one
    // sameParty does not accept, can reach the main frame's script.
    virtual bool
    foreignFrameReachesMainFrame(const std::function<bool(const QUrl& origin)>& sameParty) = 0;
    // Whether script of the main frame's document may open windows.
    virtual void setScriptWindowsAllowed(bool allowed) = 0;
    // Runs script in the main frame; its result, null when there is none.
    Q_INVOKABLE virtual QVariant evaluate(const QString& script) = 0;

signals:
    // Every link the user clicks: the view follows none itself.
    void linkClicked(const QUrl& url);
    void titleChanged(const QString& title);
    void loadStarted();
    void loadFinished(bool ok);
    // The main frame has a new document with a script world of its own:
    // decide about the bridge again.
    void scriptWorldCleared();
    // The engine found, by itself, that a frame of another origin can reach
    // the main frame's script (as foreignFrameReachesMainFrame answers).
    void mainFrameReached();

protected:
    explicit KxWebDlgEngine(QObject* parent);

    // The text of one of the scripts the engines give pages (web.qrc).
    static QString script(const QString& name);
};

#endif // KXWEBDLGENGINE_H
