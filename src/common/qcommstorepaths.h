#ifndef QCOMMSTOREPATHS_H
#define QCOMMSTOREPATHS_H

#include <QLatin1String>

// Key paths of the cloud-document client's settings stores: a single
// backslash separates the components, as the suite's store expects them.
namespace QComm {

constexpr QLatin1String kOldNimboStorePath("Corvane\\nimbo");
constexpr QLatin1String kNimboStorePath("Corvane\\ZentoCloud");
constexpr QLatin1String kNimboUserInfoStorePath("Corvane\\ZentoCloud\\userinfo");
constexpr QLatin1String kZentoCommonStorePath("Corvane\\Office\\6.0\\Common");
constexpr QLatin1String kDeskhiveStorePath("Corvane\\Office\\6.0\\plugins\\deskhive");
constexpr QLatin1String kNimboCloudDiskStorePath("Corvane\\ZentoCloud\\clouddisk");
constexpr QLatin1String kNimboNseStorePath("Corvane\\ZentoCloud\\Nse");

} // namespace QComm

#endif // QCOMMSTOREPATHS_H
