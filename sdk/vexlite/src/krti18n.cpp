#include "vexlite/krti18n.h"

#include "khostprofile.h"

#include <QFileInfo>
#include <QStringList>

namespace krt {

QString kCachedTr(const char* context, const char* sourceText, const char* id, int n)
{
    return KHostProfile::instance().translate(context, sourceText, id, n);
}

namespace i18n {

QLocale uiLocale()
{
    return QLocale(KHostProfile::instance().language());
}

QString language(int format)
{
    const QString code = KHostProfile::instance().language();
    switch (format) {
    case 1:
        return QString(code).replace(QLatin1Char('_'), QLatin1Char('-'));
    case 2:
        return code.section(QLatin1Char('_'), 0, 0).toLower();
    default:
        return code;
    }
}

QString getMuiFile(const QString& dir, const QString& fileName, const QString& language)
{
    if (fileName.isEmpty())
        return QString();
    const QString code = language.isEmpty() ? i18n::language(0) : language;
    QStringList folders;
    if (!code.isEmpty())
        folders << code;
    const QString bare = code.section(QLatin1Char('_'), 0, 0);
    if (!bare.isEmpty() && bare != code)
        folders << bare;
    folders << QStringLiteral("default");

    // Answer in the caller's own spelling: a directory written with "\"
    // gets "\" between the parts too.
    const QChar separator = dir.contains(QLatin1Char('\\')) && !dir.contains(QLatin1Char('/'))
                                ? QLatin1Char('\\')
                                : QLatin1Char('/');
    QString base = dir;
    if (!base.isEmpty() && !base.endsWith(separator))
        base += separator;
    for (const QString& folder : qAsConst(folders)) {
        const QString path = base + folder + separator + fileName;
        if (QFileInfo(QString(path).replace(QLatin1Char('\\'), QLatin1Char('/'))).isFile())
            return path;
    }
    return QString();
}

} // namespace i18n
} // namespace krt
