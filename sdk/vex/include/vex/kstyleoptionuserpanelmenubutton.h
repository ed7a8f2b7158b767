#ifndef VEX_KSTYLEOPTIONUSERPANELMENUBUTTON_H
#define VEX_KSTYLEOPTIONUSERPANELMENUBUTTON_H

#include "kstyleoptiontoolbutton.h"

// The option the style sizes a user-panel menu button by (button style
// KToolButton::UserPanelStyle, size metric
// KZentoStyle::SM_UserPanelMenuButton). The caller fills the tool-button
// part with the button's initStyleOption() and sets the two trailing fields.
class KStyleOptionUserPanelMenuButton : public KStyleOptionToolButton
{
public:
    enum StyleOptionVersion { Version = 0x4b01 };

    KStyleOptionUserPanelMenuButton()
        : KStyleOptionToolButton(Version)
    {}

    // Width of the button's text in the button's font, in the font's pixels
    // (already at the display's scale).
    int textWidth = 0;
    // Height of the panel, written for 100 %; the style scales it.
    int panelHeight = 0;
};

#endif // VEX_KSTYLEOPTIONUSERPANELMENUBUTTON_H
