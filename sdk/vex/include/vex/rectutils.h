#ifndef VEX_RECTUTILS_H
#define VEX_RECTUTILS_H

#include "vex_global.h"

#include <QRect>
#include <QSize>

// Rectangle arithmetic the host's painters share.

// A rectangle of `size` centred in `area`. Odd leftovers go to the right and
// bottom (the offset is rounded towards the top-left, also when `size` is
// larger than `area`).
VEX_EXPORT QRect calcCenterRect(const QRect& area, const QSize& size);

// Remove `pixels` from the left or the right side of `rect` in place; a
// negative count widens it. Cutting more than the width leaves an empty
// rectangle (QRect::isEmpty()).
VEX_EXPORT void cutRectLeft(QRect& rect, int pixels);
VEX_EXPORT void cutRectRight(QRect& rect, int pixels);

#endif // VEX_RECTUTILS_H
