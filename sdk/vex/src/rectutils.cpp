#include "vex/rectutils.h"

namespace {

// Division that rounds towards negative infinity, so a negative leftover
// (content larger than the area) still moves the content up and left by the
// larger half, as a positive one leaves the smaller half before it.
int floorHalf(int value)
{
    return value >= 0 ? value / 2 : -((1 - value) / 2);
}

} // namespace

QRect calcCenterRect(const QRect& area, const QSize& size)
{
    return QRect(area.left() + floorHalf(area.width() - size.width()),
                 area.top() + floorHalf(area.height() - size.height()), size.width(),
                 size.height());
}

void cutRectLeft(QRect& rect, int pixels)
{
    rect.setLeft(rect.left() + pixels);
}

void cutRectRight(QRect& rect, int pixels)
{
    rect.setRight(rect.right() - pixels);
}
