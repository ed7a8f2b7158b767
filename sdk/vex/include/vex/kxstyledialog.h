#ifndef VEX_KXSTYLEDIALOG_H
#define VEX_KXSTYLEDIALOG_H

#include "vex_global.h"

#include <QDialog>
#include <QPointer>

// The host's dialog base: modal, in the application's style, and tied to the
// window it belongs to.
// - exec() runs the dialog application-modal (whatever modality was set).
// - When the window it belongs to (its parent's window) is closed or hidden
//   by the program while the dialog is open, the dialog is rejected: a modal
//   run never outlives its window. Minimising the window does not count.
// - When shown, it takes the keyboard focus, which some window managers do
//   not give frameless windows on their own.
// - Escape without modifiers rejects; every other key is QDialog's (default
//   buttons, the platform's other cancel sequences).
class VEX_EXPORT KxStyleDialog : public QDialog
{
    Q_OBJECT

public:
    explicit KxStyleDialog(QWidget* parent = nullptr, Qt::WindowFlags flags = Qt::WindowFlags());
    ~KxStyleDialog() override;

public slots:
    int exec() override;

protected:
    bool event(QEvent* event) override;
    bool eventFilter(QObject* watched, QEvent* event) override;
    void showEvent(QShowEvent* event) override;
    void keyPressEvent(QKeyEvent* event) override;

private:
    void watchOwnerWindow();

    QPointer<QWidget> m_ownerWindow;
};

#endif // VEX_KXSTYLEDIALOG_H
