#ifndef KWEBENGINEVERSION_H
#define KWEBENGINEVERSION_H

#include <QString>

// The web engine the build carries, as the suite's web views name it in
// their user agent: QtWebKit's own version ("602.1"). One source file per
// engine; empty in a build without one.
namespace KWebEngineVersion {

QString userAgentVersion();

} // namespace KWebEngineVersion

#endif // KWEBENGINEVERSION_H
