#ifndef ZENTOOFFICELOGGING_H
#define ZENTOOFFICELOGGING_H

#include <QLoggingCategory>

// The reference host's own notices (its commands, its single instance);
// warnings only, unless a person asks for more.
Q_DECLARE_LOGGING_CATEGORY(lcZentoOffice)

#endif // ZENTOOFFICELOGGING_H
