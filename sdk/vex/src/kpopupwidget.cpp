#include "vex/kpopupwidget.h"

#include "vex/kcommand.h"
#include "vex/kzentostyle.h"

#include <QAction>
#include <QApplication>
#include <QCursor>
#include <QGuiApplication>
#include <QKeyEvent>
#include <QPainter>
#include <QScreen>

namespace {

// Sizes at 100 %.
constexpr int kPadding = 4;        // above the first and below the last entry
constexpr int kHeadingPadding = 8; // around the heading
constexpr int kEntryHeight = 28;
constexpr int kIconLeft = 12;
constexpr int kIconSize = 16;
constexpr int kTextGap = 8;
constexpr int kRightPadding = 16;
constexpr int kMinimumWidth = 180;
constexpr int kMaximumWidth = 360; // a longer heading or detail wraps

int scaled(int value)
{
    return qRound(KZentoStyle::dpiScaled(value));
}

QFont headingFont(QFont font)
{
    font.setBold(true);
    return font;
}

// Heading lines start at the left and wrap at word boundaries, or anywhere
// where one word (or a text without spaces, as Chinese is written) is wider
// than the line.
int headingFlags(const QFontMetrics& metrics, const QString& text, int width)
{
    const int left = int(Qt::AlignLeft | Qt::AlignVCenter);
    const QStringList words = text.split(QLatin1Char(' '), Qt::SkipEmptyParts);
    for (const QString& word : words) {
        if (metrics.horizontalAdvance(word) > width)
            return left | Qt::TextWrapAnywhere;
    }
    return left | Qt::TextWordWrap;
}

int wrappedHeight(const QFontMetrics& metrics, const QString& text, int width)
{
    return metrics
        .boundingRect(QRect(0, 0, width, QWIDGETSIZE_MAX), headingFlags(metrics, text, width), text)
        .height();
}

// area moved into the screen's available area as far as it must.
QRect keptOnScreen(QRect area, const QScreen* screen)
{
    if (!screen)
        return area;
    const QRect available = screen->availableGeometry();
    if (area.right() > available.right())
        area.moveRight(available.right());
    if (area.bottom() > available.bottom())
        area.moveBottom(available.bottom());
    area.moveLeft(qMax(area.left(), available.left()));
    area.moveTop(qMax(area.top(), available.top()));
    return area;
}

} // namespace

KPopupWidget::KPopupWidget(KCommand* command, QWidget* owner)
    : QWidget(owner, Qt::ToolTip | Qt::FramelessWindowHint)
    , m_command(command)
    , m_owner(owner)
    , m_ownerWindow(owner ? owner->window() : nullptr)
{
    setAttribute(Qt::WA_ShowWithoutActivating);
    setMouseTracking(true);
    setFocusPolicy(Qt::NoFocus);
    if (command) {
        m_heading = command->text();
        m_detail = command->detail();
        setAccessibleName(command->text());
        for (int i = 0; i < command->childCount(); ++i) {
            KCommand* child = command->childAt(i);
            if (child && child->isVisible())
                m_entries.append(child);
        }
    }
    for (QWidget* watched : {m_owner.data(), m_ownerWindow.data()}) {
        if (watched)
            watched->installEventFilter(this);
    }
    connect(qApp, &QGuiApplication::applicationStateChanged, this,
            &KPopupWidget::onApplicationStateChanged);
    resize(sizeHint());
}

KPopupWidget::~KPopupWidget() = default;

KCommand* KPopupWidget::entryAt(int index) const
{
    return index >= 0 && index < m_entries.size() ? m_entries.at(index).data() : nullptr;
}

// The screen area the popup has: the available geometry of the screen that
// holds its owner, else of the primary screen.
QRect KPopupWidget::availableArea() const
{
    const QScreen* screen = nullptr;
    if (m_owner)
        screen = QGuiApplication::screenAt(m_owner->mapToGlobal(m_owner->rect().center()));
    if (!screen)
        screen = QGuiApplication::primaryScreen();
    return screen ? screen->availableGeometry() : QRect();
}

// Heading and detail wrap into the popup's width less the margins.
int KPopupWidget::headerHeight(int width) const
{
    if (m_heading.isEmpty() && m_detail.isEmpty())
        return 0;
    const int textWidth = qMax(1, width - 2 * scaled(kIconLeft));
    int height = 2 * scaled(kHeadingPadding) + 1; // and the rule below
    if (!m_heading.isEmpty())
        height += wrappedHeight(QFontMetrics(headingFont(font())), m_heading, textWidth);
    if (!m_detail.isEmpty())
        height += wrappedHeight(fontMetrics(), m_detail, textWidth);
    return height;
}

