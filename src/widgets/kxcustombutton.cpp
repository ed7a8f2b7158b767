#include "kxcustombutton.h"

#include <vex/kzentostyle.h>
#include <vex/rectutils.h>

#include <QPainter>
#include <QStyleOptionButton>

namespace {

const int kContentsMargin = 5;
const qreal kDisabledOpacity = 0.6;

} // namespace

KxCustomButton::KxCustomButton(QWidget* parent)
    : QPushButton(parent)
{
    setAttribute(Qt::WA_Hover);
    const int margin = qRound(KZentoStyle::dpiScaled(kContentsMargin));
    setContentsMargins(margin, margin, margin, margin);
    m_normalColor = QColor(QStringLiteral("#7DC04A"));
    m_hoverColor = QColor(QStringLiteral("#97D26B"));
    m_pressedColor = QColor(QStringLiteral("#6DA83F"));
}

void KxCustomButton::setColor(QColor& normal, QColor& hover, QColor& pressed)
{
    m_normalColor = normal;
    m_hoverColor = hover;
    m_pressedColor = pressed;
}

QSize KxCustomButton::minimumSizeHint() const
{
    const QRect bounds = fontMetrics().boundingRect(
        QRect(), Qt::AlignLeft | Qt::AlignTop | Qt::TextShowMnemonic, text());
    const QMargins margins = contentsMargins();
    return QSize(bounds.width() + margins.left() + margins.right(),
                 bounds.height() + margins.top() + margins.bottom());
}

QSize KxCustomButton::sizeHint() const
{
    return minimumSizeHint();
}

void KxCustomButton::paintEvent(QPaintEvent* /*event*/)
{
    QPainter painter(this);
    QStyleOptionButton option;
    initStyleOption(&option);

    if (!(option.state & QStyle::State_Enabled))
        painter.setOpacity(kDisabledOpacity);

    painter.fillRect(rect(), m_normalColor);
    if (option.state & QStyle::State_Sunken)
        painter.fillRect(rect(), m_pressedColor);
    else if (option.state & QStyle::State_MouseOver)
        painter.fillRect(rect(), m_hoverColor);

    const QFontMetrics metrics = fontMetrics();
    const QSize textSize(metrics.horizontalAdvance(text()), metrics.height());
    painter.setPen(QColor(QStringLiteral("#FFFFFF")));
    if (textSize.width() <= contentsRect().width()) {
        painter.drawText(calcCenterRect(contentsRect(), textSize), Qt::TextShowMnemonic, text());
        return;
    }
    // Narrower than its text (a fixed size, a longer translation): wrapped
    // and centred, rather than cut at the edges.
    int flags = Qt::AlignCenter | Qt::TextShowMnemonic | Qt::TextWordWrap;
    const QStringList words = text().split(QLatin1Char(' '), Qt::SkipEmptyParts);
    for (const QString& word : words) {
        if (metrics.horizontalAdvance(word) > contentsRect().width())
            flags = (flags & ~Qt::TextWordWrap) | Qt::TextWrapAnywhere;
    }
    painter.drawText(contentsRect(), flags, text());
}
