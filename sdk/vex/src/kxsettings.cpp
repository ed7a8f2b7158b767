#include "vex/kxsettings.h"

KxSettings::KxSettings(QObject* parent)
    : KHKSoftwareSettings(CurrentUser, settingsKeyPath(), parent)
{}

KxSettings::~KxSettings() = default;

QString KxSettings::settingsKeyPath()
{
    return QStringLiteral("Corvane\\Office\\6.0\\vex");
}
