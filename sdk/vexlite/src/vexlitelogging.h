#ifndef VEXLITELOGGING_H
#define VEXLITELOGGING_H

#include <QLoggingCategory>

// The stand-in host's own notices: what it makes of the host profile. Qt
// prints the category before each message, so the texts do not repeat it.
Q_DECLARE_LOGGING_CATEGORY(lcVexLite)

#endif // VEXLITELOGGING_H
