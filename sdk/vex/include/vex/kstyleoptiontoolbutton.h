#ifndef VEX_KSTYLEOPTIONTOOLBUTTON_H
#define VEX_KSTYLEOPTIONTOOLBUTTON_H

#include <QStyleOptionToolButton>

// What a KToolButton hands its painter and the style: Qt's tool-button
// option (rectangle, state, text, icon, font, palette) and the host's own
// button style number (KToolButton::ButtonStyle).
//
// Qt's styles see an ordinary tool-button option (type SO_ToolButton, so
// qstyleoption_cast<const QStyleOptionToolButton*> accepts it and they draw
// it as one). The host tells its own options apart by their version, which
// is above any Qt gives out; use kstyleoption_cast() for that.
class KStyleOptionToolButton : public QStyleOptionToolButton
{
public:
    enum StyleOptionVersion { Version = 0x4b00 };

    KStyleOptionToolButton()
        : KStyleOptionToolButton(Version)
    {}

    int buttonStyle = 0;
    // The button's popup is open (KMenuButton).
    bool popupOpen = false;

protected:
    explicit KStyleOptionToolButton(int version) { this->version = version; }
};

// option as the host option T, or null when it is another option (or null).
template <typename T>
const T* kstyleoption_cast(const QStyleOption* option)
{
    return option && option->type == QStyleOption::SO_ToolButton && option->version == T::Version
               ? static_cast<const T*>(option)
               : nullptr;
}

#endif // VEX_KSTYLEOPTIONTOOLBUTTON_H
