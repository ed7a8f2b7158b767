#ifndef COMMSTORES_H
#define COMMSTORES_H

#include "commtypes.h"

#include <vexlite/khksoftwaresettings.h>

// The wide-string layer's store access. The user-info accessors work on the
// same store as their QComm counterparts; the raw registry functions have no
// store behind them on this platform and give fixed answers that callers
// rely on.
namespace Comm {

int readNimboUserInfoRegValue(const WideString& key, unsigned int defaultValue);
WideString readNimboUserInfoRegValue(const WideString& key, const WideString& defaultValue);
void writeNimboUserInfoRegValue(const WideString& key, const WideString& value);
void writeNimboUserInfoRegValue(const WideString& key, unsigned int value);

WideString readRegStrValue(KHKSoftwareSettings::HKEY root, const WideString& path,
                           const WideString& name, const WideString& defaultValue);
// The default only for an empty path or name; 0 for everything else.
unsigned int readRegNumValue(KHKSoftwareSettings::HKEY root, const WideString& path,
                             const WideString& name, unsigned int defaultValue);
bool writeRegStrValue(KHKSoftwareSettings::HKEY root, const WideString& path,
                      const WideString& name, const WideString& value);
bool writeRegNumValue(KHKSoftwareSettings::HKEY root, const WideString& path,
                      const WideString& name, unsigned int value);

int getVersionNetwork(int n);
void getZentoVersionAndChannel(WideString& version, WideString& channel);
bool checkIsSupportThriftIpc();
bool checkIsSupportNimboNse();

} // namespace Comm

#endif // COMMSTORES_H
