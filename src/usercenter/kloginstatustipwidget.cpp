#include "kloginstatustipwidget.h"

#include "kdeskhivelib.h"
#include "kxaccountaccessible.h"

#include <deskhive/livestateupdatecache.h>
#include <deskhive/nimboclient.h>
#include <vex/kzentostyle.h>

#include <QAccessible>
#include <QGuiApplication>
#include <QPainter>
#include <QScreen>
#include <QTextLayout>
#include <QTimer>
#include <QtMath>

namespace {

constexpr int kHideAfterMs = 8000;

// The balloon at 100 %, as its background images are drawn: 211 x 53, the
// body from y 8 down with the pointer above it (x 12 to 33, its tip at 22),
// the sign left of the text, which starts at x 45 with its first baseline at
// y 41. Sizes are scaled for the display.
const QSize kSize(211, 53);
const QPoint kTextOrigin(45, 41);
constexpr int kFontPixels = 12;
constexpr int kBodyTop = 8;
const QRect kPointer(12, 0, 21, 10);
const QRect kPlainEdge(100, 0, 21, 10); // the body's top edge, no pointer
constexpr int kCorner = 5;              // the pointer keeps clear of the body's rounded corners
// Where a text does not fit the box: the room right of it, the widest box
// before the text wraps, and the slices that keep their size when the body
// grows (the sign and pointer at the left and top, the corners).
constexpr int kTextRight = 10;
constexpr int kMaxWidth = 320;
const QMargins kSlices(41, 45, 6, 4);
// More of a message than any screen holds is not laid out.
constexpr int kMaxCharacters = 8192;

int scaled(int value)
{
    return qRound(KZentoStyle::dpiScaled(value));
}

// source, in the image's own pixels for a rectangle of the 100 % layout.
QRectF imageRect(const QPixmap& image, const QRectF& source)
{
    const qreal k = qreal(image.width()) / kSize.width();
    return QRectF(source.topLeft() * k, source.size() * k);
}

// The source rectangle drawn into target in nine pieces: the corners at
// their scaled size, the edges stretched along, the middle both ways.
void drawNineSlices(QPainter& painter, const QPixmap& image, const QRect& source,
                    const QRect& target)
{
    const int sx[] = {source.left(), source.left() + kSlices.left(),
                      source.right() + 1 - kSlices.right(), source.right() + 1};
    const int sy[] = {source.top(), kSlices.top(), source.bottom() + 1 - kSlices.bottom(),
                      source.bottom() + 1};
    const int tx[] = {target.left(), target.left() + scaled(kSlices.left()),
                      target.right() + 1 - scaled(kSlices.right()), target.right() + 1};
    const int ty[] = {target.top(), target.top() + scaled(kSlices.top() - source.top()),
                      target.bottom() + 1 - scaled(kSlices.bottom()), target.bottom() + 1};
    for (int row = 0; row < 3; ++row) {
        for (int column = 0; column < 3; ++column) {
            const QRect to(QPoint(tx[column], ty[row]),
                           QPoint(tx[column + 1] - 1, ty[row + 1] - 1));
            const QRectF from(QPointF(sx[column], sy[row]), QPointF(sx[column + 1], sy[row + 1]));
            if (to.isValid() && from.isValid())
                painter.drawPixmap(QRectF(to), image, imageRect(image, from));
        }
    }
}

// text in lines of at most column pixels (at word boundaries where it can),
// at most maxLines of them, the last ending in an ellipsis when the text
// goes on; widest, if given, receives the widest line's width.
QStringList wrapText(const QString& text, const QFont& font, int column, int maxLines,
                     qreal* widest)
{
    QTextLayout layout(text, font);
    QTextOption option;
    option.setWrapMode(QTextOption::WrapAtWordBoundaryOrAnywhere);
    layout.setTextOption(option);
    const QFontMetricsF metrics(font);
    QStringList lines;
    qreal width = 0;
    layout.beginLayout();
    for (QTextLine line = layout.createLine(); line.isValid(); line = layout.createLine()) {
        line.setLineWidth(column);
        if (lines.size() + 1 == maxLines && line.textStart() + line.textLength() < text.size()) {
            QString rest = text.mid(line.textStart());
            rest.replace(QChar::LineSeparator, QLatin1Char(' '));
            lines << metrics.elidedText(rest, Qt::ElideRight, column);
            width = qMax(width, metrics.horizontalAdvance(lines.last()));
            break;
        }
        lines << text.mid(line.textStart(), line.textLength()).remove(QChar::LineSeparator);
        width = qMax(width, line.naturalTextWidth());
    }
    layout.endLayout();
    if (widest)
        *widest = width;
    return lines;
}

} // namespace

