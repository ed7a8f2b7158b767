#ifndef COMMPATHS_H
#define COMMPATHS_H

#include "commtypes.h"

// Where the cloud client keeps its files, in the wide-string layer. Every
// builder below the application-data root appends its piece to its parent's
// path, creates the directory and returns the path without a trailing
// separator, whether the directory could be created or not; one that cannot
// be is logged once per process, with the reason.
namespace Comm {

// The parent of the application's writable data location; not created.
WideString getAppdataPath();
WideString getLocalAppdataPath();

WideString getNimboAppdataPath();
// The flag selects nothing on this platform: both variants are one path.
WideString getNimboLocalAppdataPath(bool);
WideString getNimboUserDataRootPath(bool);
WideString getNimboUpdateRootPath();
WideString getNimboResourcePath();

WideString getDeskhivePath();
WideString getLogPath();
WideString getDumpPath();

// The cloud client's installation path is not known on this platform:
// always empty, so callers cannot build on it.
WideString getNimboPath();

// True if the directory exists afterwards; missing parents are created.
bool createDeepDirectory(const WideString& path);
// createDeepDirectory for the path builders, which return their path
// whatever happens: the first failure for a directory is logged as a
// warning naming it and the reason.
bool _createBuiltDirectory(const WideString& path);
// Whether a file or directory of that name exists; false for null or "".
bool fileExists(const unsigned short* path);

} // namespace Comm

#endif // COMMPATHS_H
