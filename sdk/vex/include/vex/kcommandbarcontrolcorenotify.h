#ifndef VEX_KCOMMANDBARCONTROLCORENOTIFY_H
#define VEX_KCOMMANDBARCONTROLCORENOTIFY_H

#include "vex_global.h"

#include <QVariant>

class CommandBarControl;

// Receives what changes on the command-bar controls it is attached to
// (CommandBarControl::addNotify): one handler per attribute, each given the
// control and the notification (the attribute's new value, or what the
// operation carried), and controlCoreNotify for the control as a whole.
// The host never deletes a sink through this interface.
class VEX_EXPORT KCommandBarControlCoreNotify
{
public:
    virtual void controlDescriptionTextNotify(CommandBarControl* control,
                                              const QVariant& notification) = 0;
    virtual void controlGeometryNotify(CommandBarControl* control,
                                       const QVariant& notification) = 0;
    virtual void controlHelpContextIdNotify(CommandBarControl* control,
                                            const QVariant& notification) = 0;
    virtual void controlHelpFileNotify(CommandBarControl* control,
                                       const QVariant& notification) = 0;
    virtual void controlOLEUsageNotify(CommandBarControl* control,
                                       const QVariant& notification) = 0;
    virtual void controlOnActionNotify(CommandBarControl* control,
                                       const QVariant& notification) = 0;
    virtual void controlParameterNotify(CommandBarControl* control,
                                        const QVariant& notification) = 0;
    virtual void controlPriorityNotify(CommandBarControl* control,
                                       const QVariant& notification) = 0;
    virtual void controlResetNotify(CommandBarControl* control, const QVariant& notification) = 0;
    virtual void controlSetFocusNotify(CommandBarControl* control,
                                       const QVariant& notification) = 0;
    virtual void controlTagNotify(CommandBarControl* control, const QVariant& notification) = 0;
    virtual void controlHyperlinkTypeNotify(CommandBarControl* control,
                                            const QVariant& notification) = 0;
    virtual void controlOLEMenuGroupNotify(CommandBarControl* control,
                                           const QVariant& notification) = 0;
    virtual void controlAddItemNotify(CommandBarControl* control, const QVariant& notification) = 0;
    virtual void controlClearNotify(CommandBarControl* control, const QVariant& notification) = 0;
    virtual void controlDropDownLinesNotify(CommandBarControl* control,
                                            const QVariant& notification) = 0;
    virtual void controlDropDownWidthNotify(CommandBarControl* control,
                                            const QVariant& notification) = 0;
    virtual void controlListNotify(CommandBarControl* control, const QVariant& notification) = 0;
    virtual void controlListHeaderCountNotify(CommandBarControl* control,
                                              const QVariant& notification) = 0;
    virtual void controlListIndexNotify(CommandBarControl* control,
                                        const QVariant& notification) = 0;
    virtual void controlRemoveItemNotify(CommandBarControl* control,
                                         const QVariant& notification) = 0;
    virtual void controlComboStyleNotify(CommandBarControl* control,
                                         const QVariant& notification) = 0;
    virtual void controlComboTextNotify(CommandBarControl* control,
                                        const QVariant& notification) = 0;
    virtual void controlCoreNotify(CommandBarControl* control, const QVariant& notification) = 0;

protected:
    KCommandBarControlCoreNotify() = default;
    ~KCommandBarControlCoreNotify() = default;
    KCommandBarControlCoreNotify(const KCommandBarControlCoreNotify&) = default;
    KCommandBarControlCoreNotify& operator=(const KCommandBarControlCoreNotify&) = default;
};

#endif // VEX_KCOMMANDBARCONTROLCORENOTIFY_H