KLoginStatusTipWidget::KLoginStatusTipWidget(QWidget* parent)
    : QWidget(parent, Qt::Tool | Qt::FramelessWindowHint)
{
    initStatusTipWidget();
}

KLoginStatusTipWidget::~KLoginStatusTipWidget()
{
    clearTimer();
}

void KLoginStatusTipWidget::initStatusTipWidget()
{
    KxAccountAccessible::install();
    setAttribute(Qt::WA_TranslucentBackground);
    resize(KZentoStyle::dpiScaledSize(kSize));
    m_timer = new QTimer(this);
    // The full 8 s from every show, not within a coarse timer's slack.
    m_timer->setTimerType(Qt::PreciseTimer);
    m_timer->setInterval(kHideAfterMs);
    connect(m_timer, &QTimer::timeout, this, &KLoginStatusTipWidget::onTimerHide);
    setBackgroundPixmap(QStringLiteral("res:/resource/zentodeskhive/abnormalLogingStatus.png"));
}

void KLoginStatusTipWidget::initLoginStatusOption()
{
    INimboClient* client = KDeskhiveLib::instance()->nimboClientInstance();
    if (!client)
        return;
    connect(client, SIGNAL(failedToLaunchCloudsvrProcess()), this,
            SLOT(onFailedToLaunchCloudsvrProcess()));
    connect(client, SIGNAL(cloudsvrExitWithErrors(const QString&)), this,
            SLOT(onCloudsvrExitWithErrors(const QString&)));
}

void KLoginStatusTipWidget::initSyncLoginInfOption()
{
    ILiveStateUpdateCache* cache = KDeskhiveLib::instance()->liveStateUpdateCacheInstance();
    if (!cache)
        return;
    connect(cache, SIGNAL(occurIpcErrorsWhenGetUserInf()), this,
            SLOT(onIpcErrorDuringAsyncUserInf()));
    connect(cache, SIGNAL(occurRpcErrorsWhenGetUserInf()), this,
            SLOT(onRpcErrorDuringAsyncUserInf()));
}

void KLoginStatusTipWidget::showTip(const QString& text)
{
    if (isVisible())
        return;
    setText(text);
    show();
}

void KLoginStatusTipWidget::showTipForAWhile(const QString& text)
{
    if (isVisible())
        return;
    setText(text);
    // Gone after clearTimer(): the tip then stays until hidden.
    if (m_timer)
        m_timer->start();
    show();
}

void KLoginStatusTipWidget::setText(const QString& text)
{
    m_text = text;
    // What a screen reader says when the tip appears.
    setAccessibleName(text);
}

void KLoginStatusTipWidget::hideTip()
{
    hide();
}

void KLoginStatusTipWidget::setBackgroundPixmap(const QString& path)
{
    m_background = QPixmap(path);
    // "x.png" has its twice-as-large companion in "x@2x.png", if at all.
    const int dot = path.lastIndexOf(QLatin1Char('.'));
    const bool named = dot > path.lastIndexOf(QLatin1Char('/')) + 1;
    m_background2x =
        named ? QPixmap(path.left(dot) + QStringLiteral("@2x") + path.mid(dot)) : QPixmap();
    update();
}

void KLoginStatusTipWidget::clearTimer()
{
    if (m_timer && m_timer->isActive()) {
        m_timer->stop();
        delete m_timer;
        m_timer = nullptr;
    }
}

QSize KLoginStatusTipWidget::sizeHint() const
{
    return size();
}

