#ifndef KLOGINSTATUSTIPWIDGET_H
#define KLOGINSTATUSTIPWIDGET_H

#include <QPixmap>
#include <QString>
#include <QWidget>

class QPainter;
class QTimer;

// A small frameless balloon below the user-centre button telling why the
// account cannot be shown: the cloud service process did not start or
// failed, the user information could not be fetched, or the network went
// away. Its parent is the button.
//
// Shown with showTip() it stays until hidden; with showTipForAWhile() it
// hides itself after 8 s. While it is visible, a new text is not taken: the
// first reason stays in view.
//
// A text that fits shows in the balloon's 211 x 53 (scaled for the display)
// at its place; a longer one widens the balloon, then wraps into more lines,
// the background stretched around it. The balloon drops below the button,
// and stays on the screen that holds the button: moved left at the right
// edge, above the button at the bottom edge, the pointer towards the
// button. Assistive tools hear it as an alert.
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

    // The balloon's size for the text shown: 211 x 53, scaled, unless the
    // text needs more.
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
    QFont textFont() const;
    void layOut(const QSize& room);
    void place();
    void paintGrown(QPainter& painter, const QPixmap& image);

    QTimer* m_timer = nullptr;
    QPixmap m_background;
    QString m_text;
    QPixmap m_background2x;
    // The text as drawn, a line each; where the pointer is drawn (its
    // left, and whether below the body, the tip sitting above the button).
    QStringList m_lines;
    int m_pointerLeft = 0;
    bool m_pointerDown = false;
};

#endif // KLOGINSTATUSTIPWIDGET_H
