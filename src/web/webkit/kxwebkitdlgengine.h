#ifndef KXWEBKITDLGENGINE_H
#define KXWEBKITDLGENGINE_H

#include "kxwebdlgengine.h"

#include <QPointer>

class KxAuthWebPage;
class KxAuthWebView;

// The web dialog on QtWebKit: a KxAuthWebView with a KxAuthWebPage, no
// context menu, every link delegated to the dialog. The bridge goes into
// each document as its window object is cleared, before its script runs.
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
    void setBridge(const QString& name, QObject* object,
                   const std::function<bool(const QUrl& page)>& trusted) override;
    void publishBridge() override;
    bool
    foreignFrameReachesMainFrame(const std::function<bool(const QUrl& origin)>& sameParty) override;
    void setScriptWindowsAllowed(bool allowed) override;
    QVariant evaluate(const QString& script) override;

private:
    KxAuthWebView* m_view;
    KxAuthWebPage* m_page;
    QString m_bridgeName;
    QPointer<QObject> m_bridge;
};

#endif // KXWEBKITDLGENGINE_H