void KLoginStatusTipWidget::onTimerHide()
{
    if (m_timer)
        m_timer->stop();
    hide();
}

void KLoginStatusTipWidget::onFailedToLaunchCloudsvrProcess()
{
    showTipForAWhile(tr("Failed to launch Nimbo process"));
}

void KLoginStatusTipWidget::onCloudsvrExitWithErrors(const QString& message)
{
    showTipForAWhile(message);
}

void KLoginStatusTipWidget::onIpcErrorDuringAsyncUserInf()
{
    showTipForAWhile(tr("IPC errors occured when Get login information"));
}

void KLoginStatusTipWidget::onRpcErrorDuringAsyncUserInf()
{
    showTipForAWhile(tr("RPC errors occured when Get login information"));
}

void KLoginStatusTipWidget::showEvent(QShowEvent* event)
{
    place();
    QWidget::showEvent(event);
    // What a screen reader says as the tip appears.
    QAccessibleEvent alert(this, QAccessible::Alert);
    QAccessible::updateAccessibility(&alert);
}

QFont KLoginStatusTipWidget::textFont() const
{
    QFont font = this->font();
    font.setPixelSize(int(KZentoStyle::dpiScaled(kFontPixels)));
    return font;
}

// The box for the text: exactly the described one where the text fits on
// its line there. Otherwise wider, up to kMaxWidth and the screen's width,
// then taller by a line for each line the text wraps into, as high as the
// screen allows (the last line that fits ends in an ellipsis).
void KLoginStatusTipWidget::layOut(const QSize& room)
{
    const QSize box = KZentoStyle::dpiScaledSize(kSize);
    const QFont font = textFont();
    const QFontMetrics metrics(font);
    const int left = KZentoStyle::dpiScaledPoint(kTextOrigin).x();
    const int right = scaled(kTextRight);
    QString text = m_text.left(kMaxCharacters);
    if (text.size() < m_text.size())
        text += QChar(0x2026); // an ellipsis
    text.replace(QLatin1Char('\n'), QChar::LineSeparator);
    m_lines = QStringList(text);
    if (!text.contains(QChar::LineSeparator) &&
        left + metrics.horizontalAdvance(text) + right <= box.width()) {
        resize(box);
        return;
    }

    int column = qMax(metrics.horizontalAdvance(QLatin1Char('M')) * 4,
                      qMin(scaled(kMaxWidth), room.width()) - left - right);
    const int maxLines = qMax(1, (room.height() - box.height()) / metrics.lineSpacing() + 1);
    qreal widest = 0;
    m_lines = wrapText(text, font, column, maxLines, &widest);
    // Lines of even length rather than a last word alone: the narrowest
    // column that needs no more lines.
    if (m_lines.size() > 1 && m_lines.size() < maxLines) {
        for (int narrow = box.width() - left - right; narrow < column;) {
            const int middle = (narrow + column) / 2;
            if (wrapText(text, font, middle, maxLines, nullptr).size() > m_lines.size())
                narrow = middle + 1;
            else
                column = middle;
        }
        m_lines = wrapText(text, font, column, maxLines, &widest);
    }
    resize(qMax(box.width(), left + qCeil(widest) + right),
           box.height() + (m_lines.size() - 1) * metrics.lineSpacing());
}

