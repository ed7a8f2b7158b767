#include "kxclickablelabel.h"

#include "kxlinkaccessible.h"

#include <QKeyEvent>
#include <QMouseEvent>

KxClickableLabel::KxClickableLabel(QWidget* parent)
    : QLabel(parent, Qt::WindowFlags())
{
    KxLinkAccessible::install();
}

// Right and middle releases end here: neither a click nor the label's own
// text handling.
void KxClickableLabel::mouseReleaseEvent(QMouseEvent* event)
{
    if (event->button() != Qt::LeftButton)
        return;
    emit clicked();
    QLabel::mouseReleaseEvent(event);
}

void KxClickableLabel::keyPressEvent(QKeyEvent* event)
{
    const bool activates = event->key() == Qt::Key_Space || event->key() == Qt::Key_Return ||
                           event->key() == Qt::Key_Enter;
    if (activates && !event->isAutoRepeat() &&
        (event->modifiers() & ~Qt::KeypadModifier) == Qt::NoModifier) {
        emit clicked();
        return;
    }
    QLabel::keyPressEvent(event);
}

void KxClickableLabel::enterEvent(KQtCompat::EnterEvent* event)
{
    setCursor(Qt::PointingHandCursor);
    QLabel::enterEvent(event);
}

void KxClickableLabel::leaveEvent(QEvent* event)
{
    setCursor(Qt::ArrowCursor);
    QLabel::leaveEvent(event);
}
