#ifndef AUTHCOMMON_QCOMMSYNCSWITCHES_H
#define AUTHCOMMON_QCOMMSYNCSWITCHES_H

#include "authcommon_export.h"

// Switches of the cloud client's desktop synchronisation. A stored text is
// off when it is empty, "0" or "false" in any letter case, and on otherwise.
namespace QComm {

// Whether desktop sync is offered at all; read once per process, on when
// nothing is stored.
AUTHCOMMON_EXPORT bool isDesktopSyncEnable();
// Whether the newer metadata format is used; read once per process, on when
// nothing is stored.
AUTHCOMMON_EXPORT bool isV5MetadataEnable();
// Whether the signed-in user has switched desktop sync on; read every call,
// off without a signed-in user.
AUTHCOMMON_EXPORT bool desktopSyncSwitchOn();
// Not available on this platform.
AUTHCOMMON_EXPORT bool zentoboxDesktopSyncEnable();

} // namespace QComm

#endif // AUTHCOMMON_QCOMMSYNCSWITCHES_H
