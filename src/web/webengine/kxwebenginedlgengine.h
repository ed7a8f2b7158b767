#ifndef KXWEBENGINEDLGENGINE_H
#define KXWEBENGINEDLGENGINE_H

#include "kxwebdlgengine.h"

#include <QPointer>

class KxWebEngineAuthPage;
class QWebChannel;
class QWebEngineProfile;
class QWebEngineView;

// The web dialog on QtWebEngine: a QWebEngineView with a
// KxWebEngineAuthPage in the library's own profile (kept in the host
// profile's per-user data directory, never in QtWebEngine's default place;
// no disk cache), no context menu, every link delegated to the dialog. The
// bridge travels through a QWebChannel; a script the library adds to every
// main-frame document, before the page's own, makes it "zentoctx" there,
// each call answering with a Promise.
class KxWebEngineDlgEngine : public KxWebDlgEngine
{
    Q_OBJECT

public:
    // How long evaluate() waits for the page's answer.
    static constexpr int kEvaluateWaitMs = 2000;

    explicit KxWebEngineDlgEngine(QWidget* dialog);
    ~KxWebEngineDlgEngine() override;

    // The profile the dialogs' pages use with the host profile in force now.
    static QWebEngineProfile* profile();

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
    // Waits for the answer (at most kEvaluateWaitMs), running the events
    // meanwhile but no user input: the engine answers asynchronously.
    QVariant evaluate(const QString& script) override;

protected:
    bool eventFilter(QObject* watched, QEvent* event) override;

private:
    QWebEngineProfile* m_profile;
    QPointer<QWebEngineView> m_view;
    KxWebEngineAuthPage* m_page;
    QWebChannel* m_channel = nullptr;
    qreal m_zoomFactor = 1.0;
};

#endif // KXWEBENGINEDLGENGINE_H
