#include "kingorelongtimedetecthelper.h"

#include <QCoreApplication>
#include <QMetaObject>

namespace {

bool ignoreLongTimeBlocks(bool ignore)
{
    return QMetaObject::invokeMethod(QCoreApplication::instance(), "ingoreLongTimeBlockDetect",
                                     Q_ARG(bool, ignore));
}

} // namespace

KIngoreLongTimeDetectHelper::KIngoreLongTimeDetectHelper(bool enable)
{
    if (enable)
        m_switchedOff = ignoreLongTimeBlocks(true);
}

KIngoreLongTimeDetectHelper::~KIngoreLongTimeDetectHelper()
{
    if (m_switchedOff)
        ignoreLongTimeBlocks(false);
}
