#ifndef KLOGINSTATUSTIPWIDGET_H
#define KLOGINSTATUSTIPWIDGET_H

#include <QPixmap>
#include <QString>
#include <QWidget>

class QTimer;

// A small frameless balloon below the user-centre button telling why the
// account cannot be shown: the cloud service process did not start or
// failed, the user information could not be fetched, or the network went
// away. Its parent is the button.
//
// Shown with showTip() it stays until hidden; with showTipForAWhile() it
// hides itself after 8 s. While it is visible, a new text is not taken: the
// first reason stays in view.
class KLoginStatusTipWidget : public QWidget
{
    Q_OBJECT
    // The text shown (or last shown), for assistive tools and hosts.
    Q_PROPERTY(QString text READ text)

public:
    explicit KLoginStatusTipWidget(QWidget* parent);
    ~KLoginStatusTipWidget() override;

    // Connects the cloud client's process failures to the tip.
    void initLoginStatusOption();
    // Connects the user-information sync cache's errors to the tip.
    void initSyncLoginInfOption();

    void showTip(const QString& text);
    void showTipForAWhile(const QString& text);
    void hideTip();
    // The image at path, and its "@2x" companion for dense screens.
    void setBackgroundPixmap(const QString& path);
    // Stops, deletes and forgets a running hide timer; one that is not
    // running is left alone.
    void clearTimer();

    QString text() const { return m_text; }
    // The hide timer; null once clearTimer() took a running one away.
    QTimer* hideTimer() const { return m_timer; }

    QSize sizeHint() const override;

public slots:
    void onTimerHide();
    void onFailedToLaunchCloudsvrProcess();
    void onCloudsvrExitWithErrors(const QString& message);
    void onIpcErrorDuringAsyncUserInf();
    void onRpcErrorDuringAsyncUserInf();

protected:
    void showEvent(QShowEvent* event) override;
    void paintEvent(QPaintEvent* event) override;

private:
    void initStatusTipWidget();
    void setText(const QString& text);

    QTimer* m_timer = nullptr;
    QPixmap m_background;
    QString m_text;
    QPixmap m_background2x;
};

#endif // KLOGINSTATUSTIPWIDGET_H
