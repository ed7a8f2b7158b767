#ifndef VEX_KZENTOSTYLE_H
#define VEX_KZENTOSTYLE_H

#include "vex_global.h"

#include <QPoint>
#include <QRect>
#include <QSize>

class QStyle;
class QStyleOption;
class QWidget;

// The host style's helpers. Every pixel size a widget of the suite uses is
// written for 100 % and goes through these functions.
//
// The display scale. Qt already multiplies by the device pixel ratio on
// high-density screens (Retina, QT_SCALE_FACTOR, Qt's high-DPI scaling):
// there a 40-pixel bar is 40 device-independent pixels and Qt paints it with
// 80 device pixels. What Qt does not scale is a desktop enlarged through its
// DPI setting (X11 Xft.dpi 144, Windows at 150 % without Qt's scaling); the
// screen then reports a larger logical DPI at a device pixel ratio of 1. So
// the scale is the primary screen's logical DPI over the platform's 100 %
// DPI (96, on macOS 72), rounded to the nearest quarter and never below 1.
// Scaling by the device pixel ratio as well would enlarge twice.
//
// The host profile's "display" "scale" or krt::hostcontrol::setDisplayScale()
// overrides the screen (tests run at 1.0, 1.5 and 2.0 that way). Widgets take
// the scale when they lay themselves out, so it is set before they are made.
class VEX_EXPORT KZentoStyle
{
public:
    // Size metrics of the host's widget library, by the numbers callers pass
    // to sizeMetric(). Numbers are fixed once given out; the host answers
    // those listed here, any other number only an application style can.
    enum SizeMetric {
        // The size of a user-panel menu button (KToolButton::UserPanelStyle),
        // for a KStyleOptionUserPanelMenuButton: the picture the button draws
        // at its left (UserPanelLayout), the text (the option's textWidth),
        // a margin on the right; as high as the option's panelHeight. Sizes
        // written for 100 % are scaled, textWidth is taken as it is. Any
        // other option gives an invalid size.
        SM_UserPanelMenuButton = 31,
        SM_CustomBase = 0x1000 // numbers from here are free for applications
    };

    // The user panel's layout at 100 %, from the left: PictureLeft pixels,
    // the picture (PictureSize square, vertically centred), Gap, the text,
    // RightMargin.
    struct UserPanelLayout
    {
        static constexpr int PictureLeft = 1;
        static constexpr int PictureSize = 16;
        static constexpr int Gap = 6;
        static constexpr int RightMargin = 8;
    };

    KZentoStyle() = delete;

    // The display scale, 1.0 for 100 %.
    static qreal dpiScale();

    // A size written for 100 % at the display scale. Reals are scaled
    // exactly (callers truncate or round as they need); integer geometry is
    // rounded to the nearest pixel, each coordinate and extent on its own.
    static qreal dpiScaled(qreal value);
    static QSize dpiScaledSize(const QSize& size);
    static QRect dpiScaledRect(const QRect& rect);
    static QPoint dpiScaledPoint(const QPoint& point);

    // The size the style gives the numbered metric for this option and
    // widget. An application style answers first, as QStyle::sizeFromContents
    // for the contents type QStyle::CT_CustomBase + metric; a valid size from
    // it wins. Otherwise the host's own answer for the metrics listed above,
    // else an invalid QSize. Any argument may be null.
    static QSize sizeMetric(QStyle* style, int metric, const QStyleOption* option,
                            const QWidget* widget);
};

#endif // VEX_KZENTOSTYLE_H
