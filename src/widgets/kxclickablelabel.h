#ifndef KXCLICKABLELABEL_H
#define KXCLICKABLELABEL_H

#include <vexlite/kqtcompat.h>

#include <QLabel>

// A label that acts as a link: clicked() on every release of the left mouse
// button, a pointing-hand cursor while the mouse is over it and an arrow
// after (set explicitly, not inherited from the parent).
//
// A label takes no keyboard focus unless the caller gives it a focus policy;
// then Space, Return and Enter emit clicked() as a click would, so a link
// reached with Tab can be followed without the mouse. Assistive tools see a
// link named by the text, whose press action clicks it.
class KxClickableLabel : public QLabel
{
    Q_OBJECT

public:
    explicit KxClickableLabel(QWidget* parent = nullptr);

signals:
    void clicked();

protected:
    void mouseReleaseEvent(QMouseEvent* event) override;
    void keyPressEvent(QKeyEvent* event) override;
    void enterEvent(KQtCompat::EnterEvent* event) override;
    void leaveEvent(QEvent* event) override;
};

#endif // KXCLICKABLELABEL_H
