// The plug-in's commands in the host's command factory. The items are
// constructed in this order when the library loads and destroyed in the
// reverse order when it unloads; keep them in this one file, where the
// language guarantees that order.

#include "kcommandfactoryitem.h"
#include "kenterprisecentertriggercommand.h"
#include "kusercentermenucommand.h"
#include "kxopenpersonalcentercommand.h"

#include <vex/kcommand.h>
#include <vex/kmainwindow.h>
#include <vex/ktreenode.h>

namespace {

KCommandFactoryItem<KUserCenterMenuCommand, KMainWindow>
    g_userCenter(QStringLiteral("KUserCenterMenuCommand"), QStringLiteral("KMainWindow"));
KCommandFactoryItem<KxOpenPersonalCenterCommand, KMainWindow>
    g_personalCenter(QStringLiteral("KxOpenPersonalCenterCommand"), QStringLiteral("KMainWindow"));
KCommandFactoryItem<KEnterpriseCenterTriggerCommand, KMainWindow>
    g_enterpriseCenter(QStringLiteral("KEnterpriseCenterTriggerCommand"),
                       QStringLiteral("KMainWindow"));

} // namespace

// The search helpers of the host's command tree, for the plug-in's commands.
template class KTreeNode<KCommand>;
