#ifndef KXNIMBOPIXMAPBUTTON_H
#define KXNIMBOPIXMAPBUTTON_H

#include <QPixmap>
#include <QPushButton>

// A button drawn from three images named by one stem: "<stem>_normal.png",
// "<stem>_hover.png" and "<stem>_sunken.png". Every state is drawn at the
// normal image's size, centred; on a dense screen (device pixel ratio above
// 1) the normal and hover images' "@2x" companions take their place where
// they exist. A pressed button shows its normal image: the "_sunken" image
// is loaded but never drawn, and that stays so.
//
// The two constructors leave different size policies (Minimum in both
// directions, or QPushButton's own); callers rely on each.
class KxNimboPixmapButton : public QPushButton
{
    Q_OBJECT

public:
    explicit KxNimboPixmapButton(QWidget* parent = nullptr);
    // Loads "<dir>/<name>_normal.png" and the others; dir may be a "res:"
    // folder of the host such as "res:/images".
    KxNimboPixmapButton(const QString& dir, const QString& name, QWidget* parent = nullptr);

    // A file that does not load leaves its image null, silently.
    void load(const QString& dir, const QString& name);

    // The normal image's size, 0 x 0 without one.
    QSize sizeHint() const override;

protected:
    void paintEvent(QPaintEvent* event) override;

private:
    QPixmap m_normal;
    QPixmap m_hover;
    QPixmap m_sunken;
    QPixmap m_normal2x;
    QPixmap m_hover2x;
};

#endif // KXNIMBOPIXMAPBUTTON_H
