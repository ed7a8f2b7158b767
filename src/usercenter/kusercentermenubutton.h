#ifndef KUSERCENTERMENUBUTTON_H
#define KUSERCENTERMENUBUTTON_H

#include "kloginstatustipwidget.h"

#include <vex/kmenubutton.h>

#include <QImage>
#include <QPointer>

// The title area's user-centre button (KUserCenterMenuCommand's pocket
// widget): the avatar and the user's name. Resting the mouse on it opens the
// account menu, which closes once the mouse has left the button and the
// menu; a left click goes to the host's account service instead. While the
// user is signed out because the network went away, it keeps the last
// signed-in look under a grey veil, opens no menu, and explains itself in a
// balloon while the mouse is over it. Errors of the user-information sync
// show in the same balloon for a while.
//
// From the keyboard: reachable with Tab, Space or Enter open the menu (then
// arrows, Enter and Escape work in it). Assistive tools see a menu button
// named by the user's name, or "User centre" when there is none, whose
// press and show-menu actions do what Space does. Signed out by the
// network, none of these opens the menu: the keys and actions show the
// balloon for a while instead. It shows no tool tip.
class KUserCenterMenuButton : public KMenuButton
{
    Q_OBJECT

public:
    explicit KUserCenterMenuButton(QWidget* parent);
    ~KUserCenterMenuButton() override;

    // Loads the avatar: a company account's mark, else the signed-in user's
    // picture, else the default picture, decoded at most at the size drawn.
    // A picture that is not a regular file or has too many pixels is
    // refused for the default one; a file that cannot be read leaves no
    // avatar.
    void updateThumbnail();
    const QImage& thumbnail() const { return m_thumbnail; }
    KLoginStatusTipWidget* tip() const { return m_tip; }

    QSize sizeHint() const override;

public slots:
    void onLoginStatusChanged();
    void onPopupMenu();
    void syncCommand() override;

protected:
    bool event(QEvent* event) override;
    void mousePressEvent(QMouseEvent* event) override;
    void enterEvent(KQtCompat::EnterEvent* event) override;
    void leaveEvent(QEvent* event) override;
    void paintEvent(QPaintEvent* event) override;
    void keyPressEvent(QKeyEvent* event) override;
    void onClicked() override;

private:
    void handlePopupTracking();
    void paintThumbnail();
    void updateAccessibleName();
    QString offlineText() const;

    QImage m_thumbnail;
    bool m_popping = false;
    bool m_underMouse = false;
    QPointer<KLoginStatusTipWidget> m_tip;
    // The avatar as last drawn, at the device size it was drawn at.
    QImage m_drawn;
    qint64 m_drawnFrom = 0;
};

#endif // KUSERCENTERMENUBUTTON_H
