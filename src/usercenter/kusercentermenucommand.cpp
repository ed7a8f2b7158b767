#include "kusercentermenucommand.h"

#include "kdeskhivelib.h"
#include "knimboclientinstance.h"
#include "kusercentermenubutton.h"
#include "kxactiveaccount.h"
#include "kxcenterrule.h"
#include "qcommjson.h"

KUserCenterMenuCommand::KUserCenterMenuCommand(QObject* parent, QObject* host)
    : KListCommand(parent, host)
{
    setIcon(QIcon(QStringLiteral("res:/resource/zentodeskhive/defaultthumbnail.png")));
}

void KUserCenterMenuCommand::update()
{
    if (isLogoutDuetoOffLine()) {
        setDetail(QString());
        return;
    }
    KListCommand::update();
    if (!KDeskhiveLib::instance()->nimboClientInstance()) {
        setVisible(false);
        return;
    }
    const Json::Value info = KNimboClientInstance::userInfo();
    if (!kxHasUserCenter(this, info)) {
        setVisible(false);
        return;
    }
    setText(QComm::jsonObject2String(info, QStringLiteral("Name")));
    setDetail(tr("You have signed in Zento Office."));
    setVisible(QComm::jsonGetBool(info, QStringLiteral("IsLogined"), false));
}

KCommand* KUserCenterMenuCommand::clone(QObject* parent, QObject* host)
{
    auto* command = new KUserCenterMenuCommand(parent, host);
    command->copyProperties(this);
    return command;
}

QWidget* KUserCenterMenuCommand::createPocketWidget(QWidget* parent)
{
    auto* button = new KUserCenterMenuButton(parent);
    button->setDefaultCommand(this);
    button->updateThumbnail();
    return button;
}
