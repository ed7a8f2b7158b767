#ifndef VEX_KPOPUPWIDGET_H
#define VEX_KPOPUPWIDGET_H

#include "kcommand.h"
#include "vex_global.h"

#include <QBasicTimer>
#include <QPointer>
#include <QVector>
#include <QWidget>

class QKeyEvent;

// The host's popup of a command's child commands: a small window below the
// widget that opened it (its owner, also its QObject parent), listing the
// visible children in order, with the command's text and detail as a
// heading. It is as wide as its entries, and its heading up to 360 pixels
// (scaled), where a longer heading wraps; never wider than the screen. Clicking an enabled entry
// (or Return, Enter or Space on the current one) closes the popup and runs the entry's command.
//
// The popup does not grab the mouse or the keyboard, so the owner keeps its
// enter and leave events (hover menus) and its keyboard focus; the owner
// forwards keys with handleKey(). The popup closes itself on Escape, on a
// mouse press outside it and its owner, when its owner or the owner's
// window is hidden, and when the application goes inactive. Whether the
// mouse leaving closes it is the owner's decision: see PopupTrackEvent.
class VEX_EXPORT KPopupWidget : public QWidget
{
    Q_OBJECT

public:
    // The host's custom event type 32770, the popup tracking event. While a
    // popup is open and the mouse has moved since it opened, the host sends
    // it to the popup's owner every TrackInterval ms and at once when the
    // mouse leaves the popup, so that an owner can close a popup the mouse
    // has left promptly. A popup opened from the keyboard is left alone
    // until the mouse moves.
    static constexpr int PopupTrackEvent = 32770;
    static constexpr int TrackInterval = 50;

    // A popup of command's visible children (taken now) for owner.
    KPopupWidget(KCommand* command, QWidget* owner);
    ~KPopupWidget() override;

    KCommand* command() const { return m_command; }
    QWidget* owner() const { return m_owner; }

    int entryCount() const { return m_entries.size(); }
    // Null for an index out of range or an entry whose command has gone.
    KCommand* entryAt(int index) const;
    // Where entry index is drawn, in the popup's coordinates.
    QRect entryRect(int index) const;
    // The entry at pos (popup coordinates), -1 for none.
    int entryIndexAt(const QPoint& pos) const;

    // The highlighted entry, -1 for none.
    int currentIndex() const { return m_current; }
    void setCurrentIndex(int index);
    // Closes the popup and runs entry index's command, if it is enabled.
    void activate(int index);

    // Shows the popup with its top-left corner at globalPos, moved to stay
    // on the screen.
    void popup(const QPoint& globalPos);
    // Shows the popup below anchor (a global rectangle, its owner's), left
    // edges aligned, on the screen that holds the anchor: above the anchor
    // where there is no room below but room above, and moved along into the
    // screen where it would reach past it.
    void popup(const QRect& anchor);
    // A key forwarded by the owner: Up, Down, Home, End move the current
    // entry; Return, Enter and Space run it; Escape closes. False for any
    // other key.
    bool handleKey(QKeyEvent* event);

    QSize sizeHint() const override;

signals:
    // The popup was hidden, whatever closed it.
    void hidden();
    // An entry's command is about to run.
    void triggered(KCommand* command);

protected:
    bool event(QEvent* event) override;
    bool eventFilter(QObject* watched, QEvent* event) override;
    void paintEvent(QPaintEvent* event) override;
    void mouseMoveEvent(QMouseEvent* event) override;
    void mouseReleaseEvent(QMouseEvent* event) override;
    void keyPressEvent(QKeyEvent* event) override;
    void timerEvent(QTimerEvent* event) override;

private slots:
    void onApplicationStateChanged(Qt::ApplicationState state);

private:
    QRect availableArea() const;
    int headerHeight(int width) const;
    void moveCurrent(int step);
    void sendTrackEvent();

    QPointer<KCommand> m_command;
    QPointer<QWidget> m_owner;
    QPointer<QWidget> m_ownerWindow;
    QVector<QPointer<KCommand>> m_entries;
    QString m_heading;
    QString m_detail;
    int m_current = -1;
    QBasicTimer m_trackTimer;
    QPoint m_openedAt;
    bool m_tracking = false;
};

#endif // VEX_KPOPUPWIDGET_H
