#ifndef VEX_KXSETTINGS_H
#define VEX_KXSETTINGS_H

#include "vex_global.h"

#include <vexlite/khksoftwaresettings.h>

// The host's own settings, kept for the user in the host profile's
// per-user store under the key path settingsKeyPath(), so that what one
// object writes every other, in this process or the next, reads back.
// Groups work as with any QSettings.
class VEX_EXPORT KxSettings : public KHKSoftwareSettings
{
    Q_OBJECT

public:
    explicit KxSettings(QObject* parent = nullptr);
    ~KxSettings() override;

    static QString settingsKeyPath();
};

#endif // VEX_KXSETTINGS_H
