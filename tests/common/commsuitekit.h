#ifndef COMMSUITEKIT_H
#define COMMSUITEKIT_H

#include <vexlite/khksoftwaresettings.h>

#include <QSettings>
#include <QString>
#include <QStringList>

namespace AuthTest {

class KTestAppDir;

// What the suites of the helper layer share.

// A settings store of the host as a plain INI file, root 0 by default.
QSettings raw(KHKSoftwareSettings::HKEY root = KHKSoftwareSettings::CurrentUser);

QString text(bool value);

// Runs the build's probe program "commprobe" from a copy in folder of appDir:
// a fresh process with empty caches that sees the host as the suite set it up
// (saved to the suite's profile first) and what the suite laid out around it.
// One text per operation, or a single line saying why the probe failed; err
// receives its error output.
QStringList runProbe(const KTestAppDir& appDir, const QStringList& operations,
                     const QString& folder = QString(), QString* err = nullptr);
// Starts count probes at once, all with the same operations; their texts in
// the order they were started, and their error outputs in errs.
QList<QStringList> runProbesAtOnce(const KTestAppDir& appDir, const QStringList& operations,
                                   int count, QStringList* errs = nullptr,
                                   const QString& folder = QString());

} // namespace AuthTest

#endif // COMMSUITEKIT_H
