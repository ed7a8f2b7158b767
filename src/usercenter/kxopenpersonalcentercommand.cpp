#include "kxopenpersonalcentercommand.h"

#include "kdeskhivelib.h"
#include "knimboclientinstance.h"
#include "kxcenterrule.h"
#include "qcommjson.h"

#include <vexlite/krtauth.h>
#include <vexlite/krtproduct.h>

KxOpenPersonalCenterCommand::KxOpenPersonalCenterCommand(QObject* parent, QObject* host)
    : KTriggerCommand(parent, host)
{
    setText(tr("Personal Center"));
}

void KxOpenPersonalCenterCommand::update()
{
    if (!canUpdate() || !KDeskhiveLib::instance()->nimboClientInstance()) {
        setVisible(false);
        return;
    }
    const Json::Value info = KNimboClientInstance::userInfo();
    if (!kxHasUserCenter(this, info)) {
        setVisible(false);
        return;
    }
    // An intranet build has no personal centre to go to.
    setVisible(QComm::jsonGetBool(info, QStringLiteral("IsLogined"), false) &&
               !krt::product::isSupported(QStringLiteral("IntranetVersion")));
}

KCommand* KxOpenPersonalCenterCommand::clone(QObject* parent, QObject* host)
{
    auto* command = new KxOpenPersonalCenterCommand(parent, host);
    command->copyProperties(this);
    return command;
}

void KxOpenPersonalCenterCommand::onTriggered()
{
    krt::auth::prehook(QStringLiteral("OpenUserCenter"), false, nullptr);
}
