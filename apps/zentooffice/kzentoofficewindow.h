#ifndef KZENTOOFFICEWINDOW_H
#define KZENTOOFFICEWINDOW_H

#include <vex/kmainwindow.h>

// A main window of the suite's word processor: the title area with the
// commands of the host profile's "TitleBar" tree, and a page to type on.
class KZentoOfficeWindow : public KMainWindow
{
    Q_OBJECT

public:
    explicit KZentoOfficeWindow(QWidget* parent = nullptr);
};

#endif // KZENTOOFFICEWINDOW_H
