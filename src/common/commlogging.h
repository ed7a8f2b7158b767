#ifndef COMMLOGGING_H
#define COMMLOGGING_H

#include <QLoggingCategory>

// The helper layer's own notices and warnings. The "not impl" warnings keep
// their fixed texts in the default category, where the suite has always
// written them.
Q_DECLARE_LOGGING_CATEGORY(lcAuthCommon)

#endif // COMMLOGGING_H
