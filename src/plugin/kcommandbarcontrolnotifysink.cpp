#include "kcommandbarcontrolnotifysink.h"

void KCommandBarControlNotifySink::controlDescriptionTextNotify(CommandBarControl*, const QVariant&)
{}

void KCommandBarControlNotifySink::controlGeometryNotify(CommandBarControl*, const QVariant&) {}

void KCommandBarControlNotifySink::controlHelpContextIdNotify(CommandBarControl*, const QVariant&)
{}

void KCommandBarControlNotifySink::controlHelpFileNotify(CommandBarControl*, const QVariant&) {}

void KCommandBarControlNotifySink::controlOLEUsageNotify(CommandBarControl*, const QVariant&) {}

void KCommandBarControlNotifySink::controlOnActionNotify(CommandBarControl*, const QVariant&) {}

void KCommandBarControlNotifySink::controlParameterNotify(CommandBarControl*, const QVariant&) {}

void KCommandBarControlNotifySink::controlPriorityNotify(CommandBarControl*, const QVariant&) {}

void KCommandBarControlNotifySink::controlResetNotify(CommandBarControl*, const QVariant&) {}

void KCommandBarControlNotifySink::controlSetFocusNotify(CommandBarControl*, const QVariant&) {}

void KCommandBarControlNotifySink::controlTagNotify(CommandBarControl*, const QVariant&) {}

void KCommandBarControlNotifySink::controlHyperlinkTypeNotify(CommandBarControl*, const QVariant&)
{}

void KCommandBarControlNotifySink::controlOLEMenuGroupNotify(CommandBarControl*, const QVariant&) {}

void KCommandBarControlNotifySink::controlAddItemNotify(CommandBarControl*, const QVariant&) {}

void KCommandBarControlNotifySink::controlClearNotify(CommandBarControl*, const QVariant&) {}

void KCommandBarControlNotifySink::controlDropDownLinesNotify(CommandBarControl*, const QVariant&)
{}

void KCommandBarControlNotifySink::controlDropDownWidthNotify(CommandBarControl*, const QVariant&)
{}

void KCommandBarControlNotifySink::controlListNotify(CommandBarControl*, const QVariant&) {}

void KCommandBarControlNotifySink::controlListHeaderCountNotify(CommandBarControl*, const QVariant&)
{}

void KCommandBarControlNotifySink::controlListIndexNotify(CommandBarControl*, const QVariant&) {}

void KCommandBarControlNotifySink::controlRemoveItemNotify(CommandBarControl*, const QVariant&) {}

void KCommandBarControlNotifySink::controlComboStyleNotify(CommandBarControl*, const QVariant&) {}

void KCommandBarControlNotifySink::controlComboTextNotify(CommandBarControl*, const QVariant&) {}

void KCommandBarControlNotifySink::controlCoreNotify(CommandBarControl*, const QVariant&) {}
