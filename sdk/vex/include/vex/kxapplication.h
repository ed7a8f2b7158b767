#ifndef VEX_KXAPPLICATION_H
#define VEX_KXAPPLICATION_H

#include "vex_global.h"

#include <QApplication>

class KLongTimeBlockDetector;
class KMainWindow;
class KShellApplication;

// The suite's application object. It watches its own event loop for long
// blocks from construction on (KLongTimeBlockDetector, default threshold
// kDefaultBlockThreshold ms), and makes the "res:" scheme resolve
// (KResourceScheme).
class VEX_EXPORT KxApplication : public QApplication
{
    Q_OBJECT

public:
    static constexpr int kDefaultBlockThreshold = 5000;

    KxApplication(int& argc, char** argv);
    ~KxApplication() override;

    KLongTimeBlockDetector* longTimeBlockDetector() const;

    // The main window the application works in: the active window when it
    // is one of the application's main windows, else the application's most
    // recently activated one. Null for a null application or one without a
    // main window.
    static KMainWindow* findRelativeMainWindowX(KShellApplication* app);

public slots:
    // Lengthy operations switch the block detection off around themselves
    // (true) and on again (false). Callers reach it by this name through the
    // meta-object system, so the spelling stays as it is.
    void ingoreLongTimeBlockDetect(bool ignore);

private:
    KLongTimeBlockDetector* m_detector;
};

#endif // VEX_KXAPPLICATION_H
