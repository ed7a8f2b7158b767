#include "vexlite/kzentouserinfo.h"

KZentoUserInfo::KZentoUserInfo(bool logined, const QString& userName)
    : m_logined(logined)
    , m_userName(logined ? userName : QString())
{}
