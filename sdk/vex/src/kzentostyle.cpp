#include "vex/kzentostyle.h"

#include "vex/kstyleoptionuserpanelmenubutton.h"

#include <vexlite/hostcontrol.h>

#include <QGuiApplication>
#include <QScreen>
#include <QStyle>

#include <cmath>

namespace {

// The logical DPI a platform calls 100 %.
#ifdef Q_OS_MACOS
constexpr qreal kBaseDpi = 72;
#else
constexpr qreal kBaseDpi = 96;
#endif

qreal screenScale()
{
    const QScreen* screen = qobject_cast<QGuiApplication*>(QCoreApplication::instance())
                                ? QGuiApplication::primaryScreen()
                                : nullptr;
    if (!screen)
        return 1.0;
    // Quarter steps: a screen at 100 logical DPI is at 100 %, not 104 %.
    const qreal quarters = std::round(screen->logicalDotsPerInch() / kBaseDpi * 4);
    return std::max<qreal>(1.0, quarters / 4);
}

QSize userPanelSize(const QStyleOption* option)
{
    const auto* panel = kstyleoption_cast<KStyleOptionUserPanelMenuButton>(option);
    if (!panel)
        return QSize();
    using Layout = KZentoStyle::UserPanelLayout;
    const int fixed = qRound(
        KZentoStyle::dpiScaled(Layout::PictureLeft + Layout::PictureSize + Layout::RightMargin));
    // Without a text there is no gap before it.
    const int text =
        panel->textWidth > 0 ? qRound(KZentoStyle::dpiScaled(Layout::Gap)) + panel->textWidth : 0;
    return QSize(fixed + text, qRound(KZentoStyle::dpiScaled(qMax(0, panel->panelHeight))));
}

// The host's answers for its own metric numbers (KZentoStyle::SizeMetric).
QSize hostSizeMetric(int metric, const QStyleOption* option, const QWidget* /*widget*/)
{
    switch (metric) {
    case KZentoStyle::SM_UserPanelMenuButton:
        return userPanelSize(option);
    default:
        return QSize();
    }
}

} // namespace

qreal KZentoStyle::dpiScale()
{
    const qreal configured = krt::hostcontrol::displayScale();
    return configured > 0 ? configured : screenScale();
}

qreal KZentoStyle::dpiScaled(qreal value)
{
    return value * dpiScale();
}

QSize KZentoStyle::dpiScaledSize(const QSize& size)
{
    const qreal scale = dpiScale();
    return QSize(qRound(size.width() * scale), qRound(size.height() * scale));
}

QRect KZentoStyle::dpiScaledRect(const QRect& rect)
{
    const qreal scale = dpiScale();
    return QRect(qRound(rect.x() * scale), qRound(rect.y() * scale), qRound(rect.width() * scale),
                 qRound(rect.height() * scale));
}

QPoint KZentoStyle::dpiScaledPoint(const QPoint& point)
{
    const qreal scale = dpiScale();
    return QPoint(qRound(point.x() * scale), qRound(point.y() * scale));
}

QSize KZentoStyle::sizeMetric(QStyle* style, int metric, const QStyleOption* option,
                              const QWidget* widget)
{
    if (metric < 0)
        return QSize();
    if (style) {
        const auto type = QStyle::ContentsType(QStyle::CT_CustomBase + metric);
        const QSize answered = style->sizeFromContents(type, option, QSize(), widget);
        if (answered.isValid())
            return answered;
    }
    return hostSizeMetric(metric, option, widget);
}