QRect KPopupWidget::entryRect(int index) const
{
    if (index < 0 || index >= m_entries.size())
        return QRect();
    const int top = 1 + headerHeight(width()) + scaled(kPadding) + index * scaled(kEntryHeight);
    return QRect(1, top, width() - 2, scaled(kEntryHeight));
}

int KPopupWidget::entryIndexAt(const QPoint& pos) const
{
    for (int i = 0; i < m_entries.size(); ++i) {
        if (entryRect(i).contains(pos))
            return i;
    }
    return -1;
}

void KPopupWidget::setCurrentIndex(int index)
{
    if (index < -1 || index >= m_entries.size())
        index = -1;
    if (index == m_current)
        return;
    m_current = index;
    update();
}

void KPopupWidget::activate(int index)
{
    KCommand* command = entryAt(index);
    if (!command || !command->isEnabled())
        return;
    // Hidden first: what the command does may take a while or open a
    // window of its own.
    hide();
    emit triggered(command);
    command->action()->trigger();
}

void KPopupWidget::popup(const QPoint& globalPos)
{
    setGeometry(keptOnScreen(QRect(globalPos, sizeHint()), QGuiApplication::screenAt(globalPos)));
    show();
}

void KPopupWidget::popup(const QRect& anchor)
{
    QRect area(QPoint(anchor.left(), anchor.bottom() + 1), sizeHint());
    const QScreen* screen = QGuiApplication::screenAt(anchor.center());
    if (screen) {
        const QRect available = screen->availableGeometry();
        if (area.bottom() > available.bottom() && anchor.top() - area.height() >= available.top())
            area.moveBottom(anchor.top() - 1);
    }
    setGeometry(keptOnScreen(area, screen));
    show();
}

bool KPopupWidget::handleKey(QKeyEvent* event)
{
    switch (event->key()) {
    case Qt::Key_Up:
        moveCurrent(-1);
        return true;
    case Qt::Key_Down:
        moveCurrent(1);
        return true;
    case Qt::Key_Home:
        setCurrentIndex(-1);
        moveCurrent(1);
        return true;
    case Qt::Key_End:
        setCurrentIndex(-1);
        moveCurrent(-1);
        return true;
    case Qt::Key_Return:
    case Qt::Key_Enter:
    case Qt::Key_Space:
        activate(m_current);
        return true;
    case Qt::Key_Escape:
        hide();
        return true;
    default:
        return false;
    }
}

// The next enabled entry in the direction of step, wrapping around; from no
// entry, the first (or last).
void KPopupWidget::moveCurrent(int step)
{
    const int count = m_entries.size();
    int index = m_current;
    for (int tries = 0; tries < count; ++tries) {
        index = index < 0 ? (step > 0 ? 0 : count - 1) : (index + step + count) % count;
        KCommand* command = entryAt(index);
        if (command && command->isEnabled()) {
            setCurrentIndex(index);
            return;
        }
    }
}

QSize KPopupWidget::sizeHint() const
{
    int width = scaled(kMinimumWidth);
    const int textLeft = scaled(kIconLeft + kIconSize + kTextGap);
    for (const QPointer<KCommand>& entry : m_entries) {
        if (entry)
            width = qMax(width, textLeft + fontMetrics().horizontalAdvance(entry->text()) +
                                    scaled(kRightPadding) + 2);
    }
    const int headingWidth = qMax(QFontMetrics(headingFont(font())).horizontalAdvance(m_heading),
                                  fontMetrics().horizontalAdvance(m_detail));
    width = qMax(width, qMin(headingWidth + 2 * scaled(kIconLeft) + 2, scaled(kMaximumWidth)));
    const QRect area = availableArea();
    if (area.isValid())
        width = qMin(width, area.width());
    const int height = 2 + headerHeight(width) + 2 * scaled(kPadding) +
                       int(m_entries.size()) * scaled(kEntryHeight);
    return QSize(width, height);
}

bool KPopupWidget::event(QEvent* event)
{
    switch (event->type()) {
    case QEvent::Show:
        m_openedAt = QCursor::pos();
        m_tracking = false;
        m_trackTimer.start(TrackInterval, this);
        qApp->installEventFilter(this);
        break;
    case QEvent::Hide:
        m_trackTimer.stop();
        qApp->removeEventFilter(this);
        emit hidden();
        break;
    case QEvent::Leave:
        // Leaving is a mouse move of its own.
        setCurrentIndex(-1);
        m_tracking = true;
        sendTrackEvent();
        break;
    default:
        break;
    }
    return QWidget::event(event);
}

