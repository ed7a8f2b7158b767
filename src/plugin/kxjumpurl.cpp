#include "kxjumpurl.h"

#include <vexlite/krtproduct.h>

QUrl kxGetJumpUrl(const QString& page)
{
    QString base = krt::product::getString(QStringLiteral("JumpUrl"));
    if (base.isEmpty())
        return QUrl();
    if (!base.endsWith(QLatin1Char('/')))
        base += QLatin1Char('/');
    base += page;
    return QUrl(base, QUrl::TolerantMode);
}

QUrl kxConvertToJumpUrl(const QString& text)
{
    return QUrl(text, QUrl::TolerantMode);
}
