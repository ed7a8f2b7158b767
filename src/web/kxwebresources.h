#ifndef AUTHPLUGIN_KXWEBRESOURCES_H
#define AUTHPLUGIN_KXWEBRESOURCES_H

#include "kxauthglobal.h"

#include <QString>

// The root of the library's localised web pages in its compiled-in
// resources: one folder per language below it, and "default".
inline constexpr char kxWebMuiRoot[] = ":/auth_plugin/mui/";

// The copy of fileName under dir for the interface language, as the host's
// lookup (krt::i18n::getMuiFile) finds it, with every "\" turned into "/".
// Note the order: file name first, then the directory.
KXAUTH_EXPORT QString kxGetResMuiFile(const QString& fileName, const QString& dir);

// A resource path (":/...") as an address a web view loads ("qrc:/...");
// anything else as it is, ordinary file paths included.
KXAUTH_EXPORT QString kxResPathToWebUrl(const QString& path);

// The address of the library's localised page fileName, for a QUrl made in
// tolerant mode; empty when the host finds no copy.
KXAUTH_EXPORT QString kxGetWebResMuiFile(const QString& fileName);

#endif // AUTHPLUGIN_KXWEBRESOURCES_H
