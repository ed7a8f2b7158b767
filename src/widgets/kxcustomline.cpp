#include "kxcustomline.h"

#include <QPainter>

KxCustomLine::KxCustomLine(QWidget* parent)
    : QFrame(parent, Qt::WindowFlags())
    , m_lineStyle(Qt::SolidLine)
{
    setFrameShape(QFrame::HLine);
}

void KxCustomLine::setLineStyle(Qt::PenStyle style)
{
    m_lineStyle = style;
}

void KxCustomLine::setLineColor(const QColor& color)
{
    m_lineColor = color;
}

// The frame's own drawing is left out: the line is all there is.
void KxCustomLine::paintEvent(QPaintEvent* /*event*/)
{
    const QMargins margins = contentsMargins();
    const qreal width = height() - margins.top() - margins.bottom();
    QPainter painter(this);
    painter.setPen(QPen(QBrush(m_lineColor, Qt::SolidPattern), width, m_lineStyle, Qt::SquareCap,
                        Qt::BevelJoin));
    painter.drawLine(margins.left(), margins.top(), this->width() - 1 - margins.right(),
                     margins.top());
}
