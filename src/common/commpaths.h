#ifndef AUTHCOMMON_COMMPATHS_H
#define AUTHCOMMON_COMMPATHS_H

#include "authcommon_export.h"

#include "commtypes.h"

// Where the cloud client keeps its files, in the wide-string layer. Every
// builder below the application-data root appends its piece to its parent's
// path, creates the directory and returns the path without a trailing
// separator, whether the directory could be created or not; one that cannot
// be is logged once per process, with the reason.
namespace Comm {

// The parent of the application's writable data location; not created.
AUTHCOMMON_EXPORT WideString getAppdataPath();
AUTHCOMMON_EXPORT WideString getLocalAppdataPath();

AUTHCOMMON_EXPORT WideString getNimboAppdataPath();
// The flag selects nothing on this platform: both variants are one path.
AUTHCOMMON_EXPORT WideString getNimboLocalAppdataPath(bool);
AUTHCOMMON_EXPORT WideString getNimboUserDataRootPath(bool);
AUTHCOMMON_EXPORT WideString getNimboUpdateRootPath();
AUTHCOMMON_EXPORT WideString getNimboResourcePath();

AUTHCOMMON_EXPORT WideString getDeskhivePath();
AUTHCOMMON_EXPORT WideString getLogPath();
AUTHCOMMON_EXPORT WideString getDumpPath();

// The cloud client's installation path is not known on this platform:
// always empty, so callers cannot build on it.
AUTHCOMMON_EXPORT WideString getNimboPath();

// True if the directory exists afterwards; missing parents are created.
AUTHCOMMON_EXPORT bool createDeepDirectory(const WideString& path);
// Whether a file or directory of that name exists; false for null or "".
AUTHCOMMON_EXPORT bool fileExists(const unsigned short* path);

} // namespace Comm

#endif // AUTHCOMMON_COMMPATHS_H
