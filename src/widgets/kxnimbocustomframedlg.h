#ifndef AUTHPLUGIN_KXNIMBOCUSTOMFRAMEDLG_H
#define AUTHPLUGIN_KXNIMBOCUSTOMFRAMEDLG_H

#include "kxauthglobal.h"

#include <vex/kxstyledialog.h>

#include <memory>

// A frameless dialog that draws its own frame: a white body, a one-pixel
// border in #B2B4BC on the outermost pixels, and a title bar across the top
// (KxNimboCustomFrameDlgTitle) with an icon, the window title and a close
// button. The title bar is 40 pixels high at 100 %; the contents margins
// (1, title height, 1, 1) make a layout set on the dialog fill exactly the
// area inside the border and below the title. The border stays one pixel at
// every display scale, so the side and bottom margins do too. The dialog
// cannot be moved by dragging its title. Shown without a position of its
// own, it sits centred on its parent's window (on the screen without one),
// whether or not a window manager is there to place it. Exported as the
// base of KxWebDlg, so that other modules can derive from the web dialog.
class KXAUTH_EXPORT KxNimboCustomFrameDlg : public KxStyleDialog
{
    Q_OBJECT

public:
    explicit KxNimboCustomFrameDlg(QWidget* parent = nullptr,
                                   Qt::WindowFlags flags = Qt::WindowFlags());
    ~KxNimboCustomFrameDlg() override;

    // Both only store: the title bar shows them at its next repaint.
    void setTitleIcon(const QPixmap& icon);
    void setTitleColor(const QColor& color);
    QColor titleColor() const;

protected:
    void paintEvent(QPaintEvent* event) override;
    void resizeEvent(QResizeEvent* event) override;
    void showEvent(QShowEvent* event) override;

private:
    // The title bar and whatever else the frame keeps: here, so that it can
    // change without changing the class modules are built against.
    struct Private;
    std::unique_ptr<Private> d;
};

#endif // AUTHPLUGIN_KXNIMBOCUSTOMFRAMEDLG_H
