#include "kusercentermenubutton.h"

#include "kdeskhivelib.h"
#include "kloginstatustipwidget.h"
#include "knimboclientinstance.h"
#include "kxaccountaccessible.h"
#include "kxactiveaccount.h"
#include "kxcenterrule.h"
#include "qcommjson.h"

#include <deskhive/nimboclient.h>
#include <vex/kmainwindow.h>
#include <vex/kpopupwidget.h>
#include <vex/kstyleoptionuserpanelmenubutton.h>
#include <vex/kzentostyle.h>
#include <vexlite/ikaccountservice.h>

#include <QCursor>
#include <QFileInfo>
#include <QImageReader>
#include <QKeyEvent>
#include <QPainter>
#include <QTimer>
#include <QtMath>

namespace {

const char kDefaultThumbnail[] = "res:/resource/zentodeskhive/defaultthumbnail.png";
const char kCompanyThumbnail[] = "res:/nimbo/zento_plus.png";
const char kOfflineTipBackground[] = "res:/resource/zentodeskhive/abnormalNetworkStatus.png";

// The account service's entry that opens the account (sign-in or account
// centre, as the host decides).
constexpr int kAccountEntryCode = 4;
constexpr int kPanelHeight = 28;
constexpr int kMaxNameWidth = 200;
constexpr qreal kAvatarSide = 16.0;
// A picture of more pixels is not decoded: a 16,000 pixel square one held
// the GUI thread for seconds and a gigabyte of memory.
constexpr qint64 kMaxAvatarPixels = qint64(4096) * 4096;
const QColor kOfflineVeil(139, 139, 139, 150);

// Pictures the button does not open: anything there but a regular file (a
// FIFO or a device would block the GUI thread in open(), or never end), and
// a picture whose header gives too many pixels.
bool isRefusedAvatar(const QString& path)
{
    const QFileInfo file(path);
    if (!file.exists())
        return false; // nothing to open: no avatar
    if (!file.isFile())
        return true;
    const QSize size = QImageReader(path).size();
    return qint64(size.width()) * size.height() > kMaxAvatarPixels;
}

// The picture at path decoded no larger than side x side; null when it
// cannot be read, or its header gives no size to bound the decoding by.
QImage readAvatar(const QString& path, int side)
{
    QImageReader reader(path);
    const QSize size = reader.size();
    if (!size.isValid())
        return QImage();
    if (size.width() > side || size.height() > side)
        reader.setScaledSize(size.boundedTo(QSize(side, side)));
    return reader.read();
}

} // namespace

KUserCenterMenuButton::KUserCenterMenuButton(QWidget* parent)
    : KMenuButton(parent)
{
    KxAccountAccessible::install();
    m_tip = new KLoginStatusTipWidget(this);
    m_tip->initSyncLoginInfOption();
    m_tip->setBackgroundPixmap(QLatin1String(kOfflineTipBackground));
    setButtonStyle(UserPanelStyle);
    setFocusPolicy(Qt::TabFocus);
    // Hover opens the menu: moves without a button pressed must arrive.
    setMouseTracking(true);
    if (INimboClient* client = KDeskhiveLib::instance()->nimboClientInstance()) {
        // Queued: a burst of changes is handled after the client's own work.
        connect(client, SIGNAL(LoginStatusChange()), this, SLOT(onLoginStatusChanged()),
                Qt::QueuedConnection);
        connect(client, SIGNAL(UserInfoChange()), this, SLOT(onLoginStatusChanged()),
                Qt::QueuedConnection);
    }
    updateAccessibleName();
}

KUserCenterMenuButton::~KUserCenterMenuButton() = default;

void KUserCenterMenuButton::updateThumbnail()
{
    QString path;
    if (KDeskhiveLib::instance()->nimboClientInstance()) {
        const Json::Value info = KNimboClientInstance::userInfo();
        if (QComm::jsonGetBool(info, QStringLiteral("IsLogined"), false))
            path = QComm::jsonObject2String(info, QStringLiteral("UserAvatarImagePath"));
        // The company's mark, even over a picture of the user's own.
        if (QComm::jsonGetBool(info, QStringLiteral("IsCompanyAccount"), false))
            path = QLatin1String(kCompanyThumbnail);
    }
    if (path.isEmpty() || isRefusedAvatar(path))
        path = QLatin1String(kDefaultThumbnail);
    // At most the size drawn, on a screen up to twice as dense.
    m_thumbnail = readAvatar(
        path, qCeil(KZentoStyle::dpiScaled(kAvatarSide) * qMax(2.0, devicePixelRatioF())));
}

void KUserCenterMenuButton::onLoginStatusChanged()
{
    if (!isLogoutDuetoOffLine()) {
        updateThumbnail();
        if (KCommand* command = defaultCommand())
            command->update();
    }
    update();
}

void KUserCenterMenuButton::syncCommand()
{
    // Offline the button keeps showing the last signed-in state.
    if (isLogoutDuetoOffLine())
        return;
    KMenuButton::syncCommand();
    updateThumbnail();
    updateAccessibleName();
}

void KUserCenterMenuButton::onPopupMenu()
{
    // Signed out by the network there is no menu, whatever asked for it (a
    // hover, a key or an assistive tool, even one posted before the change).
    if (m_popping || isLogoutDuetoOffLine())
        return;
    m_popping = true;
    const QPointer<KUserCenterMenuButton> self(this);
    popupChildWidget();
    // A command run from the menu may have taken the button away.
    if (self)
        m_popping = false;
}

