#ifndef VEX_KMENUBUTTON_H
#define VEX_KMENUBUTTON_H

#include "kpopupwidget.h"
#include "ktoolbutton.h"

#include <QPointer>

// A tool button whose default command is a list: clicking it pops up the
// command's children (popupChildWidget()). While the popup is open the
// button keeps the keyboard focus and hands the popup its keys.
class VEX_EXPORT KMenuButton : public KToolButton
{
    Q_OBJECT

public:
    explicit KMenuButton(QWidget* parent = nullptr);
    ~KMenuButton() override;

    // Shows a KPopupWidget of the default command's child commands below the
    // button, a child of the button, and returns once it has been hidden
    // (entry chosen, Escape, a press elsewhere, or hidden by whoever found
    // it); the popup is deleted by then. Does nothing without a default
    // command or while a popup of the button is open. The button itself may
    // be gone when this returns (a command run from the popup can delete
    // it): callers that touch it afterwards guard it with a QPointer.
    void popupChildWidget();
    // The open popup, null when none is.
    KPopupWidget* popupWidget() const { return m_popup; }

signals:
    // The popup is on the screen; popupChildWidget() has not returned yet.
    void popupShown(KPopupWidget* popup);

protected:
    void onClicked() override;
    void keyPressEvent(QKeyEvent* event) override;

private:
    QPointer<KPopupWidget> m_popup;
};

#endif // VEX_KMENUBUTTON_H
