#ifndef KXCUSTOMBUTTON_H
#define KXCUSTOMBUTTON_H

#include <QColor>
#include <QPushButton>

// A flat push button: one colour per state (normal, under the mouse,
// pressed; pressed wins), square corners, white text centred in the contents
// rectangle, everything at 0.6 opacity when disabled. No icon, focus frame
// or border. Contents margins are 5 pixels at 100 %. Made narrower than its
// text, it wraps the text into lines, centred.
class KxCustomButton : public QPushButton
{
    Q_OBJECT

public:
    explicit KxCustomButton(QWidget* parent = nullptr);

    // Takes effect at the next repaint; the arguments are only read.
    void setColor(QColor& normal, QColor& hover, QColor& pressed);

    // The text's bounding rectangle plus the contents margins.
    QSize minimumSizeHint() const override;
    QSize sizeHint() const override;

protected:
    void paintEvent(QPaintEvent* event) override;

private:
    QColor m_normalColor;
    QColor m_hoverColor;
    QColor m_pressedColor;
};

#endif // KXCUSTOMBUTTON_H
