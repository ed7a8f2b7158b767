#ifndef KXCUSTOMLINE_H
#define KXCUSTOMLINE_H

#include <QColor>
#include <QFrame>

// A horizontal rule in a chosen colour (black until one is set) and pen
// style. The pen is as wide as the inner height and runs along the top
// margin, so a thick line reaches above the contents area by half its width:
// callers have laid their rules out around that and it stays so.
class KxCustomLine : public QFrame
{
    Q_OBJECT

public:
    explicit KxCustomLine(QWidget* parent = nullptr);

    // Take effect at the next repaint.
    void setLineStyle(Qt::PenStyle style);
    void setLineColor(const QColor& color);

protected:
    void paintEvent(QPaintEvent* event) override;

private:
    Qt::PenStyle m_lineStyle;
    QColor m_lineColor;
};

#endif // KXCUSTOMLINE_H
