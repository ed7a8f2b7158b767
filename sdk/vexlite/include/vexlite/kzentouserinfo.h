#ifndef VEXLITE_KZENTOUSERINFO_H
#define VEXLITE_KZENTOUSERINFO_H

#include "vexlite_global.h"

#include <QString>

// The suite account's user information as the host's account service hands
// it out: a value, copied freely, describing the account at the moment it
// was asked for.
class VEXLITE_EXPORT KZentoUserInfo
{
public:
    KZentoUserInfo() = default;
    KZentoUserInfo(bool logined, const QString& userName);

    bool logined() const { return m_logined; }
    // The account's display name; empty when nobody is signed in.
    QString userName() const { return m_userName; }

private:
    bool m_logined = false;
    QString m_userName;
};

#endif // VEXLITE_KZENTOUSERINFO_H
