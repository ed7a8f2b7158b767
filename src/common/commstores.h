#ifndef AUTHCOMMON_COMMSTORES_H
#define AUTHCOMMON_COMMSTORES_H

#include "authcommon_export.h"

#include "commtypes.h"

#include <vexlite/khksoftwaresettings.h>

// The wide-string layer's store access. The user-info accessors work on the
// same store as their QComm counterparts; the raw registry functions have no
// store behind them on this platform and give fixed answers that callers
// rely on.
namespace Comm {

AUTHCOMMON_EXPORT int readNimboUserInfoRegValue(const WideString& key, unsigned int defaultValue);
AUTHCOMMON_EXPORT WideString readNimboUserInfoRegValue(const WideString& key,
                                                       const WideString& defaultValue);
AUTHCOMMON_EXPORT void writeNimboUserInfoRegValue(const WideString& key, const WideString& value);
AUTHCOMMON_EXPORT void writeNimboUserInfoRegValue(const WideString& key, unsigned int value);

AUTHCOMMON_EXPORT WideString readRegStrValue(KHKSoftwareSettings::HKEY root, const WideString& path,
                                             const WideString& name,
                                             const WideString& defaultValue);
// The default only for an empty path or name; 0 for everything else.
AUTHCOMMON_EXPORT unsigned int readRegNumValue(KHKSoftwareSettings::HKEY root,
                                               const WideString& path, const WideString& name,
                                               unsigned int defaultValue);
AUTHCOMMON_EXPORT bool writeRegStrValue(KHKSoftwareSettings::HKEY root, const WideString& path,
                                        const WideString& name, const WideString& value);
AUTHCOMMON_EXPORT bool writeRegNumValue(KHKSoftwareSettings::HKEY root, const WideString& path,
                                        const WideString& name, unsigned int value);

AUTHCOMMON_EXPORT int getVersionNetwork(int n);
AUTHCOMMON_EXPORT void getZentoVersionAndChannel(WideString& version, WideString& channel);
AUTHCOMMON_EXPORT bool checkIsSupportThriftIpc();
AUTHCOMMON_EXPORT bool checkIsSupportNimboNse();

} // namespace Comm

#endif // AUTHCOMMON_COMMSTORES_H
