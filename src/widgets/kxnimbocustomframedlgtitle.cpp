#include "kxnimbocustomframedlgtitle.h"

#include "kxnimbopixmapbutton.h"

#include <vex/kzentostyle.h>
#include <vex/rectutils.h>

#include <QMouseEvent>
#include <QPainter>

namespace {

const int kTitleHeight = 40;
const int kTextIndent = 10;

} // namespace

KxNimboCustomFrameDlgTitle::KxNimboCustomFrameDlgTitle(QWidget* parent)
    : QWidget(parent, Qt::WindowFlags())
    , m_closeButton(
          new KxNimboPixmapButton(QStringLiteral("res:/images"), QStringLiteral("close"), this))
{
    setFocusPolicy(Qt::NoFocus);
    m_closeButton->setFocusPolicy(Qt::NoFocus);
    m_closeButton->setAccessibleName(tr("Close"));
    if (parent)
        connect(m_closeButton, &QPushButton::clicked, parent, &QWidget::close);
}

int KxNimboCustomFrameDlgTitle::titleHeight()
{
    return qRound(KZentoStyle::dpiScaled(kTitleHeight));
}

void KxNimboCustomFrameDlgTitle::setIcon(const QPixmap& icon)
{
    m_icon = icon;
}

void KxNimboCustomFrameDlgTitle::setColor(const QColor& color)
{
    m_color = color;
}

QColor KxNimboCustomFrameDlgTitle::color() const
{
    return m_color;
}

QRect KxNimboCustomFrameDlgTitle::closeSquare() const
{
    return QRect(QPoint(width() - height() - 1, 0), QPoint(width() - 1, height() - 1));
}

// Only the release counts: pressing elsewhere on the bar and letting go over
// the close square closes the dialog as well.
void KxNimboCustomFrameDlgTitle::mouseReleaseEvent(QMouseEvent* event)
{
    if (closeSquare().contains(event->pos()) && parentWidget())
        parentWidget()->close();
}

void KxNimboCustomFrameDlgTitle::paintEvent(QPaintEvent* /*event*/)
{
    QPainter painter(this);
    // An invalid colour fills as black.
    painter.fillRect(rect(), QBrush(m_color));

    QRect textRect = rect();
    if (!m_icon.isNull()) {
        painter.drawPixmap(0, 0, m_icon);
        cutRectLeft(textRect, m_icon.width());
    }
    cutRectRight(textRect, height());
    cutRectLeft(textRect, qRound(KZentoStyle::dpiScaled(kTextIndent)));

    QFont font = this->font();
    // Half the bar in whole pixels, then three quarters of that: 15 for 40.
    const int halfHeight = height() / 2;
    font.setPixelSize(int(halfHeight * 0.75));
    painter.setFont(font);
    painter.setPen(Qt::white);
    const QString title = parentWidget() ? parentWidget()->windowTitle() : QString();
    painter.drawText(textRect, Qt::AlignVCenter | Qt::TextSingleLine, title);
}

void KxNimboCustomFrameDlgTitle::resizeEvent(QResizeEvent* event)
{
    m_closeButton->setGeometry(closeSquare());
    QWidget::resizeEvent(event);
}
