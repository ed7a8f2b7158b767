#ifndef KXWEBKITDLGENGINE_H
#define KXWEBKITDLGENGINE_H

#include "kxwebdlgengine.h"

class KxAuthWebPage;
class KxAuthWebView;

// The web dialog on QtWebKit: a KxAuthWebView with a KxAuthWebPage, no
// context menu, every link delegated to the dialog.
class KxWebKitDlgEngine : public KxWebDlgEngine
{
    Q_OBJECT

public:
    explicit KxWebKitDlgEngine(QWidget* dialog);

    QWidget* view() const override;
    void load(const QUrl& url) override;
    QUrl url() const override;
    QUrl documentUrl() const override;
    void setViewportSize(const QSize& size) override;
    void setZoomFactor(qreal factor) override;
    void publish(const QString& name, QObject* object) override;
    void lockDocumentDomain() override;
    bool
    foreignFrameReachesMainFrame(const std::function<bool(const QUrl& origin)>& sameParty) override;
    void setScriptWindowsAllowed(bool allowed) override;
    QVariant evaluate(const QString& script) override;

private:
    KxAuthWebView* m_view;
    KxAuthWebPage* m_page;
};

#endif // KXWEBKITDLGENGINE_H
