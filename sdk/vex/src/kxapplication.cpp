#include "vex/kxapplication.h"

#include "vex/klongtimeblockdetector.h"
#include "vex/kmainwindow.h"
#include "vex/kresourcescheme.h"

namespace {

// What must be set before the application object exists. A suite that
// shows web pages through a plug-in shares OpenGL contexts: QtWebEngine,
// loaded with the plug-in, composes its pages with the application's.
int& beforeApplication(int& argc)
{
    QCoreApplication::setAttribute(Qt::AA_ShareOpenGLContexts);
    return argc;
}

} // namespace

KxApplication::KxApplication(int& argc, char** argv)
    : QApplication(beforeApplication(argc), argv)
    , m_detector(new KLongTimeBlockDetector(this))
{
    m_detector->setThreshold(kDefaultBlockThreshold);
    m_detector->start();
    KResourceScheme::install();
}

// The watchdog must be gone before the application it pings.
KxApplication::~KxApplication()
{
    m_detector->stop();
}

KLongTimeBlockDetector* KxApplication::longTimeBlockDetector() const
{
    return m_detector;
}

void KxApplication::ingoreLongTimeBlockDetect(bool ignore)
{
    m_detector->setIgnored(ignore);
}

KMainWindow* KxApplication::findRelativeMainWindowX(KShellApplication* app)
{
    if (!app)
        return nullptr;
    auto* active = qobject_cast<KMainWindow*>(QApplication::activeWindow());
    if (active && active->shellApplication() == app)
        return active;
    const QList<KMainWindow*> windows = KMainWindow::mainWindows();
    for (KMainWindow* window : windows) {
        if (window->shellApplication() == app)
            return window;
    }
    return nullptr;
}
