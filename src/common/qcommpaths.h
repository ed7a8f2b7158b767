#ifndef AUTHCOMMON_QCOMMPATHS_H
#define AUTHCOMMON_QCOMMPATHS_H

#include "authcommon_export.h"

#include <QString>

// The cloud client's user-data roots and the icon cache, in Qt types. Two
// roots exist side by side since the client moved its per-user data: the
// old one (…/office6/Deskhive) and the new one (…/Zento Cloud Files/userdata).
namespace QComm {

// True if the directory exists afterwards; missing parents are created.
AUTHCOMMON_EXPORT bool makeDeepPath(const QString& path);

// Both roots, computed (and created) on first use and kept for the process.
AUTHCOMMON_EXPORT void getUserDataRootPath(QString& oldRoot, QString& newRoot);

// Whether this installation uses the new layout: the user-info marker
// "zentocloudfiles" is 1 and the suite is newer than 9.1.0.4817.
AUTHCOMMON_EXPORT bool isNewUserData();

// Whether path lies below either root (anywhere in it, in any letter case).
AUTHCOMMON_EXPORT bool isInUserDataRootPath(const QString& path);

// The icon cache of the layout in force, in native separators, created.
AUTHCOMMON_EXPORT QString getNimboIconCachePath();

} // namespace QComm

#endif // AUTHCOMMON_QCOMMPATHS_H