QSize KUserCenterMenuButton::sizeHint() const
{
    KStyleOptionUserPanelMenuButton option;
    initStyleOption(&option);
    // A long name is elided here; the menu's heading shows it whole.
    option.textWidth = qMin(fontMetrics().horizontalAdvance(text()),
                            qRound(KZentoStyle::dpiScaled(kMaxNameWidth)));
    option.panelHeight = kPanelHeight;
    return KZentoStyle::sizeMetric(style(), KZentoStyle::SM_UserPanelMenuButton, &option, this);
}

bool KUserCenterMenuButton::event(QEvent* event)
{
    switch (int(event->type())) {
    case QEvent::Enter:
        m_underMouse = true;
        break;
    case QEvent::Leave:
        m_underMouse = false;
        break;
    case QEvent::ToolTip:
        return true;
    case QEvent::MouseMove: {
        if (isLogoutDuetoOffLine())
            return true;
        // Hover opens the menu, once the event that brought the mouse is
        // done, in the window the person works in.
        const KMainWindow* window = kxHoldingMainWindow(this);
        if (window && window->isActiveWindow())
            QTimer::singleShot(0, this, &KUserCenterMenuButton::onPopupMenu);
        break;
    }
    case KPopupWidget::PopupTrackEvent:
        handlePopupTracking();
        break;
    default:
        break;
    }
    return KMenuButton::event(event);
}

// The mouse has left the button while the menu is open: the menu goes once
// the mouse is not over it either.
void KUserCenterMenuButton::handlePopupTracking()
{
    if (m_underMouse || !m_popping)
        return;
    auto* popup = findChild<KPopupWidget*>();
    if (!popup || !popup->isVisible())
        return;
    const QPoint cursor = popup->mapFromGlobal(QCursor::pos());
    if (!QRect(0, 0, popup->width(), popup->height()).contains(cursor))
        popup->hide();
}

void KUserCenterMenuButton::mousePressEvent(QMouseEvent* event)
{
    if (event->button() != Qt::LeftButton) {
        KMenuButton::mousePressEvent(event);
        return;
    }
    if (IKAccountService* account = kxActiveAccountService())
        account->entry(kAccountEntryCode, QString(), QString());
}

void KUserCenterMenuButton::enterEvent(KQtCompat::EnterEvent* event)
{
    if (isLogoutDuetoOffLine()) {
        if (m_tip)
            m_tip->showTip(offlineText());
        return;
    }
    KMenuButton::enterEvent(event);
}

void KUserCenterMenuButton::leaveEvent(QEvent* event)
{
    if (m_tip)
        m_tip->hideTip();
    KMenuButton::leaveEvent(event);
}

void KUserCenterMenuButton::paintEvent(QPaintEvent* event)
{
    if (isLogoutDuetoOffLine()) {
        QPainter painter(this);
        painter.setPen(Qt::NoPen);
        painter.setBrush(kOfflineVeil);
        painter.drawRect(QRect(QPoint(0, 0), QPoint(width() - 1, height() - 1)));
    }
    KMenuButton::paintEvent(event);
    if (!m_thumbnail.isNull())
        paintThumbnail();
}

// The whole picture scaled into the square, with area averaging to the
// pixels it covers, so it is sharp and smooth at any display scale and
// device pixel ratio.
void KUserCenterMenuButton::paintThumbnail()
{
    KStyleOptionToolButton option;
    initStyleOption(&option);
    const int side = int(KZentoStyle::dpiScaled(kAvatarSide));
    const QRect target(option.rect.left() + 1,
                       option.rect.top() + (option.rect.height() - side) / 2, side, side);

    QPainter painter(this);
    painter.setRenderHint(QPainter::SmoothPixmapTransform);
    const int pixels = qMax(1, qRound(painter.deviceTransform().mapRect(QRectF(target)).width()));
    if (m_drawn.width() != pixels || m_drawnFrom != m_thumbnail.cacheKey()) {
        m_drawn =
            m_thumbnail.scaled(pixels, pixels, Qt::IgnoreAspectRatio, Qt::SmoothTransformation);
        m_drawnFrom = m_thumbnail.cacheKey();
    }
    painter.drawImage(target, m_drawn, m_drawn.rect());
}

void KUserCenterMenuButton::keyPressEvent(QKeyEvent* event)
{
    const bool opens = event->modifiers() == Qt::NoModifier &&
                       (event->key() == Qt::Key_Space || event->key() == Qt::Key_Return ||
                        event->key() == Qt::Key_Enter);
    if (opens && !popupWidget()) {
        event->accept();
        onClicked();
        return;
    }
    KMenuButton::keyPressEvent(event);
}

// A click that is no mouse press (the keys above, an assistive tool's
// press): the menu, as hover opens it for the mouse, once the caller is
// done. Signed out by the network, what the balloon says for a mouse over
// the button, for a while.
void KUserCenterMenuButton::onClicked()
{
    if (isLogoutDuetoOffLine()) {
        if (m_tip)
            m_tip->showTipForAWhile(offlineText());
        return;
    }
    QTimer::singleShot(0, this, &KUserCenterMenuButton::onPopupMenu);
}

QString KUserCenterMenuButton::offlineText() const
{
    return tr("abnormal network status, turn to be offline status");
}

void KUserCenterMenuButton::updateAccessibleName()
{
    setAccessibleName(text().isEmpty() ? tr("User centre") : text());
}
