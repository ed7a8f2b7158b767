#include "kloginstatustipwidget.h"

#include "kdeskhivelib.h"

#include <deskhive/livestateupdatecache.h>
#include <deskhive/nimboclient.h>
#include <vex/kzentostyle.h>

#include <QPainter>
#include <QTimer>

namespace {

constexpr int kHideAfterMs = 8000;
const QSize kSize(211, 53);

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
    setAttribute(Qt::WA_TranslucentBackground);
    resize(KZentoStyle::dpiScaledSize(kSize));
    m_timer = new QTimer(this);
    // The full 8 s from every show, not within a coarse timer's slack.
    m_timer->setTimerType(Qt::PreciseTimer);
    m_timer->setInterval(kHideAfterMs);
    connect(m_timer, SIGNAL(timeout()), this, SLOT(onTimerHide()));
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
    return KZentoStyle::dpiScaledSize(kSize);
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
    // The parent's position mapped through the parent itself: below the
    // button, shifted by the button's offset inside its container.
    if (QWidget* parent = parentWidget()) {
        const QPoint anchor = parent->mapToGlobal(parent->pos());
        move(anchor.x(), anchor.y() + parent->height());
    }
    QWidget::showEvent(event);
}

void KLoginStatusTipWidget::paintEvent(QPaintEvent* /*event*/)
{
    QPainter painter(this);
    painter.setRenderHint(QPainter::SmoothPixmapTransform);
    const QRect target = KZentoStyle::dpiScaledRect(QRect(QPoint(0, 0), QPoint(210, 52)));
    // Where the background covers more device pixels than the image has,
    // the companion drawn at twice the size, if there is one.
    const bool dense =
        painter.deviceTransform().mapRect(QRectF(target)).width() > m_background.width() + 0.5;
    painter.drawPixmap(target, dense && !m_background2x.isNull() ? m_background2x : m_background);
    QFont font = painter.font();
    font.setPixelSize(int(KZentoStyle::dpiScaled(12.0)));
    painter.setFont(font);
    painter.drawText(KZentoStyle::dpiScaledPoint(QPoint(45, 41)), m_text);
}
