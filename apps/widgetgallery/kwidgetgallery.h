#ifndef KWIDGETGALLERY_H
#define KWIDGETGALLERY_H

#include <QWidget>

class QLabel;
class KxNimboCustomFrameDlg;

// Every painted widget of the plug-in in its states, side by side, and
// buttons that open the frame dialog and the web dialog. States the mouse would bring about
// (under the mouse, pressed) are shown on instances set into them, so a
// screenshot shows them too.
class KWidgetGallery : public QWidget
{
    Q_OBJECT

public:
    explicit KWidgetGallery(QWidget* parent = nullptr);

    // The frame dialog as the web dialog shows it: logo, title colour, a
    // message and an OK button. Owned by the caller.
    static KxNimboCustomFrameDlg* createFrameDialog(QWidget* parent);

private slots:
    void countClick();
    void openFrameDialog();
    void openWebDialog();

private:
    QLabel* m_clickCount;
    int m_clicks = 0;
};

#endif // KWIDGETGALLERY_H