bool KPopupWidget::eventFilter(QObject* watched, QEvent* event)
{
    if (!isVisible())
        return false;
    switch (event->type()) {
    case QEvent::Hide:
        if (watched == m_owner || watched == m_ownerWindow)
            hide();
        break;
    case QEvent::MouseButtonPress:
    case QEvent::MouseButtonDblClick: {
        auto* widget = qobject_cast<QWidget*>(watched);
        const bool ours =
            widget == this || (m_owner && (widget == m_owner || m_owner->isAncestorOf(widget)));
        if (widget && !ours)
            hide();
        break;
    }
    default:
        break;
    }
    return false;
}

void KPopupWidget::paintEvent(QPaintEvent* /*event*/)
{
    QPainter painter(this);
    const QPalette& pal = palette();
    painter.fillRect(rect(), pal.color(QPalette::Base));
    painter.setPen(pal.color(QPalette::Mid));
    painter.drawRect(rect().adjusted(0, 0, -1, -1));

    const int left = scaled(kIconLeft);
    const int textWidth = qMax(1, width() - 2 * left);
    int y = 1 + scaled(kHeadingPadding);
    if (!m_heading.isEmpty()) {
        const QFont bold = headingFont(font());
        const QFontMetrics metrics(bold);
        const int height = wrappedHeight(metrics, m_heading, textWidth);
        painter.setFont(bold);
        painter.setPen(pal.color(QPalette::Text));
        painter.drawText(QRect(left, y, textWidth, height),
                         headingFlags(metrics, m_heading, textWidth), m_heading);
        y += height;
        painter.setFont(font());
    }
    if (!m_detail.isEmpty()) {
        const int height = wrappedHeight(fontMetrics(), m_detail, textWidth);
        // Quieter than the heading, still legible (4.5:1 on the base).
        QColor quiet = pal.color(QPalette::Text);
        quiet.setAlpha(170);
        painter.setPen(quiet);
        painter.drawText(QRect(left, y, textWidth, height),
                         headingFlags(fontMetrics(), m_detail, textWidth), m_detail);
        y += height;
    }
    if (!m_heading.isEmpty() || !m_detail.isEmpty()) {
        y += scaled(kHeadingPadding);
        painter.setPen(pal.color(QPalette::Midlight));
        painter.drawLine(1, y, width() - 2, y);
    }

    const int iconSize = scaled(kIconSize);
    const int textLeft = scaled(kIconLeft + kIconSize + kTextGap);
    for (int i = 0; i < m_entries.size(); ++i) {
        KCommand* command = entryAt(i);
        if (!command)
            continue;
        const QRect row = entryRect(i);
        const bool enabled = command->isEnabled();
        if (i == m_current && enabled) {
            QColor highlight = pal.color(QPalette::Highlight);
            highlight.setAlpha(40);
            painter.fillRect(row, highlight);
        }
        const QIcon icon = command->icon();
        if (!icon.isNull()) {
            const QRect iconRect(row.left() + scaled(kIconLeft) - 1,
                                 row.top() + (row.height() - iconSize) / 2, iconSize, iconSize);
            icon.paint(&painter, iconRect, Qt::AlignCenter,
                       enabled ? QIcon::Normal : QIcon::Disabled);
        }
        painter.setPen(pal.color(enabled ? QPalette::Active : QPalette::Disabled, QPalette::Text));
        const QRect textRect(textLeft, row.top(), row.right() - textLeft - scaled(kRightPadding),
                             row.height());
        painter.drawText(
            textRect, Qt::AlignLeft | Qt::AlignVCenter,
            fontMetrics().elidedText(command->text(), Qt::ElideRight, textRect.width()));
    }
}

void KPopupWidget::mouseMoveEvent(QMouseEvent* event)
{
    setCurrentIndex(entryIndexAt(event->pos()));
    QWidget::mouseMoveEvent(event);
}

void KPopupWidget::mouseReleaseEvent(QMouseEvent* event)
{
    if (event->button() == Qt::LeftButton) {
        activate(entryIndexAt(event->pos()));
        return;
    }
    QWidget::mouseReleaseEvent(event);
}

void KPopupWidget::keyPressEvent(QKeyEvent* event)
{
    if (!handleKey(event))
        QWidget::keyPressEvent(event);
}

void KPopupWidget::timerEvent(QTimerEvent* event)
{
    if (event->timerId() != m_trackTimer.timerId()) {
        QWidget::timerEvent(event);
        return;
    }
    if (!m_tracking && QCursor::pos() != m_openedAt)
        m_tracking = true;
    sendTrackEvent();
}

void KPopupWidget::sendTrackEvent()
{
    if (m_tracking && m_owner)
        QCoreApplication::postEvent(m_owner, new QEvent(QEvent::Type(PopupTrackEvent)));
}

void KPopupWidget::onApplicationStateChanged(Qt::ApplicationState state)
{
    if (state != Qt::ApplicationActive)
        hide();
}
