#ifndef KWIDGETPIXELS_H
#define KWIDGETPIXELS_H

#include <QCursor>
#include <QImage>
#include <QPoint>
#include <QWidget>
#include <QWindow>
#include <QtTest>

// What the widget and account suites share: painting a widget into an
// image at a fixed device pixel ratio, finding where something was drawn,
// comparing colours.
namespace KWidgetPixels {

// Whether each channel of a is within tolerance of b's.
inline bool near(const QColor& a, const QColor& b, int tolerance = 1)
{
    return qAbs(a.red() - b.red()) <= tolerance && qAbs(a.green() - b.green()) <= tolerance &&
           qAbs(a.blue() - b.blue()) <= tolerance;
}

// The widget and its children painted over `background`, without the
// window background, at the given device pixel ratio.
inline QImage paint(QWidget* widget, const QColor& background, qreal ratio = 1)
{
    QImage image(widget->size() * ratio, QImage::Format_ARGB32);
    image.setDevicePixelRatio(ratio);
    image.fill(background);
    widget->render(&image, QPoint(), QRegion(), QWidget::DrawChildren);
    image.setDevicePixelRatio(1);
    return image;
}

// The smallest rectangle holding every pixel of `area` that is not `color`;
// null when there is none.
inline QRect inkBounds(const QImage& image, const QColor& color, QRect area = QRect())
{
    if (area.isNull())
        area = image.rect();
    QRect bounds;
    for (int y = area.top(); y <= area.bottom(); ++y) {
        for (int x = area.left(); x <= area.right(); ++x) {
            if (image.pixel(x, y) != color.rgba())
                bounds |= QRect(x, y, 1, 1);
        }
    }
    return bounds;
}

// Moves the mouse over `point` of the shown window the way the platform
// does (the offscreen platform turns a cursor move into enter, leave and
// move events), so Qt delivers enter and leave to the widgets itself.
// Qt ignores a move to where the cursor already is, so it comes from outside.
inline void moveMouse(QWidget* window, QPoint point)
{
    QCursor::setPos(window->frameGeometry().bottomRight() + QPoint(50, 50));
    QCursor::setPos(window->mapToGlobal(point));
    QCoreApplication::processEvents();
}

} // namespace KWidgetPixels

#endif // KWIDGETPIXELS_H
