#ifndef WEBLOGGING_H
#define WEBLOGGING_H

#include <QLoggingCategory>

// What the web dialog loads, which pages get the bridge, and what it hands
// to the system.
Q_DECLARE_LOGGING_CATEGORY(lcAuthWeb)

#endif // WEBLOGGING_H
