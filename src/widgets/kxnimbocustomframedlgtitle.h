#ifndef KXNIMBOCUSTOMFRAMEDLGTITLE_H
#define KXNIMBOCUSTOMFRAMEDLGTITLE_H

#include <QColor>
#include <QPixmap>
#include <QWidget>

class KxNimboPixmapButton;

// The title bar of KxNimboCustomFrameDlg, its parent: filled with the title
// colour (black until one is set), the icon at the top-left corner at its
// own size, the dialog's window title in white 10 pixels (at 100 %) after
// the icon, and at the right end a close square as wide as the bar is high
// plus one. The close button ("res:/images/close_*.png") sits in that square;
// a mouse release anywhere in the square also closes the dialog, wherever
// the press was. Takes no keyboard focus.
class KxNimboCustomFrameDlgTitle : public QWidget
{
    Q_OBJECT

public:
    explicit KxNimboCustomFrameDlgTitle(QWidget* parent);

    // 40 pixels at 100 %, at the host's display scale.
    static int titleHeight();

    void setIcon(const QPixmap& icon);
    void setColor(const QColor& color);
    QColor color() const;

protected:
    void mouseReleaseEvent(QMouseEvent* event) override;
    void paintEvent(QPaintEvent* event) override;
    void resizeEvent(QResizeEvent* event) override;

private:
    QRect closeSquare() const;

    QPixmap m_icon;
    QColor m_color;
    KxNimboPixmapButton* m_closeButton;
};

#endif // KXNIMBOCUSTOMFRAMEDLGTITLE_H
