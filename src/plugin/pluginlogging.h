#ifndef PLUGINLOGGING_H
#define PLUGINLOGGING_H

#include <QLoggingCategory>

// The handler's own notices. The warning about an unanswered information key
// keeps its fixed text in the default category, where the suite has always
// written it.
Q_DECLARE_LOGGING_CATEGORY(lcAuthPlugin)

#endif // PLUGINLOGGING_H
