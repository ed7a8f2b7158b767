#ifndef KCOMMANDBARCONTROLNOTIFYSINK_H
#define KCOMMANDBARCONTROLNOTIFYSINK_H

#include <vex/kcommandbarcontrolcorenotify.h>

// The plug-in's notification sink for command-bar controls: its commands
// keep no state on the controls that show them, so every notification is
// taken and nothing is done.
class KCommandBarControlNotifySink final : public KCommandBarControlCoreNotify
{
public:
    KCommandBarControlNotifySink() = default;
    ~KCommandBarControlNotifySink() = default;

    void controlDescriptionTextNotify(CommandBarControl*, const QVariant&) override;
    void controlGeometryNotify(CommandBarControl*, const QVariant&) override;
    void controlHelpContextIdNotify(CommandBarControl*, const QVariant&) override;
    void controlHelpFileNotify(CommandBarControl*, const QVariant&) override;
    void controlOLEUsageNotify(CommandBarControl*, const QVariant&) override;
    void controlOnActionNotify(CommandBarControl*, const QVariant&) override;
    void controlParameterNotify(CommandBarControl*, const QVariant&) override;
    void controlPriorityNotify(CommandBarControl*, const QVariant&) override;
    void controlResetNotify(CommandBarControl*, const QVariant&) override;
    void controlSetFocusNotify(CommandBarControl*, const QVariant&) override;
    void controlTagNotify(CommandBarControl*, const QVariant&) override;
    void controlHyperlinkTypeNotify(CommandBarControl*, const QVariant&) override;
    void controlOLEMenuGroupNotify(CommandBarControl*, const QVariant&) override;
    void controlAddItemNotify(CommandBarControl*, const QVariant&) override;
    void controlClearNotify(CommandBarControl*, const QVariant&) override;
    void controlDropDownLinesNotify(CommandBarControl*, const QVariant&) override;
    void controlDropDownWidthNotify(CommandBarControl*, const QVariant&) override;
    void controlListNotify(CommandBarControl*, const QVariant&) override;
    void controlListHeaderCountNotify(CommandBarControl*, const QVariant&) override;
    void controlListIndexNotify(CommandBarControl*, const QVariant&) override;
    void controlRemoveItemNotify(CommandBarControl*, const QVariant&) override;
    void controlComboStyleNotify(CommandBarControl*, const QVariant&) override;
    void controlComboTextNotify(CommandBarControl*, const QVariant&) override;
    void controlCoreNotify(CommandBarControl*, const QVariant&) override;
};

#endif // KCOMMANDBARCONTROLNOTIFYSINK_H
