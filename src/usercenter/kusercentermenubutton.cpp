#include "kusercentermenubutton.h"

#include "kdeskhivelib.h"
#include "kloginstatustipwidget.h"
#include "knimboclientinstance.h"
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
#include <QKeyEvent>
#include <QPainter>
#include <QTimer>

namespace {

const char kDefaultThumbnail[] = "res:/resource/zentodeskhive/defaultthumbnail.png";
const char kCompanyThumbnail[] = "res:/nimbo/zento_plus.png";
const char kOfflineTipBackground[] = "res:/resource/zentodeskhive/abnormalNetworkStatus.png";

// The account service's entry that opens the account (sign-in or account
// centre, as the host decides).
constexpr int kAccountEntryCode = 4;
constexpr int kPanelHeight = 28;
const QColor kOfflineVeil(139, 139, 139, 150);

} // namespace

KUserCenterMenuButton::KUserCenterMenuButton(QWidget* parent)
    : KMenuButton(parent)
{
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
    if (path.isEmpty())
        path = QLatin1String(kDefaultThumbnail);
    // A failed load leaves a null image: no avatar is drawn.
    m_thumbnail.load(path);
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
    if (m_popping)
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
    option.textWidth = fontMetrics().horizontalAdvance(text());
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
            QTimer::singleShot(0, this, SLOT(onPopupMenu()));
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

void KUserCenterMenuButton::enterEvent(QEvent* event)
{
    if (isLogoutDuetoOffLine()) {
        if (m_tip)
            m_tip->showTip(tr("abnormal network status, turn to be offline status"));
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

// Round, as account pictures are across the desktop: it sets the account
// apart from the square tool icons of the title area, and a user's own
// picture, whatever its background, reads as one at 16 pixels. Scaled with
// area averaging to the pixels it covers, so it is sharp and smooth at any
// display scale and device pixel ratio.
void KUserCenterMenuButton::paintThumbnail()
{
    KStyleOptionToolButton option;
    initStyleOption(&option);
    const int side = int(KZentoStyle::dpiScaled(16.0));
    const QRect target(option.rect.left() + 1,
                       option.rect.top() + (option.rect.height() - side) / 2, side, side);

    QPainter painter(this);
    painter.setRenderHints(QPainter::Antialiasing | QPainter::SmoothPixmapTransform);
    const int pixels = qMax(1, qRound(painter.deviceTransform().mapRect(QRectF(target)).width()));
    if (m_drawn.width() != pixels || m_drawnFrom != m_thumbnail.cacheKey()) {
        const QImage scaled =
            m_thumbnail.scaled(pixels, pixels, Qt::IgnoreAspectRatio, Qt::SmoothTransformation);
        m_drawn = QImage(pixels, pixels, QImage::Format_ARGB32_Premultiplied);
        m_drawn.fill(Qt::transparent);
        QPainter round(&m_drawn);
        round.setRenderHint(QPainter::Antialiasing);
        round.setPen(Qt::NoPen);
        round.setBrush(scaled);
        round.drawEllipse(QRectF(0, 0, pixels, pixels));
        m_drawnFrom = m_thumbnail.cacheKey();
    }
    // The whole picture into the target square.
    painter.drawImage(target, m_drawn, m_drawn.rect());
}

void KUserCenterMenuButton::keyPressEvent(QKeyEvent* event)
{
    const bool opens = event->modifiers() == Qt::NoModifier &&
                       (event->key() == Qt::Key_Space || event->key() == Qt::Key_Return ||
                        event->key() == Qt::Key_Enter);
    if (opens && !popupWidget()) {
        event->accept();
        QTimer::singleShot(0, this, SLOT(onPopupMenu()));
        return;
    }
    KMenuButton::keyPressEvent(event);
}

// Assistive tools' press action: the menu, as hover opens it for the mouse.
void KUserCenterMenuButton::onClicked()
{
    onPopupMenu();
}

void KUserCenterMenuButton::updateAccessibleName()
{
    setAccessibleName(text().isEmpty() ? tr("User centre") : text());
}
