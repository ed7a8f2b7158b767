#include "kxnimbocustomframedlg.h"

#include "kxnimbocustomframedlgtitle.h"

#include <QPainter>
#include <QScreen>
#include <QShowEvent>

namespace {

// Where a dialog of its size sits centred on its parent's window, or on
// the screen without one, kept inside that screen's available area so
// that its title bar and close button can be reached.
QPoint centredPosition(const QWidget* dialog)
{
    const QWidget* owner = dialog->parentWidget() ? dialog->parentWidget()->window() : nullptr;
    const QScreen* screen = owner ? owner->screen() : dialog->screen();
    const QRect available = screen ? screen->availableGeometry() : QRect();
    QRect placed(QPoint(0, 0), dialog->size());
    placed.moveCenter(owner ? owner->frameGeometry().center() : available.center());
    if (available.isValid()) {
        placed.moveRight(qMin(placed.right(), available.right()));
        placed.moveBottom(qMin(placed.bottom(), available.bottom()));
        placed.moveLeft(qMax(placed.left(), available.left()));
        placed.moveTop(qMax(placed.top(), available.top()));
    }
    return placed.topLeft();
}

} // namespace

struct KxNimboCustomFrameDlg::Private
{
#ifdef AUTH_LAYOUT_PROBE
    // Another private layout, for the package test's library of it.
    char layoutProbe[256] = {};
#endif
    KxNimboCustomFrameDlgTitle* title = nullptr;
};

KxNimboCustomFrameDlg::KxNimboCustomFrameDlg(QWidget* parent, Qt::WindowFlags flags)
    : KxStyleDialog(parent, flags | Qt::FramelessWindowHint)
    , d(std::make_unique<Private>())
{
    d->title = new KxNimboCustomFrameDlgTitle(this);
    setContentsMargins(1, KxNimboCustomFrameDlgTitle::titleHeight(), 1, 1);
}

KxNimboCustomFrameDlg::~KxNimboCustomFrameDlg() = default;

void KxNimboCustomFrameDlg::setTitleIcon(const QPixmap& icon)
{
    d->title->setIcon(icon);
}

void KxNimboCustomFrameDlg::setTitleColor(const QColor& color)
{
    d->title->setColor(color);
}

QColor KxNimboCustomFrameDlg::titleColor() const
{
    return d->title->color();
}

void KxNimboCustomFrameDlg::paintEvent(QPaintEvent* /*event*/)
{
    QPainter painter(this);
    painter.fillRect(rect(), Qt::white);
    painter.setPen(QColor(QStringLiteral("#B2B4BC")));
    painter.drawRect(0, 0, width() - 1, height() - 1);
}

void KxNimboCustomFrameDlg::resizeEvent(QResizeEvent* event)
{
    d->title->setGeometry(
        QRect(QPoint(0, 0), QPoint(width() - 1, KxNimboCustomFrameDlgTitle::titleHeight() - 1)));
    KxStyleDialog::resizeEvent(event);
}

// QDialog places a dialog nobody moved as if a window manager framed it,
// allowing for a title bar this dialog does not have (and guessing one
// where no window manager runs): the frame would sit too high and to the
// left. It is placed again here, before it reaches the screen.
void KxNimboCustomFrameDlg::showEvent(QShowEvent* event)
{
    const bool placed = testAttribute(Qt::WA_Moved);
    KxStyleDialog::showEvent(event);
    if (placed || event->spontaneous())
        return;
    move(centredPosition(this));
    // Not a position the program chose: the next show places it again.
    setAttribute(Qt::WA_Moved, false);
}
