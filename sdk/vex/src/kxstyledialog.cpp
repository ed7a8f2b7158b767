#include "vex/kxstyledialog.h"

#include <QKeyEvent>

KxStyleDialog::KxStyleDialog(QWidget* parent, Qt::WindowFlags flags)
    : QDialog(parent, flags)
{
    watchOwnerWindow();
}

KxStyleDialog::~KxStyleDialog()
{
    if (m_ownerWindow)
        m_ownerWindow->removeEventFilter(this);
}

int KxStyleDialog::exec()
{
    setWindowModality(Qt::ApplicationModal);
    return QDialog::exec();
}

bool KxStyleDialog::event(QEvent* event)
{
    if (event->type() == QEvent::ParentChange)
        watchOwnerWindow();
    return QDialog::event(event);
}

bool KxStyleDialog::eventFilter(QObject* watched, QEvent* event)
{
    // A hide the window system sends (minimising) is not the program's.
    if (watched == m_ownerWindow && event->type() == QEvent::Hide && !event->spontaneous() &&
        isVisible()) {
        reject();
    }
    return QDialog::eventFilter(watched, event);
}

void KxStyleDialog::showEvent(QShowEvent* event)
{
    QDialog::showEvent(event);
    if (!event->spontaneous())
        activateWindow();
}

void KxStyleDialog::keyPressEvent(QKeyEvent* event)
{
    if (event->key() == Qt::Key_Escape && event->modifiers() == Qt::NoModifier) {
        reject();
        return;
    }
    QDialog::keyPressEvent(event);
}

// The owner is the window of the parent, not the parent itself: a dialog
// opened from a button belongs to the button's main window.
void KxStyleDialog::watchOwnerWindow()
{
    QWidget* owner = parentWidget() ? parentWidget()->window() : nullptr;
    if (owner == m_ownerWindow)
        return;
    if (m_ownerWindow)
        m_ownerWindow->removeEventFilter(this);
    m_ownerWindow = owner;
    if (m_ownerWindow)
        m_ownerWindow->installEventFilter(this);
}
