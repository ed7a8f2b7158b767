#ifndef WEBLOGGING_H
#define WEBLOGGING_H

#include <QLoggingCategory>

// What the web dialog loads, which pages get the bridge, and what it hands
// to the system.
Q_DECLARE_LOGGING_CATEGORY(lcAuthWeb)

class QUrl;

// An address as logs may show it: without its query, fragment and user
// information, where tokens, the hardware identifier and wrapped sign-in
// data travel.
QString kxUrlForLog(const QUrl& url);

#endif // WEBLOGGING_H
