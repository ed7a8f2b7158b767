#include "vex/commandbarcontrol.h"

#include "vex/kcommand.h"
#include "vex/kcommandbarcontrolcorenotify.h"

#include <iterator>

namespace {

using Handler = void (KCommandBarControlCoreNotify::*)(CommandBarControl*, const QVariant&);

// Indexed by CommandBarControl::Notification.
constexpr Handler kHandlers[] = {
    &KCommandBarControlCoreNotify::controlDescriptionTextNotify,
    &KCommandBarControlCoreNotify::controlGeometryNotify,
    &KCommandBarControlCoreNotify::controlHelpContextIdNotify,
    &KCommandBarControlCoreNotify::controlHelpFileNotify,
    &KCommandBarControlCoreNotify::controlOLEUsageNotify,
    &KCommandBarControlCoreNotify::controlOnActionNotify,
    &KCommandBarControlCoreNotify::controlParameterNotify,
    &KCommandBarControlCoreNotify::controlPriorityNotify,
    &KCommandBarControlCoreNotify::controlResetNotify,
    &KCommandBarControlCoreNotify::controlSetFocusNotify,
    &KCommandBarControlCoreNotify::controlTagNotify,
    &KCommandBarControlCoreNotify::controlHyperlinkTypeNotify,
    &KCommandBarControlCoreNotify::controlOLEMenuGroupNotify,
    &KCommandBarControlCoreNotify::controlAddItemNotify,
    &KCommandBarControlCoreNotify::controlClearNotify,
    &KCommandBarControlCoreNotify::controlDropDownLinesNotify,
    &KCommandBarControlCoreNotify::controlDropDownWidthNotify,
    &KCommandBarControlCoreNotify::controlListNotify,
    &KCommandBarControlCoreNotify::controlListHeaderCountNotify,
    &KCommandBarControlCoreNotify::controlListIndexNotify,
    &KCommandBarControlCoreNotify::controlRemoveItemNotify,
    &KCommandBarControlCoreNotify::controlComboStyleNotify,
    &KCommandBarControlCoreNotify::controlComboTextNotify,
    &KCommandBarControlCoreNotify::controlCoreNotify,
};
static_assert(std::size(kHandlers) == CommandBarControl::Core + 1, "one handler per notification");

} // namespace

CommandBarControl::CommandBarControl(KCommand* command)
    : m_command(command)
{}

CommandBarControl::~CommandBarControl() = default;

KCommand* CommandBarControl::command() const
{
    return m_command;
}

QVariant CommandBarControl::value(Notification what) const
{
    return m_values.value(what);
}

void CommandBarControl::setValue(Notification what, const QVariant& value)
{
    m_values.insert(what, value);
    notify(what, value);
}

void CommandBarControl::notify(Notification what, const QVariant& notification)
{
    if (what < DescriptionText || what > Core)
        return;
    const Handler handler = kHandlers[what];
    // A sink may detach itself (or another) while it is told.
    const QList<KCommandBarControlCoreNotify*> sinks = m_sinks;
    for (KCommandBarControlCoreNotify* sink : sinks) {
        if (m_sinks.contains(sink))
            (sink->*handler)(this, notification);
    }
}

void CommandBarControl::addNotify(KCommandBarControlCoreNotify* sink)
{
    if (sink && !m_sinks.contains(sink))
        m_sinks.append(sink);
}

void CommandBarControl::removeNotify(KCommandBarControlCoreNotify* sink)
{
    m_sinks.removeAll(sink);
}
