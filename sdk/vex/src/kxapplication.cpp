#include "vex/kxapplication.h"

#include "vex/klongtimeblockdetector.h"
#include "vex/kresourcescheme.h"

KxApplication::KxApplication(int& argc, char** argv)
    : QApplication(argc, argv)
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
