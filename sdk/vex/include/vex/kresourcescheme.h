#ifndef VEX_KRESOURCESCHEME_H
#define VEX_KRESOURCESCHEME_H

#include "vex_global.h"

#include <QStringList>

// The host's "res:" scheme: "res:/images/close_normal.png" opens with QFile,
// QPixmap, QImage and QIcon alike. The path after "res:" is looked up, in
// this order, in
//   1. the "res" folder of the host profile (a profile can replace images),
//   2. the "res" folder beside the application,
//   3. the compiled-in resources of every loaded library (":/images/...").
// The first place that has the file wins; a file found nowhere does not open.
//
// Built on QDir::setSearchPaths("res", ...): Qt joins each folder and the
// rest of the path with "/" and cleans the result, so "res:/images/x.png",
// "res:images/x.png" and "res://images/x.png" are the same file. The same
// cleaning resolves "..": "res:/../x" names a file beside a "res" folder, so
// the scheme is for the application's own paths, not for names from outside.
// QIcon also finds "@2x" companions through the scheme.
class VEX_EXPORT KResourceScheme
{
public:
    KResourceScheme() = delete;

    // "res".
    static QString prefix();
    // The folders of the lookup, in order, for the current host profile.
    static QStringList searchPaths();
    // Makes the scheme resolve through searchPaths(). KxApplication does it
    // when it starts; a host or test that loads another profile later calls
    // it again. Needs a QCoreApplication for the application folder.
    static void install();
};

#endif // VEX_KRESOURCESCHEME_H
