#include "kxwebresources.h"

#include <vexlite/krti18n.h>

QString kxGetResMuiFile(const QString& fileName, const QString& dir)
{
    // The language decision is the host's; only the separators are ours.
    return krt::i18n::getMuiFile(dir, fileName, QString())
        .replace(QLatin1Char('\\'), QLatin1Char('/'));
}

QString kxResPathToWebUrl(const QString& path)
{
    if (path.startsWith(QLatin1Char(':')))
        return QStringLiteral("qrc") + path;
    return path;
}

QString kxGetWebResMuiFile(const QString& fileName)
{
    return kxResPathToWebUrl(kxGetResMuiFile(fileName, QLatin1String(kxWebMuiRoot)));
}
