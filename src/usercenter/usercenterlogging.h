#ifndef USERCENTERLOGGING_H
#define USERCENTERLOGGING_H

#include <QLoggingCategory>

// How the cloud library was found and loaded, for whoever wonders why nobody
// is signed in.
Q_DECLARE_LOGGING_CATEGORY(lcAuthUserCenter)

#endif // USERCENTERLOGGING_H
