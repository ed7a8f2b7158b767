#include "vex/ktoolbutton.h"

#include "vex/kcommand.h"
#include "vex/kstyleoptiontoolbutton.h"
#include "vex/kzentostyle.h"

#include <QAction>
#include <QPainter>
#include <QPainterPath>
#include <QStylePainter>

KToolButton::KToolButton(QWidget* parent)
    : QToolButton(parent)
{
    setAutoRaise(true);
    setToolButtonStyle(Qt::ToolButtonTextBesideIcon);
    connect(this, &QAbstractButton::clicked, this, &KToolButton::onButtonClicked);
}

KToolButton::~KToolButton() = default;

void KToolButton::setButtonStyle(int style)
{
    if (style < IconOnlyStyle || style > UserPanelStyle)
        style = TextBesideIconStyle;
    m_buttonStyle = style;
    if (style <= FollowStyle)
        setToolButtonStyle(Qt::ToolButtonStyle(style));
    else if (style == UserPanelStyle)
        setToolButtonStyle(Qt::ToolButtonTextOnly);
    else
        setToolButtonStyle(Qt::ToolButtonTextBesideIcon);
    updateGeometry();
    update();
}

void KToolButton::setDefaultCommand(KCommand* command)
{
    if (m_command)
        disconnect(m_command, &KCommand::changed, this, &KToolButton::syncCommand);
    m_command = command;
    if (command)
        connect(command, &KCommand::changed, this, &KToolButton::syncCommand);
    syncCommand();
}

void KToolButton::initStyleOption(KStyleOptionToolButton* option) const
{
    if (!option)
        return;
    QToolButton::initStyleOption(option);
    option->buttonStyle = m_buttonStyle;
    option->popupOpen = m_popupOpen;
    // Enter and leave as the button saw them, also when they were sent to
    // it rather than coming from the window system.
    if (m_hovered && isEnabled())
        option->state |= QStyle::State_MouseOver;
    else
        option->state &= ~QStyle::State_MouseOver;
    if (m_buttonStyle == UserPanelStyle) {
        option->icon = QIcon();
        option->features &=
            ~(QStyleOptionToolButton::HasMenu | QStyleOptionToolButton::MenuButtonPopup);
    }
}

void KToolButton::syncCommand()
{
    if (!m_command)
        return;
    setText(m_command->text());
    setIcon(m_command->icon());
    setEnabled(m_command->isEnabled());
    const QString detail = m_command->detail();
    setToolTip(detail.isEmpty() ? m_command->text() : detail);
    setAccessibleDescription(detail);
}

void KToolButton::onClicked()
{
    if (m_command && m_command->isEnabled())
        m_command->action()->trigger();
}

void KToolButton::setPopupOpen(bool open)
{
    if (open == m_popupOpen)
        return;
    m_popupOpen = open;
    update();
}

void KToolButton::enterEvent(KQtCompat::EnterEvent* event)
{
    m_hovered = true;
    update();
    QToolButton::enterEvent(event);
}

void KToolButton::leaveEvent(QEvent* event)
{
    m_hovered = false;
    update();
    QToolButton::leaveEvent(event);
}

void KToolButton::paintEvent(QPaintEvent* /*event*/)
{
    if (m_buttonStyle == UserPanelStyle) {
        paintUserPanel();
        return;
    }
    QStylePainter painter(this);
    KStyleOptionToolButton option;
    initStyleOption(&option);
    painter.drawComplexControl(QStyle::CC_ToolButton, option);
}

void KToolButton::paintUserPanel()
{
    KStyleOptionToolButton option;
    initStyleOption(&option);
    QPainter painter(this);
    painter.setRenderHint(QPainter::Antialiasing);

    const bool enabled = option.state & QStyle::State_Enabled;
    const bool lit =
        option.popupOpen || (option.state & (QStyle::State_MouseOver | QStyle::State_Sunken));
    const qreal radius = KZentoStyle::dpiScaled(4);
    if (enabled && lit) {
        // The text colour, faint: reads on light and dark title areas alike.
        QColor shade = option.palette.color(QPalette::WindowText);
        shade.setAlpha(option.state & QStyle::State_Sunken ? 46 : 26);
        painter.setPen(Qt::NoPen);
        painter.setBrush(shade);
        painter.drawRoundedRect(QRectF(option.rect), radius, radius);
    }
    if (option.state & QStyle::State_HasFocus) {
        painter.setPen(QPen(option.palette.color(QPalette::Highlight), 1));
        painter.setBrush(Qt::NoBrush);
        painter.drawRoundedRect(QRectF(option.rect).adjusted(0.5, 0.5, -0.5, -0.5), radius, radius);
    }

    using Layout = KZentoStyle::UserPanelLayout;
    QRect textRect = option.rect;
    textRect.setLeft(
        option.rect.left() +
        qRound(KZentoStyle::dpiScaled(Layout::PictureLeft + Layout::PictureSize + Layout::Gap)));
    textRect.setRight(option.rect.right() - qRound(KZentoStyle::dpiScaled(Layout::RightMargin)));
    if (textRect.width() <= 0 || option.text.isEmpty())
        return;
    const QString shown =
        option.fontMetrics.elidedText(option.text, Qt::ElideRight, textRect.width());
    style()->drawItemText(&painter, textRect, Qt::AlignLeft | Qt::AlignVCenter | Qt::TextSingleLine,
                          option.palette, enabled, shown, QPalette::WindowText);
}

void KToolButton::onButtonClicked()
{
    onClicked();
}
