#ifndef VEX_COMMANDBARCONTROL_H
#define VEX_COMMANDBARCONTROL_H

#include "vex_global.h"

#include <QHash>
#include <QList>
#include <QPointer>
#include <QVariant>

class KCommand;
class KCommandBarControlCoreNotify;

// A control of a command bar (button, combo box, list) as the host's
// automation interface sees it: a command and a set of attributes. Every
// change is announced to the attached sinks, each through the handler of
// the attribute that changed.
class VEX_EXPORT CommandBarControl
{
public:
    enum Notification {
        DescriptionText,
        Geometry,
        HelpContextId,
        HelpFile,
        OLEUsage,
        OnAction,
        Parameter,
        Priority,
        Reset,
        SetFocus,
        Tag,
        HyperlinkType,
        OLEMenuGroup,
        AddItem,
        Clear,
        DropDownLines,
        DropDownWidth,
        List,
        ListHeaderCount,
        ListIndex,
        RemoveItem,
        ComboStyle,
        ComboText,
        Core,
    };

    explicit CommandBarControl(KCommand* command = nullptr);
    ~CommandBarControl();
    CommandBarControl(const CommandBarControl&) = delete;
    CommandBarControl& operator=(const CommandBarControl&) = delete;

    KCommand* command() const;

    // The last value set for an attribute; null when none was.
    QVariant value(Notification what) const;
    // Keeps value and tells every sink.
    void setValue(Notification what, const QVariant& value);
    // Tells every sink without keeping anything: operations such as Reset,
    // SetFocus, AddItem or Clear.
    void notify(Notification what, const QVariant& notification = QVariant());

    // Sinks are told in the order they were attached; the control does not
    // own them. A sink attached twice is told once.
    void addNotify(KCommandBarControlCoreNotify* sink);
    void removeNotify(KCommandBarControlCoreNotify* sink);

private:
    QPointer<KCommand> m_command;
    QHash<int, QVariant> m_values;
    QList<KCommandBarControlCoreNotify*> m_sinks;
};

#endif // VEX_COMMANDBARCONTROL_H
