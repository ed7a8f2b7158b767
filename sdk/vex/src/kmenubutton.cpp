#include "vex/kmenubutton.h"

#include "vex/kpopupwidget.h"

#include <QEventLoop>
#include <QKeyEvent>

KMenuButton::KMenuButton(QWidget* parent)
    : KToolButton(parent)
{}

KMenuButton::~KMenuButton() = default;

void KMenuButton::popupChildWidget()
{
    if (!defaultCommand() || m_popup)
        return;
    const QPointer<KMenuButton> self(this);
    const QPointer<KPopupWidget> popup = new KPopupWidget(defaultCommand(), this);
    m_popup = popup;
    setPopupOpen(true);

    QEventLoop loop;
    connect(popup.data(), &KPopupWidget::hidden, &loop, &QEventLoop::quit);
    connect(popup.data(), &QObject::destroyed, &loop, &QEventLoop::quit);
    popup->popup(QRect(mapToGlobal(QPoint(0, 0)), size()));
    emit popupShown(popup);
    // Whoever was told may have closed it already.
    if (popup && popup->isVisible())
        loop.exec();

    delete popup.data();
    if (!self)
        return;
    setPopupOpen(false);
}

void KMenuButton::onClicked()
{
    // A second click closes what the first opened.
    if (m_popup)
        m_popup->hide();
    else
        popupChildWidget();
}

void KMenuButton::keyPressEvent(QKeyEvent* event)
{
    if (m_popup && m_popup->isVisible() && m_popup->handleKey(event)) {
        event->accept();
        return;
    }
    KToolButton::keyPressEvent(event);
}
