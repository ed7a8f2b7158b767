#ifndef AUTHCOMMON_COMMSTRINGS_H
#define AUTHCOMMON_COMMSTRINGS_H

#include "authcommon_export.h"

#include "commtypes.h"

// Small string helpers of the wide-string layer. Paths are separated by "/"
// only; a backslash is an ordinary character here.
namespace Comm {

// Cuts at the last "/", which goes too; no "/" leaves the string empty.
AUTHCOMMON_EXPORT void pathRemoveFileSpec(WideString& path);
// What follows the last "/"; the whole text without one; empty for null.
AUTHCOMMON_EXPORT WideString getFileName(const unsigned short* path);
// Strips trailing, then leading U+0020 in place (tabs and line breaks stay)
// and returns a copy of the result.
AUTHCOMMON_EXPORT WideString trimSpace(WideString& text);
// Every occurrence of from, left to right; inserted text is not searched
// again. An empty from would match everywhere forever: the text comes back
// unchanged instead.
AUTHCOMMON_EXPORT WideString Replace(const WideString& src, const WideString& from,
                                     const WideString& to);

} // namespace Comm

#endif // AUTHCOMMON_COMMSTRINGS_H
