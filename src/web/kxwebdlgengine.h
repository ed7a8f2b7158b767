#ifndef KXWEBDLGENGINE_H
#define KXWEBDLGENGINE_H

#include <QObject>
#include <QUrl>
#include <QVariant>

#include <functional>

class QSize;
class QWidget;

// What the web dialog asks of a web engine: a view to lay out in the
// dialog, and the page it shows. The dialog is written once against this
// interface; each engine has its own implementation, chosen when the
// library is built (QtWebKit's is KxWebKitDlgEngine), so changing the
// engine changes nothing that modules built against KxWebDlg see.
class KxWebDlgEngine : public QObject
{
    Q_OBJECT

public:
    // The engine this build uses, its view a child of dialog.
    static KxWebDlgEngine* create(QWidget* dialog);

    // The page's view; the engine owns nothing of the dialog but this.
    virtual QWidget* view() const = 0;

    virtual void load(const QUrl& url) = 0;
    // The main frame's address.
    virtual QUrl url() const = 0;
    // The main frame's address, once the document shown is the one it
    // names; empty while a new load is replacing the old document.
    virtual QUrl documentUrl() const = 0;
    // The size pages are laid out at while the view is hidden.
    virtual void setViewportSize(const QSize& size) = 0;
    // How many of the view's pixels a page's pixel takes.
    virtual void setZoomFactor(qreal factor) = 0;

    // Publishes object to the script of the main frame's document as name.
    virtual void publish(const QString& name, QObject* object) = 0;
    // Keeps the main frame's document from relaxing document.domain, the
    // one way a frame of another origin could reach its script.
    virtual void lockDocumentDomain() = 0;
    // Whether a frame of another origin than the main frame's, and one
    // sameParty does not accept, can reach the main frame's script.
    virtual bool
    foreignFrameReachesMainFrame(const std::function<bool(const QUrl& origin)>& sameParty) = 0;
    // Whether script of the main frame's document may open windows.
    virtual void setScriptWindowsAllowed(bool allowed) = 0;
    // Runs script in the main frame; its result, null when there is none.
    virtual QVariant evaluate(const QString& script) = 0;

signals:
    // Every link the user clicks: the view follows none itself.
    void linkClicked(const QUrl& url);
    void titleChanged(const QString& title);
    void loadFinished(bool ok);
    // The main frame has a new script world: publish again.
    void scriptWorldCleared();

protected:
    explicit KxWebDlgEngine(QObject* parent);
};

#endif // KXWEBDLGENGINE_H
