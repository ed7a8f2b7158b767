#include "kxnimbocustomframedlg.h"

#include "kxnimbocustomframedlgtitle.h"

#include <QPainter>

KxNimboCustomFrameDlg::KxNimboCustomFrameDlg(QWidget* parent, Qt::WindowFlags flags)
    : KxStyleDialog(parent, flags | Qt::FramelessWindowHint)
    , m_title(new KxNimboCustomFrameDlgTitle(this))
{
    setContentsMargins(1, KxNimboCustomFrameDlgTitle::titleHeight(), 1, 1);
}

void KxNimboCustomFrameDlg::setTitleIcon(const QPixmap& icon)
{
    m_title->setIcon(icon);
}

void KxNimboCustomFrameDlg::setTitleColor(const QColor& color)
{
    m_title->setColor(color);
}

QColor KxNimboCustomFrameDlg::titleColor() const
{
    return m_title->color();
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
    m_title->setGeometry(
        QRect(QPoint(0, 0), QPoint(width() - 1, KxNimboCustomFrameDlgTitle::titleHeight() - 1)));
    KxStyleDialog::resizeEvent(event);
}