// Below the button as described, unless that leaves the screen that holds
// the button: then moved along into the screen, or above the button when
// there is no room below, the pointer still towards the button.
void KLoginStatusTipWidget::place()
{
    QWidget* parent = parentWidget();
    m_pointerDown = false;
    m_pointerLeft = scaled(kPointer.left());
    if (!parent) {
        layOut(QSize(QWIDGETSIZE_MAX, QWIDGETSIZE_MAX));
        return;
    }
    // The parent's position mapped through the parent itself: below the
    // button, shifted by the button's offset inside its container.
    const QPoint anchor = parent->mapToGlobal(parent->pos());
    const QRect button(parent->mapToGlobal(QPoint(0, 0)), parent->size());
    const QScreen* screen = QGuiApplication::screenAt(button.center());
    if (!screen)
        screen = parent->screen();
    const QRect area = screen ? screen->availableGeometry() : QRect();
    layOut(area.isValid() ? area.size() : QSize(QWIDGETSIZE_MAX, QWIDGETSIZE_MAX));
    QRect tip(QPoint(anchor.x(), anchor.y() + parent->height()), size());
    if (area.isValid() && !area.contains(tip)) {
        if (tip.bottom() > area.bottom() && button.top() - tip.height() >= area.top()) {
            m_pointerDown = true;
            tip.moveBottom(button.top() - 1);
        }
        tip.moveRight(qMin(tip.right(), area.right()));
        tip.moveLeft(qMax(tip.left(), area.left()));
        tip.moveBottom(qMin(tip.bottom(), area.bottom()));
        tip.moveTop(qMax(tip.top(), area.top()));
        // The pointer where it would have been, as far as the body's
        // straight edge goes.
        m_pointerLeft = qBound(scaled(kCorner), m_pointerLeft + anchor.x() - tip.left(),
                               tip.width() - scaled(kCorner) - scaled(kPointer.width()));
    }
    move(tip.topLeft());
}

void KLoginStatusTipWidget::paintEvent(QPaintEvent* /*event*/)
{
    QPainter painter(this);
    painter.setRenderHint(QPainter::SmoothPixmapTransform);
    const QRect described = KZentoStyle::dpiScaledRect(QRect(QPoint(0, 0), QPoint(210, 52)));
    // Where the background covers more device pixels than the image has,
    // the companion drawn at twice the size, if there is one.
    const bool dense =
        painter.deviceTransform().mapRect(QRectF(described)).width() > m_background.width() + 0.5;
    const QPixmap& image = dense && !m_background2x.isNull() ? m_background2x : m_background;
    const bool asDescribed =
        size() == described.size() && !m_pointerDown && m_pointerLeft == scaled(kPointer.left());
    const int shift = m_pointerDown ? scaled(kBodyTop) : 0;
    if (asDescribed) {
        painter.drawPixmap(described, image);
    } else if (!image.isNull()) {
        paintGrown(painter, image);
    }

    painter.setFont(textFont());
    const QPoint origin = KZentoStyle::dpiScaledPoint(kTextOrigin) - QPoint(0, shift);
    const int lineSpacing = QFontMetrics(painter.font()).lineSpacing();
    for (int i = 0; i < m_lines.size(); ++i)
        painter.drawText(origin + QPoint(0, i * lineSpacing), m_lines.at(i));
}

// The background stretched to the grown box in nine slices, its pointer
// moved along the top edge, or mirrored below the body when the tip sits
// above the button. The pointer's piece replaces what lies under it.
void KLoginStatusTipWidget::paintGrown(QPainter& painter, const QPixmap& image)
{
    const int pointerWidth = scaled(kPointer.width());
    const int pointerHeight = scaled(kPointer.height());
    if (m_pointerDown) {
        drawNineSlices(painter, image, QRect(0, kBodyTop, kSize.width(), kSize.height() - kBodyTop),
                       QRect(0, 0, width(), height() - scaled(kBodyTop)));
    } else {
        drawNineSlices(painter, image, QRect(QPoint(0, 0), kSize), rect());
    }
    painter.save();
    painter.setCompositionMode(QPainter::CompositionMode_Source);
    const int home = scaled(kPointer.left());
    if (m_pointerDown || m_pointerLeft != home) {
        // The top edge without the pointer's base where the pointer was.
        const int top = m_pointerDown ? -scaled(kBodyTop) : 0;
        painter.drawPixmap(QRectF(home, top, pointerWidth, pointerHeight), image,
                           imageRect(image, kPlainEdge));
    }
    if (m_pointerDown) {
        painter.translate(m_pointerLeft, height());
        painter.scale(1, -1);
        painter.drawPixmap(QRectF(0, 0, pointerWidth, pointerHeight), image,
                           imageRect(image, kPointer));
    } else if (m_pointerLeft != home) {
        painter.drawPixmap(QRectF(m_pointerLeft, 0, pointerWidth, pointerHeight), image,
                           imageRect(image, kPointer));
    }
    painter.restore();
}
