#ifndef AUTHCOMMON_KINGORELONGTIMEDETECTHELPER_H
#define AUTHCOMMON_KINGORELONGTIMEDETECTHELPER_H

#include "authcommon_export.h"

// Keeps the host from reporting a lengthy operation as a hung event loop:
// constructed with true, it switches the application's long-blocking
// detection off until it goes out of scope, also when the scope is left by
// an exception. Constructed with false it does nothing. The application is
// reached by the method name "ingoreLongTimeBlockDetect" (spelled so by the
// host); an application without it is left alone.
class AUTHCOMMON_EXPORT KIngoreLongTimeDetectHelper
{
public:
    explicit KIngoreLongTimeDetectHelper(bool enable);
    ~KIngoreLongTimeDetectHelper();
    KIngoreLongTimeDetectHelper(const KIngoreLongTimeDetectHelper&) = delete;
    KIngoreLongTimeDetectHelper& operator=(const KIngoreLongTimeDetectHelper&) = delete;

private:
    bool m_switchedOff = false;
};

#endif // AUTHCOMMON_KINGORELONGTIMEDETECTHELPER_H
