#include "weblogging.h"

#include <QUrl>

Q_LOGGING_CATEGORY(lcAuthWeb, "auth.web", QtWarningMsg)

QString kxUrlForLog(const QUrl& url)
{
    return url.adjusted(QUrl::RemoveQuery | QUrl::RemoveFragment | QUrl::RemoveUserInfo)
        .toDisplayString();
}
