#ifndef AUTHCOMMON_QCOMMOPENFILE_H
#define AUTHCOMMON_QCOMMOPENFILE_H

#include "authcommon_export.h"

#include <QString>

// Opening cloud documents and local files in the suite's application
// bundle: the bundle of the running program, or the bundle around it when
// this is a helper inside its "Contents/SharedSupport".
namespace QComm {

// Hands the document to the suite as a "vexnimbo://type=open&..." address
// with the file name in Base64. True when the command FAILED; false when it
// ran, and also when there was no bundle and nothing ran.
AUTHCOMMON_EXPORT bool openFileByVex(const QString& fileId, const QString& fileName);
// Hands path to the suite as it is. True when the command FAILED.
AUTHCOMMON_EXPORT bool openFileByLaunchExe(const QString& path);

// The command lines the two functions above run, in the form
// open -a "<bundle>" "<target>"; empty where they would run nothing.
AUTHCOMMON_EXPORT QString openFileByVexCommand(const QString& fileId, const QString& fileName);
AUTHCOMMON_EXPORT QString openFileByLaunchExeCommand(const QString& path);

} // namespace QComm

#endif // AUTHCOMMON_QCOMMOPENFILE_H
