#ifndef AUTHCOMMON_QCOMMSTOREPATHS_H
#define AUTHCOMMON_QCOMMSTOREPATHS_H

#include <QLatin1String>

// Key paths of the cloud-document client's settings stores: a single
// backslash separates the components, as the suite's store expects them.
namespace QComm {

inline const QLatin1String kOldNimboStorePath("Corvane\\nimbo");
inline const QLatin1String kNimboStorePath("Corvane\\ZentoCloud");
inline const QLatin1String kNimboUserInfoStorePath("Corvane\\ZentoCloud\\userinfo");
inline const QLatin1String kZentoCommonStorePath("Corvane\\Office\\6.0\\Common");
inline const QLatin1String kDeskhiveStorePath("Corvane\\Office\\6.0\\plugins\\deskhive");
inline const QLatin1String kNimboCloudDiskStorePath("Corvane\\ZentoCloud\\clouddisk");
inline const QLatin1String kNimboNseStorePath("Corvane\\ZentoCloud\\Nse");

} // namespace QComm

#endif // AUTHCOMMON_QCOMMSTOREPATHS_H
