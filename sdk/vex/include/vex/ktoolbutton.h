#ifndef VEX_KTOOLBUTTON_H
#define VEX_KTOOLBUTTON_H

#include "kcommand.h"
#include "vex_global.h"

#include <vexlite/kqtcompat.h>

#include <QPointer>
#include <QToolButton>

class KStyleOptionToolButton;

// The host's tool button: a flat button that shows a command (its default
// command) and runs it when clicked. It follows the command: text, icon,
// enabled state, and the detail as tool tip and accessible description.
class VEX_EXPORT KToolButton : public QToolButton
{
    Q_OBJECT

public:
    // Button styles of the host's widget library, by the numbers callers
    // pass to setButtonStyle(). Numbers are fixed once given out.
    enum ButtonStyle {
        // 0 to 4 are Qt's tool-button styles (Qt::ToolButtonStyle).
        IconOnlyStyle = 0,
        TextOnlyStyle = 1,
        TextBesideIconStyle = 2, // the default
        TextUnderIconStyle = 3,
        FollowStyle = 4,
        // 5 and 6 are the host's ribbon gallery buttons (large and small),
        // which this stand-in draws as TextBesideIconStyle.
        LargeGalleryStyle = 5,
        SmallGalleryStyle = 6,
        // The account panel of a window's title area: flat (a background
        // only under the mouse, while pressed or while its popup is open),
        // no icon and no menu arrow. Room is left at the left for a picture
        // that the button's subclass draws itself; the text follows it,
        // left-aligned and vertically centred (KZentoStyle::UserPanelLayout).
        // Sized by the style's KZentoStyle::SM_UserPanelMenuButton.
        UserPanelStyle = 7,
    };

    explicit KToolButton(QWidget* parent = nullptr);
    ~KToolButton() override;

    int buttonStyle() const { return m_buttonStyle; }
    // A number outside the list above is taken as TextBesideIconStyle.
    void setButtonStyle(int style);

    KCommand* defaultCommand() const { return m_command; }
    // Binds the button to command (null unbinds): it shows the command from
    // now on and runs it when clicked.
    void setDefaultCommand(KCommand* command);

    // Qt's tool-button option for the button, with the host's style number.
    void initStyleOption(KStyleOptionToolButton* option) const;

public slots:
    // Takes text, icon, enabled state and detail from the default command.
    virtual void syncCommand();

protected:
    // Qt's own, virtual in Qt 6, beside the host's above.
    using QToolButton::initStyleOption;

    // What a click does: run the default command (its action).
    virtual void onClicked();
    // For subclasses that keep a popup: drawn as under the mouse while open.
    void setPopupOpen(bool open);
    bool isPopupOpen() const { return m_popupOpen; }

    void enterEvent(KQtCompat::EnterEvent* event) override;
    void leaveEvent(QEvent* event) override;
    void paintEvent(QPaintEvent* event) override;

private slots:
    void onButtonClicked();

private:
    void paintUserPanel();

    int m_buttonStyle = TextBesideIconStyle;
    QPointer<KCommand> m_command;
    bool m_hovered = false;
    bool m_popupOpen = false;
};

#endif // VEX_KTOOLBUTTON_H
