#include "kxnimbopixmapbutton.h"

#include <vex/rectutils.h>

#include <QPaintEngine>
#include <QPainter>
#include <QStyleOptionButton>

KxNimboPixmapButton::KxNimboPixmapButton(QWidget* parent)
    : QPushButton(parent)
{
    setSizePolicy(QSizePolicy::Minimum, QSizePolicy::Minimum);
}

KxNimboPixmapButton::KxNimboPixmapButton(const QString& dir, const QString& name, QWidget* parent)
    : QPushButton(parent)
{
    load(dir, name);
}

void KxNimboPixmapButton::load(const QString& dir, const QString& name)
{
    const QString stem = dir + QLatin1Char('/') + name;
    m_normal = QPixmap(stem + QLatin1String("_normal.png"));
    m_hover = QPixmap(stem + QLatin1String("_hover.png"));
    m_sunken = QPixmap(stem + QLatin1String("_sunken.png"));
    m_normal2x = QPixmap(stem + QLatin1String("_normal@2x.png"));
    m_hover2x = QPixmap(stem + QLatin1String("_hover@2x.png"));
}

QSize KxNimboPixmapButton::sizeHint() const
{
    return m_normal.size();
}

void KxNimboPixmapButton::paintEvent(QPaintEvent* /*event*/)
{
    QStyleOptionButton option;
    initStyleOption(&option);
    const QRect target = calcCenterRect(rect(), m_normal.size());

    // Pressed is tested first and shows the normal image.
    const QPixmap* image = &m_normal;
    if (option.state & QStyle::State_Sunken)
        image = &m_normal;
    else if (option.state & QStyle::State_MouseOver)
        image = &m_hover;

    QPainter painter(this);
    // The device painted on: the window's, or an image the button is
    // rendered into.
    const QPaintDevice* device = painter.paintEngine()->paintDevice();
    const QPixmap& dense = image == &m_hover ? m_hover2x : m_normal2x;
    if ((device ? device : this)->devicePixelRatioF() > 1 && !dense.isNull())
        image = &dense;
    painter.drawPixmap(target, *image, QRect());
}
