#ifndef KPOPUPDRIVER_H
#define KPOPUPDRIVER_H

#include <vex/kmenubutton.h>
#include <vex/kpopupwidget.h>

#include <QTimer>

#include <functional>

namespace AuthTest {

// A menu button's popup runs an event loop of its own until it is hidden,
// so whatever a test does with an open popup happens from inside that run:
// open() opens it (a click, a key, a hover), whileOpen(popup) runs once it
// is on the screen (none: hide it). Whatever whileOpen leaves, the popup is
// hidden after five seconds, so a failed check cannot hang the suite.
// Returns how many popups were shown while open() ran.
inline int withPopup(KMenuButton* button, const std::function<void()>& open,
                     const std::function<void(KPopupWidget*)>& whileOpen)
{
    int shown = 0;
    const QMetaObject::Connection connection =
        QObject::connect(button, &KMenuButton::popupShown, [&](KPopupWidget* popup) {
            ++shown;
            QTimer::singleShot(5000, popup, &QWidget::hide);
            if (whileOpen)
                whileOpen(popup);
            else
                popup->hide();
        });
    open();
    QObject::disconnect(connection);
    return shown;
}

} // namespace AuthTest

#endif // KPOPUPDRIVER_H
