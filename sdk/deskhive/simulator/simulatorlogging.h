#ifndef SIMULATORLOGGING_H
#define SIMULATORLOGGING_H

#include <QLoggingCategory>

// The simulator's notices about its state file; Qt prints the category
// before each message.
Q_DECLARE_LOGGING_CATEGORY(lcDeskhiveSimulator)

#endif // SIMULATORLOGGING_H
